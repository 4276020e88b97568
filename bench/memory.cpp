// Shows how much memory this library takes, and bare Xerces beside it: a Markdown table of the
// peaks of processes that each did one thing. Ends with 0 when the peak of reading a stream does
// not depend on its length and writing stays below what is allowed.

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <istream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "bench/contenders/TqxmlReaders.h"
#include "bench/contenders/Walk.h"
#include "bench/contenders/XercesReaders.h"
#include "bench/orders/Names.h"
#include "bench/orders/OrderMaker.h"
#include "bench/orders/OrdersBuffer.h"
#include "bench/orders/WriteOrder.h"
#include "tqxml/writer/XmlDoc.h"

namespace bench {
namespace {

constexpr std::size_t KIB = 1024;
constexpr std::size_t MIB = 1024 * KIB;
constexpr std::size_t SHORT_STREAM = 64 * KIB;
constexpr std::size_t LONG_STREAM = 256 * MIB;
constexpr std::size_t WHOLE = 16 * MIB;
/// Several, for it matters where the last growth of the writer's buffer was.
constexpr std::size_t WRITTEN[] = {10 * MIB, 12 * MIB, 14 * MIB, WHOLE,
                                   17 * MIB, 20 * MIB, 24 * MIB};
constexpr std::uint64_t ALLOWED_STREAM_GROWTH_KIB = 256;
constexpr double ALLOWED_TIMES_OUTPUT = 3.6;

/// What a process found out about itself.
struct Needs {
  /// Resident before the work, and the most that ever was.
  std::uint64_t before_kib;
  std::uint64_t peak_kib;
  /// The length of the document.
  std::uint64_t bytes;
  /// Of what was read; equal for all readers.
  std::uint64_t sum;

  std::uint64_t growth_kib() const { return peak_kib - before_kib; }
  double times_document() const {
    return static_cast<double>(growth_kib() * KIB) / static_cast<double>(bytes);
  }
};

/// A line of /proc/self/status, in KiB.
std::uint64_t own_status(std::string const& field) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (word != field + ":") continue;
    std::uint64_t kib = 0;
    status >> kib;
    return kib;
  }
  throw std::runtime_error("there is no " + field + " in /proc/self/status");
}

[[noreturn]] void raise_system_error(char const* call) {
  throw std::system_error(errno, std::generic_category(), call);
}

struct Done {
  std::uint64_t bytes;
  std::uint64_t sum;
};

template <class Prepare, class Work>
Needs own_needs(Prepare prepare, Work work) {
  auto const prepared = prepare();
  std::uint64_t const before_kib = own_status("VmRSS");
  Done const done = work(prepared);
  return {before_kib, own_status("VmHWM"), done.bytes, done.sum};
}

template <class Prepare, class Work>
[[noreturn]] void tell_own_needs(int to, Prepare prepare, Work work) {
  try {
    Needs const needs = own_needs(prepare, work);
    _exit(write(to, &needs, sizeof needs) == sizeof needs ? 0 : 1);
  } catch (std::exception const& e) {
    std::fprintf(stderr, "memory: %s\n", e.what());
    _exit(1);
  }
}

/// Runs `work(prepare())` in a process of its own, whose peak is not that of anything else. This
/// one never becomes large.
template <class Prepare, class Work>
Needs needs_of(Prepare prepare, Work work) {
  int ends[2];
  if (pipe(ends) == -1) raise_system_error("pipe");
  pid_t const child = fork();
  if (child == -1) raise_system_error("fork");
  if (child == 0) tell_own_needs(ends[1], prepare, work);
  close(ends[1]);
  Needs needs{};
  bool const told = read(ends[0], &needs, sizeof needs) == sizeof needs;
  close(ends[0]);
  int status = 0;
  if (waitpid(child, &status, 0) == -1) raise_system_error("waitpid");
  if (!told || status != 0) throw std::runtime_error("a measurement failed");
  return needs;
}

constexpr auto NOTHING = [] { return 0; };

template <class Read>
Needs needs_of_stream(std::size_t bytes, Read read) {
  return needs_of(NOTHING, [=](int) {
    OrdersBuffer buffer(bytes);
    std::istream in(&buffer);
    Tally tally;
    read(in, tally);
    return Done{buffer.made(), tally.sum()};
  });
}

template <class Read>
Needs needs_of_whole(std::size_t bytes, Read read) {
  auto const prepare = [=] {
    OrdersBuffer buffer(bytes);
    std::string document;
    document.reserve(bytes + KIB);
    for (int c = buffer.sbumpc(); c != EOF; c = buffer.sbumpc()) document += static_cast<char>(c);
    return document;
  };
  return needs_of(prepare, [=](std::string const& document) {
    Tally tally;
    read(document, tally);
    return Done{document.size(), tally.sum()};
  });
}

/// Of the document with as many records as fit, which are made while they are written.
std::string write_orders(std::size_t bytes) {
  OrderMaker maker;
  Orn::XmlDoc doc(orders);
  std::size_t length = length_around_orders();
  while (true) {
    Order const record = maker.next();
    length += length_in_document(record);
    if (length > bytes) break;
    write_order(doc, record);
  }
  doc.close();
  return doc.byte_array();
}

Needs needs_of_writing(std::size_t bytes) {
  return needs_of(NOTHING, [=](int) {
    std::string const output = write_orders(bytes);
    return Done{output.size(), 0};
  });
}

void show_head() {
  std::printf(
      "| memory | document | before, KiB | peak, KiB | growth, KiB | times the document |\n");
  std::printf("|---|--:|--:|--:|--:|--:|\n");
}

std::string size_of(std::size_t bytes) {
  return bytes < MIB ? std::to_string(bytes / KIB) + "KiB" : std::to_string(bytes / MIB) + "MiB";
}

void show(char const* what, std::size_t bytes, Needs const& needs) {
  auto const number = [](std::uint64_t n) { return static_cast<unsigned long long>(n); };
  std::printf("| %s | %s | %llu | %llu | %llu | %.2f |\n", what, size_of(bytes).c_str(),
              number(needs.before_kib), number(needs.peak_kib), number(needs.growth_kib()),
              needs.times_document());
  std::fflush(stdout);
}

/// By how much the longer stream needs more, in KiB; less counts as nothing.
std::uint64_t show_growth(char const* what, Needs const& shorter, Needs const& longer) {
  std::uint64_t const growth =
      longer.peak_kib > shorter.peak_kib ? longer.peak_kib - shorter.peak_kib : 0;
  std::printf("| %s | %s over %s | | | %llu | |\n", what, size_of(LONG_STREAM).c_str(),
              size_of(SHORT_STREAM).c_str(), static_cast<unsigned long long>(growth));
  return growth;
}

void read_stream(std::istream& in, Tally& tally) {
  Orn::SaxParser parser(in);
  walk(parser.root(), tally);
}

void read_stream_with_xerces(std::istream& in, Tally& tally) {
  read_xerces_stream<LookedUpNames>(in, order_names(), tally);
}

void expect_same(Needs const& one, Needs const& other) {
  if (one.sum != other.sum) throw std::runtime_error("the readers read different things");
}

bool show_streams() {
  Needs const ours[] = {needs_of_stream(SHORT_STREAM, read_stream),
                        needs_of_stream(LONG_STREAM, read_stream)};
  show("read_stream/tqxml", SHORT_STREAM, ours[0]);
  show("read_stream/tqxml", LONG_STREAM, ours[1]);
  std::uint64_t const growth = show_growth("read_stream/tqxml", ours[0], ours[1]);
  Needs const theirs[] = {needs_of_stream(SHORT_STREAM, read_stream_with_xerces),
                          needs_of_stream(LONG_STREAM, read_stream_with_xerces)};
  show("read_stream/xerces", SHORT_STREAM, theirs[0]);
  show("read_stream/xerces", LONG_STREAM, theirs[1]);
  show_growth("read_stream/xerces", theirs[0], theirs[1]);
  for (int i = 0; i < 2; ++i) expect_same(ours[i], theirs[i]);
  return growth <= ALLOWED_STREAM_GROWTH_KIB;
}

/// Only the length that is allowed something counts.
bool show_writing() {
  bool good = false;
  for (std::size_t const bytes : WRITTEN) {
    Needs const needs = needs_of_writing(bytes);
    show("write/tqxml", bytes, needs);
    if (bytes == WHOLE) good = needs.times_document() < ALLOWED_TIMES_OUTPUT;
  }
  return good;
}

void show_whole() {
  Needs const ours = needs_of_whole(
      WHOLE, [](std::string const& document, Tally& tally) { TqxmlWhole::read(document, tally); });
  show("read_whole/tqxml", WHOLE, ours);
  Needs const theirs = needs_of_whole(WHOLE, [](std::string const& document, Tally& tally) {
    read_xerces_whole(document, order_names(), tally);
  });
  show("read_whole/xerces", WHOLE, theirs);
  expect_same(ours, theirs);
}

void show_tree() {
  show("tree_from_stream/tqxml", WHOLE, needs_of_stream(WHOLE, [](std::istream& in, Tally& tally) {
         Orn::SaxParser parser(in);
         Orn::SaxParser::Elem root = parser.root();
         Orn::XmlDoc::Elem const tree(root);
         tally.start(tree.empty() ? Orn::XmlTag::NO_TAG : orders);
       }));
}

bool show_all() {
  show_head();
  bool const stream_is_good = show_streams();
  bool const writing_is_good = show_writing();
  show_whole();
  show_tree();
  return stream_is_good && writing_is_good;
}

}  // namespace
}  // namespace bench

int main() {
  try {
    return bench::show_all() ? 0 : 1;
  } catch (std::exception const& e) {
    std::fprintf(stderr, "memory: %s\n", e.what());
    return 2;
  }
}

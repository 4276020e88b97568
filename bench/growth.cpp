// Shows that the time to write a document grows no faster than its length: a table of the
// processor time for two lengths, one four times the other, and the ratio of the two, which should
// be 4. Ends with 0 when every ratio is within a tenth of that.

#include <malloc.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <deque>
#include <string>
#include <vector>

#include "tqutil/Vocabulary.h"
#include "tqxml/writer/XmlDoc.h"

namespace {

using Orn::UString;
using Orn::VocabularyEntry;
using Orn::XmlDoc;
using Orn::XmlTag;

constexpr int namespaces = 100;
constexpr int repetitions = 7;
constexpr unsigned int units_per_mib = std::size_t{1024} * 1024 / sizeof(UString::unit_type);
constexpr unsigned int short_mib = 16;
constexpr unsigned int long_mib = 64;
constexpr double linear = double{long_mib} / short_mib;
constexpr double tolerance = 0.1;

/// The tag `item` of the namespace with that number, from 1 on.
XmlTag::Id item(int ns) { return XmlTag::Id(ns); }

std::vector<VocabularyEntry> make_entries() {
  static std::deque<std::u16string> uris;
  std::vector<VocabularyEntry> entries;
  for (int ns = 1; ns <= namespaces; ++ns) {
    std::string const digits = std::to_string(ns);
    uris.push_back(u"urn:growth:" + std::u16string(digits.begin(), digits.end()));
    entries.push_back({VocabularyEntry::NAMESPACE, ns, "ns", 0, uris.back().c_str()});
    entries.push_back({VocabularyEntry::TAG, ns, "item", ns, u"item"});
  }
  return entries;
}

std::vector<VocabularyEntry> const entries = make_entries();
Orn::Vocabulary const vocabulary("growth", entries.data(), entries.size());

struct Written {
  unsigned int units;
  double seconds;
};

template <class Work>
Written timed(Work work) {
  std::clock_t const begin = std::clock();
  unsigned int const units = work();
  std::clock_t const end = std::clock();
  return {units, static_cast<double>(end - begin) / CLOCKS_PER_SEC};
}

unsigned int closed_length(XmlDoc& doc) {
  doc.close();
  return doc.str().length();
}

Written elements(unsigned int records) {
  return timed([=] {
    UString const text(u"some text");
    XmlDoc doc(item(1));
    for (unsigned int i = 0; i < records; ++i) {
      doc.push_elem(item(1));
      // Always the same number of digits.
      doc.add_attr(item(1), 10000000L + static_cast<long>(i));
      doc.add_elem(item(1), text, true);
      doc.add_elem(item(1));
      doc.pop_elem(item(1));
    }
    return closed_length(doc);
  });
}

Written one_text_to_escape(unsigned int records) {
  UString text;
  for (unsigned int i = 0; i < records; ++i) text.append(u"&<a>&&<]]>");
  return timed([&] {
    XmlDoc doc;
    doc.add_elem(item(1), text, true);
    return closed_length(doc);
  });
}

Written elements_of_all_namespaces(unsigned int records) {
  return timed([=] {
    XmlDoc doc(item(1));
    for (unsigned int i = 0; i < records; ++i) {
      for (int ns = 1; ns <= namespaces; ++ns) doc.push_elem(item(ns));
      for (int ns = namespaces; ns >= 1; --ns) doc.pop_elem(item(ns));
    }
    return closed_length(doc);
  });
}

struct Workload {
  char const* name;
  Written (*write)(unsigned int records);
};

constexpr Workload workloads[] = {
    {"elements", elements},
    {"one text to escape", one_text_to_escape},
    {"elements of 100 namespaces", elements_of_all_namespaces},
};

/// The fewest records that fill the length: every record but the first is as long as any other. A
/// little more rather than a little less, for the text grows by doubling, and at a power of two the
/// short document might else be spared a step that the long one takes.
unsigned int records_in(Workload const& workload, unsigned int mib) {
  unsigned int const first = workload.write(1).units;
  unsigned int const each = workload.write(2).units - first;
  return 2 + (mib * units_per_mib - first) / each;
}

/// The least time of several for the short and for the long document. They take turns, so that a
/// slow phase of the machine meets both.
std::array<double, 2> best_times(Workload const& workload) {
  unsigned int const short_records = records_in(workload, short_mib);
  unsigned int const long_records = records_in(workload, long_mib);
  std::array<double, 2> best{1e9, 1e9};
  for (int i = 0; i < repetitions; ++i) {
    best[0] = std::min(best[0], workload.write(short_records).seconds);
    best[1] = std::min(best[1], workload.write(long_records).seconds);
  }
  return best;
}

bool show(Workload const& workload) {
  auto const [short_time, long_time] = best_times(workload);
  double const ratio = long_time / short_time;
  bool const is_linear = std::abs(ratio - linear) <= tolerance * linear;
  std::printf("%-28s %9.4f s %9.4f s %7.2f  %s\n", workload.name, short_time, long_time, ratio,
              is_linear ? "linear" : "NOT LINEAR");
  return is_linear;
}

}  // namespace

int main() {
  // Large blocks come from the system afresh. Left to itself the allocator would, between
  // repetitions, keep those of the short document only.
  mallopt(M_MMAP_THRESHOLD, 128 * 1024);

  std::printf("Processor time to write a document, best of %d; lengths in UTF-16, %d-bit build\n",
              repetitions, static_cast<int>(sizeof(void*) * 8));
  std::printf("%-28s %7u MiB %7u MiB %7s\n", "", short_mib, long_mib, "ratio");
  bool all_linear = true;
  for (Workload const& workload : workloads) all_linear = show(workload) && all_linear;
  return all_linear ? 0 : 1;
}

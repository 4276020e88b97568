// measure_limits [COLLECTION]
// Reads hostile documents with ReadLimits::untrusted(), each in a process of its own, and shows
// what it takes until they are refused: processor time, and memory beyond that for an empty
// document. Ends with status 1 when one of them is accepted, or takes more than 50 ms or 16 MiB.

#include <cstdio>
#include <utility>

#include "tests/limits/HostileDocuments.h"
#include "tests/limits/Readers.h"
#include "tests/support/Needs.h"

namespace {

using tests::Document;
using tests::Needs;
using tests::Reader;

constexpr double MOST_MS = 50;
constexpr double MOST_MIB = 16;

/// Shows one line, and gives whether all is well.
bool measure(Reader const& reader, Document const& document) {
  // The reader's own copy, as if somebody else had made it.
  std::string text = document.text;
  auto const complaint_about = [&reader](std::string&& xml) {
    return tests::complaint_of(reader, std::move(xml), Orn::ReadLimits::untrusted());
  };
  Needs const empty = tests::needs_of([&] { return !complaint_about("<r/>").has_value(); });
  Needs const needs =
      tests::needs_of([&] { return tests::is_of_a_limit(complaint_about(std::move(text))); });
  double const ms = 1000 * needs.seconds, mib = needs.peak_mib - empty.peak_mib;
  bool const good = needs.succeeded && ms <= MOST_MS && mib <= MOST_MIB;
  std::printf("%-46s %-10s %7.1f ms %7.1f MiB  %s\n", document.name.c_str(), reader.name, ms, mib,
              good              ? "refused"
              : needs.succeeded ? "TOO MUCH"
                                : "NOT REFUSED");
  std::fflush(stdout);
  return good;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<Document> documents = tests::hostile_documents();
  if (argc > 1) {
    for (Document& document : tests::collected_documents(argv[1], "dangerous")) {
      documents.push_back(std::move(document));
    }
  }
  bool good = true;
  for (Document const& document : documents) {
    for (Reader const& reader : tests::READERS) good = measure(reader, document) && good;
  }
  return good ? 0 : 1;
}

#include <chrono>
#include <string>

#include "tests/conformance/CatchAll.h"
#include "tests/conformance/Child.h"
#include "tests/conformance/Collections.h"
#include "tests/conformance/Examination.h"
#include "tests/conformance/Files.h"

namespace tests {
namespace {

namespace fs = std::filesystem;

/// For a document that is known to be stopped, and for all others. A sanitizer takes some hundred
/// MiB of its own.
constexpr ChildLimits STRICT = {std::chrono::milliseconds(400), 640L << 20U};
constexpr ChildLimits LAX = {std::chrono::minutes(2), 640L << 20U};

constexpr char STOPPED[] = "stopped at a limit";
/// What the files hold that documents try to read.
constexpr char16_t CANARY[] = u"CANARY-7f3a91-external-content-was-read";

/// Names the files that are in the folder of the documents instead of the copies that whoever
/// reads the documents would have to make in a fixed place.
std::string with_files_beside(std::string xml) {
  std::string const far = "file:///tmp/xml-attack-canary";
  std::size_t const place = xml.find(far);
  return place == std::string::npos ? xml : xml.replace(place, far.size(), "canary");
}

std::string outcome_of(ChildOutcome const& outcome) {
  switch (outcome.end) {
    case ChildOutcome::WELL:
      return outcome.text;
    case ChildOutcome::AT_A_LIMIT:
      return STOPPED;
    default:
      return FAULTY + (": " + outcome.text);
  }
}

std::string harmless_outcome(Reader const& reader, std::string const& xml) {
  return outcome_of(in_child(
      [&] {
        enter_catch_all();
        DocumentNames names;
        Twins twins(names);
        return examined(reader, xml, &names, &twins).outcome;
      },
      LAX));
}

/// The tree may be of files that are different everywhere.
std::string without_tree(Reading const& reading) {
  if (!reading.accepted()) return REFUSED + (" " + reading.complaint);
  bool const has_read_a_file = reading.tree.find(CANARY) != std::u16string::npos;
  return has_read_a_file ? "accepted with what an external file holds" : ACCEPTED;
}

/// The reader and the parser under it one after the other, for neither might come to an end.
std::string dangerous_outcome(Reader const& reader, std::string const& xml,
                              ChildLimits const& limits) {
  std::string const outcome = outcome_of(in_child(
      [&] {
        enter_catch_all();
        return without_tree(reader.read(xml));
      },
      limits));
  std::string const of_xerces = outcome_of(
      in_child([&] { return without_tree(reader.read_by_xerces(xml, nullptr)); }, limits));
  if (outcome == of_xerces) return outcome;
  return FAULTY + (": the reader: " + outcome + ", Xerces: " + of_xerces);
}

std::string outcome_of(Reader const& reader, std::string const& kind, std::string const& xml,
                       std::string const& recorded) {
  if (kind == "dangerous")
    return dangerous_outcome(reader, xml, recorded == STOPPED ? STRICT : LAX);
  return judged(harmless_outcome(reader, xml), kind == "wellformed");
}

}  // namespace

Record read_attacks(fs::path const& folder, Record const& recorded) {
  fs::path const documents = fs::canonical(folder / "docs");
  fs::current_path(documents);
  Record record;
  for (std::vector<std::string> const& row : table_in(folder / "expected.tsv", 2)) {
    std::string const xml = with_files_beside(bytes_of(documents / row[0]));
    Record::Line const* const before = recorded.find(row[0]);
    auto const outcome = [&](Reader const& reader, std::string const& recorded_outcome) {
      std::string const found = outcome_of(reader, row[1], xml, recorded_outcome);
      return without_place(found, documents.string() + "/");
    };
    record.add({row[0], row[1], outcome(DOM, before == nullptr ? "" : before->dom),
                outcome(SAX, before == nullptr ? "" : before->sax)});
  }
  return record;
}

}  // namespace tests

#include <algorithm>
#include <chrono>
#include <set>
#include <sstream>
#include <string>

#include "tests/conformance/Child.h"
#include "tests/conformance/Collections.h"
#include "tests/conformance/Examination.h"
#include "tests/conformance/Files.h"
#include "tqutil/UString.h"

namespace tests {
namespace {

namespace fs = std::filesystem;

constexpr ChildLimits FOR_A_FOLDER = {std::chrono::minutes(10), 2000L << 20U};

std::u16string utf16(std::string const& text) {
  Orn::UString const units = Orn::UString::from_utf8(text);
  return {reinterpret_cast<char16_t const*>(units.data()), units.length()};
}

void enter_vocabulary(fs::path const& table, DocumentNames& names) {
  for (std::vector<std::string> const& row : table_in(table, 3)) {
    names.number_of(utf16(row[1]), utf16(row[2]));
  }
}

/// The document without the reference to the external part of its DTD.
std::string without_external_subset(std::string xml) {
  std::size_t const declaration = xml.find("<!DOCTYPE");
  if (declaration == std::string::npos) return xml;
  std::size_t const end = xml.find_first_of("[>", declaration);
  std::size_t const id = std::min(xml.find("SYSTEM", declaration), xml.find("PUBLIC", declaration));
  return id < end ? xml.erase(id, end - id) : xml;
}

class Folder {
 public:
  explicit Folder(fs::path const& place) : place_(place) {
    fs::current_path(place);
    enter_vocabulary(place / "vocabulary.tsv", names_);
  }

  /// A line of the record for each document.
  std::string read() {
    for (std::vector<std::string> const& row : table_in(place_ / "FILES.tsv", 1)) {
      std::string const key = place_.filename().string() + "/" + row[0];
      std::string const xml = bytes_of(place_ / row[0]);
      add(key, "as it is", xml);
      std::string const without = without_external_subset(xml);
      if (without != xml) add(key + " without its external DTD", "changed", without);
    }
    return lines_.str();
  }

 private:
  void add(std::string const& key, char const* kind, std::string const& xml) {
    lines_ << Record::Line{key, kind, outcome_of(DOM, xml), outcome_of(SAX, xml)} << '\n';
  }
  std::string outcome_of(Reader const& reader, std::string const& xml) {
    std::string const outcome = examined(reader, xml, nullptr, &twins_).outcome;
    return without_place(outcome, place_.parent_path().string() + "/");
  }

  fs::path place_;
  DocumentNames names_;
  Twins twins_{names_};
  std::ostringstream lines_;
};

}  // namespace

Record read_real_documents(fs::path const& folder, Record const& /*recorded*/) {
  std::set<fs::path> places;
  for (auto const& entry : fs::directory_iterator(fs::canonical(folder))) {
    places.insert(entry.path());
  }
  Record record;
  for (fs::path const& place : places) {
    // A process for each, so that only its own names are in the registry.
    ChildOutcome const outcome = in_child([&place] { return Folder(place).read(); }, FOR_A_FOLDER);
    if (outcome.end == ChildOutcome::WELL) {
      record.add_lines(outcome.text);
    } else {
      record.add({place.filename().string(), "folder", FAULTY + (": " + outcome.text), ""});
    }
  }
  return record;
}

}  // namespace tests

// A program of its own: what the tests usually have in the registry would be in the way.

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tqutil/UtilExceptions.h"
#include "tqutil/Vocabulary.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/sax/SaxParser.h"
#include "vocabulary/Addition.h"
#include "vocabulary/Check.h"
#include "vocabulary/Failure.h"
#include "vocabulary/Source.h"

namespace {

namespace fs = std::filesystem;

fs::path const& collections() {
  static fs::path const place = TQ_REAL_DOCUMENTS;
  return place;
}

std::string bytes_of(fs::path const& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

std::vector<std::string> first_columns(fs::path const& table) {
  std::vector<std::string> columns;
  std::ifstream in(table);
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) columns.push_back(line.substr(0, line.find('\t')));
  return columns;
}

/// The kind of each name is put together: the library makes no difference.
std::set<std::string> listed_names(fs::path const& table) {
  std::set<std::string> names;
  std::ifstream in(table);
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    std::size_t const uri = line.find('\t') + 1;
    std::size_t const local = line.find('\t', uri) + 1;
    std::string const text = line.substr(uri, local - uri - 1);
    names.insert((text.empty() ? "" : "{" + text + "}") + line.substr(local));
  }
  return names;
}

/// Enters what a vocabulary file says into the registry of this process, for its remaining life.
/// Once.
void enter(vocabulary::DefFile const& file) {
  static vocabulary::DefFile kept;
  static std::vector<Orn::VocabularyEntry> entries;
  kept = file;
  for (vocabulary::DefEntry const& entry : kept.entries) {
    std::int32_t ns = 0;
    for (vocabulary::DefEntry const& other : kept.entries) {
      if (other.kind == vocabulary::DefEntry::NAMESPACE && other.constant == entry.ns) {
        ns = other.number;
      }
    }
    entries.push_back({static_cast<Orn::VocabularyEntry::Kind>(entry.kind), entry.number,
                       entry.constant.c_str(), ns, entry.text.c_str()});
  }
  Orn::Vocabulary const entered("generated", entries.data(), entries.size());
}

/// Asks for the tags of everything in the element.
template <class Elem>
void walk(Elem elem) {
  elem.tag();
  for (auto attribute = elem.next_attr(); !attribute.is_nil(); attribute = elem.next_attr()) {
    attribute.tag();
  }
  for (Elem child = elem.next_child(); !child.is_nil(); child = elem.next_child()) {
    walk(std::move(child));
  }
}

enum Outcome { READ, UNKNOWN_NAME, MALFORMED };

template <class Read>
Outcome outcome(Read const& read) {
  try {
    read();
    return READ;
  } catch (Orn::TagException const& e) {
    std::cerr << e.what() << '\n';
    return UNKNOWN_NAME;
  } catch (Orn::STPException const&) {
    return MALFORMED;
  }
}

Outcome read_as_stream(std::string const& bytes) {
  return outcome([&bytes] {
    std::istringstream in(bytes);
    Orn::SaxParser const parser(in);
    walk(parser.root());
  });
}

Outcome read_whole(std::string const& bytes) {
  return outcome([&bytes] {
    Orn::DomParser parser(bytes);
    walk(parser.root());
  });
}

class Folder {
 public:
  explicit Folder(fs::path place) : place_(std::move(place)) {
    for (std::string const& file : first_columns(place_ / "FILES.tsv")) {
      try {
        vocabulary::NameList own;
        vocabulary::read_source(place_ / file, {}, own);
        vocabulary::read_source(place_ / file, {}, names_);
        readable_.push_back(file);
      } catch (vocabulary::Failure const&) {
        malformed_.push_back(file);
      }
    }
    text_ = vocabulary::addition_to({}, {}, names_, {}).text;
  }

  /// Ends the process, with status 0 when every document can be read with the vocabulary.
  [[noreturn]] void read_with_vocabulary() const {
    vocabulary::DefFile const file = vocabulary::parse_def("generated.def", text_);
    int faults = static_cast<int>(vocabulary::complaints_about(file, {}).size());
    enter(file);
    for (std::string const& readable : readable_) {
      std::string const bytes = bytes_of(place_ / readable);
      // What a DOCTYPE refers to is not there.
      bool const is_alone = bytes.find("<!DOCTYPE") == std::string::npos;
      Outcome const as_stream = read_as_stream(bytes);
      bool const is_read =
          is_alone ? as_stream == READ && read_whole(bytes) == READ : as_stream != UNKNOWN_NAME;
      if (!is_read) ++faults;
      if (!is_read) std::cerr << readable << " cannot be read\n";
    }
    std::cerr << readable_.size() << " documents, " << faults << " faults\n";
    std::exit(faults == 0 && !readable_.empty() ? 0 : 1);
  }

  /// Ends the process, with status 0 when a reader that knows every name refuses what was left out.
  [[noreturn]] void read_what_is_left_out() const {
    enter(vocabulary::parse_def("all.def", "TQ_CATCH_ALL(1, any, TQ_NO_NS, u\"any\")"));
    int faults = 0;
    for (std::string const& malformed : malformed_) {
      if (read_as_stream(bytes_of(place_ / malformed)) == MALFORMED) continue;
      ++faults;
      std::cerr << malformed << " can be read\n";
    }
    std::cerr << malformed_.size() << " left out, " << faults << " faults\n";
    std::exit(faults == 0 ? 0 : 1);
  }

  vocabulary::NameList const& names() const { return names_; }
  fs::path const& place() const { return place_; }

 private:
  fs::path place_;
  vocabulary::NameList names_;
  std::vector<std::string> readable_;
  std::vector<std::string> malformed_;
  std::string text_;
};

class AGeneratedVocabulary : public testing::TestWithParam<char const*> {
 protected:
  void SetUp() override {
    if (!fs::exists(collections())) GTEST_SKIP() << "skipped: there is no " << collections();
  }
  Folder const& folder() {
    if (!folder_) folder_ = std::make_unique<Folder>(collections() / GetParam());
    return *folder_;
  }

 private:
  std::unique_ptr<Folder> folder_;
};

TEST_P(AGeneratedVocabulary, SufficesToReadEveryDocument) {
  Folder const& documents = folder();
  EXPECT_EXIT(documents.read_with_vocabulary(), testing::ExitedWithCode(0), " documents, 0 faults");
}

TEST_P(AGeneratedVocabulary, HasTheNamesThatTheCollectionLists) {
  std::set<std::string> generated;
  for (auto const& entry : folder().names().entries()) generated.insert(to_string(entry.name));
  EXPECT_THAT(generated, testing::IsSupersetOf(listed_names(folder().place() / "vocabulary.tsv")));
}

TEST_P(AGeneratedVocabulary, LeavesOutOnlyWhatAReaderRefusesAsWell) {
  Folder const& documents = folder();
  EXPECT_EXIT(documents.read_what_is_left_out(), testing::ExitedWithCode(0), " left out, 0 faults");
}

INSTANTIATE_TEST_SUITE_P(Of, AGeneratedVocabulary,
                         testing::Values("cldr", "cyclonedx", "feeds", "genericode", "kml",
                                         "mime-info", "svg", "ubl", "xmldsig", "xslt"));

}  // namespace

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/limits/HostileDocuments.h"
#include "tests/limits/Readers.h"

namespace tests {
namespace {

namespace fs = std::filesystem;
using Orn::ReadLimits;

/// Documents of ten vocabularies beside the source tree, honest ones.
class RealDocuments : public testing::Test {
 protected:
  void SetUp() override {
    if (!fs::exists(COLLECTION)) GTEST_SKIP() << "skipped: there is no " << COLLECTION;
  }

  /// Every `step`th one.
  static std::vector<Document> documents(std::size_t step) {
    std::set<fs::path> paths;
    for (auto const& entry : fs::recursive_directory_iterator(COLLECTION)) {
      bool const is_about_others =
          entry.path().extension() == ".tsv" || entry.path().extension() == ".md";
      if (entry.is_regular_file() && !is_about_others) paths.insert(entry.path());
    }
    std::vector<Document> documents;
    std::size_t number = 0;
    for (fs::path const& path : paths) {
      if (number++ % step != 0) continue;
      std::ifstream file(path, std::ios::binary);
      documents.push_back({path.filename().string(), {std::istreambuf_iterator<char>(file), {}}});
    }
    return documents;
  }

 private:
  static inline fs::path const COLLECTION = TQXML_REAL_DOCUMENTS;
};

bool is_of(char const* limit, std::optional<std::string> const& complaint) {
  return complaint->find(std::string("ReadLimits::") + limit + ":") != std::string::npos;
}

/// These are in UTF-16 and UTF-32 and declare it as `utf16`, `utf_16` and `utf_32`.
std::set<std::string> const misnamed_encodings = {"encoding_utf16.xml", "encoding_utf_16.xml",
                                                  "encoding_utf_32.xml"};

TEST_F(RealDocuments, AreReadWithinTheLimitsForAnyoneUnlessTheyHaveADoctype) {
  // With sanitizers it takes many times as long.
  std::size_t const step = TQXML_SANITIZED ? 10 : 1;
  std::size_t read = 0, with_doctype = 0;
  for (Document const& document : documents(step)) {
    for (Reader const& reader : READERS) {
      SCOPED_TRACE(document.name + ", " + reader.name);
      auto const complaint = complaint_of(reader, document.text, ReadLimits::untrusted());
      if (!complaint.has_value()) {
        ++read;
      } else if (is_of("refuse_doctype", complaint)) {
        EXPECT_NE(document.text.find("<!DOCTYPE"), std::string::npos);
        ++with_doctype;
      } else if (is_of("refuse_unusual_encodings", complaint)) {
        EXPECT_EQ(misnamed_encodings.count(document.name), 1U);
      } else {
        EXPECT_FALSE(is_of_a_limit(complaint)) << *complaint;
        EXPECT_NE(complaint_of(reader, document.text, ReadLimits()), std::nullopt);
      }
    }
  }
  EXPECT_GT(read, 4000 / step);
  EXPECT_GT(with_doctype, 200 / step);
}

}  // namespace
}  // namespace tests

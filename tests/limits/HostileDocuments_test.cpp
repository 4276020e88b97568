#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/limits/HostileDocuments.h"
#include "tests/limits/Readers.h"
#include "tests/support/Needs.h"

namespace tests {
namespace {

namespace fs = std::filesystem;
using Orn::ReadLimits;
using Orn::UString;

void expect_refusals(std::vector<Document> const& documents,
                     ReadLimits const& limits = ReadLimits::untrusted()) {
  for (Document const& document : documents) {
    for (Reader const& reader : READERS) {
      auto const complaint = complaint_of(reader, document.text, limits);
      EXPECT_TRUE(is_of_a_limit(complaint))
          << document.name << ", " << reader.name << ": " << complaint.value_or("accepted");
    }
  }
}

/// The peak of memory, in MiB, beyond that for an empty document. The text itself is not counted.
double memory_of_reading(Reader const& reader, std::string text) {
  auto const needs_for = [&reader](std::string& xml) {
    Needs const needs = needs_of([&] {
      complaint_of(reader, std::move(xml), ReadLimits::untrusted());
      return true;
    });
    EXPECT_TRUE(needs.succeeded);
    return needs.peak_mib;
  };
  std::string empty = "<r/>";
  double const least = needs_for(empty);
  return needs_for(text) - least;
}

void expect_little_memory(std::vector<Document> const& documents) {
  if (TQXML_SANITIZED) {
    GTEST_SKIP() << "skipped: the sanitizer keeps what was freed, so that memory tells nothing";
  }
  for (Document const& document : documents) {
    for (Reader const& reader : READERS) {
      EXPECT_LT(memory_of_reading(reader, document.text), 16)
          << document.name << ", " << reader.name;
    }
  }
}

TEST(HostileDocuments, AreRefusedForALimit) { expect_refusals(hostile_documents()); }

TEST(HostileDocuments, WithADtdAreRefusedForALimitWhereADoctypeIsAllowed) {
  ReadLimits limits = ReadLimits::untrusted();
  limits.refuse_doctype = false;
  // With sanitizers the work until it matters takes ten times as long.
  if (TQXML_SANITIZED) limits.amplification_floor /= 10;
  expect_refusals(hostile_dtds(), limits);
}

TEST(HostileDocuments, TakeLittleMemoryUntilTheyAreRefused) {
  expect_little_memory(hostile_documents());
}

/// Documents beside the source tree, some of which ask for files in the temporary folder and in the
/// current one.
class CollectedDocuments : public testing::Test {
 protected:
  void SetUp() override {
    if (!fs::exists(COLLECTION)) GTEST_SKIP() << "skipped: there is no " << COLLECTION;
    home_ = fs::current_path();
    fs::current_path(COLLECTION / "docs");
  }
  void TearDown() override {
    if (!home_.empty()) fs::current_path(home_);
  }

  static inline fs::path const COLLECTION = TQXML_ATTACKS;

 private:
  fs::path home_;
};

TEST_F(CollectedDocuments, ThatAreDangerousAreRefusedForALimit) {
  auto const documents = collected_documents(COLLECTION, "dangerous");
  EXPECT_GT(documents.size(), 10U);
  expect_refusals(documents);
}

TEST_F(CollectedDocuments, ThatAreDangerousTakeLittleMemoryUntilTheyAreRefused) {
  expect_little_memory(collected_documents(COLLECTION, "dangerous"));
}

/// Twenty thousand names are too many for documents from anyone.
bool has_too_many_names(Document const& document) { return document.name == "names-20000.xml"; }

TEST_F(CollectedDocuments, ThatAreWellFormedAreReadAsEverUnlessTheyHaveADoctype) {
  int accepted = 0, refused = 0;
  for (Document& document : collected_documents(COLLECTION, "wellformed")) {
    if (has_too_many_names(document)) continue;
    SCOPED_TRACE(document.name);
    bool const has_doctype = document.text.find("<!DOCTYPE") != std::string::npos;
    for (Reader const& reader : READERS) {
      auto const complaint = complaint_of(reader, document.text, ReadLimits::untrusted());
      if (has_doctype) {
        EXPECT_NE(complaint.value_or("").find("ReadLimits::refuse_doctype"), std::string::npos);
        ++refused;
        continue;
      }
      ASSERT_EQ(complaint, std::nullopt);
      EXPECT_EQ(reader.read(std::string(document.text), ReadLimits::untrusted()),
                reader.read(std::string(document.text), ReadLimits()));
      ++accepted;
    }
  }
  EXPECT_GT(accepted, 50);
  EXPECT_GT(refused, 20);
}

TEST_F(CollectedDocuments, ThatAreNotWellFormedAreNotAcceptedForLimits) {
  for (Document const& document : collected_documents(COLLECTION, "not-wellformed")) {
    for (Reader const& reader : READERS) {
      bool const accepted =
          !complaint_of(reader, document.text, ReadLimits::untrusted()).has_value();
      bool const accepted_without = !complaint_of(reader, document.text, ReadLimits()).has_value();
      EXPECT_LE(accepted, accepted_without) << document.name << ", " << reader.name;
    }
  }
}

}  // namespace
}  // namespace tests

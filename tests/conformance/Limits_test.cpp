#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>

#include "tests/conformance/CatchAll.h"
#include "tests/conformance/Files.h"
#include "tests/conformance/Reading.h"
#include "tests/conformance/Surroundings.h"

namespace tests {
namespace {

namespace fs = std::filesystem;
using Orn::ReadLimits;

/// The sample of the W3C's conformance test suite, beside the source tree. Its documents find the
/// files that they name where they expect them, and nothing on the network.
class Sample : public testing::Test {
 protected:
  void SetUp() override {
    if (!fs::exists(FOLDER)) GTEST_SKIP() << "skipped: there is no " << FOLDER;
    enter_catch_all();
    leave_the_network();
  }
  void TearDown() override { fs::current_path(home_); }

  static std::set<fs::path> documents() {
    std::set<fs::path> paths;
    for (auto const& entry : fs::recursive_directory_iterator(FOLDER / "xmlconf")) {
      if (entry.path().extension() == ".xml") paths.insert(fs::canonical(entry.path()));
    }
    return paths;
  }

 private:
  static inline fs::path const FOLDER = SAMPLE;
  fs::path home_ = fs::current_path();
};

/// Limits that count everything and that no document of the sample comes near.
ReadLimits high_limits() {
  constexpr std::uint64_t MANY = 1'000'000'000'000;
  ReadLimits limits;
  for (auto limit : {&ReadLimits::amplification, &ReadLimits::entity_depth, &ReadLimits::depth,
                     &ReadLimits::attributes, &ReadLimits::namespaces, &ReadLimits::bytes,
                     &ReadLimits::markup_memory, &ReadLimits::names, &ReadLimits::name,
                     &ReadLimits::text, &ReadLimits::attribute_value}) {
    limits.*limit = MANY;
  }
  return limits;
}

void expect_same(Reading const& reading, Reading const& expected) {
  EXPECT_EQ(reading.complaint, expected.complaint);
  EXPECT_TRUE(reading.tree == expected.tree);
}

TEST_F(Sample, IsReadOrRefusedAsWithoutLimitsWithinLimitsThatItKeeps) {
  int accepted = 0, refused = 0;
  for (fs::path const& path : documents()) {
    SCOPED_TRACE(path.string());
    fs::current_path(path.parent_path());
    std::string const xml = bytes_of(path);
    Reading const held = read_by_dom_parser(xml), streamed = read_by_sax_parser(xml);
    for (ReadLimits const& limits : {ReadLimits(), high_limits()}) {
      expect_same(read_by_dom_parser(xml, limits), held);
      expect_same(read_by_sax_parser(xml, limits), streamed);
    }
    ++(held.accepted() ? accepted : refused);
  }
  EXPECT_GT(accepted, 200);
  EXPECT_GT(refused, 200);
}

}  // namespace
}  // namespace tests

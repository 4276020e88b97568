#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/threads/Work.h"

// In this program nothing uses the library before its threads do, all at once.

namespace tests {
namespace {

constexpr int THREADS = 8;

TEST(TheFirstUse, MayBeThatOfManyThreadsAtOnce) {
  std::vector<std::string> seen(THREADS);
  in_threads(THREADS, [&seen](int thread) { seen[static_cast<std::size_t>(thread)] = work(1); });
  EXPECT_EQ(seen, std::vector<std::string>(THREADS, work(1)));
}

}  // namespace
}  // namespace tests

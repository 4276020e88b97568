#include <gtest/gtest.h>

#include "tests/sax/Soak.h"

namespace tests {
namespace {

TEST(Streaming, NeedsNoMoreMemoryForSixtyFourMebibytesThanForOne) {
  if (TQXML_SANITIZED) {
    GTEST_SKIP() << "skipped: the sanitizer keeps what was freed, so that memory tells nothing";
  }
  Needs const one = needs_of(MIB), many = needs_of(64 * MIB);
  EXPECT_TRUE(one.succeeded);
  EXPECT_TRUE(many.succeeded);
  // What the measurement itself rests on: the process was there, and held the library.
  EXPECT_GT(one.peak_mib, 1);
  EXPECT_LE(many.peak_mib, one.peak_mib + ALLOWED_DIFFERENCE_MIB);
}

TEST(Streaming, ReadsAllOfADocumentThatIsMadeWhileItIsRead) { EXPECT_TRUE(reads_all_of(MIB)); }

}  // namespace
}  // namespace tests

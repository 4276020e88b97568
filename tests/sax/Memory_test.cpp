#include <gtest/gtest.h>
#include <malloc.h>

#include <cstddef>
#include <sstream>
#include <string>

#include "tests/sax/Soak.h"
#include "tests/support/TestTags.h"
#include "tqxml/sax/SaxParser.h"

#ifdef __SANITIZE_ADDRESS__
// Its header does not come with every compiler.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

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

// The sanitizer has memory of its own, which the C library does not count.
std::size_t bytes_in_use() {
#ifdef __SANITIZE_ADDRESS__
  return __sanitizer_get_current_allocated_bytes();
#else
  struct mallinfo2 const info = mallinfo2();
  return info.uordblks + info.hblkhd;
#endif
}

TEST(Streaming, DoesNotKeepTheMemoryOfLargeTextsForElementsToCome) {
  constexpr std::size_t TEXTS = 64, LENGTH = 65536;
  std::string const large(LENGTH, 'x');
  std::string item = "<b>";
  for (std::size_t i = 0; i < TEXTS; ++i) item += "<c d='" + large + "'>" + large + "</c>";
  item += "</b>";
  std::istringstream in("<r><a/>" + item + "<e/></r>");
  Orn::SaxParser const parser(in);
  Orn::SaxParser::Elem root = parser.root();
  root.next_child();
  std::size_t const before = bytes_in_use();
  {
    Orn::SaxParser::Elem b = root.next_child();
    EXPECT_EQ(b.data(), u"");
    // All of the texts are there at the same time.
    EXPECT_GT(bytes_in_use(), before + 2 * TEXTS * LENGTH * sizeof(char16_t));
  }
  EXPECT_EQ(root.next_child().tag(), testtags::e);
  // The parser itself has grown by what it needed for one of them.
  EXPECT_LT(bytes_in_use(), before + 8 * LENGTH * sizeof(char16_t));
}

}  // namespace
}  // namespace tests

#include <gtest/gtest.h>

#include <atomic>

#include "tests/threads/Work.h"
#include "tqutil/UtilExceptions.h"
#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"

// In this program there is no vocabulary: the registry is made when it is first asked.

namespace tests {
namespace {

using Orn::TagException;
using Orn::Vocabulary;
using Orn::VocabularyEntry;
using Orn::XmlTag;

constexpr int THREADS = 8;

bool is_unknown(XmlTag::Id id) {
  try {
    XmlTag::lookup(id);
    return false;
  } catch (TagException const&) {
    return true;
  }
}

TEST(ARegistryThatIsNotThere, IsMadeOnceByManyThreadsThatAsk) {
  std::atomic<int> not_found = 0;
  in_threads(THREADS, [&not_found](int i) {
    if (is_unknown(XmlTag::Id(1 + i))) ++not_found;
  });
  EXPECT_EQ(not_found, THREADS);
  // One that was made a second time would have lost this, or not have it.
  static VocabularyEntry const ENTRIES[] = {{VocabularyEntry::TAG, 1, "late", 0, u"late"}};
  Vocabulary("late", ENTRIES);
  std::atomic<int> found = 0;
  in_threads(THREADS, [&found](int /*i*/) {
    if (XmlTag::lookup(u"", u"late").id() == XmlTag::Id(1)) ++found;
  });
  EXPECT_EQ(found, THREADS);
}

}  // namespace
}  // namespace tests

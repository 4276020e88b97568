#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TestTags.h"
#include "tests/threads/Work.h"
#include "tests/tqutil/shared_library/Pallets.h"
#include "tqutil/UtilExceptions.h"
#include "tqutil/XmlTag.h"

// Writers, readers and trees of many threads have nothing in common but the registry.

namespace tests {
namespace {

using Orn::TagException;
using Orn::XmlTag;

constexpr int THREADS = 8;
constexpr int ROUNDS = 5;

TEST(Threads, SeeTheSameAsOneThatIsAlone) {
  std::vector<std::vector<std::string>> seen(THREADS, std::vector<std::string>(ROUNDS));
  in_threads(THREADS, [&seen](int thread) {
    for (int round = 0; round < ROUNDS; ++round) {
      seen[static_cast<std::size_t>(thread)][static_cast<std::size_t>(round)] =
          work(static_cast<unsigned int>(thread + round));
    }
  });
  for (unsigned int thread = 0; thread < THREADS; ++thread) {
    for (unsigned int round = 0; round < ROUNDS; ++round) {
      EXPECT_EQ(seen[thread][round], work(thread + round));
    }
  }
}

TEST(Threads, SeeDifferentThingsWithDifferentSeeds) { EXPECT_NE(work(1), work(2)); }

// No thread may look names up while this happens.
TEST(Threads, SeeAVocabularyThatWasLoadedBeforeTheyBegan) {
  in_threads(THREADS, [](int seed) {
    work(static_cast<unsigned int>(seed));
    EXPECT_THROW(XmlTag::lookup(pallets::pallet), TagException);
    EXPECT_THROW(XmlTag::lookup(u"urn:pallets", u"pallet"), TagException);
  });
  ASSERT_NE(dlopen(TQ_PALLETS, RTLD_NOW | RTLD_LOCAL), nullptr) << dlerror();
  in_threads(THREADS, [](int seed) {
    EXPECT_EQ(XmlTag::lookup(u"urn:pallets", u"pallet").id(), pallets::pallet);
    EXPECT_EQ(XmlTag::lookup(pallets::pallet).to_string(), u"{urn:pallets}pallet");
    work(static_cast<unsigned int>(seed));
  });
}

}  // namespace
}  // namespace tests

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "tests/support/TestTags.h"
#include "tests/tqutil/shared_library/Pallets.h"
#include "tqutil/UtilExceptions.h"
#include "tqutil/XmlTag.h"

namespace {

using Orn::TagException;
using Orn::XmlTag;

TEST(VocabularyInLibrary, IsThereOnceTheLibraryHasBeenLoaded) {
  XmlTag const& early = XmlTag::lookup(testtags::u_a);
  EXPECT_THROW(XmlTag::lookup(pallets::pallet), TagException);
  EXPECT_THROW(XmlTag::ns_URI(pallets::ns_pallets), TagException);
  // It stays: what it has entered points into it.
  ASSERT_NE(dlopen(TQ_PALLETS, RTLD_NOW | RTLD_LOCAL), nullptr) << dlerror();
  EXPECT_EQ(XmlTag::lookup(pallets::pallet).to_string(), u"{urn:pallets}pallet");
  EXPECT_EQ(&XmlTag::lookup(u"urn:pallets", u"pallet"), &XmlTag::lookup(pallets::pallet));
  EXPECT_EQ(&XmlTag::lookup(testtags::u_a), &early);
}

}  // namespace

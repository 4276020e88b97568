#include <gtest/gtest.h>

#include <memory>
#include <string_view>

#include "tests/support/TestTags.h"
#include "tests/tqutil/memory/Heap.h"
#include "tqutil/STPException.h"
#include "tqutil/XmlTag.h"

namespace {

using Orn::STPException;
using Orn::UMessage;
using Orn::UString;
using Orn::XmlTag;
using tests::Heap;

/// What has been taken from both allocators.
long taken() { return Heap::cpp.taken() + Heap::icu.taken(); }

TEST(LookUpMemory, IsNotTakenByAnyLookUp) {
  XmlTag wanted(u"urn:test:u", u"a");
  std::u16string_view const uri = u"urn:test:u";
  std::u16string_view const name = u"a";
  long const before = taken();
  for (int i = 0; i < 100; ++i) {
    ASSERT_EQ(XmlTag::lookup(testtags::u_a).id(), testtags::u_a);
    ASSERT_EQ(XmlTag::lookup(testtags::first_hidden).id(), testtags::first_hidden);
    ASSERT_EQ(XmlTag::lookup(wanted).id(), testtags::u_a);
    ASSERT_EQ(XmlTag::lookup(uri, name).id(), testtags::u_a);
    ASSERT_EQ(XmlTag::ns_URI(testtags::ns_u).length(), 10U);
    ASSERT_EQ(XmlTag::ns_URI(XmlTag::NO_NS).length(), 0U);
  }
  EXPECT_EQ(taken(), before);
}

TEST(LookUpMemory, IsTakenByATemporaryTag) {
  long const before = taken();
  XmlTag const wanted(u"urn:test:a:namespace", u"a_name_of_some_length");
  EXPECT_GT(taken(), before);
}

TEST(ExceptionMemory, IsNotTakenByCopies) {
  char const* catalogue[] = {"demo 1",
                             "DEMO0001E %s went wrong, and it takes a long text to say so."};
  STPException const original(39, UMessage(catalogue, 1, UString(u"Something")), nullptr, nullptr,
                              2);
  long const before = taken();
  STPException copy(original);
  copy = original;
  EXPECT_EQ(copy.what(), original.what());
  EXPECT_EQ(taken(), before);
}

}  // namespace

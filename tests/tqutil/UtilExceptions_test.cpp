#include "tqutil/UtilExceptions.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <type_traits>
#include <typeinfo>

#include "tests/support/Raises.h"
#include "tests/support/TestTags.h"

namespace {

using Orn::EncodingException;
using Orn::STPException;
using Orn::TagException;
using Orn::UString;
using Orn::XmlTag;
using tests::caught;

TEST(TagException, NamesANumberThatNoTagHas) {
  TagException const e = caught<TagException>([] { XmlTag::lookup(testtags::unregistered); });
  EXPECT_STREQ(e.what(),
               "TQUTL0001E Tag id 9999 is not registered; is its vocabulary linked into the "
               "program?");
  EXPECT_EQ(e.message().arg(1).text(), u"9999");
}

TEST(TagException, NamesANameThatNoTagHas) {
  XmlTag wanted(u"urn:test:u", u"caf\u00e9");
  TagException const e = caught<TagException>([&] { XmlTag::lookup(wanted); });
  EXPECT_STREQ(e.what(),
               "TQUTL0002E Name 'caf\xC3\xA9' in namespace 'urn:test:u' is not registered.");
  EXPECT_EQ(e.message().arg(1).text(), u"caf\u00e9");
  EXPECT_EQ(e.message().arg(2).text(), u"urn:test:u");
}

TEST(TagException, NamesANumberThatNoNamespaceHas) {
  TagException const e = caught<TagException>([] { XmlTag::ns_URI(XmlTag::NsId{-8}); });
  EXPECT_STREQ(e.what(),
               "TQUTL0003E Namespace id -8 is not registered; is its vocabulary linked into the "
               "program?");
  EXPECT_EQ(e.message().arg(1).text(), u"-8");
}

TEST(EncodingException, NamesTheByteThatIsAtFault) {
  EncodingException const e = caught<EncodingException>([] { UString::from_utf8("ab\xFF"); });
  EXPECT_STREQ(e.what(), "TQUTL0004E Ill-formed UTF-8 at byte 2.");
  EXPECT_EQ(e.message().arg(1).text(), u"2");
}

template <class E>
std::function<void()> failing_call();

template <>
std::function<void()> failing_call<TagException>() {
  return [] { XmlTag::lookup(testtags::unregistered); };
}

template <>
std::function<void()> failing_call<EncodingException>() {
  return [] { UString::from_utf8("\xFF"); };
}

template <class E>
class UtilException : public testing::Test {};
using UtilExceptionClasses = testing::Types<TagException, EncodingException>;
TYPED_TEST_SUITE(UtilException, UtilExceptionClasses, );

TYPED_TEST(UtilException, IsCaughtAsItselfAndAsItsBase) {
  static_assert(std::is_base_of_v<STPException, TypeParam>);
  EXPECT_THROW(failing_call<TypeParam>()(), TypeParam);
  EXPECT_THROW(failing_call<TypeParam>()(), STPException);
  EXPECT_THROW(failing_call<TypeParam>()(), std::exception);
}

TYPED_TEST(UtilException, HasNoResourceAndNoCause) {
  TypeParam const e = caught<TypeParam>(failing_call<TypeParam>());
  EXPECT_EQ(e.resource(), nullptr);
  EXPECT_EQ(e.cause(), nullptr);
}

TYPED_TEST(UtilException, ClonesToItsOwnClassWithTheSameContents) {
  std::unique_ptr<STPException> clone;
  UString text;
  try {
    failing_call<TypeParam>()();
  } catch (STPException const& e) {
    clone.reset(e.clone());
    text = e.message().text();
    EXPECT_EQ(clone->reason_code(), e.reason_code());
    EXPECT_EQ(clone->log_level(), e.log_level());
  }
  ASSERT_NE(clone, nullptr);
  STPException const& cloned = *clone;
  EXPECT_EQ(typeid(cloned), typeid(TypeParam));
  EXPECT_EQ(cloned.message().text(), text);
  EXPECT_EQ(cloned.what(), text.to_utf8());
}

TYPED_TEST(UtilException, CopiesCannotFail) {
  static_assert(std::is_nothrow_copy_constructible_v<TypeParam>);
  static_assert(std::is_nothrow_copy_assignable_v<TypeParam>);
}

}  // namespace

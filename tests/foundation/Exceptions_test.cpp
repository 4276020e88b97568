#include "tqxml/foundation/Exceptions.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <type_traits>
#include <typeinfo>

#include "tests/support/Raises.h"
#include "tests/support/TestTags.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/writer/XmlDoc.h"

namespace {

using Orn::Catalogue;
using Orn::DomParser;
using Orn::IllegalArgException;
using Orn::RuntimeException;
using Orn::StateException;
using Orn::STPException;
using Orn::UMessage;
using Orn::UString;
using Orn::XmlDoc;
using tests::carries;
using tests::caught;
using tests::raises;

template <class E>
E exception() {
  return E(39, UMessage(Catalogue::table(), Catalogue::PARSER_ERROR, UString(u"That's wrong.")),
           nullptr, nullptr, 2);
}

testing::AssertionResult is_that_exception(STPException const& e) {
  return carries(e, {Catalogue::table(), Catalogue::PARSER_ERROR, {u"That's wrong."}, 39, 2});
}

std::type_info const& class_of(STPException const& e) { return typeid(e); }

template <class E>
class Exception : public testing::Test {};
using Classes = testing::Types<StateException, IllegalArgException, RuntimeException>;
TYPED_TEST_SUITE(Exception, Classes, );

TYPED_TEST(Exception, IsAnStpExceptionAndNothingMore) {
  static_assert(std::is_convertible_v<TypeParam*, STPException*>);
  static_assert(std::has_virtual_destructor_v<TypeParam>);
  static_assert(std::is_nothrow_copy_constructible_v<TypeParam>);
  static_assert(std::is_nothrow_copy_assignable_v<TypeParam>);
  EXPECT_EQ(sizeof(TypeParam), sizeof(STPException));
}

TYPED_TEST(Exception, CarriesWhatItIsMadeOf) {
  TypeParam const e = exception<TypeParam>();
  EXPECT_TRUE(is_that_exception(e));
  EXPECT_STREQ(e.what(), "ZEMKA0704E That's wrong.");
}

TYPED_TEST(Exception, IsCaughtByReferenceAsItselfAndAsItsBases) {
  EXPECT_THROW(throw exception<TypeParam>(), TypeParam);
  EXPECT_THROW(throw exception<TypeParam>(), STPException);
  EXPECT_THROW(throw exception<TypeParam>(), std::exception);
}

template <class Other>
bool is_caught_as(STPException const& e) {
  return dynamic_cast<Other const*>(&e) != nullptr;
}

TYPED_TEST(Exception, IsNoneOfTheOtherClasses) {
  TypeParam const e = exception<TypeParam>();
  int const classes = is_caught_as<StateException>(e) + is_caught_as<IllegalArgException>(e) +
                      is_caught_as<RuntimeException>(e);
  EXPECT_EQ(classes, 1);
}

TYPED_TEST(Exception, ClonesToItsOwnClassWithTheSameContents) {
  std::unique_ptr<STPException> clone;
  try {
    throw exception<TypeParam>();
  } catch (STPException const& e) {
    clone.reset(e.clone());
  }
  EXPECT_EQ(class_of(*clone), typeid(TypeParam));
  EXPECT_TRUE(is_that_exception(*clone));
}

TYPED_TEST(Exception, ClonesItsCauseAlong) {
  TypeParam const cause = exception<TypeParam>();
  UMessage const message(Catalogue::table(), Catalogue::BAD_READ);
  std::unique_ptr<STPException> const clone(TypeParam(1, message, nullptr, &cause, 3).clone());
  EXPECT_EQ(clone->reason_code(), 1);
  EXPECT_EQ(clone->log_level(), 3);
  ASSERT_NE(clone->cause(), nullptr);
  EXPECT_EQ(class_of(*clone->cause()), typeid(TypeParam));
  EXPECT_TRUE(is_that_exception(*clone->cause()));
}

TYPED_TEST(Exception, CaughtIsCopiedAndTheCopyOutlivesIt) {
  std::optional<TypeParam> copy;
  try {
    throw exception<TypeParam>();
  } catch (TypeParam const& e) {
    copy = e;
  }
  EXPECT_TRUE(is_that_exception(*copy));
  EXPECT_STREQ(copy->what(), "ZEMKA0704E That's wrong.");
}

TYPED_TEST(Exception, MayBeAssigned) {
  TypeParam e(1, UMessage(Catalogue::table(), Catalogue::BAD_READ), nullptr, nullptr, 3);
  e = exception<TypeParam>();
  EXPECT_TRUE(is_that_exception(e));
}

// The following are thrown inside the library and caught here.

TEST(RaisedStateException, IsCaughtOutsideTheLibrary) {
  XmlDoc const doc;
  EXPECT_THROW(doc.str(), StateException);
  EXPECT_THROW(doc.str(), STPException);
  EXPECT_TRUE(raises([&] { doc.str(); }, typeid(StateException), Catalogue::CLOSE_NOT_CALLED));
  EXPECT_STREQ(caught<StateException>([&] { doc.str(); }).what(),
               "ZEMKA0697E XmlDoc::close() hasn't been called.");
}

TEST(RaisedIllegalArgException, IsCaughtOutsideTheLibrary) {
  XmlDoc doc;
  UString const text(u"a]]>b");
  EXPECT_THROW(doc.add_elem_CDATA(testtags::a, text), IllegalArgException);
  EXPECT_THROW(doc.add_elem_CDATA(testtags::a, text), STPException);
  EXPECT_RAISES(doc.add_elem_CDATA(testtags::a, text), IllegalArgException,
                Catalogue::CDATA_TERMINATOR_IN_TEXT, u"]]>", text, text);
}

TEST(RaisedRuntimeException, IsCaughtOutsideTheLibrary) {
  std::optional<RuntimeException> copy;
  {
    DomParser parser("<r>");
    EXPECT_THROW(parser.root(), STPException);
    DomParser other("<r></s>");
    copy = caught<RuntimeException>([&] { other.root(); });
  }
  EXPECT_EQ(class_of(*copy), typeid(RuntimeException));
  EXPECT_EQ(copy->message().index(), Catalogue::XERCES_SAX_PARSE_EXCEPTION);
  EXPECT_EQ(copy->reason_code(), 39);
  EXPECT_EQ(copy->log_level(), 2);
  EXPECT_EQ(copy->resource(), nullptr);
  EXPECT_EQ(copy->cause(), nullptr);
}

}  // namespace

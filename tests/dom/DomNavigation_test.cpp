#include <gtest/gtest.h>

#include <type_traits>

#include "tests/dom/DomReader.h"
#include "tests/support/Raises.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::DomParser;
using Orn::StateException;
using Orn::TagException;
using Elem = DomParser::Elem;

static_assert(std::has_virtual_destructor_v<Elem>);
static_assert(std::has_virtual_destructor_v<DomParser::Attribute>);

using NextChild = DomTest;

TEST_F(NextChild, StartsOverAfterTheEnd) {
  Elem root = root_of("<r><a/>text<b/></r>");
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(root.next_child().tag(), tag::a);
    EXPECT_EQ(root.next_child().tag(), tag::b);
    EXPECT_TRUE(root.next_child().is_nil());
  }
}

TEST_F(NextChild, OfACopyGoesOnFromWhereTheOriginalStood) {
  Elem root = root_of("<r><a/><b/><c/></r>");
  root.next_child();
  Elem copy(root);
  EXPECT_EQ(remaining_children(root), (Tags{tag::b, tag::c}));
  EXPECT_EQ(copy.next_child().tag(), tag::b);
  EXPECT_EQ(root.next_child().tag(), tag::a);
  EXPECT_EQ(copy.next_child().tag(), tag::c);
}

TEST_F(NextChild, GoesOnWithTheStateThatWasAssigned) {
  Elem root = root_of("<r><a/><b/></r>");
  Elem other = root;
  other.next_child();
  root = other;
  EXPECT_EQ(root.next_child().tag(), tag::b);
  EXPECT_EQ(other.next_child().tag(), tag::b);
}

TEST_F(NextChild, OfANewHandleOnTheSameElementBeginsWithTheFirst) {
  Elem root = root_of("<r><a><c/><d/></a></r>");
  EXPECT_EQ(root.child().next_child().tag(), tag::c);
  EXPECT_EQ(root.child(tag::a).next_child().tag(), tag::c);
  EXPECT_EQ(root.opt_child(tag::a).next_child().tag(), tag::c);
  EXPECT_EQ(root.next_child().next_child().tag(), tag::c);
}

using Child = DomTest;

TEST_F(Child, OfAnElementWithoutChildElementsIsRefused) {
  for (char const* xml : {"<r>text</r>", "<r/>", "<r><!--<x/>--><?x?><![CDATA[<x/>]]></r>"}) {
    Elem root = root_of(xml);
    EXPECT_RAISES(root.child(), StateException, Catalogue::NO_CHILDREN, u"ZEMKA0684E Elem::child()",
                  u"r");
  }
  EXPECT_RAISES(root_of("<p:r xmlns:p='urn:test:v'/>").child(), StateException,
                Catalogue::NO_CHILDREN, u"ZEMKA0684E Elem::child()", u"{urn:test:v}r");
}

TEST_F(Child, IsTheSameWhateverNextChildHasDone) {
  Elem root = root_of("<r><a/><b/></r>");
  for (int step = 0; step < 4; ++step) {
    EXPECT_EQ(root.child().tag(), tag::a) << step;
    EXPECT_EQ(root.child(tag::b).tag(), tag::b) << step;
    EXPECT_EQ(root.opt_child(tag::a).tag(), tag::a) << step;
    EXPECT_TRUE(root.opt_child(tag::c).is_nil()) << step;
    root.next_child();
  }
}

TEST_F(Child, IsLookedForWithoutMovingNextChild) {
  Elem root = root_of("<r><a/><b/><c/></r>");
  root.next_child();
  root.child();
  root.child(tag::c);
  root.opt_child(tag::a);
  EXPECT_TRUE(root.opt_child(tag::d).is_nil());
  EXPECT_THROW(root.child(tag::d), StateException);
  EXPECT_EQ(root.next_child().tag(), tag::b);
}

using Data = DomTest;

TEST_F(Data, ShowsAChildElementAsItsBareStartTag) {
  struct {
    char const* xml;
    char16_t const* data;
  } const cases[] = {
      {"<a>x<p:b xmlns:p='urn:test:u'>y</p:b>z</a>", u"x<p:b>z"},
      {"<a>x<![CDATA[<&>]]><!--c--><b>y</b>z</a>", u"x<&><b>z"},
      {"<a><b c='1'><c>deep</c></b></a>", u"<b>"},
      {"<a><b/><c></c></a>", u"<b><c>"},
      {"<a xmlns='urn:test:u'> <b/> </a>", u" <b> "},
      {"<a><nobody:knows xmlns:nobody='urn:nobody'/></a>", u"<nobody:knows>"},
  };
  for (auto const& [xml, data] : cases) EXPECT_EQ(root_of(xml).data(), data) << xml;
}

TEST_F(Data, IsTheSameWhateverTheIterationHasDone) {
  Elem root = root_of("<r>x<a/>y</r>");
  root.next_child();
  EXPECT_EQ(root.data(), u"x<a>y");
  EXPECT_TRUE(root.next_child().is_nil());
}

// The parser keeps a reference to a general entity as a node of its own, below which the
// replacement text stands.
using EntityReference = DomTest;

constexpr char REFERENCE_TO_TEXT[] = "<!DOCTYPE r [<!ENTITY e 'v'>]><r>&e;</r>";
constexpr char REFERENCE_TO_MARKUP[] = "<!DOCTYPE r [<!ENTITY e 't<b/>'>]><r>x&e;<c/>y</r>";

TEST_F(EntityReference, IsNotPartOfTheData) {
  EXPECT_EQ(root_of(REFERENCE_TO_TEXT).data(), u"");
  EXPECT_EQ(root_of(REFERENCE_TO_MARKUP).data(), u"x<c>y");
}

TEST_F(EntityReference, DoesNotMakeAnElementFull) {
  EXPECT_TRUE(root_of(REFERENCE_TO_TEXT).is_empty());
  EXPECT_RAISES(root_of(REFERENCE_TO_TEXT).check_is_empty(false), StateException,
                Catalogue::IS_EMPTY_MISMATCH, u"ZEMKA0682E Elem::check_is_empty()", u"r", u"0",
                u"1");
}

TEST_F(EntityReference, HidesTheElementsOfItsReplacementText) {
  Elem root = root_of(REFERENCE_TO_MARKUP);
  EXPECT_EQ(root.child().tag(), tag::c);
  EXPECT_TRUE(root.opt_child(tag::b).is_nil());
  EXPECT_EQ(remaining_children(root), Tags{tag::c});
}

using IsEmpty = DomTest;

TEST_F(IsEmpty, IsFalseForACdataSectionWithoutText) {
  Elem root = root_of("<r><![CDATA[]]></r>");
  EXPECT_FALSE(root.is_empty());
  EXPECT_EQ(root.data(), u"");
}

using UnregisteredName = DomTest;

TEST_F(UnregisteredName, IsRefusedWhenTheTagIsAskedForAndNotBefore) {
  Elem root = root_of("<r><unknown>x</unknown><b/></r>");
  Elem unknown = root.next_child();
  EXPECT_EQ(unknown.data(), u"x");
  EXPECT_FALSE(unknown.is_empty());
  EXPECT_THROW(unknown.tag(), TagException);
  EXPECT_THROW(unknown.match(tag::a), TagException);
  EXPECT_EQ(root.next_child().tag(), tag::b);
}

TEST_F(UnregisteredName, IsPassedOverInTheSearchForAChild) {
  Elem root = root_of("<r><unknown/><a xmlns='urn:unknown'/><a/></r>");
  EXPECT_EQ(root.child(tag::a).tag(), tag::a);
  EXPECT_THROW(root.child().tag(), TagException);
}

TEST_F(UnregisteredName, IsTheRegistrysExceptionWhereAMessageWouldHaveToShowIt) {
  Elem unknown = root_of("<unknown/>");
  EXPECT_THROW(unknown.child(), TagException);
  EXPECT_THROW(unknown.child(tag::a), TagException);
  EXPECT_THROW(unknown.check_is_empty(false), TagException);
  EXPECT_NO_THROW(unknown.check_is_empty(true));
}

TEST_F(UnregisteredName, IsToldByNamespaceAndLocalName) {
  Elem unknown = root_of("<p:unknown xmlns:p='urn:unknown'/>");
  std::string const told = caught<TagException>([&] { unknown.tag(); }).what();
  EXPECT_NE(told.find("unknown"), std::string::npos);
  EXPECT_NE(told.find("urn:unknown"), std::string::npos);
  EXPECT_EQ(told.find("p:unknown"), std::string::npos);
}

TEST_F(UnregisteredName, CannotBeSearchedFor) {
  Elem root = root_of("<r/>");
  EXPECT_THROW(root.opt_child(tag::unregistered), TagException);
  EXPECT_THROW(root.child(tag::unregistered), TagException);
}

}  // namespace
}  // namespace tests

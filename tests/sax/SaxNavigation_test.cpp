#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>

#include "tests/sax/SaxReader.h"
#include "tests/support/Raises.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::SaxParser;
using Orn::StateException;
using Orn::TagException;
using Orn::UString;
using Elem = SaxParser::Elem;

static_assert(std::has_virtual_destructor_v<Elem>);
static_assert(std::has_virtual_destructor_v<SaxParser::Attribute>);
static_assert(std::is_nothrow_move_constructible_v<Elem>);
static_assert(std::is_nothrow_move_assignable_v<SaxParser::Attribute>);

using Child = SaxTest;
using OptChild = SaxTest;
using NextChild = SaxTest;
using NextAttr = SaxTest;
using Data = SaxTest;
using IsEmpty = SaxTest;

TEST_F(Child, OfAnElementWithoutChildrenIsNil) {
  EXPECT_TRUE(root_of("<r/>").child().is_nil());
  EXPECT_TRUE(root_of("<r></r>").child().is_nil());
  EXPECT_TRUE(root_of("<r>text<!--<a/>--></r>").child().is_nil());
}

TEST_F(Child, IsTheSameElementEachTime) {
  Elem root = root_of("<r><b a='1' c='2'/><c/></r>");
  Elem first = root.child(), second = root.child();
  EXPECT_EQ(first.next_attr().data(), u"2");
  EXPECT_EQ(second.next_attr().data(), u"1");
  EXPECT_TRUE(root.child(tag::b).next_attr().is_nil());
}

TEST_F(Child, IsRefusedAfterNextChildForGood) {
  Elem a = root_of("<a><b/><c/></a>");
  EXPECT_EQ(a.child().tag(), tag::b);
  EXPECT_EQ(a.child().tag(), tag::b);
  EXPECT_EQ(a.next_child().tag(), tag::b);
  EXPECT_RAISES(a.child(), StateException, Catalogue::CHILD_AFTER_NEXT_CHILD);
  EXPECT_EQ(a.next_child().tag(), tag::c);
  EXPECT_TRUE(a.next_child().is_nil());
  EXPECT_RAISES(a.child(), StateException, Catalogue::CHILD_AFTER_NEXT_CHILD);
}

TEST_F(Child, WithATagIsRefusedInTheWordsOfOptChild) {
  Elem a = root_of("<a><b/><c/></a>");
  a.next_child();
  EXPECT_RAISES(a.child(tag::c), StateException, Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
  EXPECT_RAISES(a.child(tag::x), StateException, Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
  EXPECT_EQ(a.next_child().tag(), tag::c);
}

TEST_F(Child, ThatIsMissingLeavesTheOthersThere) {
  Elem root = root_of("<r><a>1</a><b>2</b></r>");
  EXPECT_RAISES(root.child(tag::c), StateException, Catalogue::MISSING_REQUIRED_CHILD,
                u"ZEMKA0684E Elem::child()", u"c", u"r");
  EXPECT_EQ(root.child().data(), u"1");
  EXPECT_EQ(remaining_children(root), (Tags{tag::a, tag::b}));
}

TEST_F(Child, WithANumberThatIsNotRegisteredIsTheRegistrysExceptionOnceItIsMissing) {
  Elem root = root_of("<r><a/></r>");
  EXPECT_TRUE(root.opt_child(tag::unregistered).is_nil());
  EXPECT_THROW(root.child(tag::unregistered), TagException);
}

TEST_F(OptChild, IsRefusedAfterNextChildForGood) {
  Elem a = root_of("<a><b/></a>");
  a.next_child();
  EXPECT_RAISES(a.opt_child(tag::b), StateException, Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
  EXPECT_TRUE(a.next_child().is_nil());
  EXPECT_RAISES(a.opt_child(tag::b), StateException, Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
  EXPECT_RAISES(a.opt_child(tag::x), StateException, Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
}

TEST_F(OptChild, KeepsTheChildrenThatItReadsPast) {
  Elem root = root_of("<r><a>1</a><b><c>2</c></b><d>3</d></r>");
  EXPECT_EQ(root.opt_child(tag::d).data(), u"3");
  EXPECT_EQ(root.opt_child(tag::b).child().data(), u"2");
  EXPECT_EQ(root.child().data(), u"1");
  EXPECT_EQ(root.next_child().data(), u"1");
  EXPECT_EQ(root.next_child().child(tag::c).data(), u"2");
  EXPECT_EQ(root.next_child().data(), u"3");
}

TEST_F(NextChild, ForbidsChildAndOptChildEvenWhenThereIsNone) {
  Elem root = root_of("<r>text</r>");
  EXPECT_TRUE(root.next_child().is_nil());
  EXPECT_RAISES(root.child(), StateException, Catalogue::CHILD_AFTER_NEXT_CHILD);
  EXPECT_RAISES(root.opt_child(tag::a), StateException, Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
  EXPECT_RAISES(root.child(tag::a), StateException, Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
}

TEST_F(NextChild, ForbidsNothingOnOtherElements) {
  Elem root = root_of("<r><a><b/></a><c><d/></c></r>");
  Elem a = root.next_child();
  EXPECT_EQ(a.child().tag(), tag::b);
  EXPECT_EQ(root.next_child().child(tag::d).tag(), tag::d);
}

TEST_F(NextChild, IsNilAfterTheLastForGood) {
  Elem root = root_of("<r><a/></r>");
  EXPECT_EQ(root.next_child().tag(), tag::a);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(root.next_child().is_nil());
}

TEST_F(NextChild, IsOneIterationForAllHandlesOnTheElement) {
  Elem root = root_of("<r><a/><b/><c/></r>");
  Elem copy = root;
  EXPECT_EQ(root.next_child().tag(), tag::a);
  EXPECT_EQ(copy.next_child().tag(), tag::b);
  EXPECT_EQ(root.next_child().tag(), tag::c);
  EXPECT_TRUE(copy.next_child().is_nil());
  EXPECT_RAISES(copy.child(), StateException, Catalogue::CHILD_AFTER_NEXT_CHILD);
}

TEST_F(NextChild, GivesChildrenThatHandlesAlreadyHold) {
  Elem root = root_of("<r><a x='1' y='2'/><b/></r>");
  Elem a = root.child(tag::a), b = root.child(tag::b);
  EXPECT_EQ(a.next_attr().data(), u"2");
  EXPECT_EQ(root.next_child().next_attr().data(), u"1");
  EXPECT_EQ(root.next_child().tag(), b.tag());
  EXPECT_TRUE(a.next_attr().is_nil());
}

TEST_F(NextAttr, GivesTheLastAttributeFirst) {
  Elem root = root_of("<r a='1' xmlns='urn:test:u' b='2' xmlns:p='urn:test:v' p:a='3'/>");
  EXPECT_EQ(remaining_attributes(root),
            (Attributes{{tag::v_a, u"3"}, {tag::b, u"2"}, {tag::a, u"1"}}));
}

TEST_F(NextAttr, IsOneIterationForAllHandlesOnTheElement) {
  Elem root = root_of("<r a='1' b='2'/>");
  Elem copy = root;
  EXPECT_EQ(root.next_attr().tag(), tag::b);
  EXPECT_EQ(copy.next_attr().tag(), tag::a);
  EXPECT_TRUE(root.next_attr().is_nil());
}

TEST_F(NextAttr, HidesAttributesWithANumberAbove1141) {
  static_assert(SaxParser::LAST_SHOWN_ATTRIBUTE == 1141);
  static_assert(tag::last_shown == 1141 && tag::first_hidden == 1142);
  Elem root =
      root_of("<r xmlns:p='urn:test:u' first_hidden='1' a='2' p:hidden='3' last_shown='4'/>");
  EXPECT_EQ(remaining_attributes(root), (Attributes{{tag::last_shown, u"4"}, {tag::a, u"2"}}));
}

TEST_F(NextAttr, IsNilForAnElementWithHiddenAttributesOnly) {
  Elem root = root_of("<r first_hidden='1' p:hidden='2' xmlns:p='urn:test:u'/>");
  EXPECT_TRUE(root.next_attr().is_nil());
}

TEST_F(NextAttr, HidesNoElements) {
  Elem root = root_of("<r><first_hidden>x</first_hidden></r>");
  EXPECT_EQ(root.child(tag::first_hidden).data(), u"x");
  EXPECT_EQ(root.next_child().tag(), tag::first_hidden);
}

TEST_F(NextAttr, SupportsEveryOperationOfAnAttribute) {
  Elem root = root_of("<r a='v'/>");
  SaxParser::Attribute a = root.next_attr();
  SaxParser::Attribute const copy = a;
  EXPECT_EQ(a.tag(), tag::a);
  EXPECT_EQ(a.data(), u"v");
  a = SaxParser::Attribute();
  EXPECT_TRUE(a.is_nil());
  EXPECT_EQ(copy.data(), u"v");
}

TEST_F(NextAttr, TakesNothingOfTheAttributesOfTheElementBefore) {
  Elem root = root_of("<r a='1' b='2' c='3'><a/><b x='4'/></r>");
  EXPECT_TRUE(root.child(tag::a).next_attr().is_nil());
  Elem b = root.child(tag::b);
  EXPECT_EQ(remaining_attributes(b), (Attributes{{tag::x, u"4"}}));
}

TEST_F(NextAttr, GivesTheDefaultsOfTheInternalSubset) {
  Elem root = root_of("<!DOCTYPE r [<!ATTLIST r a CDATA 'default' b CDATA 'other'>]><r b='own'/>");
  Attributes attributes = remaining_attributes(root);
  std::sort(attributes.begin(), attributes.end());
  EXPECT_EQ(attributes, (Attributes{{tag::a, u"default"}, {tag::b, u"own"}}));
}

TEST_F(Data, LeavesOutTheTextOfChildren) {
  EXPECT_EQ(root_of("<r>x<a>y</a>z</r>").data(), u"xz");
  EXPECT_EQ(root_of("<r><a>y</a><b>z</b></r>").data(), u"");
}

TEST_F(Data, KeepsTheChildrenAndTheirTexts) {
  Elem root = root_of("<r>u<a>v<b>w</b>x</a>y</r>");
  EXPECT_EQ(root.data(), u"uy");
  Elem a = root.child();
  EXPECT_EQ(a.data(), u"vx");
  EXPECT_EQ(a.child().data(), u"w");
  EXPECT_EQ(root.next_child().next_child().data(), u"w");
}

TEST_F(Data, IsWholeAlsoAfterSomeChildrenWereTaken) {
  Elem root = root_of("<r>1<a/>2<b/>3<c/>4</r>");
  EXPECT_EQ(root.next_child().tag(), tag::a);
  EXPECT_EQ(root.data(), u"1234");
  EXPECT_EQ(remaining_children(root), (Tags{tag::b, tag::c}));
  EXPECT_EQ(root.data(), u"1234");
}

TEST_F(Data, HasTheTextOfEntities) {
  std::string const entities =
      "<!DOCTYPE r [<!ENTITY e 'v&#x26;lt;w'><!ENTITY f '&e;<a>in</a>&e;'>]>";
  EXPECT_EQ(root_of(entities + "<r>u&e;x</r>").data(), u"uv<wx");
  Elem root = root_of(entities + "<r>&f;</r>");
  EXPECT_EQ(root.data(), u"v<wv<w");
  EXPECT_EQ(root.child(tag::a).data(), u"in");
}

TEST_F(Data, HasWhiteSpaceInElementContentToo) {
  Elem root = root_of("<!DOCTYPE r [<!ELEMENT r (a)*><!ELEMENT a EMPTY>]><r> <a/>\n</r>");
  EXPECT_EQ(root.data(), u" \n");
}

TEST_F(Data, OfAChildIsCompleteWhenTheChildHasEnded) {
  Elem root = root_of("<r><a>1<![CDATA[2]]>3</a>4</r>");
  EXPECT_EQ(root.child().data(), u"123");
  EXPECT_EQ(root.data(), u"4");
}

TEST_F(Data, KeepsSurrogatePairsTogetherWhereverTheTextIsCut) {
  // The parser decodes and delivers a text in runs; an odd unit in front moves every pair across
  // the other kind of border.
  for (std::string const front : {"", "x"}) {
    std::string text = front;
    while (text.size() < 5000000) text += "\xf0\x9f\x98\x80";
    EXPECT_TRUE(root_of("<r>" + text + "</r>").data().to_utf8() == text);
    EXPECT_TRUE(root_of("<r><![CDATA[" + text + "]]></r>").data().to_utf8() == text);
  }
}

TEST_F(Data, OfManyReferencesIsTheirConcatenation) {
  std::string xml = "<r>";
  UString data;
  for (int i = 0; i < 50000; ++i) {
    xml += "a&amp;&#x1F600;";
    data.append(u"a&\U0001F600");
  }
  EXPECT_TRUE(root_of(xml + "</r>").data() == data);
}

TEST_F(IsEmpty, IsFalseForAnElementWhoseChildrenWereTaken) {
  Elem root = root_of("<r><a/></r>");
  root.next_child();
  EXPECT_FALSE(root.is_empty());
  EXPECT_TRUE(root.next_child().is_nil());
  EXPECT_FALSE(root.is_empty());
}

TEST_F(IsEmpty, ForbidsNothing) {
  Elem root = root_of("<r><a/>x</r>");
  EXPECT_FALSE(root.is_empty());
  EXPECT_EQ(root.child().tag(), tag::a);
  EXPECT_EQ(root.next_child().tag(), tag::a);
  EXPECT_EQ(root.data(), u"x");
}

TEST_F(IsEmpty, IsFalseForAnEmptyChildElement) {
  EXPECT_FALSE(root_of("<r><a></a></r>").is_empty());
  EXPECT_FALSE(root_of("<r><a/></r>").is_empty());
}

TEST_F(IsEmpty, IsTrueForAnEntityWithoutText) {
  std::string const entity = "<!DOCTYPE r [<!ENTITY e ''>]>";
  EXPECT_TRUE(root_of(entity + "<r>&e;</r>").is_empty());
  EXPECT_TRUE(root_of(entity + "<r><![CDATA[]]>&e;</r>").is_empty());
}

TEST_F(Child, OfAnElementThatHasEndedIsAnsweredFromWhatWasKept) {
  Elem root = root_of("<r><a b='1'><c>x</c><d/></a><b/></r>");
  Elem a = root.child(tag::a);
  root.data();
  EXPECT_EQ(a.child().tag(), tag::c);
  EXPECT_EQ(a.opt_child(tag::d).tag(), tag::d);
  EXPECT_TRUE(a.opt_child(tag::x).is_nil());
  EXPECT_EQ(a.next_attr().data(), u"1");
  EXPECT_EQ(a.next_child().data(), u"x");
  EXPECT_FALSE(a.is_empty());
}

}  // namespace
}  // namespace tests

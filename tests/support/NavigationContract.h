#ifndef TESTS_SUPPORT_NAVIGATIONCONTRACT_H
#define TESTS_SUPPORT_NAVIGATIONCONTRACT_H

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/Raises.h"
#include "tests/support/ReaderTest.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

namespace tests {

using Orn::Catalogue;
using Orn::StateException;
using Orn::TagException;
using Orn::UString;

/// What every reader promises of its handles. A reader joins with one line:
///
///   INSTANTIATE_TYPED_TEST_SUITE_P(Dom, NavigationContract, DomReader);
///
/// Where readers differ on purpose the tests here keep to what they have in common: children are
/// asked for by tag only before next_child(), texts are asked of elements that hold nothing else,
/// and attributes come in no particular order.
template <class Reader>
class NavigationContract : public ReaderTest<Reader> {};

TYPED_TEST_SUITE_P(NavigationContract);

/// What a message calls an operation of a handle.
inline UString call_of(char16_t const* handle, char16_t const* operation) {
  return UString(handle).append(u"::").append(operation).append(u"()");
}

template <class Elem>
Attributes sorted_attributes(Elem& element) {
  Attributes attributes = remaining_attributes(element);
  std::sort(attributes.begin(), attributes.end());
  return attributes;
}

/// The element and all below it, as "r(a b(c) d)".
template <class Elem>
UString outline_of(Elem element) {
  UString outline = Orn::XmlTag::lookup(element.tag()).to_string();
  UString separator(u"(");
  for (Elem child = element.next_child(); !child.is_nil(); child = element.next_child()) {
    outline.append(separator).append(outline_of(child));
    separator = u" ";
  }
  return separator == u" " ? outline.append(u")") : outline;
}

TYPED_TEST_P(NavigationContract, ATagComesFromNamespaceAndLocalNameAndNotFromThePrefix) {
  auto root = this->root_of(
      "<p:r xmlns:p='urn:test:u'>"
      "<q:a xmlns:q='urn:test:u'/><a xmlns='urn:test:u'/><a/><p:b/><a xmlns='urn:test:v'/>"
      "</p:r>");
  EXPECT_EQ(root.tag(), tag::u_r);
  EXPECT_EQ(remaining_children(root), (Tags{tag::u_a, tag::u_a, tag::a, tag::u_b, tag::v_a}));
}

TYPED_TEST_P(NavigationContract, ATagIsTheSameHoweverOftenItIsAskedFor) {
  auto root = this->root_of("<r/>");
  EXPECT_EQ(root.tag(), tag::r);
  EXPECT_EQ(root.tag(), tag::r);
}

TYPED_TEST_P(NavigationContract, MatchOfTheElementsOwnTagReturns) {
  EXPECT_NO_THROW(this->root_of("<r/>").match(tag::r));
  EXPECT_NO_THROW(this->root_of("<r xmlns='urn:test:u'/>").match(tag::u_r));
}

TYPED_TEST_P(NavigationContract, MatchOfAnotherTagNamesTheExpectedAndTheActualTag) {
  auto root = this->root_of("<y/>");
  EXPECT_RAISES(root.match(tag::x), StateException, Catalogue::TAG_MISMATCH,
                u"ZEMKA0685E Elem::match()", u"x", u"y");
}

TYPED_TEST_P(NavigationContract, MatchOfTheSameLocalNameInAnotherNamespaceIsAMismatch) {
  auto root = this->root_of("<p:r xmlns:p='urn:test:u'/>");
  EXPECT_RAISES(root.match(tag::r), StateException, Catalogue::TAG_MISMATCH,
                u"ZEMKA0685E Elem::match()", u"r", u"{urn:test:u}r");
  EXPECT_RAISES(root.match(tag::v_r), StateException, Catalogue::TAG_MISMATCH,
                u"ZEMKA0685E Elem::match()", u"{urn:test:v}r", u"{urn:test:u}r");
}

TYPED_TEST_P(NavigationContract, MatchOfANumberThatIsNotRegisteredIsTheRegistrysException) {
  auto root = this->root_of("<r/>");
  EXPECT_THROW(root.match(tag::unregistered), TagException);
}

TYPED_TEST_P(NavigationContract, ChildIsTheFirstElementWhateverStandsBeforeIt) {
  auto root = this->root_of("<r>text<!--c--><?pi i?><![CDATA[<y/>]]>&amp;<x/><y/></r>");
  EXPECT_EQ(root.child().tag(), tag::x);
}

TYPED_TEST_P(NavigationContract, ChildWithATagIsTheFirstOneThatHasIt) {
  auto root = this->root_of("<r><a>1</a><b>2</b><b>3</b></r>");
  EXPECT_EQ(root.child(tag::b).data(), u"2");
  EXPECT_EQ(root.opt_child(tag::b).data(), u"2");
  EXPECT_EQ(root.child(tag::b).tag(), tag::b);
}

TYPED_TEST_P(NavigationContract, ChildWithATagHasItsNamespaceToo) {
  auto root =
      this->root_of("<r><b xmlns='urn:test:u'>1</b><b>2</b><p:b xmlns:p='urn:test:v'>3</p:b></r>");
  EXPECT_EQ(root.child(tag::u_b).data(), u"1");
  EXPECT_EQ(root.child(tag::b).data(), u"2");
  EXPECT_EQ(root.child(tag::v_b).data(), u"3");
}

TYPED_TEST_P(NavigationContract, ARequiredChildThatIsMissingIsNamedWithItsParent) {
  auto root = this->root_of("<r><a/></r>");
  EXPECT_RAISES(root.child(tag::b), StateException, Catalogue::MISSING_REQUIRED_CHILD,
                u"ZEMKA0684E Elem::child()", u"b", u"r");
  auto other = this->root_of("<r xmlns='urn:test:u'><a/></r>");
  EXPECT_RAISES(other.child(tag::v_a), StateException, Catalogue::MISSING_REQUIRED_CHILD,
                u"ZEMKA0684E Elem::child()", u"{urn:test:v}a", u"{urn:test:u}r");
}

TYPED_TEST_P(NavigationContract, AnOptionalChildThatIsMissingIsNil) {
  EXPECT_TRUE(this->root_of("<r><a/></r>").opt_child(tag::b).is_nil());
  EXPECT_TRUE(this->root_of("<r>b</r>").opt_child(tag::b).is_nil());
  EXPECT_TRUE(this->root_of("<r/>").opt_child(tag::b).is_nil());
  EXPECT_FALSE(this->root_of("<r><b/></r>").opt_child(tag::b).is_nil());
}

TYPED_TEST_P(NavigationContract, ChildrenOfChildrenAreNotChildren) {
  auto root = this->root_of("<r><a><b>deep</b></a></r>");
  EXPECT_TRUE(root.opt_child(tag::b).is_nil());
  EXPECT_TRUE(root.opt_child(tag::r).is_nil());
  EXPECT_RAISES(root.child(tag::b), StateException, Catalogue::MISSING_REQUIRED_CHILD,
                u"ZEMKA0684E Elem::child()", u"b", u"r");
  EXPECT_EQ(remaining_children(root), Tags{tag::a});
}

TYPED_TEST_P(NavigationContract, LookingForChildrenTakesNoneFromTheIteration) {
  auto root = this->root_of("<r><a/><b/><c/></r>");
  EXPECT_EQ(root.child().tag(), tag::a);
  EXPECT_EQ(root.child().tag(), tag::a);
  EXPECT_EQ(root.child(tag::c).tag(), tag::c);
  EXPECT_EQ(root.opt_child(tag::b).tag(), tag::b);
  EXPECT_TRUE(root.opt_child(tag::d).is_nil());
  EXPECT_EQ(remaining_children(root), (Tags{tag::a, tag::b, tag::c}));
}

TYPED_TEST_P(NavigationContract, NextChildGivesTheElementsInDocumentOrderAndThenNil) {
  auto root = this->root_of("<r>1<b/><!--c--><a/><?pi i?><![CDATA[2]]><b/>&lt;<c/>3</r>");
  EXPECT_EQ(root.next_child().tag(), tag::b);
  EXPECT_EQ(root.next_child().tag(), tag::a);
  EXPECT_EQ(root.next_child().tag(), tag::b);
  EXPECT_EQ(root.next_child().tag(), tag::c);
  EXPECT_TRUE(root.next_child().is_nil());
}

TYPED_TEST_P(NavigationContract, NextChildOfAnElementWithoutChildElementsIsNilEveryTime) {
  for (char const* xml : {"<r/>", "<r></r>", "<r>text</r>", "<r><!--<a/>--></r>"}) {
    auto root = this->root_of(xml);
    EXPECT_TRUE(root.next_child().is_nil()) << xml;
    EXPECT_TRUE(root.next_child().is_nil()) << xml;
  }
}

TYPED_TEST_P(NavigationContract, IterationsOfAnElementAndOfItsChildrenAreIndependent) {
  auto root = this->root_of("<r><a><b/><c/></a><d><e/></d></r>");
  auto a = root.next_child();
  EXPECT_EQ(a.next_child().tag(), tag::b);
  auto d = root.next_child();
  EXPECT_EQ(a.next_child().tag(), tag::c);
  EXPECT_EQ(d.next_child().tag(), tag::e);
  EXPECT_TRUE(a.next_child().is_nil());
  EXPECT_TRUE(root.next_child().is_nil());
}

TYPED_TEST_P(NavigationContract, AWholeDocumentCanBeWalked) {
  auto root = this->root_of(
      "<?xml version='1.0'?><!--c--><?pi i?>"
      "<r><a><b><c/></b>t</a><!--c--><a/><d xmlns='urn:test:v'><b/></d></r>"
      "<!--c--><?pi i?>");
  EXPECT_EQ(outline_of(root), u"r(a(b(c)) a {urn:test:v}d({urn:test:v}b))");
}

TYPED_TEST_P(NavigationContract, TheAttributesAreGivenOnceEachAndThenNilForGood) {
  auto root = this->root_of("<r a='1' b='' c='3'/>");
  EXPECT_EQ(sorted_attributes(root), (Attributes{{tag::a, u"1"}, {tag::b, u""}, {tag::c, u"3"}}));
  EXPECT_TRUE(root.next_attr().is_nil());
  EXPECT_TRUE(root.next_attr().is_nil());
}

TYPED_TEST_P(NavigationContract, AnElementWithoutAttributesGivesNilAtOnce) {
  auto root = this->root_of("<r><x a='1'/></r>");
  EXPECT_TRUE(root.next_attr().is_nil());
  EXPECT_TRUE(root.next_attr().is_nil());
}

TYPED_TEST_P(NavigationContract, NamespaceDeclarationsAreNoAttributes) {
  auto root = this->root_of("<r xmlns='urn:test:u' xmlns:p='urn:test:v' a='1' p:b='2'/>");
  EXPECT_EQ(sorted_attributes(root), (Attributes{{tag::a, u"1"}, {tag::v_b, u"2"}}));
  auto bare = this->root_of("<r xmlns='urn:test:u' xmlns:p='urn:test:v'/>");
  EXPECT_TRUE(bare.next_attr().is_nil());
  EXPECT_TRUE(bare.next_attr().is_nil());
}

TYPED_TEST_P(NavigationContract, TheDefaultNamespaceIsNotThatOfAttributes) {
  auto root = this->root_of("<r xmlns='urn:test:u' xmlns:p='urn:test:u' a='1' p:a='2'/>");
  EXPECT_EQ(sorted_attributes(root), (Attributes{{tag::a, u"1"}, {tag::u_a, u"2"}}));
}

TYPED_TEST_P(NavigationContract, AttributesAndChildrenAreIteratedIndependently) {
  auto root = this->root_of("<r a='1'><b c='2'/><d/></r>");
  auto b = root.next_child();
  EXPECT_EQ(remaining_attributes(root), (Attributes{{tag::a, u"1"}}));
  EXPECT_EQ(remaining_attributes(b), (Attributes{{tag::c, u"2"}}));
  EXPECT_EQ(remaining_children(root), Tags{tag::d});
}

TYPED_TEST_P(NavigationContract, AttributeValuesAreNormalisedAndTheirReferencesResolved) {
  struct {
    char const* xml;
    char16_t const* value;
  } const cases[] = {
      {"<r a=' x\n\ty '/>", u" x  y "},
      {"<r a='x\r\ny'/>", u"x y"},
      {"<r a='&#9;&#10;&#13;'/>", u"\t\n\r"},
      {"<r a='&lt;&gt;&amp;&quot;&apos;'/>", u"<>&\"'"},
      {"<r a='caf&#xe9; \xe2\x82\xac &#x1F600;'/>", u"caf\u00e9 \u20ac \U0001F600"},
      {"<!DOCTYPE r [<!ENTITY e 'v&amp;w'>]><r a='u&e;x'/>", u"uv&wx"},
  };
  for (auto const& [xml, value] : cases) {
    auto root = this->root_of(xml);
    EXPECT_EQ(root.next_attr().data(), value) << xml;
  }
}

TYPED_TEST_P(NavigationContract, MatchOfAnAttributesOwnTagReturns) {
  auto root = this->root_of("<r p:a='1' xmlns:p='urn:test:u'/>");
  auto attribute = root.next_attr();
  EXPECT_NO_THROW(attribute.match(tag::u_a));
  EXPECT_EQ(attribute.tag(), tag::u_a);
}

TYPED_TEST_P(NavigationContract, MatchOfAnotherAttributeNamesTheExpectedAndTheActualTag) {
  auto root = this->root_of("<r p:a='1' xmlns:p='urn:test:u'/>");
  auto attribute = root.next_attr();
  EXPECT_RAISES(attribute.match(tag::a), StateException, Catalogue::TAG_MISMATCH,
                u"ZEMKA0686E Attribute::match()", u"a", u"{urn:test:u}a");
  EXPECT_THROW(attribute.match(tag::unregistered), TagException);
}

TYPED_TEST_P(NavigationContract, DataIsTheTextOfTheElementAsItStands) {
  struct {
    char const* xml;
    char16_t const* data;
  } const cases[] = {
      {"<r/>", u""},
      {"<r></r>", u""},
      {"<r> \n\t x \n</r>", u" \n\t x \n"},
      {"<r>x\r\ny\rz</r>", u"x\ny\nz"},
      {"<r>x<![CDATA[<&>]]>y<![CDATA[]]]]><![CDATA[>]]></r>", u"x<&>y]]>"},
      {"<r>x<!--c-->y<?pi i?>z</r>", u"xyz"},
      {"<r>&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#13;</r>", u"<>&\"'AB\r"},
      {"<r>caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80</r>", u"caf\u00e9 \u20ac \U0001F600"},
      {"<r><!--c--></r>", u""},
  };
  for (auto const& [xml, data] : cases) {
    auto root = this->root_of(xml);
    EXPECT_EQ(root.data(), data) << xml;
    EXPECT_EQ(root.data(), data) << "again " << xml;
  }
}

TYPED_TEST_P(NavigationContract, AnElementIsEmptyWithoutTextAndChildElements) {
  struct {
    char const* xml;
    bool empty;
  } const cases[] = {
      {"<r/>", true},
      {"<r></r>", true},
      {"<r a='1'/>", true},
      {"<r><!--c--></r>", true},
      {"<r><?pi i?></r>", true},
      {"<r> </r>", false},
      {"<r>\n</r>", false},
      {"<r>&#32;</r>", false},
      {"<r>x</r>", false},
      {"<r><![CDATA[x]]></r>", false},
      {"<r><!--c--><a/></r>", false},
  };
  for (auto const& [xml, empty] : cases) {
    auto root = this->root_of(xml);
    EXPECT_EQ(root.is_empty(), empty) << xml;
    EXPECT_NO_THROW(root.check_is_empty(empty)) << xml;
  }
}

TYPED_TEST_P(NavigationContract, CheckIsEmptyTellsWhatWasExpectedAndWhatWasFound) {
  auto empty = this->root_of("<a/>");
  EXPECT_RAISES(empty.check_is_empty(false), StateException, Catalogue::IS_EMPTY_MISMATCH,
                u"ZEMKA0682E Elem::check_is_empty()", u"a", u"0", u"1");
  auto full = this->root_of("<r xmlns='urn:test:u'> </r>");
  EXPECT_RAISES(full.check_is_empty(true), StateException, Catalogue::IS_EMPTY_MISMATCH,
                u"ZEMKA0682E Elem::check_is_empty()", u"{urn:test:u}r", u"1", u"0");
}

TYPED_TEST_P(NavigationContract, EveryOperationOnANilElementIsRefusedUnderItsName) {
  using Elem = typename TypeParam::Elem;
  struct {
    char16_t const* name;
    void (*call)(Elem&);
  } const operations[] = {
      {u"tag", [](Elem& e) { e.tag(); }},
      {u"tag", [](Elem& e) { e.match(tag::a); }},
      {u"child", [](Elem& e) { e.child(); }},
      {u"child", [](Elem& e) { e.child(tag::a); }},
      {u"opt_child", [](Elem& e) { e.opt_child(tag::a); }},
      {u"next_child", [](Elem& e) { e.next_child(); }},
      {u"next_attr", [](Elem& e) { e.next_attr(); }},
      {u"data", [](Elem& e) { e.data(); }},
      {u"is_empty", [](Elem& e) { e.is_empty(); }},
      {u"is_empty", [](Elem& e) { e.check_is_empty(true); }},
      {u"is_empty", [](Elem& e) { e.check_is_empty(false); }},
      {u"whatever", [](Elem& e) { e.check_is_nil(u"whatever"); }},
  };
  for (auto const& operation : operations) {
    Elem nil;
    EXPECT_RAISES(operation.call(nil), StateException, Catalogue::NIL_ELEMENT,
                  call_of(TypeParam::ELEM, operation.name));
  }
}

TYPED_TEST_P(NavigationContract, EveryOperationOnANilAttributeIsRefusedUnderItsName) {
  using Attribute = typename TypeParam::Attribute;
  struct {
    char16_t const* name;
    void (*call)(Attribute&);
  } const operations[] = {
      {u"tag", [](Attribute& a) { a.tag(); }},
      {u"tag", [](Attribute& a) { a.match(tag::a); }},
      {u"data", [](Attribute& a) { a.data(); }},
      {u"whatever", [](Attribute& a) { a.check_is_nil(u"whatever"); }},
  };
  for (auto const& operation : operations) {
    Attribute nil;
    EXPECT_RAISES(operation.call(nil), StateException, Catalogue::NIL_ATTRIBUTE,
                  call_of(TypeParam::ATTRIBUTE, operation.name));
  }
}

TYPED_TEST_P(NavigationContract, WhatAnIterationEndsWithIsNil) {
  auto root = this->root_of("<r/>");
  auto child = root.next_child();
  EXPECT_RAISES(child.data(), StateException, Catalogue::NIL_ELEMENT,
                call_of(TypeParam::ELEM, u"data"));
  auto attribute = root.next_attr();
  EXPECT_RAISES(attribute.data(), StateException, Catalogue::NIL_ATTRIBUTE,
                call_of(TypeParam::ATTRIBUTE, u"data"));
}

TYPED_TEST_P(NavigationContract, CheckIsNilOfAHandleThatIsNotNilReturns) {
  auto root = this->root_of("<r a='1'/>");
  EXPECT_FALSE(root.is_nil());
  EXPECT_NO_THROW(root.check_is_nil(u"whatever"));
  auto attribute = root.next_attr();
  EXPECT_FALSE(attribute.is_nil());
  EXPECT_NO_THROW(attribute.check_is_nil(u"whatever"));
}

TYPED_TEST_P(NavigationContract, HandlesCanBeCopiedAndAssignedNilOnesIncluded) {
  auto root = this->root_of("<r><a b='1'>x</a></r>");
  typename TypeParam::Elem a, copy(a);
  EXPECT_TRUE(copy.is_nil());
  a = root.child(tag::a);
  copy = a;
  EXPECT_EQ(copy.data(), u"x");
  typename TypeParam::Attribute b;
  b = copy.next_attr();
  EXPECT_EQ(typename TypeParam::Attribute(b).data(), u"1");
  b = typename TypeParam::Attribute();
  copy = typename TypeParam::Elem();
  EXPECT_TRUE(b.is_nil());
  EXPECT_TRUE(copy.is_nil());
  EXPECT_EQ(a.tag(), tag::a);
}

TYPED_TEST_P(NavigationContract, ARefusedCallMovesNoIteration) {
  auto root = this->root_of("<r a='1'><a/><b/></r>");
  EXPECT_THROW(root.match(tag::x), StateException);
  EXPECT_THROW(root.child(tag::x), StateException);
  EXPECT_THROW(root.check_is_empty(true), StateException);
  EXPECT_EQ(remaining_children(root), (Tags{tag::a, tag::b}));
  EXPECT_EQ(remaining_attributes(root), (Attributes{{tag::a, u"1"}}));
}

TYPED_TEST_P(NavigationContract, AHundredThousandChildrenAreWalkedInOrder) {
  std::string xml = "<r>";
  for (int i = 0; i < 50000; ++i) xml += "<a/><b>x</b>";
  auto root = this->root_of(xml + "</r>");
  Tags const children = remaining_children(root);
  ASSERT_EQ(children.size(), 100000U);
  for (std::size_t i = 0; i < children.size(); i += 2) {
    ASSERT_EQ(children[i], tag::a);
    ASSERT_EQ(children[i + 1], tag::b);
  }
}

TYPED_TEST_P(NavigationContract, AVeryLongTextIsGivenWhole) {
  std::string text;
  while (text.size() < 3000000) text += "0123456789abcdef\xf0\x9f\x98\x80";
  auto root = this->root_of("<r>" + text + "</r>");
  EXPECT_TRUE(root.data().to_utf8() == text);
}

REGISTER_TYPED_TEST_SUITE_P(
    NavigationContract, ATagComesFromNamespaceAndLocalNameAndNotFromThePrefix,
    ATagIsTheSameHoweverOftenItIsAskedFor, MatchOfTheElementsOwnTagReturns,
    MatchOfAnotherTagNamesTheExpectedAndTheActualTag,
    MatchOfTheSameLocalNameInAnotherNamespaceIsAMismatch,
    MatchOfANumberThatIsNotRegisteredIsTheRegistrysException,
    ChildIsTheFirstElementWhateverStandsBeforeIt, ChildWithATagIsTheFirstOneThatHasIt,
    ChildWithATagHasItsNamespaceToo, ARequiredChildThatIsMissingIsNamedWithItsParent,
    AnOptionalChildThatIsMissingIsNil, ChildrenOfChildrenAreNotChildren,
    LookingForChildrenTakesNoneFromTheIteration, NextChildGivesTheElementsInDocumentOrderAndThenNil,
    NextChildOfAnElementWithoutChildElementsIsNilEveryTime,
    IterationsOfAnElementAndOfItsChildrenAreIndependent, AWholeDocumentCanBeWalked,
    TheAttributesAreGivenOnceEachAndThenNilForGood, AnElementWithoutAttributesGivesNilAtOnce,
    NamespaceDeclarationsAreNoAttributes, TheDefaultNamespaceIsNotThatOfAttributes,
    AttributesAndChildrenAreIteratedIndependently,
    AttributeValuesAreNormalisedAndTheirReferencesResolved, MatchOfAnAttributesOwnTagReturns,
    MatchOfAnotherAttributeNamesTheExpectedAndTheActualTag, DataIsTheTextOfTheElementAsItStands,
    AnElementIsEmptyWithoutTextAndChildElements, CheckIsEmptyTellsWhatWasExpectedAndWhatWasFound,
    EveryOperationOnANilElementIsRefusedUnderItsName,
    EveryOperationOnANilAttributeIsRefusedUnderItsName, WhatAnIterationEndsWithIsNil,
    CheckIsNilOfAHandleThatIsNotNilReturns, HandlesCanBeCopiedAndAssignedNilOnesIncluded,
    ARefusedCallMovesNoIteration, AHundredThousandChildrenAreWalkedInOrder,
    AVeryLongTextIsGivenWhole);

}  // namespace tests

#endif

#include <gtest/gtest.h>

#include "tests/dom/DomReader.h"
#include "tests/dom/XercesReference.h"
#include "tqutil/UtilExceptions.h"

namespace tests {
namespace {

using Orn::DomParser;
using Orn::UString;
using Elem = DomParser::Elem;

constexpr char16_t const* XMLNS = u"http://www.w3.org/2000/xmlns/";

std::vector<UString> remaining_values(Elem& element) {
  std::vector<UString> values;
  for (auto attr = element.next_attr(); !attr.is_nil(); attr = element.next_attr()) {
    values.push_back(attr.data());
  }
  return values;
}

/// The values in the order of the parser's own attribute map, namespace declarations left out.
std::vector<UString> values_in_map_order(std::string const& xml) {
  XercesReference reference(xml);
  xercesc::DOMNamedNodeMap const* map = reference.root()->getAttributes();
  std::vector<UString> values;
  for (XMLSize_t i = 0; i < map->getLength(); ++i) {
    xercesc::DOMNode const* attr = map->item(i);
    if (UString(attr->getNamespaceURI()) != XMLNS) values.emplace_back(attr->getNodeValue());
  }
  return values;
}

using NextAttr = DomTest;

TEST_F(NextAttr, GoesThroughTheParsersMapFromItsEnd) {
  char const* documents[] = {
      "<r a='1' b='2' c='3'/>",
      "<r c='3' b='2' a='1'/>",
      "<r y='1' p:b='2' a='3' xmlns:p='urn:test:u' p:a='4' xmlns='urn:test:v' z='5' x='6'/>",
      "<r xmlns:z='urn:test:u' z:b='1' xmlns:a='urn:test:v' a:b='2' xmlns='urn:test:w' b='3'/>",
      "<!DOCTYPE r [<!ATTLIST r d CDATA '4' b CDATA '2'>]><r c='3' a='1'/>",
  };
  for (char const* xml : documents) {
    std::vector<UString> const forward = values_in_map_order(xml);
    ASSERT_GE(forward.size(), 3U) << xml;
    Elem root = root_of(xml);
    EXPECT_EQ(remaining_values(root), std::vector<UString>(forward.rbegin(), forward.rend()))
        << xml;
  }
}

TEST_F(NextAttr, PassesOverNamespaceDeclarationsOnItsWay) {
  Elem root = root_of("<r xmlns='urn:test:u' xmlns:z='urn:test:v' y='1' z:a='2'/>");
  EXPECT_EQ(remaining_attributes(root), (Attributes{{tag::v_a, u"2"}, {tag::y, u"1"}}));
  Elem other = root_of("<a:r xmlns:a='urn:test:u' xmlns='urn:test:v' z='1' a:a='2'/>");
  EXPECT_EQ(remaining_attributes(other), (Attributes{{tag::z, u"1"}, {tag::u_a, u"2"}}));
}

TEST_F(NextAttr, StaysAtItsEnd) {
  Elem root = root_of("<r xmlns='urn:test:u' a='1' b='2'/>");
  EXPECT_EQ(remaining_values(root).size(), 2U);
  Elem copy = root;
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(root.next_attr().is_nil());
    EXPECT_TRUE(copy.next_attr().is_nil());
  }
}

TEST_F(NextAttr, OfACopyGoesOnFromWhereTheOriginalStood) {
  Elem root = root_of("<r a='1' b='2' c='3'/>");
  EXPECT_EQ(root.next_attr().tag(), tag::c);
  Elem copy = root;
  EXPECT_EQ(remaining_values(root), (std::vector<UString>{u"2", u"1"}));
  EXPECT_EQ(remaining_values(copy), (std::vector<UString>{u"2", u"1"}));
}

TEST_F(NextAttr, OfANewHandleOnTheSameElementBeginsAgain) {
  Elem root = root_of("<r><x a='1' b='2'/></r>");
  EXPECT_EQ(root.child().next_attr().tag(), tag::b);
  EXPECT_EQ(root.child().next_attr().tag(), tag::b);
}

TEST_F(NextAttr, StaysAtItsEndWhereNextChildStartsOver) {
  Elem root = root_of("<r a='1'><b/></r>");
  EXPECT_EQ(remaining_values(root).size(), 1U);
  EXPECT_EQ(remaining_children(root), Tags{tag::b});
  EXPECT_EQ(remaining_children(root), Tags{tag::b});
  EXPECT_TRUE(root.next_attr().is_nil());
}

TEST_F(NextAttr, GivesAttributesWhateverTheirNumber) {
  Elem root = root_of("<r first_hidden='2' last_shown='1'/>");
  EXPECT_EQ(remaining_attributes(root),
            (Attributes{{tag::last_shown, u"1"}, {tag::first_hidden, u"2"}}));
}

TEST_F(NextAttr, GivesTheDefaultsThatTheDocumentDeclares) {
  Elem root = root_of("<!DOCTYPE r [<!ATTLIST r a CDATA 'given' b CDATA #IMPLIED>]><r/>");
  EXPECT_EQ(remaining_attributes(root), (Attributes{{tag::a, u"given"}}));
}

TEST_F(NextAttr, GivesAttributesWithoutARegisteredNameWhoseTagIsThenRefused) {
  Elem root = root_of("<r unknown='1' xml:lang='en'/>");
  DomParser::Attribute lang = root.next_attr();
  DomParser::Attribute unknown = root.next_attr();
  EXPECT_EQ(lang.data(), u"en");
  EXPECT_THROW(lang.tag(), Orn::TagException);
  EXPECT_EQ(unknown.data(), u"1");
  EXPECT_THROW(unknown.match(tag::a), Orn::TagException);
}

TEST_F(NextAttr, GivesHandlesThatStayGoodWhenTheirElementsHandleIsGone) {
  DomParser::Attribute attribute = root_of("<r a='1'/>").next_attr();
  EXPECT_EQ(attribute.tag(), tag::a);
  EXPECT_EQ(attribute.data(), u"1");
}

}  // namespace
}  // namespace tests

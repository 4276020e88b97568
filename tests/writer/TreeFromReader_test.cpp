#include <gtest/gtest.h>

#include <string>

#include "tests/dom/DomReader.h"
#include "tests/sax/SaxReader.h"
#include "tests/sax/Source.h"
#include "tests/support/Raises.h"
#include "tests/support/Trees.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::SaxParser;
using Orn::StateException;
using Orn::TagException;
using Orn::UString;
using Orn::XmlDoc;
using Elem = XmlDoc::Elem;

template <class Reader>
class TreeFromReader : public ReaderTest<Reader> {
 protected:
  Elem tree_of(std::string const& xml) {
    typename Reader::Elem root = this->root_of(xml);
    return Elem(root);
  }
};

using Readers = testing::Types<DomReader, SaxReader>;
TYPED_TEST_SUITE(TreeFromReader, Readers);

struct Outlined {
  char const* xml;
  char16_t const* outline;
};

TYPED_TEST(TreeFromReader, HasTheTagsOfTheElementsInDocumentOrder) {
  Outlined const cases[] = {
      {"<r/>", u"r"},
      {"<r><a/><b/><a/></r>", u"r[a b a]"},
      {"<r><a><b><c/></b></a><d/></r>", u"r[a[b[c]] d]"},
      {"<r><a/><b><c/><d><e/></d></b><x/></r>", u"r[a b[c d[e]] x]"},
      {"<p:r xmlns:p='urn:test:u'><a xmlns='urn:test:v'/></p:r>", u"{urn:test:u}r[{urn:test:v}a]"},
  };
  for (auto const& [xml, expected] : cases) {
    EXPECT_EQ(outline(this->tree_of(xml)), expected) << xml;
  }
}

TYPED_TEST(TreeFromReader, HasTheTextOfElementsWithoutChildElementsEscapedOnce) {
  Outlined const cases[] = {
      {"<r>x</r>", u"r[\"x\"]"},
      {"<r> \n\t</r>", u"r[\" \n\t\"]"},
      {"<r>  x\ny  </r>", u"r[\"  x\ny  \"]"},
      {"<r>a&amp;b&lt;&gt;&quot;&apos;</r>", u"r[\"a&amp;b&lt;>\"'\"]"},
      {"<r>&#38;amp;</r>", u"r[\"&amp;amp;\"]"},
      {"<r>&amp;&amp;&amp;</r>", u"r[\"<![CDATA[&&&]]>\"]"},
      {"<r>x]]&gt;</r>", u"r[\"x]]&gt;\"]"},
      {"<r>x<!--c-->y<?pi i?>z</r>", u"r[\"xyz\"]"},
      {"<r><a>1</a><b> </b></r>", u"r[a[\"1\"] b[\" \"]]"},
  };
  for (auto const& [xml, expected] : cases) {
    EXPECT_EQ(outline(this->tree_of(xml)), expected) << xml;
  }
}

TYPED_TEST(TreeFromReader, HasNoChildrenForAnEmptyElement) {
  for (char const* xml : {"<r/>", "<r></r>", "<r a='1'/>", "<r><!--c--></r>", "<r><?pi i?></r>",
                          "<r><!--<a/>--></r>"}) {
    EXPECT_TRUE(this->tree_of(xml).empty()) << xml;
  }
}

TYPED_TEST(TreeFromReader, LosesTheTextBesideChildElements) {
  Outlined const cases[] = {
      {"<r>x<a/></r>", u"r[a]"},
      {"<r><a/>x</r>", u"r[a]"},
      {"<r>x<a>1</a>y<b/>z</r>", u"r[a[\"1\"] b]"},
      {"<r>\n  <a/>\n</r>", u"r[a]"},
      {"<r><![CDATA[x]]><a/>&amp;</r>", u"r[a]"},
      {"<r><a>x<b>y</b></a>z</r>", u"r[a[b[\"y\"]]]"},
  };
  for (auto const& [xml, expected] : cases) {
    EXPECT_EQ(outline(this->tree_of(xml)), expected) << xml;
  }
}

TYPED_TEST(TreeFromReader, LosesCommentsAndInstructions) {
  EXPECT_EQ(outline(this->tree_of("<!--c--><?pi i?><r><!--c--><a/><?pi i?><b>x<!--c--></b></r>"
                                  "<!--c-->")),
            u"r[a b[\"x\"]]");
}

TYPED_TEST(TreeFromReader, HasTextForACdataSectionWrittenBackEscaped) {
  Elem const tree = this->tree_of("<u:r xmlns:u='urn:test:u'>x<![CDATA[<a> & ]]>y</u:r>");
  EXPECT_EQ(outline(tree), u"{urn:test:u}r[\"x&lt;a> &amp; y\"]");
  EXPECT_EQ(tree.str(), u"<N1:r xmlns:N1=\"urn:test:u\">x&lt;a> &amp; y</N1:r>");
}

TYPED_TEST(TreeFromReader, HasTheAttributesInTheOrderInWhichTheReaderGivesThem) {
  for (char const* xml : {"<r a='1' b='2'/>", "<r b='1' a='2' c='3'/>",
                          "<r z='1' xmlns:q='urn:test:v' q:a='2' xmlns='urn:test:u' "
                          "xmlns:p='urn:test:u' p:z='3'/>"}) {
    auto root = this->root_of(xml);
    Elem const tree = this->tree_of(xml);
    Attributes attributes;
    for (auto const& [id, value] : Orn::ElemTestAccess::attrs(tree)) {
      attributes.emplace_back(id, value);
    }
    EXPECT_EQ(attributes, remaining_attributes(root)) << xml;
  }
}

TYPED_TEST(TreeFromReader, HasAttributesAndNoChildrenForAnElementWithoutContent) {
  EXPECT_EQ(outline(this->tree_of("<r a='1' b='2'/>")), u"r(b=2 a=1)");
  EXPECT_EQ(outline(this->tree_of("<r a='1' b='2'></r>")), u"r(b=2 a=1)");
}

TYPED_TEST(TreeFromReader, IsUnlikeTheOneByHandThatKeepsTheOrderOfTheAttributes) {
  Elem by_hand(r);
  by_hand.add_attr(a, u"1");
  by_hand.add_attr(b, u"2");
  Elem const tree = this->tree_of("<r a='1' b='2'/>");
  EXPECT_NE(tree, by_hand);
  EXPECT_EQ(tree, with_reversed_attributes(by_hand));
}

TYPED_TEST(TreeFromReader, IsWrittenBackWithItsAttributesLastFirst) {
  EXPECT_EQ(
      this->tree_of("<p:r xmlns:p='urn:test:u' p:a='1' p:b='2'><p:a p:a='3' p:c='4'/></p:r>").str(),
      u"<N1:r xmlns:N1=\"urn:test:u\" N1:b=\"2\" N1:a=\"1\">"
      u"<N1:a N1:c=\"4\" N1:a=\"3\"></N1:a></N1:r>");
}

TYPED_TEST(TreeFromReader, HasAttributeValuesDecodedSoThatItsMarkupIsIllFormed) {
  struct {
    char const* in_document;
    char16_t const* value;
  } const cases[] = {
      {"&amp;", u"&"},
      {"&lt;", u"<"},
      {"&quot;", u"\""},
      {"x&#38;y&#60;z&#34;", u"x&y<z\""},
  };
  for (auto const& [in_document, value] : cases) {
    Elem const tree = this->tree_of(
        std::string("<r xmlns='urn:test:u' xmlns:p='urn:test:u' p:a='") + in_document + "'/>");
    EXPECT_EQ(Orn::ElemTestAccess::attrs(tree).at(0).value, value);
    EXPECT_EQ(
        tree.str(),
        UString(u"<N1:r xmlns:N1=\"urn:test:u\" N1:a=\"").append(value).append(u"\"></N1:r>"));
    EXPECT_THROW(DomParser(XmlDoc(tree)).root(), RuntimeException);
    EXPECT_EQ(this->tree_of(XmlDoc(with_escaped_attributes(tree)).byte_array()), tree);
  }
}

TYPED_TEST(TreeFromReader, HasAttributeValuesWhoseLineEndsAreLostWhenTheyAreWrittenAndRead) {
  Elem const tree = this->tree_of("<r xmlns:p='urn:test:u' xmlns='urn:test:u' p:a='x&#10;y'/>");
  EXPECT_EQ(outline(tree), u"{urn:test:u}r({urn:test:u}a=x\ny)");
  EXPECT_EQ(outline(this->tree_of(XmlDoc(tree).byte_array())), u"{urn:test:u}r({urn:test:u}a=x y)");
}

TYPED_TEST(TreeFromReader, IsOfThePartThatTheHandleIsOn) {
  auto root = this->root_of("<r><a><x/></a><b y='1'><c>t</c></b><d/></r>");
  auto part = root.child(b);
  EXPECT_EQ(outline(Elem(part)), u"b(y=1)[c[\"t\"]]");
}

TYPED_TEST(TreeFromReader, OutlivesTheReader) {
  Elem tree(z);
  {
    TypeParam reader("<r a='1'><b>t</b></r>");
    auto root = reader.root();
    tree = Elem(root);
  }
  EXPECT_EQ(outline(tree), u"r(a=1)[b[\"t\"]]");
}

TYPED_TEST(TreeFromReader, OfANilHandleIsRefusedUnderTheNameOfTag) {
  typename TypeParam::Elem nil;
  EXPECT_RAISES(Elem(nil), StateException, Catalogue::NIL_ELEMENT,
                UString(TypeParam::ELEM).append(u"::tag()"));
}

TYPED_TEST(TreeFromReader, PassesOnWhatTheRegistrySaysOfAnUnknownName) {
  for (char const* xml :
       {"<r><a x='1'/><unknown/></r>", "<r><a><b><unknown>t</unknown></b></a></r>",
        "<r><a>t</a><b unknown='1'/></r>"}) {
    auto root = this->root_of(xml);
    EXPECT_THROW(Elem{root}, TagException) << xml;
  }
}

TYPED_TEST(TreeFromReader, HasLongTextsAndManyChildrenWhole) {
  std::string text(1000000, 'x');
  std::string xml = "<r><a>" + text + "</a>";
  for (int i = 0; i < 10000; ++i) xml += "<b>t</b>";
  Elem const tree = this->tree_of(xml + "</r>");
  ASSERT_EQ(Orn::ElemTestAccess::child_count(tree), 10001U);
  EXPECT_TRUE(Orn::ElemTestAccess::elem(tree, 0)->content() == UString::from_utf8(text));
  EXPECT_EQ(outline(*Orn::ElemTestAccess::elem(tree, 10000)), u"b[\"t\"]");
}

using TreeFromDomParser = DomTest;

TEST_F(TreeFromDomParser, IsMadeOfTheWholeElementWhateverTheHandleHasBeenUsedFor) {
  DomParser::Elem root = root_of("<r a='1' b='2'><c/><d>t</d></r>");
  Elem const fresh(root);
  root.next_child();
  root.next_attr();
  EXPECT_EQ(Elem(root), fresh);
  remaining_children(root);
  root.next_child();
  remaining_attributes(root);
  EXPECT_EQ(Elem(root), fresh);
  EXPECT_EQ(outline(fresh), u"r(b=2 a=1)[c d[\"t\"]]");
}

TEST_F(TreeFromDomParser, LeavesTheHandleWhereItWas) {
  DomParser::Elem root = root_of("<r a='1' b='2'><c/><d/><e/></r>");
  EXPECT_EQ(Elem(root), Elem(root));
  EXPECT_EQ(root.next_child().tag(), c);
  EXPECT_EQ(root.next_attr().tag(), b);
  Elem const tree(std::as_const(root));
  EXPECT_EQ(remaining_children(root), (Tags{d, e}));
  EXPECT_EQ(remaining_attributes(root), (Attributes{{a, u"1"}}));
}

TEST_F(TreeFromDomParser, HasAttributesThatTheStreamingReaderHides) {
  DomParser::Elem root = root_of("<r first_hidden='1' last_shown='2'/>");
  EXPECT_EQ(outline(Elem(root)), u"r(last_shown=2 first_hidden=1)");
}

using TreeFromSaxParser = SaxTest;

TEST_F(TreeFromSaxParser, UsesTheHandleUp) {
  SaxParser::Elem root = root_of("<r a='1' b='2'><c/><d>t</d></r>");
  EXPECT_EQ(outline(Elem(root)), u"r(b=2 a=1)[c d[\"t\"]]");
  EXPECT_TRUE(root.next_child().is_nil());
  EXPECT_TRUE(root.next_attr().is_nil());
  EXPECT_RAISES(root.child(), StateException, Catalogue::CHILD_AFTER_NEXT_CHILD);
  EXPECT_RAISES(root.opt_child(c), StateException, Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
  EXPECT_FALSE(root.is_empty());
  EXPECT_EQ(root.data(), u"");
}

TEST_F(TreeFromSaxParser, HasWhatTheHandleStillHasToGive) {
  SaxParser::Elem root = root_of("<r a='1' b='2'><c/><d>t</d><e/></r>");
  root.next_child();
  root.next_attr();
  EXPECT_EQ(outline(Elem(root)), u"r(a=1)[d[\"t\"] e]");
}

TEST_F(TreeFromSaxParser, HasChildrenThatWereLookedAtAndNotTaken) {
  SaxParser::Elem root = root_of("<r><a><b>t</b></a><c/><d/></r>");
  EXPECT_EQ(root.child(c).tag(), c);
  EXPECT_EQ(root.child(a).child(b).data(), u"t");
  EXPECT_EQ(outline(Elem(root)), u"r[a[b[\"t\"]] c d]");
}

TEST_F(TreeFromSaxParser, MadeASecondTimeHasTheTagAlone) {
  SaxParser::Elem root = root_of("<r a='1'><b/></r>");
  EXPECT_EQ(outline(Elem(root)), u"r(a=1)[b]");
  EXPECT_EQ(outline(Elem(root)), u"r");
}

TEST_F(TreeFromSaxParser, IsReadUpToTheEndOfTheElementAndNotToThatOfTheDocument) {
  Source source("<r><a><b>t</b></a><c/>" + std::string(200000, ' ') + "<d/></r>");
  SaxParser parser(source);
  SaxParser::Elem root = parser.root();
  SaxParser::Elem first = root.next_child();
  EXPECT_EQ(outline(Elem(first)), u"a[b[\"t\"]]");
  EXPECT_LT(source.taken(), 100000U);
  EXPECT_EQ(remaining_children(root), (Tags{c, d}));
}

TEST_F(TreeFromSaxParser, LeavesOutHiddenAttributes) {
  SaxParser::Elem root = root_of("<r first_hidden='1' last_shown='2' a='3'/>");
  EXPECT_EQ(outline(Elem(root)), u"r(a=3 last_shown=2)");
}

TEST_F(TreeFromSaxParser, PassesOnThatTheStreamEndsEarly) {
  for (char const* xml : {"<r><a/><b>t</b>", "<r><a><b><c/>", "<r>text", "<r a='1'>",
                          "<r><a></b></r>", "<r><a/>&unknown;</r>"}) {
    SaxParser::Elem root = root_of(xml);
    EXPECT_THROW(Elem{root}, StateException) << xml;
  }
}

TEST_F(TreeFromSaxParser, PassesOnWhatTheStreamThrows) {
  std::string const start = "<r><a><b>t</b></a>";
  Source source(start + std::string(5000, ' ') + "</r>");
  source.break_at(start.size() + 100);
  source.exceptions(std::ios::badbit);
  SaxParser parser;
  SaxParser::Elem root;
  EXPECT_THROW(
      {
        root = parser.initialize(&source);
        Elem const tree(root);
      },
      SourceBroke);
}

TEST_F(TreeFromSaxParser, AsksForTheFirstChildBeforeAnyAttribute) {
  SaxParser::Elem root = root_of("<r a='1' b='2'>");
  EXPECT_THROW(Elem{root}, StateException);
  EXPECT_EQ(remaining_attributes(root), (Attributes{{b, u"2"}, {a, u"1"}}));
}

template <class Handle>
Elem made(Handle root) {
  return Elem(root);
}

Elem by_dom(std::string const& xml) { return made(DomReader(xml).root()); }
Elem by_sax(std::string const& xml) { return made(SaxReader(xml).root()); }

TEST(TreesOfBothReaders, AreEqualWhereAttributesStandInTheOrderOfTheirNames) {
  for (char const* xml :
       {"<r/>", "<r>t</r>", "<r> <a> </a> <b/> </r>",
        "<r a='1'><b>&amp;</b><b><![CDATA[<]]></b></r>",
        "<r a='1' b='2' c='3'><a b='1' c='2'>t</a><a>u</a></r>",
        "<p:r xmlns:p='urn:test:u' a='1' p:a='2' p:b='3' xmlns:q='urn:test:v' q:a='4' x='5'/>"}) {
    EXPECT_EQ(by_dom(xml), by_sax(xml)) << xml;
  }
}

TEST(TreesOfBothReaders, AreEqualOtherwiseButForTheOrderOfAttributes) {
  char const* const xml = "<r b='1' a='2' c='3'><a c='1' b='2'>t</a></r>";
  Elem const dom = by_dom(xml);
  Elem const sax = by_sax(xml);
  EXPECT_NE(dom, sax);
  EXPECT_EQ(outline(dom), u"r(c=3 b=1 a=2)[a(c=1 b=2)[\"t\"]]");
  EXPECT_EQ(outline(sax), u"r(c=3 a=2 b=1)[a(b=2 c=1)[\"t\"]]");
  EXPECT_EQ(with_sorted_attributes(dom), with_sorted_attributes(sax));
}

TEST(TreesOfBothReaders, DifferByWhatTheReadersMakeOfEntities) {
  char const* const xml = "<!DOCTYPE r [<!ENTITY e 'v'>]><r><a>u&e;w</a><b>&e;</b></r>";
  EXPECT_EQ(outline(by_dom(xml)), u"r[a[\"uw\"] b]");
  EXPECT_EQ(outline(by_sax(xml)), u"r[a[\"uvw\"] b[\"v\"]]");
}

}  // namespace
}  // namespace tests

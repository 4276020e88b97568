#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

#include "tests/support/LimitsContract.h"
#include "tests/support/Raises.h"
#include "tests/support/TestTags.h"
#include "tests/support/Walk.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

namespace tests {
namespace {

namespace tag = testtags;
using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::UMessage;

class LimitedDom {
 public:
  static UString read(std::string const& xml, ReadLimits const& limits) {
    DomParser parser(xml, limits);
    return walk(parser.root());
  }
  static UString read_without_limits(std::string const& xml) {
    DomParser parser(xml);
    return walk(parser.root());
  }

  static std::optional<Crossing> crossing(std::string const& xml, ReadLimits const& limits) {
    try {
      read(xml, limits);
      return std::nullopt;
    } catch (RuntimeException const& e) {
      Crossing const found{number(e.message().arg(1)), number(e.message().arg(2)),
                           e.message().arg(3).text()};
      if (found.text.find(u"ReadLimits::", 0) != 0) throw;
      EXPECT_TRUE(carries(e, {Catalogue::table(),
                              Catalogue::XERCES_SAX_PARSE_EXCEPTION,
                              {e.message().arg(1).text(), e.message().arg(2).text(), found.text},
                              39,
                              2}));
      return found;
    }
  }

 private:
  static std::uint64_t number(UMessage::Arg const& arg) {
    return arg.kind() == UMessage::Arg::KIND_LONG ? std::stoull(arg.text().to_utf8()) : 0;
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Dom, LimitsContract, LimitedDom);

ReadLimits of_depth(std::uint64_t depth) {
  ReadLimits limits;
  limits.depth = depth;
  return limits;
}

TEST(ADomParserWithLimits, RaisesWhatItRaisesForMalformedTexts) {
  DomParser parser("<r>\n<a/></r>", of_depth(1));
  EXPECT_EQ(
      std::string(caught<RuntimeException>([&] { parser.root(); }).what()),
      "ZEMKA0675E Xerces SAXParseException: line: 2, column: 5, msg: ReadLimits::depth: more "
      "than 1 levels of elements; refuse the document, or read it again with another limit if "
      "you trust its source.");
}

TEST(ADomParserWithLimits, GivesWhatWasBuiltBeforeTheLimitAfterwards) {
  DomParser parser("<r><a>x</a><b><c/></b></r>", of_depth(2));
  EXPECT_THROW(parser.root(), RuntimeException);
  DomParser::Elem root = parser.root();
  EXPECT_EQ(root.child(tag::a).data(), u"x");
  EXPECT_TRUE(root.child(tag::b).is_empty());
}

TEST(ADomParserWithLimits, HasNoRootAfterARefusedDoctype) {
  DomParser parser("<!DOCTYPE r><r/>", ReadLimits::untrusted());
  EXPECT_THROW(parser.root(), RuntimeException);
  EXPECT_TRUE(parser.root().is_nil());
}

TEST(ADomParserWithLimits, RefusesATextThatIsTooLongWheneverItIsAsked) {
  ReadLimits limits;
  limits.bytes = 3;
  DomParser parser("<r/>", limits);
  for (int i = 0; i < 3; ++i) {
    EXPECT_RAISES(parser.root(), RuntimeException, Catalogue::XERCES_SAX_PARSE_EXCEPTION, u"1",
                  u"1", limit_text("bytes: more than 3 bytes"));
  }
  parser.set_xml_doc_text("<r");
  EXPECT_THROW(parser.root(), RuntimeException);
}

TEST(ADomParserWithLimits, KeepsThemForEveryTextThatItIsGiven) {
  DomParser parser("<r><a/></r>", of_depth(1));
  EXPECT_THROW(parser.root(), RuntimeException);
  parser.set_xml_doc_text("<b/>");
  EXPECT_EQ(parser.root().tag(), tag::b);
  parser.set_xml_doc_text("<b><a/></b>");
  EXPECT_THROW(parser.root(), RuntimeException);
  parser.set_xml_doc_text("<c>x</c>");
  EXPECT_EQ(parser.root().data(), u"x");
}

TEST(ADomParserWithLimits, CountsEachTextAnew) {
  ReadLimits limits;
  limits.bytes = 11;
  limits.names = 2;
  DomParser parser("<r><a/></r>", limits);
  EXPECT_EQ(parser.root().tag(), tag::r);
  parser.set_xml_doc_text("<b><c/></b>");
  EXPECT_EQ(parser.root().tag(), tag::b);
  parser.set_xml_doc_text("<b><c/></b> ");
  EXPECT_THROW(parser.root(), RuntimeException);
  parser.set_xml_doc_text("<d><e/></d>");
  EXPECT_EQ(parser.root().tag(), tag::d);
}

TEST(ADomParserWithLimits, TakesOverTheTextOfAnotherButNotItsLimits) {
  DomParser limited("<r/>", of_depth(1));
  DomParser unlimited("<r><a/></r>");
  limited = unlimited;
  EXPECT_THROW(limited.root(), RuntimeException);
  unlimited = limited;
  EXPECT_EQ(unlimited.root().child().tag(), tag::a);
}

TEST(ADomParserWithLimits, CanBeGivenATextThatIsGivenAway) {
  std::string text = "<r><a/></r>";
  DomParser parser(std::move(text), of_depth(1));
  EXPECT_THROW(parser.root(), RuntimeException);
}

// At the end each entity is given copies of what its references brought, and the copies copies.
TEST(ADomParserWithLimits, CountsTheCopiesOfEntitiesThatATreeMakes) {
  std::string xml = "<!DOCTYPE r [<!ENTITY e '" + repeated(100, "<a/>") + "'><!ENTITY e0 '" +
                    repeated(100, "&e;") + "'>";
  for (int i = 1; i <= 40; ++i) {
    xml += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
  }
  ReadLimits limits;
  limits.amplification = 100;
  limits.amplification_floor = 8388608;
  auto const crossing = LimitedDom::crossing(xml + "]><r>&e40;</r>", limits);
  ASSERT_TRUE(crossing.has_value());
  EXPECT_EQ(crossing->text,
            limit_text("amplification: more than 100 characters for each byte that was read"));
}

TEST(ADomParserWithLimits, DeliversDocumentsWithinThemWhole) {
  DomParser parser("<r a='1'><a>x</a><a>y</a></r>", ReadLimits::untrusted());
  DomParser::Elem root = parser.root();
  EXPECT_EQ(root.next_attr().data(), u"1");
  EXPECT_EQ(root.next_child().data(), u"x");
  EXPECT_EQ(root.next_child().data(), u"y");
  EXPECT_TRUE(root.next_child().is_nil());
}

}  // namespace
}  // namespace tests

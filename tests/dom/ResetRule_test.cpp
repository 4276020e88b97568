#include <gtest/gtest.h>

#include <string>

#include "tests/support/Raises.h"
#include "tests/support/TestTags.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

namespace tests {
namespace {

namespace tag = testtags;
using Orn::DomParser;
using Orn::RuntimeException;

TEST(SetXmlDocText, BeforeTheFirstRootOnlyReplacesTheText) {
  DomParser parser("<a/>");
  parser.set_xml_doc_text("<b/>");
  parser.set_xml_doc_text("<c/>");
  EXPECT_EQ(parser.root().tag(), tag::c);
}

TEST(SetXmlDocText, OnAnEmptyParserGivesItItsText) {
  DomParser parser;
  parser.set_xml_doc_text("<a/>");
  EXPECT_EQ(parser.root().tag(), tag::a);
}

TEST(SetXmlDocText, GivesUpTheDocumentThatWasParsed) {
  DomParser parser("<a/>");
  for (auto const& [text, root] : {std::pair("<b/>", tag::b), std::pair("<c/>", tag::c)}) {
    parser.root();
    parser.set_xml_doc_text(text);
    EXPECT_EQ(parser.root().tag(), root);
  }
}

TEST(SetXmlDocText, TakesACopyOfTheText) {
  std::string text = "<a/>";
  DomParser parser;
  parser.set_xml_doc_text(text);
  text = "<b/>";
  EXPECT_EQ(parser.root().tag(), tag::a);
}

TEST(SetXmlDocText, WithTheEmptyTextLeavesNothingToParse) {
  DomParser parser("<a/>");
  parser.root();
  parser.set_xml_doc_text("");
  EXPECT_THROW(parser.root(), RuntimeException);
}

TEST(SetXmlDocText, AfterAFailedParseGivesTheNewTextAChance) {
  for (char const* failing : {"<a>", "junk", "<a><b></a>", "<?xml version='1.5'?><a/>"}) {
    DomParser parser(failing);
    EXPECT_THROW(parser.root(), RuntimeException) << failing;
    parser.set_xml_doc_text("<b/>");
    EXPECT_EQ(parser.root().tag(), tag::b) << failing;
  }
}

TEST(SetXmlDocText, AfterTheEmptyTextHasFailedKeepsTheNewTextUnparsed) {
  DomParser parser;
  EXPECT_THROW(parser.root(), RuntimeException);
  parser.set_xml_doc_text("<a/>");
  EXPECT_TRUE(parser.root().is_nil());
  EXPECT_TRUE(parser.root().is_nil());
}

TEST(SetXmlDocText, ASecondTimeAfterTheEmptyTextHasFailedIsParsedAgain) {
  DomParser parser;
  EXPECT_THROW(parser.root(), RuntimeException);
  parser.set_xml_doc_text("<a/>");
  parser.set_xml_doc_text("<b/>");
  EXPECT_EQ(parser.root().tag(), tag::b);
}

TEST(Assignment, TakesTheTextBeforeAnythingWasParsed) {
  DomParser source("<a/>");
  DomParser target("<b/>");
  target = source;
  EXPECT_EQ(target.root().tag(), tag::a);
}

TEST(Assignment, TakesTheTextAndNotTheDocument) {
  DomParser source("<r><a/><b/></r>");
  DomParser::Elem root = source.root();
  root.next_child();
  DomParser target;
  target = source;
  source.set_xml_doc_text("<c/>");
  EXPECT_EQ(source.root().tag(), tag::c);
  EXPECT_EQ(target.root().tag(), tag::r);
  EXPECT_EQ(target.root().next_child().tag(), tag::a);
}

TEST(Assignment, LeavesTheSourceAndItsHandlesAlone) {
  DomParser source("<r><a/><b/></r>");
  DomParser::Elem root = source.root();
  root.next_child();
  {
    DomParser target;
    target = source;
    target.root();
  }
  EXPECT_EQ(root.next_child().tag(), tag::b);
  EXPECT_EQ(source.root().tag(), tag::r);
}

TEST(Assignment, GivesUpTheDocumentThatTheTargetHadParsed) {
  DomParser source("<a/>");
  DomParser target("<b/>");
  target.root();
  target = source;
  EXPECT_EQ(target.root().tag(), tag::a);
}

TEST(Assignment, AfterTheEmptyTextHasFailedKeepsTheNewTextUnparsed) {
  DomParser source("<a/>");
  DomParser target;
  EXPECT_THROW(target.root(), RuntimeException);
  target = source;
  EXPECT_TRUE(target.root().is_nil());
}

TEST(Assignment, ToItselfKeepsTheText) {
  DomParser parser("<a/>");
  DomParser const& same = parser;
  parser = same;
  EXPECT_EQ(parser.root().tag(), tag::a);
  parser = same;
  EXPECT_EQ(parser.root().tag(), tag::a);
}

TEST(Assignment, GivesTheTarget) {
  DomParser source("<a/>");
  DomParser target;
  EXPECT_EQ(&(target = source), &target);
}

TEST(FailedParse, OfATextWithARootAnswersWithWhatWasBuiltBefore) {
  DomParser parser("<r><a>x</a><b><c></b></r>");
  EXPECT_THROW(parser.root(), RuntimeException);
  DomParser::Elem root = parser.root();
  EXPECT_EQ(root.tag(), tag::r);
  EXPECT_EQ(root.next_child().data(), u"x");
  EXPECT_EQ(root.next_child().tag(), tag::b);
  EXPECT_TRUE(root.next_child().is_nil());
}

TEST(FailedParse, BeforeTheRootAnswersWithNilAndIsNotRepeated) {
  for (char const* text : {"", " ", "junk", "<!--c-->", "<a", "<p:r/>"}) {
    DomParser parser(text);
    EXPECT_THROW(parser.root(), RuntimeException) << text;
    EXPECT_TRUE(parser.root().is_nil()) << text;
    EXPECT_TRUE(parser.root().is_nil()) << text;
  }
}

TEST(FailedParse, HappensAgainAfterTheSameTextHasBeenSetAgain) {
  DomParser parser("<r>");
  EXPECT_THROW(parser.root(), RuntimeException);
  EXPECT_EQ(parser.root().tag(), tag::r);
  parser.set_xml_doc_text("<r>");
  EXPECT_THROW(parser.root(), RuntimeException);
}

}  // namespace
}  // namespace tests

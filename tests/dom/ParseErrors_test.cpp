#include <gtest/gtest.h>

#include <locale>
#include <string>

#include "tests/dom/XercesReference.h"
#include "tests/support/Raises.h"
#include "tests/support/TestTags.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::UMessage;
using Orn::UString;

RuntimeException parse_error(std::string const& xml) {
  return caught<RuntimeException>([&] { DomParser(xml).root(); });
}

UString numbered(int number) { return UMessage::Arg(number).text(); }

/// What the parser itself says of a text that is not well-formed.
UString wording_of(std::string const& xml) {
  try {
    XercesReference(xml).root();
  } catch (xercesc::SAXParseException const& e) {
    return UString(e.getMessage());
  }
  return UString();
}

struct NotWellFormed {
  std::string xml;
  int line;
  int column;
};

NotWellFormed const not_well_formed[] = {
    {"", 1, 1},
    {" ", 1, 2},
    {"\n\n", 3, 1},
    {"junk", 1, 1},
    {"<?xml version='1.0'?>", 1, 22},
    {"<!--c-->", 1, 9},
    {"<r>", 1, 4},
    {"<r", 1, 3},
    {"<r><a></r>", 1, 9},
    {"<r>\n<a>\n</b></r>", 3, 3},
    {"<r>\n  <a>\n    <b></a>\n</r>", 3, 10},
    {"<r>\r\n<a>\r\n</b></r>", 3, 3},
    {"<r/><r/>", 1, 5},
    {"<r/>x", 1, 5},
    {"<r>&u;</r>", 1, 7},
    {"<r a='1' a='2'/>", 1, 17},
    {"<r a=1/>", 1, 6},
    {"<r>\x01</r>", 1, 5},
    {"<r>]]></r>", 1, 7},
    {"<r><!-- -- --></r>", 1, 12},
    {"<r>&#0;</r>", 1, 8},
    {"<p:r/>", 1, 7},
    {"<r p:a=''/>", 1, 12},
    {"<r xmlns:p=''/>", 1, 16},
    {"<r xmlns:xml='urn:x'/>", 1, 23},
    {"<?xml version='2.0'?><r/>", 1, 20},
    {"<?xml version='1.0' encoding='nonsense'?><r/>", 1, 42},
    {"<!DOCTYPE r SYSTEM 'no-such-file.dtd'><r/>", 1, 39},
    {"<!DOCTYPE r [<!ENTITY e SYSTEM 'no-such-file.ent'>]><r>&e;</r>", 1, 59},
};

TEST(ParseError, OfATextThatIsNotWellFormedTellsLineColumnAndTheParsersWords) {
  for (auto const& [xml, line, column] : not_well_formed) {
    SCOPED_TRACE(xml);
    UString const wording = wording_of(xml);
    EXPECT_FALSE(wording.empty());
    DomParser parser(xml);
    EXPECT_RAISES(parser.root(), RuntimeException, Catalogue::XERCES_SAX_PARSE_EXCEPTION,
                  numbered(line), numbered(column), wording);
  }
}

TEST(ParseError, OfATextThatIsNotWellFormedReadsAsOneLine) {
  RuntimeException const e = parse_error("<r>\n<a>\n</b></r>");
  EXPECT_EQ(std::string(e.what()),
            "ZEMKA0675E Xerces SAXParseException: line: 3, column: 3, msg: " +
                e.message().arg(3).text().to_utf8() + ".");
}

TEST(ParseError, CarriesLineAndColumnAsLongNumbers) {
  RuntimeException const e = parse_error("<r>");
  EXPECT_EQ(e.message().arg(1).kind(), UMessage::Arg::KIND_LONG);
  EXPECT_EQ(e.message().arg(2).kind(), UMessage::Arg::KIND_LONG);
  EXPECT_EQ(e.message().arg(3).kind(), UMessage::Arg::KIND_TEXT);
}

TEST(ParseError, OfBytesThatAreNotOfTheEncodingIsASaxParseException) {
  for (char const* xml : {"<r>\xff</r>", "<r>\xc3</r>", "<r>\xed\xa0\x80</r>", "<r>\xc0\x80</r>"}) {
    EXPECT_EQ(parse_error(xml).message().index(), Catalogue::XERCES_SAX_PARSE_EXCEPTION) << xml;
  }
}

TEST(ParseError, FarDownIsToldWithPlainDigitsWhateverTheLocale) {
  struct Grouped : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::locale const before = std::locale::global(std::locale(std::locale(), new Grouped));
  RuntimeException const e = parse_error("<r>" + std::string(1233, '\n') + "</x>");
  std::locale::global(before);
  EXPECT_EQ(e.message().arg(1).text(), u"1234");
  EXPECT_NE(std::string(e.what()).find("line: 1234, column: 3,"), std::string::npos);
}

TEST(ParseError, IsRaisedForEveryBeginningOfADocument) {
  std::string const xml =
      "<?xml version='1.0'?><!--c--><p:r xmlns:p='urn:test:u' a='\xc3\xa9'>"
      "t\xf0\x9f\x98\x80<a/>&amp;<![CDATA[c]]><?pi i?></p:r>";
  EXPECT_EQ(DomParser(xml).root().tag(), testtags::u_r);
  for (std::size_t length = 0; length < xml.size(); ++length) {
    DomParser parser(xml.substr(0, length));
    try {
      parser.root();
      ADD_FAILURE() << length << " bytes were accepted";
    } catch (RuntimeException const& e) {
      EXPECT_EQ(e.message().index(), Catalogue::XERCES_SAX_PARSE_EXCEPTION) << length;
    }
  }
}

// Xerces itself raises these while it builds the document, of texts that its scanner lets pass.
TEST(ParseError, OfTheDocumentModelTellsItsCodeAndText) {
  struct {
    char const* xml;
    xercesc::DOMException::ExceptionCode code;
  } const cases[] = {
      {"<?xml version='1.5'?><r/>", xercesc::DOMException::NOT_SUPPORTED_ERR},
      {"<!DOCTYPE r [<!ATTLIST r :a CDATA 'v'>]><r/>", xercesc::DOMException::NAMESPACE_ERR},
  };
  for (auto const& refused : cases) {
    SCOPED_TRACE(refused.xml);
    xercesc::DOMException const expected(static_cast<short>(refused.code), 0,
                                         xercesc::XMLPlatformUtils::fgMemoryManager);
    UString const wording(expected.getMessage());
    EXPECT_FALSE(wording.empty());
    DomParser parser(refused.xml);
    EXPECT_RAISES(parser.root(), RuntimeException, Catalogue::XERCES_DOM_EXCEPTION,
                  numbered(refused.code), wording);
    EXPECT_EQ(parse_error(refused.xml).what(),
              "ZEMKA0674E Xerces DOMException: code: " + std::to_string(refused.code) +
                  ", msg: " + wording.to_utf8() + ".");
  }
}

}  // namespace
}  // namespace tests

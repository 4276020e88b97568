#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/sax/SaxReader.h"
#include "tests/sax/Source.h"
#include "tests/support/Raises.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/foundation/Catalogue.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::RuntimeException;
using Orn::SaxParser;
using Orn::StateException;
using Orn::TagException;
using Orn::UString;
using Elem = SaxParser::Elem;

using Input = SaxTest;

void parse_start_of(std::string const& xml) {
  std::istringstream in(xml);
  SaxParser const parser(in);
}

/// `text`, which is ASCII, in UTF-16 with a byte-order mark.
std::string utf16(std::string const& text, bool big_endian) {
  std::string bytes = big_endian ? "\xfe\xff" : "\xff\xfe";
  for (char const c : text) {
    if (big_endian) bytes += '\0';
    bytes += c;
    if (!big_endian) bytes += '\0';
  }
  return bytes;
}

TEST_F(Input, WithoutAnElementIsNoDocument) {
  for (char const* xml : {"", " ", "\n\n", "\xef\xbb\xbf", "<?xml version='1.0'?>", "<!--c-->",
                          "<?pi i?>", "<!DOCTYPE r>", "<?xml version='1.0'?><!DOCTYPE r []>\n"}) {
    SCOPED_TRACE(xml);
    EXPECT_RAISES(parse_start_of(xml), StateException, Catalogue::NOT_VALID_STREAM);
  }
}

TEST_F(Input, ThatIsNotWellFormedUpToTheRootsStartTagIsNoDocument) {
  for (char const* xml : {"x",
                          "<",
                          "<r",
                          "<r a",
                          "<r a='1",
                          "<r a='1' a='2'>",
                          "</r>",
                          "<p:r/>",
                          "<r p:a=''/>",
                          "<1/>",
                          "<!-- -- --><r/>",
                          "<?xml?><r/>",
                          " <?xml version='1.0'?><r/>",
                          "<!DOCTYPE r [<r/>",
                          "<?xml version='1.0' encoding='nonsense'?><r/>",
                          "<?xml version='2.0'?><r/>",
                          "<\xff/>",
                          "\xff\xff\n<r/>",
                          "\xff\xfe<",
                          "<r a='&u;'/>"}) {
    SCOPED_TRACE(xml);
    EXPECT_RAISES(parse_start_of(xml), StateException, Catalogue::NOT_VALID_STREAM);
  }
}

TEST_F(Input, InWhichTheRootsStepFailsIsNoDocument) {
  for (char const* xml : {"<r/>garbage", "<r/><r/>", "<r/>&amp;"}) {
    SCOPED_TRACE(xml);
    EXPECT_RAISES(parse_start_of(xml), StateException, Catalogue::NOT_VALID_STREAM);
  }
}

TEST_F(Input, BehindTheRootIsFoundOutWhenTheRootEnds) {
  Elem root = root_of("<r></r>garbage");
  EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_EQ(root.data(), u"");
  EXPECT_TRUE(root.is_empty());
  EXPECT_TRUE(root.next_child().is_nil());
}

TEST_F(Input, MayEndWithCommentsInstructionsAndWhiteSpace) {
  EXPECT_EQ(root_of("<r>x</r>\n<!--c-->\n<?pi i?>\n\n").data(), u"x");
}

TEST_F(Input, IsDecodedAsItDeclaresOrMarks) {
  std::string const xml = "<r a='&#xe9;'>&#xe9;</r>";
  std::string const documents[] = {
      xml,
      "<r a='\xc3\xa9'>\xc3\xa9</r>",
      "\xef\xbb\xbf<r a='\xc3\xa9'>\xc3\xa9</r>",
      "<?xml version='1.0' encoding='UTF-8'?><r a='\xc3\xa9'>\xc3\xa9</r>",
      "<?xml version='1.0' encoding='ISO-8859-1'?><r a='\xe9'>\xe9</r>",
      "<?xml version='1.0' encoding='latin1'?><r a='\xe9'>\xe9</r>",
      "<?xml version='1.0' encoding='IBM850'?><r a='\x82'>\x82</r>",
      utf16(xml, false),
      utf16(xml, true),
      utf16("<?xml version='1.0' encoding='UTF-16'?>" + xml, true),
  };
  for (std::string const& document : documents) {
    SCOPED_TRACE(document);
    Elem root = root_of(document);
    EXPECT_EQ(root.data(), u"\u00e9");
    EXPECT_EQ(root.next_attr().data(), u"\u00e9");
  }
}

TEST_F(Input, OfManyPiecesIsDecodedAcrossTheirBorders) {
  // Characters of one to four bytes, so that every kind of them is cut in every way.
  std::string text;
  while (text.size() < 100000) text += "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80";
  for (std::string const front : {"", " ", "  ", "   ", "    "}) {
    EXPECT_TRUE(root_of(front + "<r>" + text + "</r>").data().to_utf8() == text);
  }
}

TEST_F(Input, OfXml11IsRead) {
  EXPECT_EQ(root_of("<?xml version='1.1'?><r>&#1;</r>").data(), u"\u0001");
}

TEST_F(Input, IsNotValidated) {
  EXPECT_EQ(root_of("<!DOCTYPE r [<!ELEMENT r EMPTY><!ATTLIST r a CDATA #REQUIRED>]>"
                    "<r b='1'>x</r>")
                .data(),
            u"x");
}

TEST_F(Input, NeedsNoExternalSubset) {
  EXPECT_EQ(root_of("<!DOCTYPE r SYSTEM '/no-such-directory/r.dtd'><r>x</r>").data(), u"x");
}

TEST_F(Input, IsReadWhereItRefersToAnExternalEntity) {
  std::string const path = testing::TempDir() + "sax_test_entity.xml";
  std::ofstream(path) << "v<a>w</a>";
  Elem root = root_of("<!DOCTYPE r [<!ENTITY e SYSTEM '" + path + "'>]><r>u&e;x</r>");
  EXPECT_EQ(root.data(), u"uvx");
  EXPECT_EQ(root.child(tag::a).data(), u"w");
  std::remove(path.c_str());
}

TEST_F(Input, IsTakenInPiecesOfAtMost1024Bytes) {
  static_assert(SaxParser::MAX_READ == 1024);
  std::string const text(1000000, 'x');
  Source source("<?xml version='1.0'?><r a='" + text + "'><!--" + text + "-->" + text + "</r>");
  EXPECT_TRUE(SaxParser(source).root().data().to_utf8() == text);
  EXPECT_EQ(source.largest_read(), 1024);
  EXPECT_EQ(source.taken(), 3000000U + 40U);
  EXPECT_LE(source.reads(), 3000000U / 1024 + 4);
}

TEST_F(Input, IsNeverSought) {
  Source source("<r><a/>" + std::string(5000, ' ') + "</r>");
  SaxParser(source).root().data();
  EXPECT_FALSE(source.sought());
}

void expect_no_more_of(Elem root) {
  for (int i = 0; i < 3; ++i) {
    EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM);
    EXPECT_RAISES(root.child(tag::x), StateException, Catalogue::NOT_VALID_STREAM);
  }
  EXPECT_EQ(root.child().tag(), tag::a);
}

/// A document that needs more pieces than the first for anything behind `a`.
std::string const long_document = "<r><a/>" + std::string(3000, ' ') + "<b/></r>";

TEST_F(Input, ThatGoesBadIsABadReadForTheCallThatNeedsTheNextPiece) {
  Source source(long_document);
  source.break_at(2000);
  SaxParser const parser(source);
  EXPECT_EQ(parser.root().child().tag(), tag::a);
  EXPECT_RAISES(parser.root().child(tag::b), RuntimeException, Catalogue::BAD_READ);
  expect_no_more_of(parser.root());
  EXPECT_EQ(parser.error_text(), u"");
}

TEST_F(Input, MarkedBadByItsOwnerIsABadRead) {
  std::istringstream in(long_document);
  SaxParser const parser(in);
  in.setstate(std::ios_base::badbit);
  EXPECT_EQ(parser.root().child().tag(), tag::a);
  EXPECT_RAISES(parser.root().data(), RuntimeException, Catalogue::BAD_READ);
  in.clear();
  expect_no_more_of(parser.root());
}

TEST_F(Input, ThatIsBadFromTheStartIsABadRead) {
  std::istringstream in("<r/>");
  in.setstate(std::ios_base::badbit);
  EXPECT_RAISES(SaxParser(in), RuntimeException, Catalogue::BAD_READ);
}

TEST_F(Input, ThatEndsEarlyIsMalformed) {
  std::istringstream in("<r><a/>" + std::string(3000, ' ') + "<b>");
  SaxParser const parser(in);
  EXPECT_EQ(parser.root().child().tag(), tag::a);
  EXPECT_EQ(parser.root().child(tag::b).tag(), tag::b);
  EXPECT_RAISES(parser.root().data(), StateException, Catalogue::NOT_VALID_STREAM);
  expect_no_more_of(parser.root());
  EXPECT_FALSE(parser.error_text().empty());
}

TEST_F(Input, WithItsFailBitSetIsAtItsEndAndNotBad) {
  std::istringstream in("<r/>");
  in.setstate(std::ios_base::failbit);
  EXPECT_RAISES(SaxParser(in), StateException, Catalogue::NOT_VALID_STREAM);
  std::ifstream absent("/no-such-directory/r.xml");
  EXPECT_RAISES(SaxParser(absent), StateException, Catalogue::NOT_VALID_STREAM);
}

TEST_F(Input, WhoseStreamThrowsOnEndOfFilePassesThatOn) {
  Source source(long_document);
  source.exceptions(std::ios_base::eofbit);
  SaxParser const parser(source);
  EXPECT_EQ(parser.root().child().tag(), tag::a);
  EXPECT_THROW(parser.root().data(), std::ios_base::failure);
  expect_no_more_of(parser.root());
  EXPECT_EQ(source.exceptions(), std::ios_base::eofbit);
}

TEST_F(Input, WhoseStreamThrowsWhenItGoesBadPassesThatOn) {
  Source source(long_document);
  source.break_at(2000);
  source.exceptions(std::ios_base::badbit);
  SaxParser const parser(source);
  EXPECT_EQ(parser.root().child().tag(), tag::a);
  EXPECT_THROW(parser.root().data(), SourceBroke);
  expect_no_more_of(parser.root());
}

TEST_F(Input, WhoseStreamThrowsAtOncePassesThatOnFromTheConstructor) {
  std::istringstream empty;
  empty.exceptions(std::ios_base::failbit);
  EXPECT_THROW(SaxParser{empty}, std::ios_base::failure);
  Source source("<r/>");
  source.break_at(0);
  source.exceptions(std::ios_base::badbit);
  EXPECT_THROW(SaxParser{source}, SourceBroke);
}

TEST_F(Input, WithAnElementThatIsNotRegisteredEndsThere) {
  Elem root = root_of("<r><a/><p:unknown xmlns:p='urn:test:x'/><b/></r>");
  EXPECT_EQ(root.child().tag(), tag::a);
  TagException const e = caught<TagException>([&] { root.child(tag::b); });
  EXPECT_EQ(e.message().arg(1).text(), u"unknown");
  EXPECT_EQ(e.message().arg(2).text(), u"urn:test:x");
  expect_no_more_of(root);
}

TEST_F(Input, WithAnAttributeThatIsNotRegisteredEndsThere) {
  Elem root = root_of("<r><a/><b c='1' unknown='2' d='3'/></r>");
  EXPECT_EQ(root.child().tag(), tag::a);
  TagException const e = caught<TagException>([&] { root.child(tag::b); });
  EXPECT_EQ(e.message().arg(1).text(), u"unknown");
  EXPECT_EQ(e.message().arg(2).text(), u"");
  expect_no_more_of(root);
}

TEST_F(Input, WithARootThatIsNotRegisteredIsRefusedByTheConstructor) {
  EXPECT_THROW(parse_start_of("<unknown/>"), TagException);
  EXPECT_THROW(parse_start_of("<r xmlns='urn:test:w'/>"), TagException);
  EXPECT_THROW(parse_start_of("<r unknown='1'/>"), TagException);
}

TEST_F(Input, WithNamesThatAreNotRegisteredOutsideOfElementsAndAttributesIsFine) {
  EXPECT_EQ(root_of("<?unknown i?><!DOCTYPE unknown [<!ENTITY unknown 'x'>]>"
                    "<unknown:r xmlns:unknown='urn:test:u'>&unknown;<?unknown?></unknown:r>")
                .data(),
            u"x");
}

TEST_F(Input, ThatIsMalformedLaterEndsThere) {
  Elem root = root_of("<r><a/>x<b></c></r>");
  EXPECT_EQ(root.child(tag::b).tag(), tag::b);
  EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM);
  expect_no_more_of(root);
  EXPECT_EQ(root.next_child().tag(), tag::a);
  Elem b = root.next_child();
  EXPECT_RAISES(b.data(), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_RAISES(b.is_empty(), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_RAISES(root.next_child(), StateException, Catalogue::NOT_VALID_STREAM);
}

TEST_F(Input, IsOverWithTheRootAndStaysSo) {
  Elem root = root_of("<r><a/></r>");
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(root.data(), u"");
    EXPECT_TRUE(root.opt_child(tag::b).is_nil());
  }
}

}  // namespace
}  // namespace tests

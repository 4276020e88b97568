#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

#include "tests/dom/DomReader.h"
#include "tests/support/Raises.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::StateException;
using Orn::UString;
using Orn::XmlDoc;

static_assert(std::has_virtual_destructor_v<DomParser>);
static_assert(std::is_default_constructible_v<DomParser>);
static_assert(!std::is_copy_constructible_v<DomParser>);
static_assert(!std::is_move_constructible_v<DomParser>);
static_assert(std::is_copy_assignable_v<DomParser>);

/// `text`, which is ASCII, in UTF-16 with a byte-order mark.
std::string utf16(std::string const& text, bool big_endian) {
  std::string bytes = big_endian ? "\xfe\xff" : "\xff\xfe";
  for (char c : text) {
    bytes += big_endian ? '\0' : c;
    bytes += big_endian ? c : '\0';
  }
  return bytes;
}

XmlDoc document_with_text(UString const& text) {
  XmlDoc doc(tag::u_r);
  doc.append_elem_body(text, true);
  doc.close();
  return doc;
}

TEST(DomParser, DoesNotParseBeforeItsRootIsAskedFor) {
  EXPECT_NO_THROW(DomParser());
  EXPECT_NO_THROW(DomParser(""));
  EXPECT_NO_THROW(DomParser("<r><not well-formed"));
}

TEST(DomParser, TakesACopyOfTheText) {
  std::string text = "<a/>";
  DomParser parser(text);
  text = "<b/>";
  EXPECT_EQ(parser.root().tag(), tag::a);
}

TEST(DomParser, TakesOverATextThatIsGivenAway) {
  std::string text = "<r><a>a text that is too long to be kept in the string itself</a></r>";
  DomParser parser(std::move(text));
  text = "<b/>";
  EXPECT_EQ(parser.root().tag(), tag::r);
}

TEST(DomParser, GivesANewHandleOnTheSameElementEachTimeItsRootIsAskedFor) {
  DomParser parser("<r x='1'><a/><b/></r>");
  DomParser::Elem first = parser.root();
  first.next_child();
  first.next_attr();
  DomParser::Elem second = parser.root();
  EXPECT_EQ(remaining_children(second), (Tags{tag::a, tag::b}));
  EXPECT_EQ(remaining_attributes(second), (Attributes{{tag::x, u"1"}}));
  EXPECT_EQ(first.next_child().tag(), tag::b);
}

TEST(DomParser, KeepsHandlesGoodForAsLongAsItLives) {
  DomParser parser("<r><a b='1'>x</a></r>");
  DomParser::Elem a = parser.root().child();
  DomParser::Attribute b = parser.root().child().next_attr();
  parser.root();
  EXPECT_EQ(a.data(), u"x");
  EXPECT_EQ(b.data(), u"1");
}

TEST(DomParser, TakesTheEncodingFromTheText) {
  std::string const xml = "<r>&#xe9;</r>";
  std::string const documents[] = {
      xml,
      "<r>\xc3\xa9</r>",
      "\xef\xbb\xbf<r>\xc3\xa9</r>",
      "<?xml version='1.0' encoding='UTF-8'?><r>\xc3\xa9</r>",
      "<?xml version='1.0' encoding='ISO-8859-1'?><r>\xe9</r>",
      "<?xml version='1.0' encoding='IBM850'?><r>\x82</r>",
      utf16(xml, false),
      utf16(xml, true),
  };
  for (std::string const& document : documents) {
    EXPECT_EQ(DomParser(document).root().data(), u"\u00e9") << document;
  }
}

TEST(DomParser, DoesNotValidate) {
  DomParser parser("<!DOCTYPE r [<!ELEMENT r EMPTY><!ATTLIST r a CDATA #REQUIRED>]><r b='1'>x</r>");
  EXPECT_EQ(parser.root().data(), u"x");
}

TEST(DomParser, ReadsDocumentsOfXml11) {
  EXPECT_EQ(DomParser("<?xml version='1.1'?><r>&#1;</r>").root().data(), u"\u0001");
}

TEST(DomParserOfAWriter, ReadsBackWhatWasWritten) {
  XmlDoc doc(tag::u_r);
  doc.add_attr(tag::v_a, 42);
  doc.add_elem(tag::u_b, u"R&D <1>", true);
  doc.add_elem_CDATA(tag::w_a, u"<&>");
  doc.close();
  DomParser parser(doc);
  DomParser::Elem root = parser.root();
  root.match(tag::u_r);
  EXPECT_EQ(remaining_attributes(root), (Attributes{{tag::v_a, u"42"}}));
  EXPECT_EQ(root.child(tag::u_b).data(), u"R&D <1>");
  EXPECT_EQ(root.child(tag::w_a).data(), u"<&>");
  EXPECT_EQ(remaining_children(root), (Tags{tag::u_b, tag::w_a}));
}

TEST(DomParserOfAWriter, ReadsTextOutsideOfAscii) {
  UString const text(u"caf\u00e9 \u20ac \u65e5\u672c \U0001F600");
  DomParser parser(document_with_text(text));
  EXPECT_EQ(parser.root().data(), text);
}

TEST(DomParserOfAWriter, DoesNotNeedTheWriterAnyMore) {
  XmlDoc doc = document_with_text(u"x");
  DomParser parser(doc);
  doc = document_with_text(u"y");
  EXPECT_EQ(parser.root().data(), u"x");
}

TEST(DomParserOfAWriter, RefusesADocumentThatIsNotClosed) {
  for (XmlDoc const& doc : {XmlDoc(), XmlDoc(tag::r)}) {
    EXPECT_TRUE(raises([&] { DomParser parser(doc); }, typeid(StateException),
                       Catalogue::CLOSE_NOT_CALLED));
  }
}

TEST(DomParserOfAWriter, TakesTheTextUpToItsFirstNul) {
  DomParser parser(document_with_text(UString(u"x\0y", 3)));
  DomParser cut("<?xml version=\"1.0\" encoding=\"UTF-8\"?><N1:r xmlns:N1=\"urn:test:u\">x");
  EXPECT_STREQ(caught<RuntimeException>([&] { parser.root(); }).what(),
               caught<RuntimeException>([&] { cut.root(); }).what());
}

}  // namespace
}  // namespace tests

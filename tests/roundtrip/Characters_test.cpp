#include <gtest/gtest.h>

#include "tests/roundtrip/Routes.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::UString;
using Orn::XmlDoc;

/// Whether XML 1.0 documents may hold the character.
bool is_xml_character(char32_t c) {
  if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
  return c < 0xD800 || (c > 0xDFFF && c != 0xFFFE && c != 0xFFFF);
}

UString text_of(char32_t c) {
  if (c < 0x10000) return UString().append(static_cast<unsigned short>(c));
  return UString()
      .append(static_cast<unsigned short>(0xD800 + ((c - 0x10000) >> 10)))
      .append(static_cast<unsigned short>(0xDC00 + (c & 0x3FF)));
}

std::vector<UString> xml_characters(char32_t from, char32_t to) {
  std::vector<UString> characters;
  for (char32_t c = from; c < to; ++c) {
    if (is_xml_character(c)) characters.push_back(text_of(c));
  }
  return characters;
}

testing::AssertionResult come_back(Route const& route, std::vector<UString> const& texts) {
  std::vector<UString> const read = sent(route, texts);
  if (read.size() != texts.size()) {
    return testing::AssertionFailure() << read.size() << " texts instead of " << texts.size();
  }
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (read[i] != expected(route, texts[i])) {
      return testing::AssertionFailure() << "as " << route.name << ", \"" << texts[i]
                                         << "\" is read back as \"" << read[i] << '"';
    }
  }
  return testing::AssertionSuccess();
}

class EveryXmlCharacter : public testing::TestWithParam<Route> {};

// All of Unicode but the surrogates, 29 control characters, U+FFFE and U+FFFF.
constexpr std::size_t not_xml = 0x800 + 29 + 2;

// Beyond the first plane all characters are alike; the other test has them.
TEST_P(EveryXmlCharacter, OfTheFirstPlaneIsReadBackAlone) {
  std::vector<UString> const characters = xml_characters(0, 0x10000);
  EXPECT_EQ(characters.size(), 0x10000 - not_xml);
  EXPECT_TRUE(come_back(GetParam(), characters));
}

TEST_P(EveryXmlCharacter, IsReadBackAmongItsNeighbours) {
  std::vector<UString> texts;
  std::size_t count = 0;
  for (char32_t from = 0; from < 0x110000; from += 0x100) {
    UString text;
    for (UString const& character : xml_characters(from, from + 0x100)) {
      text.append(character);
      ++count;
    }
    texts.push_back(text);
  }
  EXPECT_EQ(count, 0x110000 - not_xml);
  EXPECT_TRUE(come_back(GetParam(), texts));
}

std::string route_name(testing::TestParamInfo<Route> const& route) {
  std::string name = route.param.name;
  for (char& c : name) c = c == ' ' ? '_' : c;
  return name;
}

INSTANTIATE_TEST_SUITE_P(Through, EveryXmlCharacter,
                         testing::Values(escaped_text, cdata, escaped_attribute), route_name);

/// All texts of at most five of the characters that mean something to an XML reader.
std::vector<UString> tricky_texts() {
  std::vector<UString> texts{UString()};
  std::size_t shorter = 0;
  for (int length = 1; length <= 5; ++length) {
    std::size_t const longest = texts.size();
    for (; shorter < longest; ++shorter) {
      for (char16_t c : {u'x', u'&', u'<', u'>', u']', u'"', u'\r', u'\n'}) {
        texts.push_back(UString(texts[shorter]).append(c));
      }
    }
  }
  return texts;
}

TEST(TrickyTexts, AreReadBackFromEscapedTextAndAttributes) {
  std::vector<UString> const texts = tricky_texts();
  EXPECT_TRUE(come_back(escaped_text, texts));
  EXPECT_TRUE(come_back(escaped_attribute, texts));
}

TEST(TrickyTexts, AreReadBackFromCdataUnlessTheyHoldItsEnd) {
  std::vector<UString> texts;
  for (UString const& text : tricky_texts()) {
    if (text.find(u"]]>", 0) == UString::npos) texts.push_back(text);
  }
  EXPECT_TRUE(come_back(cdata, texts));
}

TEST(ACarriageReturn, IsReadBackFromTextAsALineFeedAndFromAttributesAsItself) {
  UString const text = u"a\rb\r\nc\n\rd";
  EXPECT_EQ(sent(escaped_text, text), u"a\nb\nc\n\nd");
  EXPECT_EQ(sent(cdata, text), u"a\nb\nc\n\nd");
  EXPECT_EQ(sent(escaped_attribute, text), text);
}

TEST(ACarriageReturn, IsReadBackFromTextThatRefersToIt) {
  XmlDoc doc;
  doc.add_elem(u_r, u"a&#13;&#10;b", false);
  doc.close();
  DomParser parser(doc);
  EXPECT_EQ(parser.root().data(), u"a\r\nb");
}

TEST(ALoneSurrogate, IsReadBackAsTheReplacementCharacter) {
  for (char16_t surrogate : {u'\xD800', u'\xDBFF', u'\xDC00', u'\xDFFF'}) {
    UString const text = UString(u"a").append(surrogate).append(u"b");
    for (Route const& route : {escaped_text, cdata, escaped_attribute}) {
      EXPECT_EQ(sent(route, text), u"a\uFFFDb");
    }
  }
}

testing::AssertionResult cannot_be_read(Route const& route, UString const& text) {
  try {
    sent(route, text);
  } catch (RuntimeException const& e) {
    if (e.message().index() == Catalogue::XERCES_SAX_PARSE_EXCEPTION) {
      return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << e.what();
  }
  return testing::AssertionFailure() << "it was read";
}

TEST(ACharacterThatIsNotXml, CanBeWrittenButNotRead) {
  std::vector<char32_t> forbidden{0xFFFE, 0xFFFF};
  for (char32_t c = 0; c < 0x20; ++c) {
    if (!is_xml_character(c)) forbidden.push_back(c);
  }
  for (char32_t c : forbidden) {
    for (Route const& route : {escaped_text, cdata, escaped_attribute}) {
      EXPECT_TRUE(cannot_be_read(route, text_of(c))) << route.name << ", character " << c;
    }
  }
}

TEST(TextsThatMakeUpACdataEnd, CanBeWrittenOneByOneButNotRead) {
  XmlDoc doc(u_r);
  doc.append_elem_body(u"]]", true);
  doc.append_elem_body(u">", true);
  doc.close();
  DomParser parser(doc);
  EXPECT_THROW(parser.root(), RuntimeException);
}

}  // namespace
}  // namespace tests

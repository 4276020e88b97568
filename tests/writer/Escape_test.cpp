#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/writer/ThreePassEscape.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {
namespace {

using Orn::UString;
using Orn::XmlDoc;

struct Escaped {
  char16_t const* text;
  char16_t const* escaped;
};

TEST(Escape, LeavesTextAloneThatNeedsNone) {
  for (char16_t const* text : {u"", u"a", u">", u"\"'", u"]]", u"]>", u"] ]>", u">]]", u"]] >",
                               u"\t\n\r\u0001\u0085\u2028\uFFFE", u"\U0001F600\u00e9"}) {
    EXPECT_EQ(XmlDoc::escape(text), text);
  }
}

TEST(Escape, ReplacesTheCharactersThatWouldBeMarkup) {
  Escaped const table[] = {
      {u"a<b", u"a&lt;b"},          {u"&", u"&amp;"},          {u"<", u"&lt;"},
      {u"&&", u"&amp;&amp;"},       {u"<<<", u"&lt;&lt;&lt;"}, {u"<>", u"&lt;>"},
      {u"&<&", u"&amp;&lt;&amp;"},  {u"]]>", u"]]&gt;"},       {u"]]]>", u"]]]&gt;"},
      {u"]]>]]>", u"]]&gt;]]&gt;"}, {u"]]]]>>", u"]]]]&gt;>"},
  };
  for (Escaped const& row : table) EXPECT_EQ(XmlDoc::escape(row.text), row.escaped);
}

TEST(Escape, EscapesEntitiesAgain) {
  EXPECT_EQ(XmlDoc::escape(u"&amp;"), u"&amp;amp;");
  EXPECT_EQ(XmlDoc::escape(u"]]&gt;"), u"]]&amp;gt;");
}

TEST(Escape, WrapsTextInCdataWhereThatIsNotLonger) {
  Escaped const table[] = {
      {u"&&&&", u"<![CDATA[&&&&]]>"},         {u"&&&", u"<![CDATA[&&&]]>"},
      {u"<<<<", u"<![CDATA[<<<<]]>"},         {u"&&<<", u"<![CDATA[&&<<]]>"},
      {u"&<<<", u"<![CDATA[&<<<]]>"},         {u"&&&]]", u"<![CDATA[&&&]]]]>"},
      {u"a&b&c&d>", u"<![CDATA[a&b&c&d>]]>"},
  };
  for (Escaped const& row : table) EXPECT_EQ(XmlDoc::escape(row.text), row.escaped);
}

TEST(Escape, KeepsEntitiesWhereTheyAreOneUnitShorterThanCdata) {
  EXPECT_EQ(XmlDoc::escape(u"&&<"), u"&amp;&amp;&lt;");
}

TEST(Escape, NeverWrapsATextThatHoldsTheEndOfCdata) {
  EXPECT_EQ(XmlDoc::escape(u"<]]>"), u"&lt;]]&gt;");
  EXPECT_EQ(XmlDoc::escape(u"&&&&]]>"), u"&amp;&amp;&amp;&amp;]]&gt;");
  EXPECT_EQ(XmlDoc::escape(u"]]>]]>]]>]]>"), u"]]&gt;]]&gt;]]&gt;]]&gt;");
}

TEST(Escape, KeepsZeroUnitsAndLoneSurrogates) {
  std::u16string const text{u'a', u'\0', 0xD800, u'<', 0xDC00};
  std::u16string const escaped{u'a', u'\0', 0xD800, u'&', u'l', u't', u';', 0xDC00};
  EXPECT_EQ(XmlDoc::escape(UString(text.data(), text.size())),
            UString(escaped.data(), escaped.size()));
}

TEST(Escape, LeavesItsArgumentAlone) {
  UString const text(u"&&&<");
  XmlDoc::escape(text);
  EXPECT_EQ(text, u"&&&<");
}

testing::AssertionResult escapes_by_definition(std::u16string const& text) {
  UString const escaped = XmlDoc::escape(UString(text.data(), text.size()));
  std::u16string const wanted = in_three_passes(text);
  if (escaped == UString(wanted.data(), wanted.size())) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << '"' << UString(text.data(), text.size()) << "\" becomes \"" << escaped << '"';
}

TEST(Escape, FollowsItsDefinitionForAllShortTexts) {
  std::u16string const alphabet = u"x&<]>";
  std::vector<std::u16string> shorter{u""};
  for (int length = 1; length <= 7; ++length) {
    std::vector<std::u16string> texts;
    for (std::u16string const& head : shorter) {
      for (char16_t unit : alphabet) texts.push_back(head + unit);
    }
    for (std::u16string const& text : texts) ASSERT_TRUE(escapes_by_definition(text));
    shorter = std::move(texts);
  }
}

TEST(Escape, FollowsItsDefinitionForRandomLongTexts) {
  std::u16string const units = u"abcdefgh\u00e9\u4e00&<]]]>>";
  for (unsigned seed = 1; seed <= 2000; ++seed) {
    std::mt19937 random(seed);
    std::size_t const kinds = 1 + random() % units.size();
    std::u16string text(random() % 400, u' ');
    for (char16_t& unit : text) unit = units[units.size() - 1 - random() % kinds];
    ASSERT_TRUE(escapes_by_definition(text)) << "seed " << seed;
  }
}

TEST(EscapeAttr, LeavesAValueAloneThatNeedsNone) {
  for (char16_t const* value : {u"", u"v", u" a b ", u">", u"'", u"]]>", u"\u00e9\U0001F600"}) {
    EXPECT_EQ(XmlDoc::escape_attr(value), value);
  }
}

TEST(EscapeAttr, ReplacesWhatWouldEndTheValueOrBeMarkup) {
  EXPECT_EQ(XmlDoc::escape_attr(u"R&D"), u"R&amp;D");
  EXPECT_EQ(XmlDoc::escape_attr(u"a<b>c"), u"a&lt;b>c");
  EXPECT_EQ(XmlDoc::escape_attr(u"\"q\" 's'"), u"&quot;q&quot; 's'");
  EXPECT_EQ(XmlDoc::escape_attr(u"&&&&\"<"), u"&amp;&amp;&amp;&amp;&quot;&lt;");
}

TEST(EscapeAttr, EscapesEntitiesAgain) {
  EXPECT_EQ(XmlDoc::escape_attr(u"&quot;&#9;"), u"&amp;quot;&amp;#9;");
}

TEST(EscapeAttr, WritesTheBlanksThatAReaderWouldNormaliseAsReferences) {
  EXPECT_EQ(XmlDoc::escape_attr(u"a\tb\nc\r\n"), u"a&#9;b&#10;c&#13;&#10;");
}

}  // namespace
}  // namespace tests

#include "vocabulary/DefFile.h"

#include <gmock/gmock.h>

#include <limits>

#include "vocabulary/DefLiterals.h"

namespace vocabulary {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::string> complaints(std::string const& text) {
  std::vector<std::string> lines;
  for (Complaint const& complaint : parse_def("a.def", text).complaints) {
    lines.push_back(complaint.place.file + ":" + std::to_string(complaint.place.line) + ": " +
                    complaint.text);
  }
  return lines;
}

DefEntry only_entry(std::string const& text) {
  DefFile const file = parse_def("a.def", text);
  EXPECT_THAT(complaints(text), IsEmpty());
  EXPECT_THAT(file.entries, SizeIs(1));
  return file.entries.empty() ? DefEntry() : file.entries.front();
}

TEST(AVocabularyFile, HasNamespacesAndNames) {
  DefFile const file = parse_def("a.def", R"(TQ_NS(3, ns_a, u"urn:a")
// A name.
TQ_TAG(-4, b, ns_a, u"b-c") /* and */ TQ_TAG(0x10, d, TQ_NO_NS, u"d")
TQ_CATCH_ALL(1'000,
             other, TQ_NO_NS,
             u"other")
)");
  EXPECT_THAT(file.complaints, IsEmpty());
  ASSERT_THAT(file.entries, SizeIs(4));
  EXPECT_EQ(file.entries[0].kind, DefEntry::NAMESPACE);
  EXPECT_EQ(file.entries[0].number, 3);
  EXPECT_EQ(file.entries[0].constant, "ns_a");
  EXPECT_EQ(file.entries[0].text, u"urn:a");
  EXPECT_EQ(file.entries[1].kind, DefEntry::TAG);
  EXPECT_EQ(file.entries[1].number, -4);
  EXPECT_EQ(file.entries[1].ns, "ns_a");
  EXPECT_EQ(file.entries[1].text, u"b-c");
  EXPECT_EQ(file.entries[1].place.line, 3U);
  EXPECT_EQ(file.entries[2].number, 16);
  EXPECT_EQ(file.entries[2].ns, "");
  EXPECT_EQ(file.entries[3].kind, DefEntry::CATCH_ALL);
  EXPECT_EQ(file.entries[3].number, 1000);
  EXPECT_EQ(file.entries[3].place.line, 4U);
}

TEST(AVocabularyFile, MayBeEmpty) {
  EXPECT_THAT(complaints(""), IsEmpty());
  EXPECT_THAT(complaints("// nothing"), IsEmpty());
  EXPECT_THAT(parse_def("a.def", "\n\n").entries, IsEmpty());
}

TEST(AVocabularyFile, MayHaveTheGreatestNumbersByName) {
  EXPECT_EQ(only_entry("TQ_NS(INT32_MIN, a, u\"a\")").number,
            std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(only_entry("TQ_NS(INT32_MAX, a, u\"a\")").number,
            std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(only_entry("TQ_NS(-INT32_MAX, a, u\"a\")").number,
            -std::numeric_limits<std::int32_t>::max());
}

TEST(AVocabularyFile, MayHaveEscapesAndSeveralLiteralsInARow) {
  EXPECT_EQ(only_entry(R"(TQ_NS(1, a, u"\u20ac\U0001F600\"\\\101\x42" "c" u"d"))").text,
            u"\u20ac\U0001F600\"\\ABcd");
  EXPECT_EQ(only_entry("TQ_NS(1, a, u\"caf\xc3\xa9\")").text, u"caf\u00e9");
  EXPECT_EQ(only_entry(R"(TQ_NS(1, a, u"http://a//b/*c*/"))").text, u"http://a//b/*c*/");
}

TEST(AVocabularyFile, IsComplainedAboutWhereItIsNoVocabulary) {
  EXPECT_THAT(complaints("#include \"b.def\"\nTQ_NS(1, a, u\"a\")\nnonsense\n"),
              ElementsAre("a.def:1: expected TQ_NS, TQ_TAG or TQ_CATCH_ALL, found '#'",
                          "a.def:3: expected TQ_NS, TQ_TAG or TQ_CATCH_ALL, found 'nonsense'"));
  EXPECT_THAT(complaints("TQ_NS(1, a, u\"a\");"),
              ElementsAre("a.def:1: expected TQ_NS, TQ_TAG or TQ_CATCH_ALL, found ';'"));
  EXPECT_THAT(complaints("TQ_NS(1, a, u\"a\")\n/* TQ_NS(2, b, u\"b\")"),
              ElementsAre("a.def:2: expected TQ_NS, TQ_TAG or TQ_CATCH_ALL, found "
                          "'/* without an end'"));
}

TEST(AVocabularyFile, IsComplainedAboutWhereAnEntryIsMalformed) {
  EXPECT_THAT(complaints("TQ_NS 1, a, u\"a\")"), ElementsAre("a.def:1: expected '(', found '1'"));
  EXPECT_THAT(complaints("TQ_NS(one, a, u\"a\")"),
              ElementsAre("a.def:1: expected a number of 32 bits, found 'one'"));
  EXPECT_THAT(complaints("TQ_NS(2147483648, a, u\"a\")"),
              ElementsAre("a.def:1: expected a number of 32 bits, found '2147483648'"));
  EXPECT_THAT(complaints("TQ_NS(1u, a, u\"a\")"),
              ElementsAre("a.def:1: expected a number of 32 bits, found '1u'"));
  EXPECT_THAT(complaints("TQ_NS(1, 2, u\"a\")"),
              ElementsAre("a.def:1: expected the constant, found '2'"));
  EXPECT_THAT(complaints("TQ_TAG(1, a, 2, u\"a\")"),
              ElementsAre("a.def:1: expected the constant of a namespace, found '2'"));
  EXPECT_THAT(complaints("TQ_TAG(1, a, u\"a\")"),
              ElementsAre("a.def:1: expected the constant of a namespace, found 'u\"a\"'"));
  EXPECT_THAT(complaints("TQ_NS(1, a, \"a\")"),
              ElementsAre("a.def:1: expected a text, u\"...\", found '\"a\"'"));
  EXPECT_THAT(complaints("TQ_NS(1, a, u8\"a\")"),
              ElementsAre("a.def:1: expected a text, u\"...\", found 'u8\"a\"'"));
  EXPECT_THAT(complaints("TQ_NS(1, a, u\"a\""),
              ElementsAre("a.def:1: expected ')', found the end of the file"));
}

TEST(AVocabularyFile, IsComplainedAboutWhereATextIsMalformed) {
  EXPECT_THAT(complaints("TQ_NS(1, a, u\"a\n"),
              ElementsAre("a.def:1: u\"a: a literal without its end"));
  EXPECT_THAT(complaints("TQ_NS(1, a, u\"\\q\")"),
              ElementsAre("a.def:1: u\"\\q\": a \\ that means nothing"));
  EXPECT_THAT(complaints("TQ_NS(1, a, u\"\\u12\")"),
              ElementsAre("a.def:1: u\"\\u12\": a \\u that means nothing"));
  EXPECT_THAT(complaints("TQ_NS(1, a, u\"\\U00110000\")"),
              ElementsAre("a.def:1: u\"\\U00110000\": a number beyond the last character"));
  EXPECT_THAT(complaints("TQ_NS(1, a, u\"\xff\")"),
              ElementsAre("a.def:1: u\"\xff\": bytes that are not UTF-8"));
}

TEST(AVocabularyFile, IsReadOnBehindAMalformedEntry) {
  DefFile const file =
      parse_def("a.def", "TQ_NS(1, a)\nTQ_NS(2, b, u\"b\")\nTQ_TAG(1 c)\nTQ_TAG(4, d, b, u\"d\")");
  EXPECT_THAT(file.complaints, SizeIs(2));
  EXPECT_THAT(file.entries, SizeIs(2));
}

TEST(AVocabularyFile, IsReadToItsEndWhateverIsCutOffOrOverwritten) {
  std::string const whole =
      "TQ_NS(1, ns_a, u\"urn:\\u00e9\" \"a\") // end\n/* so */ TQ_TAG(-0x2, b, ns_a, u\"b\")\n";
  ASSERT_THAT(complaints(whole), IsEmpty());
  for (std::size_t i = 0; i < whole.size(); ++i) {
    DefFile const cut = parse_def("a.def", whole.substr(0, i));
    EXPECT_LE(cut.entries.size() + cut.complaints.size(), 2U);
    for (char const other : {'\0', '\n', '"', '\'', '(', '*', '/', '\\', 'u', '7', '#', '\xff'}) {
      std::string text = whole;
      text[i] = other;
      DefFile const changed = parse_def("a.def", text);
      EXPECT_LE(changed.entries.size() + changed.complaints.size(), 3U) << text;
    }
  }
}

TEST(TheLiteralOfAText, IsReadBackAsTheText) {
  for (std::u16string const text :
       {u"urn:a", u"", u"\"\\", u"caf\u00e9 \u20ac \U0001F600", u"a\u0001\u007f\u0085\u009f1\n?"}) {
    EXPECT_EQ(text_of(literal_of(text)), text) << literal_of(text);
  }
}

TEST(TheLiteralOfAText, HasNothingButAscii) {
  EXPECT_EQ(literal_of(u"a\"b\\c"), R"(u"a\"b\\c")");
  EXPECT_EQ(literal_of(u"caf\u00e9"), R"(u"caf\u00e9")");
  EXPECT_EQ(literal_of(u"\U0001F600"), R"(u"\U0001F600")");
  EXPECT_EQ(literal_of(u"\n1\u0080"), R"(u"\0121\200")");
}

}  // namespace
}  // namespace vocabulary

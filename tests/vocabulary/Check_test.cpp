#include "vocabulary/Check.h"

#include <gmock/gmock.h>

namespace vocabulary {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> lines(std::vector<Complaint> const& complaints) {
  std::vector<std::string> lines;
  for (Complaint const& complaint : complaints) {
    lines.push_back(complaint.place.file + ":" + std::to_string(complaint.place.line) + ": " +
                    complaint.text);
  }
  return lines;
}

std::vector<std::string> check(std::string const& text, std::string const& beside = "") {
  return lines(complaints_about(parse_def("a.def", text), {parse_def("b.def", beside)}));
}

TEST(CheckingAVocabulary, FindsNothingInOneThatIsWellMade) {
  EXPECT_THAT(check(R"(
TQ_TAG(1, a, ns_a, u"a")
TQ_NS(1, ns_a, u"urn:a")
TQ_NS(2, ns_again, u"urn:a")
TQ_TAG(2, b, ns_again, u"b")
TQ_TAG(3, plain_a, TQ_NO_NS, u"a")
TQ_TAG(-3, letters, TQ_NO_NS, u"_\u00e9.-1")
TQ_CATCH_ALL(4, other, TQ_NO_NS, u"other")
)"),
              IsEmpty());
}

TEST(CheckingAVocabulary, FindsNumbersThatAreThereTwice) {
  EXPECT_THAT(check("TQ_NS(1, ns_a, u\"a\")\nTQ_NS(1, ns_b, u\"b\")\n"),
              ElementsAre("a.def:2: the number 1 is there already, in line 1"));
  EXPECT_THAT(check("TQ_TAG(5, a, TQ_NO_NS, u\"a\")\n\nTQ_CATCH_ALL(5, b, TQ_NO_NS, u\"b\")\n"),
              ElementsAre("a.def:3: the number 5 is there already, in line 1"));
}

TEST(CheckingAVocabulary, FindsTheNumbersThatMeanNothing) {
  EXPECT_THAT(check("TQ_NS(0, ns_a, u\"a\")\nTQ_TAG(0, a, TQ_NO_NS, u\"a\")\n"),
              ElementsAre("a.def:1: the number 0 means no namespace",
                          "a.def:2: the number 0 means no tag"));
}

TEST(CheckingAVocabulary, FindsNamesThatAreThereTwice) {
  EXPECT_THAT(check("TQ_TAG(1, a, TQ_NO_NS, u\"a\")\nTQ_TAG(2, b, TQ_NO_NS, u\"a\")\n"),
              ElementsAre("a.def:2: the name a is there already, in line 1"));
  EXPECT_THAT(check("TQ_NS(1, ns_a, u\"u\")\nTQ_NS(2, ns_b, u\"u\")\n"
                    "TQ_TAG(1, a, ns_a, u\"a\")\nTQ_TAG(2, b, ns_b, u\"a\")\n"),
              ElementsAre("a.def:4: the name {u}a is there already, in line 3"));
}

TEST(CheckingAVocabulary, FindsConstantsThatAreThereTwice) {
  EXPECT_THAT(check("TQ_NS(1, a, u\"u\")\nTQ_TAG(1, a, a, u\"a\")\n"),
              ElementsAre("a.def:2: the constant 'a' is there already, in line 1"));
}

TEST(CheckingAVocabulary, FindsConstantsThatCppDoesNotTake) {
  EXPECT_THAT(check("TQ_TAG(1, class, TQ_NO_NS, u\"a\")\nTQ_TAG(2, a__b, TQ_NO_NS, u\"b\")\n"
                    "TQ_TAG(3, _B, TQ_NO_NS, u\"c\")\n"),
              ElementsAre("a.def:1: 'class' is a word of C++ and cannot be a constant",
                          "a.def:2: C++ reserves 'a__b' for the implementation",
                          "a.def:3: C++ reserves '_B' for the implementation"));
}

TEST(CheckingAVocabulary, FindsNamespacesThatAreNotDeclared) {
  EXPECT_THAT(check("TQ_TAG(1, a, ns_a, u\"a\")\n"),
              ElementsAre("a.def:1: there is no namespace 'ns_a' in the file"));
  EXPECT_THAT(check("TQ_TAG(1, a, ns_a, u\"a\")\n", "TQ_NS(1, ns_a, u\"u\")\n"),
              ElementsAre("a.def:1: there is no namespace 'ns_a' in the file"));
}

TEST(CheckingAVocabulary, FindsNamesThatNoDocumentCanHave) {
  EXPECT_THAT(check("TQ_TAG(1, a, TQ_NO_NS, u\"\")\nTQ_TAG(2, b, TQ_NO_NS, u\"x:b\")\n"
                    "TQ_NS(1, ns_a, u\"\")\n"),
              ElementsAre("a.def:1: '' is no name of an element or attribute",
                          "a.def:2: 'x:b' is no name of an element or attribute",
                          "a.def:3: the URI is empty; names without a namespace are in TQ_NO_NS"));
}

TEST(CheckingAVocabulary, FindsASecondCatchAll) {
  EXPECT_THAT(check("TQ_CATCH_ALL(1, a, TQ_NO_NS, u\"a\")\nTQ_CATCH_ALL(2, b, TQ_NO_NS, u\"b\")"),
              ElementsAre("a.def:2: a catch-all is there already, in line 1"));
}

TEST(CheckingAVocabulary, FindsWhatAnotherOfTheProgramHas) {
  EXPECT_THAT(
      check("TQ_NS(1, ns_a, u\"u\")\nTQ_TAG(1, a, ns_a, u\"a\")\nTQ_TAG(2, b, ns_a, u\"b\")",
            "\nTQ_NS(1, ns_a, u\"u\")\nTQ_TAG(1, x, TQ_NO_NS, u\"x\")\n"
            "TQ_TAG(9, b, ns_a, u\"b\")\nTQ_TAG(9, bad, ns_a, u\"bad\")\n"),
      ElementsAre("a.def:1: the number 1 is there already, in b.def:2",
                  "a.def:2: the number 1 is there already, in b.def:3",
                  "a.def:3: the name {u}b is there already, in b.def:4"));
}

TEST(CheckingAVocabulary, TellsEverythingInTheOrderOfTheLines) {
  EXPECT_THAT(check("TQ_TAG(0, a, ns, u\"a\")\nnonsense\nTQ_TAG(0, a, TQ_NO_NS, u\"b\")\n"),
              ElementsAre("a.def:1: the number 0 means no tag",
                          "a.def:1: there is no namespace 'ns' in the file",
                          "a.def:2: expected TQ_NS, TQ_TAG or TQ_CATCH_ALL, found 'nonsense'",
                          "a.def:3: the constant 'a' is there already, in line 1",
                          "a.def:3: the number 0 means no tag",
                          "a.def:3: the number 0 is there already, in line 1"));
}

NameList some_names() {
  NameList names;
  names.add({u"u", u"a"}, NameList::ELEMENT, "d.xml", 1);
  names.add({u"", u"b"}, NameList::ATTRIBUTE, "d.xml", 2);
  names.add({u"u", u"a"}, NameList::ATTRIBUTE, "d.xml", 3);
  names.add({u"", u"c"}, NameList::ELEMENT, "d.xml", 4);
  return names;
}

TEST(MissingNames, AreThoseThatNeitherTheVocabularyNorAnotherOfTheProgramHas) {
  DefFile const file = parse_def("a.def", "TQ_NS(1, n, u\"u\")\nTQ_TAG(1, a, n, u\"a\")");
  std::vector<NameList::Entry> missing = missing_names(some_names(), file, {});
  ASSERT_EQ(missing.size(), 2U);
  EXPECT_EQ(to_string(missing[0].name), "b");
  EXPECT_EQ(missing[0].first.line, 2U);
  EXPECT_EQ(to_string(missing[1].name), "c");

  missing =
      missing_names(some_names(), file, {parse_def("b.def", "TQ_TAG(2, c, TQ_NO_NS, u\"c\")")});
  ASSERT_EQ(missing.size(), 1U);
  EXPECT_EQ(to_string(missing[0].name), "b");
}

TEST(HiddenAttributes, AreThoseAboveTheLastNumberThatAStreamingReaderGives) {
  DefFile const file = parse_def("a.def",
                                 "TQ_NS(1, n, u\"u\")\nTQ_TAG(1142, a, n, u\"a\")\n"
                                 "TQ_TAG(1141, b, TQ_NO_NS, u\"b\")\n"
                                 "TQ_TAG(2000, c, TQ_NO_NS, u\"c\")");
  EXPECT_THAT(
      lines(hidden_attributes(some_names(), file)),
      ElementsAre("a.def:2: a SaxParser hides the attribute {u}a: its number is above 1141"));
}

}  // namespace
}  // namespace vocabulary

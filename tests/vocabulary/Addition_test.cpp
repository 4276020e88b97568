#include "vocabulary/Addition.h"

#include <gmock/gmock.h>

#include "vocabulary/Check.h"
#include "vocabulary/Failure.h"

namespace vocabulary {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

NameList elements(std::vector<Name> const& wanted) {
  NameList names;
  for (Name const& name : wanted) names.add(name, NameList::ELEMENT, "d.xml", 1);
  return names;
}

std::string added(std::string const& file, NameList const& names,
                  std::optional<std::int32_t> first = {}, std::string const& beside = "") {
  return addition_to(parse_def("a.def", file), {parse_def("b.def", beside)}, names, first).text;
}

TEST(ANewVocabulary, HasEachNamespaceWithItsNamesAndThenThoseWithoutOne) {
  NameList names;
  names.add({u"urn:example:orders", u"order"}, NameList::ELEMENT, "d.xml", 1);
  names.add({u"", u"id"}, NameList::ATTRIBUTE, "d.xml", 1);
  names.add({u"urn:example:price", u"total"}, NameList::ELEMENT, "d.xml", 2);
  names.add({u"urn:example:orders", u"id"}, NameList::ELEMENT, "d.xml", 3);
  names.add_prefix(u"urn:example:price", u"p");
  names.add_prefix(u"urn:example:price", u"later");
  EXPECT_EQ(added("", names), R"(TQ_NS(1, ns_orders, u"urn:example:orders")
TQ_TAG(1, order, ns_orders, u"order")
TQ_TAG(2, id, ns_orders, u"id")

TQ_NS(2, ns_p, u"urn:example:price")
TQ_TAG(3, total, ns_p, u"total")

// Names without a namespace: as attributes and as the root they can only be read.
TQ_TAG(4, plain_id, TQ_NO_NS, u"id")
)");
}

TEST(ANewVocabulary, IsEmptyWithoutNames) { EXPECT_EQ(added("", NameList()), ""); }

TEST(ANewVocabulary, BeginsWithTheNumberThatIsAskedFor) {
  EXPECT_EQ(added("", elements({{u"urn:a", u"b"}}), 300), R"(TQ_NS(300, ns_a, u"urn:a")
TQ_TAG(300, b, ns_a, u"b")
)");
}

TEST(ANewVocabulary, NeverUsesTheNumberZero) {
  EXPECT_EQ(added("", elements({{u"", u"a"}, {u"", u"b"}}), -1),
            "// Names without a namespace: as attributes and as the root they can only be read.\n"
            "TQ_TAG(-1, a, TQ_NO_NS, u\"a\")\n"
            "TQ_TAG(1, b, TQ_NO_NS, u\"b\")\n");
}

TEST(ANewVocabulary, NumbersAttributesFirstWhereTheyWouldBeHidden) {
  NameList names;
  for (int i = 0; i < 1141; ++i) {
    std::string const number = std::to_string(i);
    names.add({u"urn:a", u"e" + std::u16string(number.begin(), number.end())}, NameList::ELEMENT,
              "d.xml", 1);
  }
  names.add({u"", u"last"}, NameList::ATTRIBUTE, "d.xml", 1);
  std::string const text = added("", names);
  EXPECT_THAT(text, HasSubstr("TQ_TAG(2, e0, ns_a, u\"e0\")\n"));
  EXPECT_THAT(text, HasSubstr("TQ_TAG(1142, e1140, ns_a, u\"e1140\")\n"));
  EXPECT_THAT(text, HasSubstr("TQ_TAG(1, last, TQ_NO_NS, u\"last\")\n"));
  EXPECT_THAT(hidden_attributes(names, parse_def("a.def", text)), IsEmpty());
}

constexpr char EXISTING[] = R"(// Orders.
TQ_TAG(7, order, ns_orders, u"order")
TQ_NS(3, ns_orders, u"urn:example:orders")
TQ_TAG(2, id_of_order, ns_orders, u"id"))";

TEST(AnAddition, HasOnlyWhatTheFileLacksWithNumbersBehindTheGreatest) {
  NameList const names = elements({{u"urn:example:orders", u"id"},
                                   {u"urn:example:orders", u"item"},
                                   {u"urn:b", u"id"},
                                   {u"urn:b", u"order"},
                                   {u"", u"order"}});
  EXPECT_EQ(added(std::string(EXISTING) + "\n", names), R"(
TQ_TAG(8, item, ns_orders, u"item")

TQ_NS(4, ns_b, u"urn:b")
TQ_TAG(9, id, ns_b, u"id")
TQ_TAG(10, b_order, ns_b, u"order")

// Names without a namespace: as attributes and as the root they can only be read.
TQ_TAG(11, plain_order, TQ_NO_NS, u"order")
)");
}

TEST(AnAddition, IsNothingWhenTheFileLacksNothing) {
  NameList const names = elements({{u"urn:example:orders", u"id"}});
  Addition const addition = addition_to(parse_def("a.def", EXISTING), {}, names, {});
  EXPECT_EQ(addition.text, "");
  EXPECT_EQ(addition.namespaces, 0U);
  EXPECT_EQ(addition.names, 0U);
}

TEST(AnAddition, IsNothingASecondTime) {
  NameList const names =
      elements({{u"u", u"a-b"}, {u"u", u"a.b"}, {u"v", u"a.b"}, {u"", u"class"}, {u"", u"\u00e9"}});
  std::string const text = added("", names);
  EXPECT_THAT(complaints_about(parse_def("a.def", text), {}), IsEmpty());
  EXPECT_EQ(added(text, names), "");
}

TEST(AnAddition, EndsALineWithoutAnEnd) {
  EXPECT_EQ(added(EXISTING, elements({{u"urn:example:orders", u"x"}})),
            "\n\nTQ_TAG(8, x, ns_orders, u\"x\")\n");
}

TEST(AnAddition, EndsLinesAsTheFileDoes) {
  EXPECT_EQ(added("TQ_NS(1, n, u\"u\")\r\n", elements({{u"u", u"x"}})),
            "\r\nTQ_TAG(1, x, n, u\"x\")\r\n");
}

TEST(AnAddition, FillsGapsOnlyWhenItIsToldWhereToBegin) {
  NameList const names = elements({{u"", u"a"}, {u"", u"b"}, {u"", u"c"}});
  std::string const file =
      "TQ_TAG(2, two, TQ_NO_NS, u\"two\")\nTQ_TAG(2000, far, TQ_NO_NS, u\"far\")\n";
  EXPECT_THAT(added(file, names), HasSubstr("TQ_TAG(2001, a, TQ_NO_NS, u\"a\")"));
  std::string const filled = added(file, names, 1);
  EXPECT_THAT(filled, HasSubstr("TQ_TAG(1, a, TQ_NO_NS, u\"a\")"));
  EXPECT_THAT(filled, HasSubstr("TQ_TAG(3, b, TQ_NO_NS, u\"b\")"));
  EXPECT_THAT(filled, HasSubstr("TQ_TAG(4, c, TQ_NO_NS, u\"c\")"));
}

TEST(AnAddition, TakesNoNumberAndNoNameOfAnotherVocabularyOfTheProgram) {
  std::string const beside = R"(TQ_NS(1, ns_xml, u"http://www.w3.org/XML/1998/namespace")
TQ_TAG(1, lang, ns_xml, u"lang")
)";
  NameList const names = elements({{u"http://www.w3.org/XML/1998/namespace", u"lang"},
                                   {u"http://www.w3.org/XML/1998/namespace", u"space"},
                                   {u"", u"a"}});
  std::string const text = added("", names, {}, beside);
  EXPECT_EQ(text, R"(TQ_NS(2, ns_xml, u"http://www.w3.org/XML/1998/namespace")
TQ_TAG(2, space, ns_xml, u"space")

// Names without a namespace: as attributes and as the root they can only be read.
TQ_TAG(3, a, TQ_NO_NS, u"a")
)");
  EXPECT_THAT(complaints_about(parse_def("a.def", text), {parse_def("b.def", beside)}), IsEmpty());
}

TEST(AnAddition, IsRefusedWhenThereAreNoNumbersLeft) {
  NameList const names = elements({{u"", u"a"}});
  EXPECT_THROW(added("TQ_TAG(INT32_MAX, most, TQ_NO_NS, u\"most\")\n", names), Failure);
  EXPECT_THROW(added("", elements({{u"", u"a"}, {u"", u"b"}}), INT32_MAX), Failure);
}

}  // namespace
}  // namespace vocabulary

#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <string>
#include <type_traits>

#include "tests/support/ElemTestAccess.h"
#include "tests/support/TestTags.h"
#include "tests/support/Trees.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::UString;
using Orn::XmlDoc;
using Access = Orn::ElemTestAccess;
using Elem = XmlDoc::Elem;

static_assert(!std::is_polymorphic_v<Elem>);
static_assert(!std::is_default_constructible_v<Elem>);
static_assert(std::is_nothrow_move_constructible_v<Elem>);
static_assert(std::is_nothrow_move_assignable_v<Elem>);
static_assert(std::is_same_v<decltype(std::declval<Elem&>() = std::declval<Elem const&>()), Elem&>);
static_assert(std::is_copy_constructible_v<Elem::attr_t> &&
              std::is_copy_assignable_v<Elem::attr_t>);

TEST(Elem, IsMadeWithATagAndNothingElse) {
  Elem const elem(a);
  EXPECT_EQ(Access::tag(elem), a);
  EXPECT_TRUE(Access::attrs(elem).empty());
  EXPECT_EQ(Access::child_count(elem), 0U);
}

TEST(Elem, TakesATagThatIsNotRegistered) {
  EXPECT_EQ(Access::tag(Elem(unregistered)), unregistered);
  EXPECT_EQ(Access::tag(Elem(Orn::XmlTag::NO_TAG)), Orn::XmlTag::NO_TAG);
}

TEST(Elem, IsEmptyUntilItHasAChild) {
  Elem with_text(a);
  EXPECT_TRUE(with_text.empty());
  with_text.add_attr(x, u"v");
  with_text.add_attr(y, 1L);
  EXPECT_TRUE(with_text.empty());
  with_text.add_body(u"t", true);
  EXPECT_FALSE(with_text.empty());

  Elem with_elem(a);
  with_elem.add_elem(Elem(b));
  EXPECT_FALSE(with_elem.empty());

  Elem with_leaf(a);
  with_leaf.add_elem(b, UString(), true);
  EXPECT_FALSE(with_leaf.empty());
}

TEST(ElemAddAttr, KeepsTheOrderInWhichAttributesAreAdded) {
  Elem elem(a);
  elem.add_attr(y, u"1");
  elem.add_attr(x, u"2");
  elem.add_attr(z, 3L);
  EXPECT_EQ(outline(elem), u"a(y=1 x=2 z=3)");
}

TEST(ElemAddAttr, KeepsBothOfOneName) {
  Elem elem(a);
  elem.add_attr(x, u"1");
  elem.add_attr(y, u"2");
  elem.add_attr(x, u"3");
  elem.add_attr(x, u"1");
  EXPECT_EQ(outline(elem), u"a(x=1 y=2 x=3 x=1)");
}

TEST(ElemAddAttr, KeepsTheValueExactlyAsGiven) {
  for (UString const& value :
       {UString(), UString(u"<&>\"'\r\n\t]]>&amp;"), UString(u"\0x", 2), UString(u"\xd800")}) {
    Elem elem(a);
    elem.add_attr(x, value);
    EXPECT_EQ(Access::attrs(elem).at(0).id, x);
    EXPECT_EQ(Access::attrs(elem).at(0).value, value);
  }
}

UString value_of(long number) {
  Elem elem(a);
  elem.add_attr(x, number);
  return Access::attrs(elem).at(0).value;
}

TEST(ElemAddAttr, OfANumberKeepsItInPlainDecimal) {
  EXPECT_EQ(value_of(-42), u"-42");
  EXPECT_EQ(value_of(0), u"0");
  EXPECT_EQ(value_of(7), u"7");
  EXPECT_EQ(value_of(1234567), u"1234567");
  for (long number : {std::numeric_limits<long>::min(), std::numeric_limits<long>::max()}) {
    EXPECT_EQ(value_of(number).to_utf8(), std::to_string(number));
  }
}

TEST(ElemAddAttr, OfANumberKeepsOutOfTheLocale) {
  struct InGroups : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::locale const before = std::locale::global(std::locale(std::locale(), new InGroups));
  UString const value = value_of(-1234567);
  std::locale::global(before);
  EXPECT_EQ(value, u"-1234567");
}

TEST(ElemAddBody, OfTheEmptyTextAddsNothing) {
  Elem elem(a);
  elem.add_body(UString(), true);
  elem.add_body(UString(), false);
  EXPECT_TRUE(elem.empty());
}

TEST(ElemAddBody, EscapesThenAndThereOrNotAtAll) {
  struct {
    char16_t const* text;
    char16_t const* escaped;
  } const cases[] = {
      {u"plain", u"plain"},
      {u" \n\t", u" \n\t"},
      {u"a<b", u"a&lt;b"},
      {u"&amp;", u"&amp;amp;"},
      {u"&&&&", u"<![CDATA[&&&&]]>"},
      {u"<]]>", u"&lt;]]&gt;"},
      {u"<b>raw</b>", u"&lt;b>raw&lt;/b>"},
  };
  for (auto const& [text, escaped] : cases) {
    Elem elem(a);
    elem.add_body(text, true);
    elem.add_body(text, false);
    ASSERT_EQ(Access::child_count(elem), 2U);
    EXPECT_EQ(*Access::text(elem, 0), escaped);
    EXPECT_EQ(*Access::text(elem, 1), text);
  }
}

TEST(ElemAddBody, NeverJoinsTexts) {
  Elem elem(a);
  elem.add_body(u"x", true);
  elem.add_body(u"x", true);
  elem.add_body(u"y", false);
  EXPECT_EQ(outline(elem), u"a[\"x\" \"x\" \"y\"]");
}

TEST(ElemAddElem, KeepsElementsAndTextsInTheOrderInWhichTheyAreAdded) {
  Elem elem(a);
  elem.add_body(u"1", true);
  elem.add_elem(b, u"2", true);
  elem.add_body(u"3", true);
  elem.add_elem(Elem(c));
  elem.add_elem(b, u"5", true);
  EXPECT_EQ(outline(elem), u"a[\"1\" b[\"2\"] \"3\" c b[\"5\"]]");
}

TEST(ElemAddElem, GivesTheElementThatItAdded) {
  Elem elem(a);
  Elem const added(b);
  Elem& child = elem.add_elem(added);
  EXPECT_EQ(&child, Access::elem(elem, 0));
  EXPECT_NE(&child, &added);
  Elem& leaf = elem.add_elem(c, u"t", true);
  EXPECT_EQ(&leaf, Access::elem(elem, 1));
  leaf.add_attr(x, u"v");
  child.add_elem(d, u"<", true).add_attr(y, 1L);
  EXPECT_EQ(outline(elem), u"a[b[d(y=1)[\"&lt;\"]] c(x=v)[\"t\"]]");
  EXPECT_TRUE(added.empty());
}

TEST(ElemAddElem, GivesAReferenceThatFurtherChildrenLeaveGood) {
  Elem elem(a);
  Elem& first = elem.add_elem(Elem(b));
  for (int i = 0; i < 1000; ++i) elem.add_elem(c, u"t", true);
  for (int i = 0; i < 1000; ++i) elem.add_body(u"t", true);
  first.add_attr(x, u"v");
  EXPECT_EQ(&first, Access::elem(elem, 0));
  EXPECT_EQ(outline(*Access::elem(elem, 0)), u"b(x=v)");
}

TEST(ElemAddElem, WithABodyAddsItAsAddBodyDoes) {
  Elem elem(a);
  elem.add_elem(b, u"<&>", true);
  elem.add_elem(b, u"<&>", false);
  elem.add_elem(b, UString(), true);
  elem.add_elem(b, UString(), false);
  EXPECT_EQ(outline(elem), u"a[b[\"&lt;&amp;>\"] b[\"<&>\"] b b]");
}

TEST(ElemAddElem, OfAnElementToItselfAddsACopyOfWhatItWas) {
  Elem elem(a);
  elem.add_attr(x, u"v");
  elem.add_elem(elem);
  EXPECT_EQ(outline(elem), u"a(x=v)[a(x=v)]");
  elem.add_elem(elem).add_body(u"t", true);
  EXPECT_EQ(outline(elem), u"a(x=v)[a(x=v) a(x=v)[a(x=v) \"t\"]]");
}

TEST(ElemAddElem, OfAnOwnChildAddsACopyOfIt) {
  Elem elem(a);
  Elem& child = elem.add_elem(b, u"t", true);
  for (int i = 0; i < 100; ++i) elem.add_elem(child);
  child.add_attr(x, u"v");
  EXPECT_EQ(Access::child_count(elem), 101U);
  EXPECT_EQ(outline(*Access::elem(elem, 0)), u"b(x=v)[\"t\"]");
  EXPECT_EQ(outline(*Access::elem(elem, 100)), u"b[\"t\"]");
}

}  // namespace
}  // namespace tests

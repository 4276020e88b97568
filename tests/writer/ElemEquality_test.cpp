#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/support/TestTags.h"
#include "tests/support/Trees.h"
#include "tests/writer/PlainTree.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Elem = XmlDoc::Elem;

Elem leaf(XmlTag::Id tag, UString const& value) {
  Elem elem(tag);
  elem.add_attr(z, value);
  return elem;
}

Elem const X1 = leaf(x, u"1");
Elem const X2 = leaf(x, u"2");
Elem const X3 = leaf(x, u"3");
Elem const Y1 = leaf(y, u"1");

Elem list(std::vector<Elem> const& children, XmlTag::Id tag = a) {
  Elem elem(tag);
  for (Elem const& child : children) elem.add_elem(child);
  return elem;
}

Elem with_texts(std::vector<UString> const& texts) {
  Elem elem(a);
  for (UString const& text : texts) elem.add_body(text, false);
  return elem;
}

/// Whether `a` is like `b`, and `b` like `a`.
using BothWays = std::pair<bool, bool>;
constexpr BothWays EQUAL(true, true);
constexpr BothWays UNEQUAL(false, false);
constexpr BothWays ONLY_THE_FIRST_IS_LIKE_THE_OTHER(true, false);

BothWays compared(Elem const& a, Elem const& b) {
  EXPECT_NE(a == b, a != b);
  EXPECT_NE(b == a, b != a);
  return {a == b, b == a};
}

TEST(Equality, IsOfTheTag) {
  EXPECT_EQ(compared(Elem(a), Elem(a)), EQUAL);
  EXPECT_EQ(compared(Elem(a), Elem(b)), UNEQUAL);
  EXPECT_EQ(compared(Elem(u_a), Elem(v_a)), UNEQUAL);
  EXPECT_EQ(compared(Elem(unregistered), Elem(unregistered)), EQUAL);
}

TEST(Equality, IsOfTheAttributesInTheirOrder) {
  using Attributes = std::vector<std::pair<XmlTag::Id, UString>>;
  auto const with = [](Attributes const& attributes) {
    Elem elem(a);
    for (auto const& [id, value] : attributes) elem.add_attr(id, value);
    return elem;
  };
  Elem const elem = with({{x, u"1"}, {y, u"2"}});
  EXPECT_EQ(compared(elem, with({{x, u"1"}, {y, u"2"}})), EQUAL);
  EXPECT_EQ(compared(elem, with({{y, u"2"}, {x, u"1"}})), UNEQUAL);
  EXPECT_EQ(compared(elem, with({{x, u"1"}, {y, u"3"}})), UNEQUAL);
  EXPECT_EQ(compared(elem, with({{x, u"1"}, {z, u"2"}})), UNEQUAL);
  EXPECT_EQ(compared(elem, with({{x, u"1"}})), UNEQUAL);
  EXPECT_EQ(compared(elem, with({{x, u"1"}, {y, u"2"}, {y, u"2"}})), UNEQUAL);
  EXPECT_EQ(compared(elem, with({})), UNEQUAL);
  EXPECT_EQ(compared(with({{x, u"1"}, {x, u"2"}}), with({{x, u"2"}, {x, u"1"}})), UNEQUAL);
  EXPECT_EQ(compared(with({{x, UString(u"1\0", 2)}}), with({{x, u"1"}})), UNEQUAL);
}

TEST(Equality, IsOfTheNumberOfChildren) {
  EXPECT_EQ(compared(Elem(a), list({X1})), UNEQUAL);
  EXPECT_EQ(compared(list({X1}), list({X1, X1})), UNEQUAL);
  EXPECT_EQ(compared(Elem(a), with_texts({u"t"})), UNEQUAL);
  EXPECT_EQ(compared(with_texts({u"t"}), with_texts({u"t", u"t"})), UNEQUAL);
}

TEST(Equality, IsOfTextsAsTheyAreStored) {
  Elem escaped(a);
  escaped.add_body(u"<", true);
  EXPECT_EQ(compared(escaped, with_texts({u"&lt;"})), EQUAL);
  EXPECT_EQ(compared(escaped, with_texts({u"<"})), UNEQUAL);
  EXPECT_EQ(compared(with_texts({u"t"}), with_texts({u"u"})), UNEQUAL);
  EXPECT_EQ(compared(with_texts({u"t"}), with_texts({u"t "})), UNEQUAL);
  EXPECT_EQ(compared(with_texts({u" "}), with_texts({u"\n"})), UNEQUAL);
  EXPECT_EQ(compared(with_texts({u"t\0"}), with_texts({UString(u"t\0", 2)})), UNEQUAL);
}

TEST(Equality, IsOfTextsInTheirOrderAndPieces) {
  EXPECT_EQ(compared(with_texts({u"t", u"u"}), with_texts({u"t", u"u"})), EQUAL);
  EXPECT_EQ(compared(with_texts({u"t", u"u"}), with_texts({u"u", u"t"})), UNEQUAL);
  EXPECT_EQ(compared(with_texts({u"tu", u"v"}), with_texts({u"t", u"uv"})), UNEQUAL);
  EXPECT_EQ(compared(with_texts({u"t", u"u"}), with_texts({u"t", u"t"})), UNEQUAL);
}

TEST(Equality, IsOfOtherListsInTheirOrder) {
  Elem text_first(a);
  text_first.add_body(u"t", true);
  text_first.add_elem(X1);
  Elem text_last(a);
  text_last.add_elem(X1);
  text_last.add_body(u"t", true);
  EXPECT_EQ(compared(text_first, Elem(text_first)), EQUAL);
  EXPECT_EQ(compared(text_first, text_last), UNEQUAL);
  EXPECT_EQ(compared(text_first, list({X1, X1})), UNEQUAL);
  EXPECT_EQ(compared(list({X1, Y1}), list({X1, Y1})), EQUAL);
  EXPECT_EQ(compared(list({X1, Y1}), list({Y1, X1})), UNEQUAL);
  EXPECT_EQ(compared(list({X1, X2, Y1}), list({X2, X1, Y1})), UNEQUAL);
  EXPECT_EQ(compared(list({Y1, X1, X2}), list({Y1, X2, X1})), UNEQUAL);
}

TEST(Equality, OfAListOfOneTagAndAnotherListIsOfTheOrder) {
  EXPECT_EQ(compared(list({X1, X2}), list({X1, Y1})), UNEQUAL);
  EXPECT_EQ(compared(list({X1, X2}), list({Y1, Y1})), UNEQUAL);
  Elem one_text = list({X1});
  one_text.add_body(u"t", true);
  EXPECT_EQ(compared(list({X1, X1}), one_text), UNEQUAL);
}

TEST(Equality, OfListsOfOneTagIsApartFromTheOrder) {
  EXPECT_EQ(compared(list({X1, X2}), list({X2, X1})), EQUAL);
  EXPECT_EQ(compared(list({X1, X2, X3}), list({X3, X1, X2})), EQUAL);
  EXPECT_EQ(compared(list({X1, X2}), list({X1, X3})), UNEQUAL);
  EXPECT_EQ(compared(list({X1, X1}), list({X2, X2})), UNEQUAL);
}

TEST(Equality, OfListsOfOneTagTakesNoAccountOfHowOftenAChildServes) {
  EXPECT_EQ(compared(list({X1, X1}), list({X1, X2})), ONLY_THE_FIRST_IS_LIKE_THE_OTHER);
  EXPECT_EQ(compared(list({X2, X2, X2}), list({X1, X2, X3})), ONLY_THE_FIRST_IS_LIKE_THE_OTHER);
  EXPECT_EQ(compared(list({X1, X1, X2}), list({X1, X2, X2})), EQUAL);
}

TEST(Equality, OfListsOfOneTagIsOneSidedInsideOfLists) {
  Elem const few = list({X1, X1}, b);
  Elem const many = list({X1, X2}, b);
  EXPECT_EQ(compared(list({few}), list({many})), ONLY_THE_FIRST_IS_LIKE_THE_OTHER);
  EXPECT_EQ(compared(list({few, few}), list({many, many})), ONLY_THE_FIRST_IS_LIKE_THE_OTHER);
  EXPECT_EQ(compared(list({few, many}), list({many, few})), EQUAL);
  EXPECT_EQ(compared(list({few, few}), list({few, many})), ONLY_THE_FIRST_IS_LIKE_THE_OTHER);
  EXPECT_EQ(compared(list({few, many}), list({many, many})), EQUAL);
  EXPECT_EQ(compared(list({few, Y1}), list({many, Y1})), ONLY_THE_FIRST_IS_LIKE_THE_OTHER);
  EXPECT_EQ(compared(list({few, Y1}), list({Y1, many})), UNEQUAL);
  // One child each way: neither is like the other as a whole.
  EXPECT_EQ(compared(list({few, Y1, many}), list({many, Y1, few})), UNEQUAL);
}

TEST(Equality, GoesAllTheWayDown) {
  Elem const tree = list({list({X1, X2}, b), list({X3}, b)}, r);
  EXPECT_EQ(compared(tree, list({list({X3}, b), list({X2, X1}, b)}, r)), EQUAL);
  EXPECT_EQ(compared(tree, list({list({X3}, b), list({X2, X3}, b)}, r)), UNEQUAL);
}

TEST(Equality, HoldsForAnElementItselfAndItsCopies) {
  Elem tree = list({X1, X2});
  tree.add_body(u"t", true);
  tree.add_attr(y, u"1");
  Elem const copy(tree);
  Elem const copy_of_copy(copy);
  EXPECT_EQ(compared(tree, tree), EQUAL);
  EXPECT_EQ(compared(tree, copy), EQUAL);
  EXPECT_EQ(compared(tree, copy_of_copy), EQUAL);
  tree.add_body(u"t", true);
  EXPECT_EQ(compared(tree, copy), UNEQUAL);
  EXPECT_EQ(compared(copy, copy_of_copy), EQUAL);
}

TEST(Equality, OfATreeAndAPartOfItIsFoundWithoutHarm) {
  Elem tree(a);
  Elem& child = tree.add_elem(Elem(a));
  EXPECT_EQ(compared(tree, child), UNEQUAL);
  child.add_elem(Elem(a));
  Elem const outer = list({tree, child});
  EXPECT_EQ(compared(outer, tree), UNEQUAL);
  EXPECT_EQ(compared(list({tree, child}), list({child, tree})), EQUAL);
}

TEST(Equality, FollowsAChangeToASharedChild) {
  Elem tree = list({X1, X2});
  Elem& child = tree.add_elem(X3);
  Elem const copy(tree);
  Elem other = list({X1, X2, X3});
  EXPECT_EQ(compared(copy, other), EQUAL);
  child.add_body(u"t", true);
  EXPECT_EQ(compared(copy, other), UNEQUAL);
  EXPECT_EQ(compared(copy, tree), EQUAL);
}

/// How often each outcome was met.
struct Outcomes {
  int equal_and_not_the_same = 0;
  int one_sided = 0;
  int unequal = 0;
};

TreeAlphabet const SMALL_ALPHABET{{a, b}, {x, y}, {u"1", u"2"}, {u"s", u"t"}};

TEST(Equality, OfRandomTreesIsThatOfThePlainRule) {
  constexpr int pairs_of_a_seed = 40;
  Outcomes outcomes;
  for (unsigned int seed = 1; seed <= 500; ++seed) {
    RandomPlainTrees random(SMALL_ALPHABET, seed);
    TreeMaker maker;
    for (int i = 0; i < pairs_of_a_seed; ++i) {
      PlainTree::Ptr const one = random.elem(4);
      PlainTree::Ptr other = random.one_in(8) ? random.elem(4) : random.variant(one);
      if (random.one_in(2)) other = random.variant(other);
      BothWays const expected(plainly_equal(*one, *other), plainly_equal(*other, *one));
      // Half of the pairs share what they have in common.
      TreeMaker separate_maker;
      Elem const& tree = maker.tree(one);
      Elem const& other_tree = (random.one_in(2) ? maker : separate_maker).tree(other);
      ASSERT_EQ(compared(tree, other_tree), expected) << "seed " << seed << ", pair " << i << ":\n"
                                                      << outline(tree) << "\n"
                                                      << outline(other_tree);
      outcomes.equal_and_not_the_same += expected == EQUAL && one != other;
      outcomes.one_sided += expected.first != expected.second;
      outcomes.unequal += expected == UNEQUAL;
    }
  }
  EXPECT_GT(outcomes.equal_and_not_the_same, 2000);
  EXPECT_GT(outcomes.one_sided, 500);
  EXPECT_GT(outcomes.unequal, 2000);
}

}  // namespace
}  // namespace tests

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "tests/support/TestTags.h"
#include "tqxml/writer/XmlDoc.h"

// Trees that a comparison in the plain words of the rule, or one that does not know what is shared,
// would not come to an end with. There is nothing to measure here: these tests end or they don't.

namespace tests {
namespace {

using namespace testtags;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Elem = XmlDoc::Elem;

constexpr int MANY = 100000;

/// An element with the children that `add_child` adds for each number.
Elem list(std::vector<int> const& numbers, std::function<void(Elem&, int)> const& add_child) {
  Elem tree(r);
  for (int number : numbers) add_child(tree, number);
  return tree;
}

std::vector<int> numbers() {
  std::vector<int> all;
  for (int i = 0; i < MANY; ++i) all.push_back(i);
  return all;
}

std::vector<int> reversed_numbers() {
  std::vector<int> all = numbers();
  std::reverse(all.begin(), all.end());
  return all;
}

void add_unlike(Elem& tree, int number) {
  Elem& child = tree.add_elem(Elem(a));
  child.add_attr(x, static_cast<long>(number));
  child.add_elem(b, u"t", true);
}

void add_alike(Elem& tree, int) { add_unlike(tree, 0); }

TEST(AHundredThousandChildren, OfOneTagInTheSameOrderAreCompared) {
  EXPECT_TRUE(list(numbers(), add_unlike) == list(numbers(), add_unlike));
  EXPECT_TRUE(list(numbers(), add_alike) == list(numbers(), add_alike));
}

TEST(AHundredThousandChildren, OfOneTagInReversedOrderAreCompared) {
  EXPECT_TRUE(list(numbers(), add_unlike) == list(reversed_numbers(), add_unlike));
}

TEST(AHundredThousandChildren, OfWhichOneDiffersAreCompared) {
  Elem const tree = list(numbers(), add_unlike);
  std::vector<int> others = reversed_numbers();
  others[MANY / 2] = MANY;
  EXPECT_FALSE(tree == list(others, add_unlike));
  EXPECT_FALSE(list(others, add_unlike) == tree);
}

TEST(AHundredThousandChildren, ThatAllServeOneAreCompared) {
  EXPECT_TRUE(list(numbers(), add_alike) == list(reversed_numbers(), add_unlike));
  EXPECT_FALSE(list(reversed_numbers(), add_unlike) == list(numbers(), add_alike));
}

TEST(AHundredThousandChildren, OfDifferentTagsAndTextsAreCompared) {
  auto const add_any = [](Elem& tree, int number) {
    if (number % 3 == 0) tree.add_body(u"t", true);
    if (number % 3 == 1) tree.add_elem(b, u"t", true);
    if (number % 3 == 2) add_unlike(tree, number);
  };
  EXPECT_TRUE(list(numbers(), add_any) == list(numbers(), add_any));
  EXPECT_FALSE(list(numbers(), add_any) == list(reversed_numbers(), add_any));
}

void add_pair(Elem& tree, int first, int second) {
  Elem& pair = tree.add_elem(Elem(c));
  add_unlike(pair, first);
  add_unlike(pair, second);
}

TEST(AHundredThousandChildren, ThatAreEachLikeOneOfTheOthersButNotTheOtherWayRoundAreCompared) {
  auto const add_of_one = [](Elem& tree, int number) { add_pair(tree, number, number); };
  auto const add_of_two = [](Elem& tree, int number) { add_pair(tree, number, MANY + number); };
  Elem const few = list(numbers(), add_of_one);
  Elem const many = list(reversed_numbers(), add_of_two);
  EXPECT_TRUE(few == many);
  EXPECT_FALSE(many == few);
}

constexpr int LEVELS = 60;

Elem bottom(UString const& value) {
  Elem elem(a);
  elem.add_attr(x, value);
  return elem;
}

/// A pair of the same element.
Elem pair_of(Elem const& half) {
  Elem pair(a);
  pair.add_elem(half);
  pair.add_elem(half);
  return pair;
}

/// Pairs of pairs of pairs, with two to the power of LEVELS elements at the bottom.
Elem tower(Elem const& bottom) {
  Elem tree(bottom);
  for (int i = 0; i < LEVELS; ++i) tree = pair_of(tree);
  return tree;
}

TEST(ATowerOfPairs, IsCompared) {
  Elem const tree = tower(bottom(u"1"));
  EXPECT_TRUE(tree == tower(bottom(u"1")));
  EXPECT_TRUE(tree == Elem(tree));
  EXPECT_FALSE(tree == tower(bottom(u"2")));
  EXPECT_FALSE(tree == tower(pair_of(bottom(u"1"))));
}

Elem pair_of(UString const& first, UString const& second) {
  Elem pair(a);
  pair.add_elem(bottom(first));
  pair.add_elem(bottom(second));
  return pair;
}

TEST(ATowerOfPairs, IsComparedWhereTheOrderDiffersAtTheBottom) {
  EXPECT_TRUE(tower(pair_of(u"1", u"2")) == tower(pair_of(u"2", u"1")));
  EXPECT_FALSE(tower(pair_of(u"1", u"2")) == tower(pair_of(u"2", u"3")));
}

TEST(ATowerOfPairs, IsComparedWhereItIsOneSidedAtTheBottom) {
  EXPECT_TRUE(tower(pair_of(u"1", u"1")) == tower(pair_of(u"1", u"2")));
  EXPECT_FALSE(tower(pair_of(u"1", u"2")) == tower(pair_of(u"1", u"1")));
}

/// A tower whose halves differ, so that the answer for one tells nothing of the other.
Elem uneven_tower(XmlTag::Id tag, UString const& value) {
  Elem tree = bottom(value);
  for (int i = 0; i < LEVELS; ++i) {
    Elem pair(tag);
    pair.add_elem(tree).add_attr(y, u"left");
    pair.add_elem(tree).add_attr(y, u"right");
    tree = pair;
  }
  return tree;
}

TEST(ATowerOfPairs, IsComparedWhereItsHalvesDiffer) {
  EXPECT_TRUE(uneven_tower(a, u"1") == uneven_tower(a, u"1"));
  EXPECT_FALSE(uneven_tower(a, u"1") == uneven_tower(a, u"2"));
  EXPECT_FALSE(uneven_tower(a, u"1") == uneven_tower(b, u"1"));
}

/// A pair of two pairs that are not the same, of the same element.
Elem pair_of_pairs_of(Elem const& quarter) {
  Elem pair(a);
  pair.add_elem(pair_of(quarter));
  pair.add_elem(pair_of(quarter));
  return pair;
}

// Pairs of one element and pairs of two elements take turns, in one tower from the top and in the
// other from the level below: at no level do both have children that are shared.
TEST(ATowerOfPairs, IsComparedWhereTheOtherSharesOnOtherLevels) {
  auto const grown = [](Elem tree) {
    for (int i = 0; i < LEVELS / 2; ++i) tree = pair_of_pairs_of(tree);
    return tree;
  };
  EXPECT_TRUE(pair_of(grown(bottom(u"1"))) == grown(pair_of(bottom(u"1"))));
  EXPECT_FALSE(pair_of(grown(bottom(u"1"))) == grown(pair_of(bottom(u"2"))));
}

}  // namespace
}  // namespace tests

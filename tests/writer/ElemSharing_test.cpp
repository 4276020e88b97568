#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>
#include <vector>

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

/// `a(x=1)["t" b]`, and the `b` in it.
struct Sample {
  Elem tree{a};
  Elem& child = add_children(tree);

  static Elem& add_children(Elem& tree) {
    tree.add_attr(x, 1L);
    tree.add_body(u"t", true);
    return tree.add_elem(Elem(b));
  }
};

TEST(Sharing, ShowsAChangeToAChildInEveryCopy) {
  Sample sample;
  Elem const copy(sample.tree);
  Elem const copy_of_copy(copy);
  Elem assigned(c);
  assigned = copy_of_copy;
  sample.child.add_attr(y, u"2");
  sample.child.add_elem(d, u"u", true);
  for (Elem const* tree :
       {&std::as_const(sample.tree), &copy, &copy_of_copy, &std::as_const(assigned)}) {
    EXPECT_EQ(outline(*tree), u"a(x=1)[\"t\" b(y=2)[d[\"u\"]]]");
    EXPECT_EQ(Access::elem(*tree, 1), &sample.child);
  }
}

TEST(Sharing, IsOfTheTextsToo) {
  Sample const sample;
  Elem const copy(sample.tree);
  EXPECT_EQ(Access::text(copy, 0), Access::text(sample.tree, 0));
}

TEST(Sharing, IsNotOfTheElementItselfAndItsAttributes) {
  Sample sample;
  Elem copy(sample.tree);
  sample.tree.add_attr(y, u"2");
  sample.tree.add_elem(Elem(c));
  EXPECT_EQ(outline(copy), u"a(x=1)[\"t\" b]");
  copy.add_attr(z, u"3");
  copy.add_body(u"u", true);
  EXPECT_EQ(outline(copy), u"a(x=1 z=3)[\"t\" b \"u\"]");
  EXPECT_EQ(outline(sample.tree), u"a(x=1 y=2)[\"t\" b c]");
}

TEST(Sharing, OfAnAddedElementIsOfItsChildrenAndNotOfIt) {
  Sample sample;
  Elem outer(r);
  Elem& added = outer.add_elem(sample.tree);
  sample.tree.add_attr(y, u"2");
  sample.tree.add_elem(Elem(c));
  added.add_body(u"u", true);
  sample.child.add_body(u"seen in both", true);
  EXPECT_EQ(outline(outer), u"r[a(x=1)[\"t\" b[\"seen in both\"] \"u\"]]");
  EXPECT_EQ(outline(sample.tree), u"a(x=1 y=2)[\"t\" b[\"seen in both\"] c]");
}

TEST(Sharing, ReachesAsManyTreesAsHoldTheChild) {
  Sample sample;
  Elem outer(r);
  for (int i = 0; i < 3; ++i) outer.add_elem(sample.tree);
  Elem outermost(z);
  outermost.add_elem(outer);
  outermost.add_elem(outer);
  sample.child.add_attr(y, u"2");
  UString const inside(u"r[a(x=1)[\"t\" b(y=2)] a(x=1)[\"t\" b(y=2)] a(x=1)[\"t\" b(y=2)]]");
  EXPECT_EQ(outline(outermost),
            UString(u"z[").append(inside).append(u" ").append(inside).append(u"]"));
}

TEST(Sharing, LeavesTheOthersWholeInWhateverOrderTheyAreDestroyed) {
  std::array<std::size_t, 3> order{0, 1, 2};
  do {
    Sample sample;
    Elem& child = sample.child;
    std::vector<std::unique_ptr<Elem>> trees;
    trees.push_back(std::make_unique<Elem>(std::move(sample.tree)));
    trees.push_back(std::make_unique<Elem>(*trees[0]));
    trees.push_back(std::make_unique<Elem>(*trees[1]));
    for (std::size_t destroyed : order) {
      child.add_attr(y, u"1");
      UString const expected = UString(u"a(x=1)[\"t\" ").append(outline(child)).append(u"]");
      for (auto const& tree : trees) {
        if (tree == nullptr) continue;
        EXPECT_EQ(outline(*tree), expected);
      }
      trees[destroyed].reset();
    }
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST(Sharing, KeepsAChildAsLongAsAnyTreeHoldsIt) {
  auto sample = std::make_unique<Sample>();
  Elem& child = sample->child;
  Elem copy(c);
  {
    Elem const middle(sample->tree);
    sample.reset();
    copy = middle;
  }
  child.add_attr(y, u"2");
  EXPECT_EQ(outline(copy), u"a(x=1)[\"t\" b(y=2)]");
}

TEST(Assignment, ReplacesEverything) {
  Sample const sample;
  Elem target(r);
  target.add_attr(z, u"old");
  target.add_attr(y, u"old");
  target.add_body(u"old", true);
  target.add_elem(c, u"old", true);
  target.add_elem(d, u"old", true);
  Elem& result = target = sample.tree;
  EXPECT_EQ(&result, &target);
  EXPECT_EQ(outline(target), u"a(x=1)[\"t\" b]");
  target = Elem(c);
  EXPECT_EQ(outline(target), u"c");
}

TEST(Assignment, LetsGoOfTheOldChildrenOnlyForItself) {
  Sample sample;
  Elem const copy(sample.tree);
  sample.tree = Elem(c);
  sample.child.add_attr(y, u"2");
  EXPECT_EQ(outline(copy), u"a(x=1)[\"t\" b(y=2)]");
}

TEST(Assignment, OfAnElementToItselfChangesNothing) {
  Sample sample;
  Elem const& same = sample.tree;
  Elem& result = sample.tree = same;
  EXPECT_EQ(&result, &sample.tree);
  sample.child.add_attr(y, u"2");
  EXPECT_EQ(outline(sample.tree), u"a(x=1)[\"t\" b(y=2)]");
}

TEST(Assignment, BetweenTreesThatShareChildrenKeepsThem) {
  Sample sample;
  Elem copy(sample.tree);
  copy.add_elem(Elem(c));
  sample.tree = copy;
  sample.child.add_attr(y, u"2");
  EXPECT_EQ(outline(sample.tree), u"a(x=1)[\"t\" b(y=2) c]");
  EXPECT_EQ(outline(copy), u"a(x=1)[\"t\" b(y=2) c]");
}

/// A chain of the tags r, a, b, c, d, each element with its number as attribute and a text.
struct Chain {
  Elem root{r};
  std::vector<Elem*> levels{&root};

  Chain() {
    decorate();
    for (Orn::XmlTag::Id tag : {a, b, c, d}) {
      levels.push_back(&levels.back()->add_elem(Elem(tag)));
      decorate();
    }
  }
  void decorate() {
    levels.back()->add_attr(x, static_cast<long>(levels.size()));
    levels.back()->add_body(u"t", true);
  }
};

TEST(Assignment, FromInsideOfTheElementItselfGivesWhatWasThere) {
  for (std::size_t level = 1; level < 5; ++level) {
    Chain chain;
    UString const expected = outline(*chain.levels[level]);
    chain.root = *chain.levels[level];
    EXPECT_EQ(outline(chain.root), expected);
  }
}

TEST(Assignment, FromInsideLeavesWhatOthersHold) {
  Chain chain;
  Elem const copy(chain.root);
  UString const whole = outline(copy);
  chain.root = *chain.levels[2];
  EXPECT_EQ(outline(copy), whole);
  EXPECT_EQ(Access::elem(chain.root, 1), chain.levels[3]);
}

TEST(Move, TakesEverythingAndLeavesTheTag) {
  Sample sample;
  Elem const target(std::move(sample.tree));
  EXPECT_EQ(outline(target), u"a(x=1)[\"t\" b]");
  EXPECT_EQ(Access::elem(target, 1), &sample.child);
  EXPECT_EQ(outline(sample.tree), u"a");
  sample.tree.add_elem(Elem(c));
  EXPECT_EQ(outline(sample.tree), u"a[c]");
  EXPECT_EQ(outline(target), u"a(x=1)[\"t\" b]");
}

TEST(Move, ByAssignmentReplacesEverythingAndLeavesTheTag) {
  Sample sample;
  Elem target(r);
  target.add_attr(z, u"old");
  target.add_elem(c, u"old", true);
  Elem& result = target = std::move(sample.tree);
  EXPECT_EQ(&result, &target);
  EXPECT_EQ(outline(target), u"a(x=1)[\"t\" b]");
  EXPECT_EQ(Access::elem(target, 1), &sample.child);
  EXPECT_EQ(outline(sample.tree), u"a");
}

TEST(Move, OfAnElementToItselfChangesNothing) {
  Sample sample;
  Elem& same = sample.tree;
  sample.tree = std::move(same);
  EXPECT_EQ(outline(sample.tree), u"a(x=1)[\"t\" b]");
}

TEST(Move, FromInsideOfTheElementItselfGivesWhatWasThere) {
  for (std::size_t level = 1; level < 5; ++level) {
    Chain chain;
    UString const expected = outline(*chain.levels[level]);
    chain.root = std::move(*chain.levels[level]);
    EXPECT_EQ(outline(chain.root), expected);
  }
}

TEST(Move, FromAChildThatOthersHoldEmptiesItForThemToo) {
  Chain chain;
  Elem const copy(chain.root);
  chain.root = std::move(*chain.levels[1]);
  EXPECT_EQ(outline(copy), u"r(x=1)[\"t\" a]");
  EXPECT_EQ(outline(chain.root), u"a(x=2)[\"t\" b(x=3)[\"t\" c(x=4)[\"t\" d(x=5)[\"t\"]]]]");
}

TEST(Elements, CanBeKeptInContainers) {
  std::vector<Elem> trees;
  for (int i = 0; i < 100; ++i) {
    trees.emplace_back(a).add_elem(b, u"t", true).add_attr(x, static_cast<long>(i));
  }
  std::reverse(trees.begin(), trees.end());
  trees.erase(trees.begin(), trees.begin() + 50);
  EXPECT_EQ(outline(trees.front()), u"a[b(x=49)[\"t\"]]");
  EXPECT_EQ(outline(trees.back()), u"a[b(x=0)[\"t\"]]");
}

}  // namespace
}  // namespace tests

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "tests/dom/DomReader.h"
#include "tests/sax/SaxReader.h"
#include "tests/support/Trees.h"
#include "tests/trees/Allocations.h"
#include "tests/trees/FailingAllocations.h"
#include "tqutil/UtilExceptions.h"

// In this program allocations are counted, and any of them can be made to fail.

namespace tests {
namespace {

using namespace testtags;
using Orn::StateException;
using Orn::TagException;
using Orn::UString;
using Orn::XmlDoc;
using Elem = XmlDoc::Elem;

constexpr char16_t LONG_TEXT[] =
    u"a text <&> that is too long to be kept without a block of its own";

Elem leaf(Orn::XmlTag::Id tag) {
  Elem elem(tag);
  elem.add_attr(u_c, LONG_TEXT);
  elem.add_body(LONG_TEXT, true);
  return elem;
}

/// One with a list of one tag and a list of several.
Elem sample() {
  Elem tree = leaf(u_r);
  Elem& list = tree.add_elem(Elem(u_a));
  list.add_elem(leaf(u_b));
  list.add_elem(u_b, u"1", true);
  tree.add_elem(v_a, LONG_TEXT, false);
  return tree;
}

/// What `call` has allocated and not freed; `taken` is all that it has allocated.
long blocks_left_by(std::function<void()> const& call) {
  long const before = Allocations::live();
  call();
  return Allocations::live() - before;
}

long blocks_taken_by(std::function<void()> const& call) {
  long const before = Allocations::taken();
  call();
  return Allocations::taken() - before;
}

TEST(Memory, IsCountedHere) {
  EXPECT_EQ(blocks_taken_by([] { Elem(u_a).add_elem(Elem(u_b)); }), 2);
  EXPECT_EQ(blocks_left_by([] { Elem(u_a).add_elem(Elem(u_b)); }), 0);
}

TEST(Memory, OfATreeIsGivenBackWithIt) {
  EXPECT_EQ(blocks_left_by([] {
              Elem tree = sample();
              Elem copy(tree);
              copy.add_elem(tree);
              tree = copy;
              tree = std::move(copy);
              copy = sample();
            }),
            0);
}

TEST(Memory, OfChildrenIsGivenBackByTheLastHolder) {
  std::array<std::size_t, 3> order{0, 1, 2};
  do {
    long const before = Allocations::live();
    std::array<std::unique_ptr<Elem>, 3> holders;
    holders[0] = std::make_unique<Elem>(sample());
    long const of_one_tree = Allocations::live() - before;
    holders[1] = std::make_unique<Elem>(*holders[0]);
    holders[2] = std::make_unique<Elem>(*holders[1]);
    long const of_a_copy = (Allocations::live() - before - of_one_tree) / 2;
    holders[order[0]].reset();
    EXPECT_EQ(Allocations::live() - before, of_one_tree + of_a_copy);
    holders[order[1]].reset();
    EXPECT_EQ(Allocations::live() - before, of_one_tree);
    holders[order[2]].reset();
    EXPECT_EQ(Allocations::live() - before, 0);
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST(Memory, OfChildrenIsGivenBackByAnAssignment) {
  long const before = Allocations::live();
  Elem target = sample();
  Elem const other(u_a);
  target = other;
  EXPECT_EQ(Allocations::live(), before);
  target = sample();
  target = Elem(u_a);
  EXPECT_EQ(Allocations::live(), before);
}

TEST(Memory, OfTheRestIsGivenBackByAnAssignmentFromInside) {
  EXPECT_EQ(blocks_left_by([] {
              Elem tree(u_a);
              Elem& child = tree.add_elem(sample());
              tree = child;
              Elem& moved = tree.add_elem(sample());
              tree = std::move(moved);
            }),
            0);
}

TEST(Memory, OfAReplacedChildIsGivenBackThroughEveryHolder) {
  EXPECT_EQ(blocks_left_by([] {
              Elem tree(u_a);
              Elem& child = tree.add_elem(sample());
              Elem const copy(tree);
              child = Elem(u_b);
              EXPECT_EQ(copy, tree);
            }),
            0);
}

/// One with two children, below which there are as many elements as wanted.
Elem with_subtree(int elements) {
  Elem child(u_a);
  for (int i = 0; i < elements; ++i) child.add_elem(leaf(u_b));
  Elem tree(u_r);
  tree.add_elem(child);
  tree.add_elem(child);
  return tree;
}

TEST(Memory, TakenByACopyDoesNotDependOnTheSubtree) {
  Elem const small = with_subtree(1);
  Elem const large = with_subtree(10000);
  std::vector<std::function<void(Elem const&)>> const calls = {
      [](Elem const& tree) { Elem const copy(tree); },
      [](Elem const& tree) {
        Elem target(u_a);
        target = tree;
      },
      [](Elem const& tree) { Elem(u_a).add_elem(tree); },
      [](Elem const& tree) { EXPECT_TRUE(tree == Elem(tree)); },
  };
  for (auto const& call : calls) {
    EXPECT_EQ(blocks_taken_by([&] { call(large); }), blocks_taken_by([&] { call(small); }));
  }
}

/// One of `n` lists of a list of two elements each, numbered from `i` and from `i` + `distance` on.
/// With a distance of 0 each list is like one of those with another distance, and not the other way
/// round, but no part of it is the same.
Elem one_sided_lists(int n, int distance) {
  Elem tree(u_r);
  for (int i = 0; i < n; ++i) {
    Elem& list = tree.add_elem(Elem(u_a)).add_elem(Elem(u_b));
    list.add_elem(Elem(u_c)).add_attr(u_a, long{i});
    list.add_elem(Elem(u_c)).add_attr(u_a, long{i + distance});
  }
  return tree;
}

TEST(Memory, TakenByAComparisonGrowsWithTheTreesAlsoWhereChildrenMustBeSearchedFor) {
  auto const taken_for = [](int n) {
    Elem const few = one_sided_lists(n, 0);
    Elem const many = one_sided_lists(n, n);
    return blocks_taken_by([&] { EXPECT_TRUE(few == many); });
  };
  EXPECT_LT(taken_for(400), 3 * taken_for(200));
}

TEST(Memory, IsNotTakenByMoves) {
  Elem tree = sample();
  Elem target(u_a);
  EXPECT_EQ(blocks_taken_by([&] {
              Elem moved(std::move(tree));
              target = std::move(moved);
            }),
            0);
}

TEST(Memory, IsNotTakenByAnAssignmentOfAnElementToItself) {
  Elem tree = sample();
  Elem& same = tree;
  EXPECT_EQ(blocks_taken_by([&] { tree = same; }), 0);
  EXPECT_EQ(blocks_taken_by([&] { tree = std::move(same); }), 0);
}

struct Operation {
  char const* name;
  void (*call)(Elem& target, Elem const& other);
};

class FailedAllocation : public testing::Test {
 protected:
  /// Has everything made that is made once.
  FailedAllocation() {
    XmlDoc doc(sample());
    doc.str();
    Elem elem(sample());
    elem.add_elem(sample());
    elem.str();
  }
};

TEST_F(FailedAllocation, LeavesTheElementAsItWasAndLosesNothing) {
  Operation const operations[] = {
      {"add_attr", [](Elem& target, Elem const&) { target.add_attr(u_a, LONG_TEXT); }},
      {"add_attr of a number",
       [](Elem& target, Elem const&) { target.add_attr(u_a, -2147483647L); }},
      {"add_body", [](Elem& target, Elem const&) { target.add_body(LONG_TEXT, false); }},
      {"add_body with escaping",
       [](Elem& target, Elem const&) { target.add_body(LONG_TEXT, true); }},
      {"add_elem", [](Elem& target, Elem const& other) { target.add_elem(other); }},
      {"add_elem of itself", [](Elem& target, Elem const&) { target.add_elem(target); }},
      {"add_elem with a body",
       [](Elem& target, Elem const&) { target.add_elem(u_a, LONG_TEXT, true); }},
      {"copy", [](Elem& target, Elem const&) { Elem const copy(target); }},
      {"assignment", [](Elem& target, Elem const& other) { target = other; }},
      {"assignment from inside",
       [](Elem& target, Elem const&) { target = *Orn::ElemTestAccess::elem(target, 1); }},
      {"comparison", [](Elem& target, Elem const& other) { EXPECT_TRUE(target == other); }},
      {"str", [](Elem& target, Elem const&) { target.str(); }},
      {"content", [](Elem& target, Elem const&) { target.content(); }},
      {"document", [](Elem& target, Elem const&) { XmlDoc const doc(target); }},
  };
  for (auto const& [name, call] : operations) {
    SCOPED_TRACE(name);
    int const failures = fail_each_allocation([call = call](auto const& raises) {
      Elem target = sample();
      // Like the target but for the order of children, so that nothing is the same at first sight.
      Elem other = leaf(u_r);
      Elem& list = other.add_elem(Elem(u_a));
      list.add_elem(u_b, u"1", true);
      list.add_elem(leaf(u_b));
      other.add_elem(v_a, LONG_TEXT, false);
      UString const before = outline(target);
      UString const other_before = outline(other);
      bool const raised = raises([&] { call(target, other); });
      EXPECT_TRUE(!raised || outline(target) == before);
      EXPECT_EQ(outline(other), other_before);
    });
    EXPECT_GE(failures, 1);
  }
}

/// Deeper than what is written without taking memory for the way down.
Elem deep_sample() {
  Elem tree = sample();
  for (int depth = 0; depth < 20; ++depth) {
    Elem outer(u_a);
    outer.add_elem(tree);
    tree = outer;
  }
  return tree;
}

TEST_F(FailedAllocation, WhileATreeIsWrittenLosesNothing) {
  for (bool as_fragment : {false, true}) {
    int const failures = fail_each_allocation([&](auto const& raises) {
      Elem const tree = deep_sample();
      XmlDoc doc;
      raises([&] {
        if (as_fragment) {
          doc.str(tree);
        } else {
          doc.add_elem(tree, false);
        }
      });
      EXPECT_EQ(tree, deep_sample());
    });
    EXPECT_GE(failures, 3);
  }
}

std::string const XML =
    "<r xmlns='urn:test:u' a='1' b='a value that is too long to be kept without a block of its "
    "own'>"
    "<a><b>text</b><b>a text that is too long to be kept without a block of its own</b></a>"
    "lost<c><a><![CDATA[<&> once more and much longer than any text that is kept inside]]></a></c>"
    "</r>";

template <class Reader>
Elem tree_of(std::string const& xml) {
  Reader reader(xml);
  typename Reader::Elem root = reader.root();
  return Elem(root);
}

template <class Reader>
class FailedAllocationInAReader : public FailedAllocation {
 protected:
  FailedAllocationInAReader() { tree_of<Reader>(XML); }
};

using Readers = testing::Types<DomReader, SaxReader>;
TYPED_TEST_SUITE(FailedAllocationInAReader, Readers);

TYPED_TEST(FailedAllocationInAReader, WhileATreeIsMadeLosesNothing) {
  int const failures = fail_each_allocation([](auto const& raises) {
    TypeParam reader(XML);
    typename TypeParam::Elem root = reader.root();
    // All of it is read, so that what fails then is the making of the tree.
    root.data();
    raises([&] { Elem const tree(root); });
  });
  EXPECT_GE(failures, 10);
}

TYPED_TEST(FailedAllocationInAReader, LeavesAnElementThatTheTreeWasToBeAssignedToAsItWas) {
  fail_each_allocation([](auto const& raises) {
    TypeParam reader(XML);
    typename TypeParam::Elem root = reader.root();
    root.data();
    Elem target = sample();
    bool const raised = raises([&] { target = Elem(root); });
    EXPECT_EQ(target == sample(), raised);
  });
}

template <class Reader>
class FailedReading : public testing::Test {};
TYPED_TEST_SUITE(FailedReading, Readers);

TYPED_TEST(FailedReading, WhileATreeIsMadeLosesNothing) {
  std::string const xml = XML.substr(0, XML.size() - 8) + "<unknown/></c></r>";
  auto const attempt = [&] { EXPECT_THROW(tree_of<TypeParam>(xml), TagException); };
  // The readers may keep something for the next time.
  attempt();
  EXPECT_EQ(blocks_left_by(attempt), 0);
}

TEST(AStreamThatEndsEarly, LosesNothingWhileATreeIsMade) {
  auto const attempt = [] {
    for (std::size_t length = XML.find("<a>"); length < XML.size(); ++length) {
      EXPECT_THROW(tree_of<SaxReader>(XML.substr(0, length)), StateException) << length;
    }
  };
  attempt();
  EXPECT_EQ(blocks_left_by(attempt), 0);
}

}  // namespace
}  // namespace tests

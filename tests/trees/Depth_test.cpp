#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

#include "tests/dom/DomReader.h"
#include "tests/sax/SaxReader.h"
#include "tests/support/ElemTestAccess.h"
#include "tests/support/TestTags.h"
#include "tests/trees/SmallStack.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::UString;
using Orn::XmlDoc;
using Access = Orn::ElemTestAccess;
using Elem = XmlDoc::Elem;

/// An element in an element and so on, with a text in the innermost.
Elem nested(UString const& bottom = u"bottom", int levels = DEEP) {
  Elem outermost(u_a);
  Elem* innermost = &outermost;
  for (int i = 1; i < levels; ++i) innermost = &innermost->add_elem(u_a, UString(), false);
  innermost->add_body(bottom, false);
  return outermost;
}

Elem const& innermost(Elem const& outermost) {
  Elem const* elem = &outermost;
  while (Access::elem(*elem, 0) != nullptr) elem = Access::elem(*elem, 0);
  return *elem;
}

UString repeated(int times, UString const& text) {
  UString all;
  for (int i = 0; i < times; ++i) all.append(text);
  return all;
}

/// The markup of `nested()`, whose outermost start tag has the attributes `declaration`.
UString markup(UString const& declaration) {
  return UString(u"<N1:a")
      .append(declaration)
      .append(u">")
      .append(repeated(DEEP - 1, u"<N1:a>"))
      .append(u"bottom")
      .append(repeated(DEEP, u"</N1:a>"));
}

TEST(ADeepTree, IsBuiltFromTheOutsideAndDestroyedOnASmallStack) {
  on_a_small_stack([] {
    Elem const tree = nested();
    EXPECT_EQ(innermost(tree).content(), u"bottom");
  });
}

TEST(ADeepTree, IsBuiltFromTheInsideAndDestroyedOnASmallStack) {
  on_a_small_stack([] {
    Elem tree(u_a);
    tree.add_body(u"bottom", true);
    for (int i = 1; i < DEEP; ++i) {
      Elem outer(u_a);
      outer.add_elem(tree);
      tree = std::move(outer);
    }
    EXPECT_TRUE(tree == nested());
  });
}

TEST(ADeepTree, IsDestroyedByAnAssignmentOnASmallStack) {
  on_a_small_stack([] {
    Elem tree = nested();
    Elem const leaf(u_b);
    tree = leaf;
    EXPECT_TRUE(tree.empty());
    tree = nested();
    tree = Elem(u_b);
    EXPECT_TRUE(tree.empty());
  });
}

TEST(ADeepTree, IsDestroyedOnASmallStackByItsLastHolder) {
  on_a_small_stack([] {
    std::optional<Elem> tree(nested());
    std::optional<Elem> copy(*tree);
    std::optional<Elem> outer(u_r);
    outer->add_elem(*tree);
    tree.reset();
    copy.reset();
    EXPECT_EQ(innermost(*outer).content(), u"bottom");
    outer.reset();
  });
}

TEST(ADeepTree, IsDestroyedOnASmallStackExceptForWhatIsHeldInTheMiddle) {
  on_a_small_stack([] {
    std::optional<Elem> tree(nested());
    Elem const* middle = &*tree;
    for (int i = 0; i < DEEP / 2; ++i) middle = Access::elem(*middle, 0);
    Elem const held(*middle);
    tree.reset();
    EXPECT_EQ(innermost(held).content(), u"bottom");
  });
}

TEST(ADeepTree, IsCopiedAndAssignedOnASmallStack) {
  on_a_small_stack([] {
    Elem tree = nested();
    Elem copy(tree);
    Elem assigned(u_b);
    assigned = copy;
    copy = std::move(tree);
    tree = assigned;
    EXPECT_EQ(&innermost(copy), &innermost(assigned));
    EXPECT_EQ(&innermost(tree), &innermost(assigned));
  });
}

TEST(ADeepTree, IsAssignedFromItsOwnBottomOnASmallStack) {
  on_a_small_stack([] {
    Elem tree = nested();
    tree = innermost(tree);
    EXPECT_EQ(tree.content(), u"bottom");
    tree = nested();
    tree = std::move(const_cast<Elem&>(innermost(tree)));
    EXPECT_EQ(tree.content(), u"bottom");
  });
}

TEST(ADeepTree, IsComparedOnASmallStack) {
  on_a_small_stack([] {
    Elem const tree = nested();
    EXPECT_TRUE(tree == nested());
    EXPECT_TRUE(tree == Elem(tree));
    EXPECT_FALSE(tree == nested(u"another bottom"));
  });
}

/// One whose innermost element has two children, of these values.
Elem nested_pair(UString const& first, UString const& second) {
  Elem tree = nested();
  auto& bottom = const_cast<Elem&>(innermost(tree));
  bottom = Elem(u_a);
  bottom.add_elem(u_b, first, true);
  bottom.add_elem(u_b, second, true);
  return tree;
}

TEST(ADeepTree, IsComparedOnASmallStackAlsoWhereOrderDoesNotMatter) {
  on_a_small_stack([] {
    Elem const pair = nested_pair(u"1", u"2");
    EXPECT_TRUE(pair == nested_pair(u"2", u"1"));
    Elem const of_one = nested_pair(u"1", u"1");
    EXPECT_FALSE(pair == of_one);
    EXPECT_TRUE(of_one == pair);
  });
}

TEST(ADeepTree, IsTextOnASmallStack) {
  on_a_small_stack([] {
    Elem tree = nested();
    UString const expected = markup(u" xmlns:N1=\"urn:test:u\"");
    EXPECT_TRUE(tree.str() == expected);
    Elem outer(u_r);
    outer.add_elem(tree);
    EXPECT_TRUE(outer.content() == expected);
  });
}

TEST(ADeepTree, IsWrittenOnASmallStack) {
  on_a_small_stack([] {
    Elem const tree = nested();
    EXPECT_TRUE(XmlDoc(tree).str() == UString(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>")
                                          .append(markup(u" xmlns:N1=\"urn:test:u\"")));
    XmlDoc doc(u_r);
    doc.inc_str();
    EXPECT_TRUE(doc.str(tree) == markup(u""));
    doc.add_elem(tree, false);
    EXPECT_TRUE(doc.inc_str() == markup(u""));
  });
}

template <class Reader>
class ADeepDocument : public ReaderTest<Reader> {};

using Readers = testing::Types<DomReader, SaxReader>;
TYPED_TEST_SUITE(ADeepDocument, Readers);

// Every element declares its namespace: the parser looks for a declaration through all elements
// around it, which would take long. So does reading anything deeper than this.
TYPED_TEST(ADeepDocument, BecomesATreeOnASmallStack) {
  constexpr int levels = 20000;
  std::string xml;
  for (int i = 0; i < levels; ++i) xml += "<a xmlns='urn:test:u'>";
  xml += "bottom";
  for (int i = 0; i < levels; ++i) xml += "</a>";
  auto root = this->root_of(xml);
  on_a_small_stack([&] { EXPECT_TRUE(Elem(root) == nested(u"bottom", levels)); });
}

}  // namespace
}  // namespace tests

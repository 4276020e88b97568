#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "tests/sax/SaxReader.h"
#include "tests/support/Raises.h"
#include "tqxml/foundation/Catalogue.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::SaxParser;
using Orn::StateException;
using Elem = SaxParser::Elem;
using Attribute = SaxParser::Attribute;

/// One of the objects that share records, or nothing any more.
using Holder = std::variant<std::monostate, SaxParser, Elem, Attribute>;

struct Touch {
  void operator()(std::monostate) const {}
  void operator()(SaxParser const& parser) const { EXPECT_EQ(parser.root().tag(), tag::r); }
  void operator()(Elem& elem) const {
    EXPECT_FALSE(elem.is_nil());
    EXPECT_NO_THROW(elem.tag());
    EXPECT_NO_THROW(elem.next_attr());
  }
  void operator()(Attribute const& attribute) const { EXPECT_EQ(attribute.data(), u"value"); }
};

std::string const whole =
    "<r a='value' b='value'><a c='value'><b/>x</a><c d='value'><d><e/></d></c><x>t</x></r>";
std::string const malformed = whole.substr(0, whole.find("</c>")) + "</d>";

/// Seven objects for a document that the parser has read to some point.
struct Scene {
  std::string const& document;
  std::vector<Holder> (*set)(SaxParser const&);
};

Scene const scenes[] = {
    // Nothing but the root has been read.
    {whole,
     [](SaxParser const& parser) {
       Elem root = parser.root();
       return std::vector<Holder>{parser,           SaxParser(parser), root,         root,
                                  root.next_attr(), root.next_attr(),  parser.root()};
     }},
    // The parser is in the middle, and every element still has its place in its parent.
    {whole,
     [](SaxParser const& parser) {
       Elem root = parser.root(), c = root.child(tag::c), a = root.child();
       Elem d = c.child(), e = d.child();
       return std::vector<Holder>{parser, root, a, c, d, e, c.next_attr()};
     }},
    // The same with elements that have been taken from their parents.
    {whole,
     [](SaxParser const& parser) {
       Elem root = parser.root(), a = root.next_child(), b = a.next_child(), c = root.next_child();
       Elem d = c.next_child();
       return std::vector<Holder>{parser, root, a, b, c, d, c.next_attr()};
     }},
    // The document has been read to its end.
    {whole,
     [](SaxParser const& parser) {
       Elem root = parser.root();
       root.data();
       Elem a = root.child(), c = root.child(tag::c), b = a.child(), d = c.next_child();
       return std::vector<Holder>{parser, root, a, b, c, d, a.next_attr()};
     }},
    // The parser has failed inside of elements, some of them taken, one of them held twice.
    {malformed,
     [](SaxParser const& parser) {
       Elem root = parser.root(), a = root.next_child();
       EXPECT_THROW(root.data(), StateException);
       Elem c = root.next_child(), d = c.child(tag::d), e = d.next_child();
       return std::vector<Holder>{parser, root, a, c, c, d, e};
     }},
};

/// Runs `release(holders, order)` for every scene and every order of its objects.
template <class Release>
void in_every_order(Release release) {
  for (Scene const& scene : scenes) {
    std::vector<std::size_t> order(7);
    std::iota(order.begin(), order.end(), 0);
    do {
      std::istringstream in(scene.document);
      std::vector<Holder> holders = scene.set(SaxParser(in));
      ASSERT_EQ(holders.size(), order.size());
      release(holders, order);
    } while (std::next_permutation(order.begin(), order.end()));
  }
}

void touch_all(std::vector<Holder>& holders) {
  for (Holder& holder : holders) std::visit(Touch(), holder);
}

TEST(HandlesAndParsers, CanBeReleasedInEveryOrder) {
  in_every_order([](std::vector<Holder>& holders, std::vector<std::size_t> const& order) {
    for (std::size_t const i : order) {
      holders[i] = std::monostate();
      touch_all(holders);
    }
  });
}

TEST(HandlesAndParsers, CanBeReplacedByOneAnotherInEveryOrder) {
  in_every_order([](std::vector<Holder>& holders, std::vector<std::size_t> const& order) {
    for (std::size_t i = 0; i + 1 < order.size(); ++i) {
      holders[order[i]] = holders[order[i + 1]];
      touch_all(holders);
    }
  });
}

class Handles : public SaxTest {};

TEST_F(Handles, CanBeAssignedTheirOwnChildren) {
  Elem e = root_of("<r><a><b><c>x</c></b></a></r>");
  e = e.next_child();
  EXPECT_EQ(e.tag(), tag::a);
  e = e.child();
  EXPECT_EQ(e.tag(), tag::b);
  e = e.child(tag::c);
  EXPECT_EQ(e.data(), u"x");
  e = e.next_child();
  EXPECT_TRUE(e.is_nil());
}

TEST_F(Handles, CanBeAssignedTheirOwnChildrenWhenNothingElseHoldsTheDocument) {
  std::istringstream in("<r><a><b><c>x</c></b></a>y</r>");
  Elem e = SaxParser(in).root();
  EXPECT_RAISES(e.next_child(), StateException, Catalogue::NOT_VALID_STREAM);

  std::istringstream again(in.str());
  {
    SaxParser const parser(again);
    e = parser.root();
    e.data();
  }
  e = e.child();
  EXPECT_EQ(e.tag(), tag::a);
  e = e.next_child();
  EXPECT_EQ(e.tag(), tag::b);
  e = e.child();
  EXPECT_EQ(e.data(), u"x");
}

TEST_F(Handles, CanBeAssignedToThemselves) {
  Elem e = root_of("<r a='1'><b/></r>");
  Elem const& same = e;
  e = same;
  EXPECT_EQ(e.child().tag(), tag::b);
  e = Elem(same);
  EXPECT_EQ(e.next_child().tag(), tag::b);
  Attribute a = e.next_attr();
  Attribute const& same_attribute = a;
  a = same_attribute;
  EXPECT_EQ(a.data(), u"1");

  Elem nil;
  Elem const& same_nil = nil;
  nil = same_nil;
  EXPECT_TRUE(nil.is_nil());
}

TEST_F(Handles, CanBeMoved) {
  Elem root = root_of("<r a='1'><b/></r>");
  Elem moved = std::move(root);
  EXPECT_EQ(moved.tag(), tag::r);
  Attribute a = moved.next_attr();
  Attribute const moved_attribute = std::move(a);
  EXPECT_EQ(moved_attribute.data(), u"1");
  root = moved.child();
  EXPECT_EQ(root.tag(), tag::b);
}

TEST_F(Handles, OnAttributesOutliveEverything) {
  Attribute a, b;
  {
    std::istringstream in("<r a='1'><x b='2'/><y/></r>");
    SaxParser const parser(in);
    Elem root = parser.root();
    a = root.next_attr();
    b = root.next_child().next_attr();
    root.data();
    EXPECT_EQ(b.data(), u"2");
  }
  EXPECT_EQ(a.tag(), tag::a);
  EXPECT_EQ(a.data(), u"1");
  EXPECT_NO_THROW(b.match(tag::b));
  EXPECT_EQ(b.data(), u"2");
}

TEST_F(Handles, OnChildrenOutliveTheirParents) {
  Elem c;
  {
    std::istringstream in("<r><a><b><c d='1'>x<e/></c></b></a></r>");
    SaxParser const parser(in);
    parser.root().data();
    c = parser.root().child().child().child();
  }
  EXPECT_EQ(c.data(), u"x");
  EXPECT_EQ(c.child().tag(), tag::e);
  EXPECT_EQ(c.next_attr().data(), u"1");
}

TEST_F(Handles, CanBeDroppedWhileTheParserIsInsideOfTheirElement) {
  Elem root = root_of("<r><a>1<b>2<c>3</c></b></a><d>4</d><e>5</e></r>");
  {
    Elem a = root.next_child();
    Elem const c = a.next_child().next_child();
    EXPECT_EQ(c.tag(), tag::c);
  }
  Elem d = root.next_child();
  EXPECT_EQ(d.tag(), tag::d);
  EXPECT_EQ(d.data(), u"4");
  EXPECT_EQ(root.next_child().data(), u"5");
}

TEST_F(Handles, OnAnElementWhoseParentsHandleWasDroppedReadOn) {
  Elem root = root_of("<r><a><b>1</b><c>2</c></a><d>3</d></r>");
  Elem b = root.next_child().next_child();
  EXPECT_EQ(b.data(), u"1");
  EXPECT_EQ(root.next_child().data(), u"3");
  EXPECT_EQ(b.data(), u"1");
}

TEST_F(Handles, OnTheRootMayBeDroppedBeforeTheRestIsRead) {
  std::istringstream in("<r><a>x</a><b>y</b></r>");
  SaxParser const parser(in);
  Elem a = parser.root().next_child();
  EXPECT_EQ(a.data(), u"x");
  EXPECT_EQ(parser.root().next_child().data(), u"y");
}

TEST_F(Handles, OfChildrenReadTheirRestWhenTheParserIsHeldByACopyOnly) {
  SaxParser copy;
  Elem a;
  std::istringstream in("<r><a>x<b>y</b></a></r>");
  {
    SaxParser const parser(in);
    copy = parser;
    a = parser.root().next_child();
  }
  EXPECT_EQ(a.child(tag::b).data(), u"y");
  copy = SaxParser();
  EXPECT_RAISES(a.data(), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_EQ(a.child().data(), u"y");
}

TEST_F(Handles, CanBeAskedForTheRootAgainAfterEveryHandleWasDropped) {
  std::istringstream in("<r a='1'><b>x</b></r>");
  SaxParser const parser(in);
  EXPECT_EQ(parser.root().next_attr().data(), u"1");
  EXPECT_EQ(parser.root().next_child().data(), u"x");
  EXPECT_EQ(parser.root().data(), u"");
  EXPECT_FALSE(parser.root().is_empty());
}

}  // namespace
}  // namespace tests

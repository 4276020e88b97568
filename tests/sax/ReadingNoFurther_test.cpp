#include <gtest/gtest.h>

#include <string>

#include "tests/sax/SaxReader.h"
#include "tests/sax/Source.h"

namespace tests {
namespace {

using Orn::SaxParser;
using Elem = SaxParser::Elem;

/// A navigation of the document `<r>` + comment + `read` + `unread` + white space + `</r>`: it
/// needs everything up to the end of `read` and nothing behind it.
struct Navigation {
  std::string read;
  std::string unread;
  bool (*answers)(Elem&);
};

Navigation const navigations[] = {
    // child() stops at the start tag of the first child.
    {"<a>", "</a>", [](Elem& r) { return r.child().tag() == tag::a; }},
    {"<a/>", "", [](Elem& r) { return r.child().tag() == tag::a; }},
    {"text<a b='1'>", "</a>", [](Elem& r) { return r.child().next_attr().data() == u"1"; }},
    {"<a></a>", "", [](Elem& r) { return r.child().child().is_nil(); }},
    // opt_child(), and child() with a tag, at that of the wanted one or at the end tag.
    {"<a/><b><c/></b><d>", "</d>", [](Elem& r) { return r.child(tag::d).tag() == tag::d; }},
    {"<a/><d>", "</d>", [](Elem& r) { return r.opt_child(tag::d).tag() == tag::d; }},
    {"<a><b/>t</a>", "<d/>", [](Elem& r) { return r.child().opt_child(tag::d).is_nil(); }},
    // next_child() at that of the next child, or at the end tag.
    {"<a>", "</a>", [](Elem& r) { return r.next_child().tag() == tag::a; }},
    {"<a>t<b/></a><c>", "</c>",
     [](Elem& r) { return r.next_child(), r.next_child().tag() == tag::c; }},
    {"<a>t</a>", "<c/>", [](Elem& r) { return r.next_child().next_child().is_nil(); }},
    // is_empty() at the first text or child, or at the end tag. A text ends where markup begins.
    {"<a><b>", "</b></a>", [](Elem& r) { return !r.child().is_empty(); }},
    {"<a>text<", "/a>", [](Elem& r) { return !r.child().is_empty(); }},
    {"<a> <", "b/></a>", [](Elem& r) { return !r.child().is_empty(); }},
    {"<a><![CDATA[text]]>", "</a>", [](Elem& r) { return !r.child().is_empty(); }},
    {"<a><!--c--></a>", "<b/>", [](Elem& r) { return r.child().is_empty(); }},
    {"<a/>", "", [](Elem& r) { return r.child().is_empty(); }},
    // data() at the end tag.
    {"<a>x<b>y</b>z</a>", "<b/>", [](Elem& r) { return r.child().data() == u"xz"; }},
    // What has been read is answered without reading.
    {"<a>", "</a>", [](Elem& r) { return r.child().tag() == r.opt_child(tag::a).tag(); }},
    {"<a b='1'>", "</a>", [](Elem& r) { return r.child(), r.child().next_attr().tag() == tag::b; }},
    {"<a/>", "", [](Elem& r) { return r.child(), !r.is_empty(); }},
};

std::string padding(std::size_t length) { return "<!--" + std::string(length - 7, '.') + "-->"; }

constexpr std::size_t piece = SaxParser::MAX_READ;

/// Calls `check(source, bytes)` with documents of the navigation that end their first part at every
/// position relative to the pieces that are read; `bytes` is how many may be taken, whole pieces.
template <class Check>
void at_every_offset(Navigation const& navigation, Check check) {
  for (std::size_t pad = 1000; pad < 1000 + piece; ++pad) {
    std::string const first = "<r>" + padding(pad) + navigation.read;
    Source source(first + navigation.unread + std::string(2 * piece, ' ') + "</r>");
    check(source, (first.size() + piece - 1) / piece * piece);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(Navigation, TakesNoPieceOfTheStreamThatItDoesNotNeed) {
  for (Navigation const& navigation : navigations) {
    SCOPED_TRACE(navigation.read);
    at_every_offset(navigation, [&](Source& source, std::size_t bytes) {
      SaxParser const parser(source);
      Elem root = parser.root();
      EXPECT_TRUE(navigation.answers(root));
      EXPECT_EQ(source.taken(), bytes);
    });
  }
}

TEST(Navigation, DoesNotNoticeAStreamThatIsBrokenBehindWhatItNeeds) {
  for (Navigation const& navigation : navigations) {
    SCOPED_TRACE(navigation.read);
    at_every_offset(navigation, [&](Source& source, std::size_t bytes) {
      source.break_at(bytes);
      SaxParser const parser(source);
      Elem root = parser.root();
      EXPECT_TRUE(navigation.answers(root));
    });
  }
}

TEST(Navigation, OfWhatHasBeenReadTakesNothing) {
  Source source("<r a='1'><a b='2'>x<c/></a><d/>" + std::string(3 * piece, ' ') + "<e/></r>");
  SaxParser const parser(source);
  Elem root = parser.root(), a = root.child(tag::a);
  root.child(tag::d);
  std::size_t const taken = source.taken();
  EXPECT_EQ(taken, piece);
  root.match(tag::r);
  EXPECT_EQ(remaining_attributes(root), (Attributes{{tag::a, u"1"}}));
  EXPECT_TRUE(root.next_attr().is_nil());
  EXPECT_EQ(remaining_attributes(a), (Attributes{{tag::b, u"2"}}));
  EXPECT_FALSE(root.is_empty());
  EXPECT_FALSE(a.is_empty());
  EXPECT_EQ(a.data(), u"x");
  EXPECT_TRUE(a.opt_child(tag::d).is_nil());
  EXPECT_EQ(remaining_children(a), Tags{tag::c});
  EXPECT_EQ(root.next_child().tag(), tag::a);
  EXPECT_EQ(root.next_child().tag(), tag::d);
  EXPECT_EQ(source.taken(), taken);
}

TEST(TheConstructor, TakesNoPieceBehindTheRootsStartTag) {
  // While there can still be a document type declaration the parser waits for enough bytes to tell.
  constexpr std::size_t longest_start = sizeof "<!DOCTYPE" - 1;
  std::string const tag = "<r>";
  for (std::size_t pad = 1000; pad < 1000 + piece; ++pad) {
    Source source(padding(pad) + tag + std::string(3 * piece, ' ') + "</r>");
    SaxParser const parser(source);
    std::size_t const pieces = (source.taken() + piece - 1) / piece;
    EXPECT_LE(pieces, (pad + longest_start + piece - 1) / piece) << pad;
    EXPECT_GE(pieces, (pad + tag.size() + piece - 1) / piece) << pad;
  }
}

TEST(TheConstructor, TakesNoPieceBehindALongStartTag) {
  for (std::size_t length = 1000; length < 1000 + piece; ++length) {
    std::string const value(length, 'v');
    Source source("<r a='" + value + "'>" + std::string(3 * piece, ' ') + "</r>");
    SaxParser const parser(source);
    EXPECT_EQ(source.taken(), (length + 8 + piece - 1) / piece * piece);
  }
}

TEST(TheEndOfTheRoot, IsToldWhenTheStreamHasEnded) {
  std::string const behind(3 * piece, ' ');
  Source source("<r>x</r>" + behind);
  SaxParser const parser(source);
  EXPECT_EQ(source.taken(), piece);
  EXPECT_FALSE(parser.root().is_empty());
  EXPECT_EQ(source.taken(), piece);
  EXPECT_EQ(parser.root().data(), u"x");
  EXPECT_EQ(source.taken(), 8 + behind.size());
}

TEST(TheEndOfTheRoot, InAStreamThatIsBrokenBehindItIsABadReadOnce) {
  Source source("<r>x</r>" + std::string(3 * piece, ' '));
  source.break_at(2 * piece);
  SaxParser const parser(source);
  EXPECT_THROW(parser.root().data(), Orn::RuntimeException);
  EXPECT_EQ(parser.root().data(), u"x");
}

}  // namespace
}  // namespace tests

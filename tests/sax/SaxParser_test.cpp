#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/sax/SaxReader.h"
#include "tests/support/Raises.h"
#include "tqxml/foundation/Catalogue.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::RuntimeException;
using Orn::SaxParser;
using Orn::StateException;

static_assert(std::has_virtual_destructor_v<SaxParser>);
static_assert(std::is_copy_constructible_v<SaxParser>);
static_assert(std::is_copy_assignable_v<SaxParser>);
static_assert(!std::is_convertible_v<std::istream*, SaxParser>);

TEST(ASaxParser, WithoutADocumentHasANilRootAndNothingToSay) {
  SaxParser const parser;
  EXPECT_TRUE(parser.root().is_nil());
  EXPECT_EQ(parser.error_text(), u"");
  EXPECT_EQ(parser.error_line(), 0U);
  EXPECT_EQ(parser.error_column(), 0U);
}

TEST(ASaxParser, CanBeMadeOfAStreamOrOfAPointerToOne) {
  std::istringstream first("<r>1</r>"), second("<r>2</r>");
  EXPECT_EQ(SaxParser(first).root().data(), u"1");
  EXPECT_EQ(SaxParser(&second).root().data(), u"2");
}

TEST(ASaxParser, HasTheSameRootEachTimeItIsAskedFor) {
  std::istringstream in("<r a='1' b='2'><a/><b/></r>");
  SaxParser parser(in);
  SaxParser::Elem first = parser.root(), second = parser.root();
  EXPECT_EQ(first.next_child().tag(), tag::a);
  EXPECT_EQ(second.next_child().tag(), tag::b);
  EXPECT_TRUE(parser.root().next_child().is_nil());
  EXPECT_EQ(second.next_attr().tag(), tag::b);
  EXPECT_EQ(first.next_attr().tag(), tag::a);
}

TEST(ASaxParser, LeavesTheStreamToItsOwner) {
  std::istringstream in("<r/>");
  in.exceptions(std::ios_base::badbit);
  { SaxParser const parser(in); }
  EXPECT_EQ(in.exceptions(), std::ios_base::badbit);
  in.clear();
  in.str("<a/>");
  EXPECT_EQ(SaxParser(in).root().tag(), tag::a);
}

TEST(ASaxParser, OfTheNullPointerIsABadRead) {
  EXPECT_RAISES(SaxParser(nullptr), RuntimeException, Catalogue::BAD_READ);
}

TEST(ASaxParser, KnowsItsDocumentAsAWholeOnlyThroughItsRoot) {
  std::istringstream in(
      "<?xml version='1.0'?><!DOCTYPE r><!--c--><?pi i?>\n<r/>\n<!--c--><?pi i?>\n");
  SaxParser::Elem root = SaxParser(in).root();
  EXPECT_TRUE(root.is_empty());
  EXPECT_TRUE(root.next_child().is_nil());
}

TEST(InitializeOfASaxParser, GivesTheRoot) {
  std::istringstream in("<r><a/></r>");
  SaxParser parser;
  SaxParser::Elem root = parser.initialize(&in);
  EXPECT_EQ(root.tag(), tag::r);
  EXPECT_EQ(root.next_child().tag(), tag::a);
  EXPECT_TRUE(parser.root().next_child().is_nil());
}

TEST(InitializeOfASaxParser, GivesUpTheDocumentThatThereWas) {
  std::istringstream first("<a c='1'>x<b/></a>"), second("<r>2</r>");
  SaxParser parser(first);
  SaxParser::Elem a = parser.root();
  EXPECT_EQ(parser.initialize(&second).tag(), tag::r);
  EXPECT_EQ(a.tag(), tag::a);
  EXPECT_EQ(a.next_attr().data(), u"1");
  EXPECT_RAISES(a.data(), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_EQ(parser.root().data(), u"2");
}

TEST(InitializeOfASaxParser, LeavesTheDocumentToACopy) {
  std::istringstream first("<a>x</a>"), second("<r>2</r>");
  SaxParser parser(first);
  SaxParser const copy(parser);
  parser.initialize(&second);
  EXPECT_EQ(parser.root().data(), u"2");
  EXPECT_EQ(copy.root().data(), u"x");
}

TEST(InitializeOfASaxParser, WithTheNullPointerIsABadReadAndLeavesNoRoot) {
  std::istringstream in("<r/>");
  SaxParser parser(in);
  EXPECT_RAISES(parser.initialize(nullptr), RuntimeException, Catalogue::BAD_READ);
  EXPECT_TRUE(parser.root().is_nil());
  EXPECT_EQ(parser.error_text(), u"");
}

TEST(InitializeOfASaxParser, ThatFailsLeavesNoRootAndTellsWhy) {
  std::istringstream good("<r/>"), broken("<a>x</a>"), malformed("\n <r a='1' a='2'>");
  SaxParser parser(good);
  EXPECT_RAISES(parser.initialize(&malformed), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_TRUE(parser.root().is_nil());
  EXPECT_FALSE(parser.error_text().empty());
  EXPECT_EQ(parser.error_line(), 2U);
  EXPECT_EQ(parser.error_column(), 17U);

  broken.setstate(std::ios_base::badbit);
  EXPECT_RAISES(parser.initialize(&broken), RuntimeException, Catalogue::BAD_READ);
  EXPECT_TRUE(parser.root().is_nil());
  EXPECT_EQ(parser.error_text(), u"");
}

TEST(InitializeOfASaxParser, CanBeTriedAgainAfterAFailure) {
  std::istringstream malformed("<r"), good("<r>x</r>");
  SaxParser parser;
  EXPECT_THROW(parser.initialize(&malformed), StateException);
  EXPECT_EQ(parser.initialize(&good).data(), u"x");
  EXPECT_EQ(parser.error_text(), u"");
  EXPECT_EQ(parser.error_line(), 0U);
  EXPECT_EQ(parser.error_column(), 0U);
}

TEST(ACopyOfASaxParser, ReadsTheSameDocument) {
  std::istringstream in("<r><a/><b/><c/></r>");
  SaxParser parser(in);
  SaxParser const copy(parser);
  EXPECT_EQ(copy.root().child(tag::b).tag(), tag::b);
  EXPECT_EQ(parser.root().next_child().tag(), tag::a);
  EXPECT_EQ(copy.root().next_child().tag(), tag::b);
  EXPECT_EQ(parser.root().next_child().tag(), tag::c);
}

TEST(ACopyOfASaxParser, GoesOnReadingWhenTheOriginalIsGone) {
  std::istringstream in("<r><a>x</a></r>");
  SaxParser copy;
  {
    SaxParser const parser(in);
    copy = parser;
  }
  EXPECT_EQ(copy.root().child().data(), u"x");
}

TEST(ACopyOfASaxParser, TellsTheSameError) {
  std::istringstream in("<r><a></b></r>");
  SaxParser const parser(in), copy(parser);
  EXPECT_THROW(parser.root().data(), StateException);
  EXPECT_FALSE(copy.error_text().empty());
  EXPECT_EQ(copy.error_text(), parser.error_text());
  EXPECT_EQ(copy.error_line(), 1U);
  EXPECT_EQ(copy.error_column(), 9U);
}

TEST(AssignmentOfASaxParser, GivesUpTheDocumentThatThereWas) {
  std::istringstream first("<a>x</a>"), second("<r>2</r>");
  SaxParser parser(first);
  SaxParser::Elem const a = parser.root();
  SaxParser const other(second);
  parser = other;
  EXPECT_EQ(parser.root().data(), u"2");
  EXPECT_RAISES(a.data(), StateException, Catalogue::NOT_VALID_STREAM);
}

TEST(AssignmentOfASaxParser, WithoutADocumentLeavesNone) {
  std::istringstream in("<r><a></r>");
  SaxParser parser(in);
  EXPECT_THROW(parser.root().data(), StateException);
  parser = SaxParser();
  EXPECT_TRUE(parser.root().is_nil());
  EXPECT_EQ(parser.error_text(), u"");
}

TEST(AssignmentOfASaxParser, ToItselfOrToACopyChangesNothing) {
  std::istringstream in("<r><a/>x</r>");
  SaxParser parser(in);
  SaxParser const& itself = parser;
  parser = itself;
  EXPECT_EQ(parser.root().next_child().tag(), tag::a);
  parser = SaxParser(itself);
  EXPECT_EQ(parser.root().data(), u"x");

  SaxParser empty;
  SaxParser const& also_empty = empty;
  empty = also_empty;
  EXPECT_TRUE(empty.root().is_nil());
}

TEST(AHandle, OutlivesTheParserAndKnowsWhatHasBeenRead) {
  SaxParser::Elem root, a, b;
  {
    std::istringstream in("<r c='1'>x<a>y</a><b d='2'>z</b></r>");
    SaxParser parser(in);
    root = parser.root();
    a = root.child(tag::a);
    b = root.child(tag::b);
  }
  EXPECT_EQ(root.tag(), tag::r);
  EXPECT_EQ(remaining_attributes(root), (Attributes{{tag::c, u"1"}}));
  EXPECT_EQ(root.child().tag(), tag::a);
  EXPECT_FALSE(root.is_empty());
  EXPECT_EQ(a.data(), u"y");
  EXPECT_EQ(remaining_attributes(b), (Attributes{{tag::d, u"2"}}));
  EXPECT_EQ(root.next_child().data(), u"y");
}

TEST(AHandle, ThatOutlivesTheParserCannotAskForMore) {
  SaxParser::Elem root, b;
  {
    std::istringstream in("<r><a/><b>z</b></r>");
    SaxParser const parser(in);
    root = parser.root();
    b = root.opt_child(tag::b);
  }
  for (int i = 0; i < 2; ++i) {
    EXPECT_RAISES(root.child(tag::c), StateException, Catalogue::NOT_VALID_STREAM);
    EXPECT_RAISES(root.opt_child(tag::c), StateException, Catalogue::NOT_VALID_STREAM);
    EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM);
    EXPECT_RAISES(b.child(), StateException, Catalogue::NOT_VALID_STREAM);
    EXPECT_RAISES(b.is_empty(), StateException, Catalogue::NOT_VALID_STREAM);
    EXPECT_RAISES(b.check_is_empty(false), StateException, Catalogue::NOT_VALID_STREAM);
  }
  EXPECT_EQ(root.next_child().tag(), tag::a);
  EXPECT_EQ(root.next_child().tag(), tag::b);
  EXPECT_RAISES(root.next_child(), StateException, Catalogue::NOT_VALID_STREAM);
}

TEST(SaxParsers, CanBeUsedInTurn) {
  std::istringstream first("<r><a>1</a><b>2</b></r>"), second("<r><c>3</c><d>4</d></r>");
  SaxParser one(first), other(second);
  EXPECT_EQ(one.root().next_child().data(), u"1");
  EXPECT_EQ(other.root().next_child().data(), u"3");
  EXPECT_EQ(one.root().next_child().data(), u"2");
  EXPECT_EQ(other.root().next_child().data(), u"4");
}

bool reads_and_refuses(int i) {
  std::string const number = std::to_string(i);
  std::istringstream good("<r a='" + number + "'><b>x</b><c/></r>"), malformed("<r><a></r>");
  SaxParser parser(good);
  SaxParser::Elem root = parser.root();
  bool const read = root.tag() == tag::r && root.child(tag::b).data() == u"x" &&
                    root.next_attr().data().to_utf8() == number &&
                    remaining_children(root) == Tags{tag::b, tag::c};
  try {
    parser.initialize(&malformed).data();
    return false;
  } catch (StateException const&) {
    return read && !parser.error_text().empty();
  }
}

TEST(SaxParsers, InDifferentThreadsAreIndependent) {
  constexpr int rounds = 100;
  std::vector<int> good(4);
  std::vector<std::thread> threads;
  for (int& count : good) {
    threads.emplace_back([&count] {
      for (int i = 0; i < rounds; ++i) count += reads_and_refuses(i) ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(good, std::vector<int>(4, rounds));
}

}  // namespace
}  // namespace tests

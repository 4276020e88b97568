#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>

#include "tests/sax/Source.h"
#include "tests/support/LimitsContract.h"
#include "tests/support/Raises.h"
#include "tests/support/TestTags.h"
#include "tests/support/Walk.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/sax/SaxParser.h"

namespace tests {
namespace {

namespace tag = testtags;
using Orn::Catalogue;
using Orn::RuntimeException;
using Orn::SaxParser;
using Orn::StateException;

class LimitedSax {
 public:
  static UString read(std::string const& xml, ReadLimits const& limits) {
    std::istringstream in(xml);
    return walk(SaxParser(in, limits).root());
  }
  static UString read_without_limits(std::string const& xml) {
    std::istringstream in(xml);
    SaxParser const parser(in);
    return walk(parser.root());
  }

  static std::optional<Crossing> crossing(std::string const& xml, ReadLimits const& limits) {
    std::istringstream in(xml);
    SaxParser parser(limits);
    try {
      walk(parser.initialize(&in));
      return std::nullopt;
    } catch (StateException const& e) {
      Crossing const found{parser.error_line(), parser.error_column(), parser.error_text()};
      if (found.text.find(u"ReadLimits::", 0) != 0) throw;
      EXPECT_TRUE(
          carries(e, {Catalogue::table(), Catalogue::PARSER_ERROR, {with_place(found)}, 39, 2}));
      return found;
    }
  }

 private:
  static UString with_place(Crossing const& crossing) {
    return UString::from_utf8("line: " + std::to_string(crossing.line) +
                              ", column: " + std::to_string(crossing.column) +
                              ", msg: " + crossing.text.to_utf8());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Sax, LimitsContract, LimitedSax);

ReadLimits of_depth(std::uint64_t depth) {
  ReadLimits limits;
  limits.depth = depth;
  return limits;
}

ReadLimits of_bytes(std::uint64_t bytes) {
  ReadLimits limits;
  limits.bytes = bytes;
  return limits;
}

TEST(ASaxParserWithLimits, SaysWhatHasBeenCrossedInTheMessageItself) {
  std::istringstream in("<r>\n<a/></r>");
  SaxParser const parser(in, of_depth(1));
  EXPECT_EQ(
      std::string(caught<StateException>([&] { parser.root().data(); }).what()),
      "ZEMKA0704E line: 2, column: 5, msg: ReadLimits::depth: more than 1 levels of elements; "
      "refuse the document, or read it again with another limit if you trust its source");
}

TEST(ASaxParserWithLimits, MeetsThemOnlyWhereNavigationComes) {
  std::istringstream in("<r><a>x</a><b/><c><d/></c></r>");
  SaxParser const parser(in, of_depth(2));
  SaxParser::Elem root = parser.root();
  EXPECT_EQ(root.next_child().data(), u"x");
  EXPECT_EQ(root.next_child().tag(), tag::b);
  SaxParser::Elem const c = root.next_child();
  EXPECT_EQ(parser.error_text(), u"");
  EXPECT_THROW(c.is_empty(), StateException);
}

TEST(ASaxParserWithLimits, ReadsNoFurtherAfterwards) {
  std::istringstream in("<r><a>x</a><b><c/></b></r>");
  SaxParser const parser(in, of_depth(2));
  SaxParser::Elem const root = parser.root();
  EXPECT_THROW(root.data(), StateException);
  EXPECT_EQ(root.child(tag::a).data(), u"x");
  UString const text = parser.error_text();
  EXPECT_FALSE(text.empty());
  EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_RAISES(root.child(tag::c), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_EQ(parser.error_text(), text);
}

TEST(ASaxParserWithLimits, CanBeMadeBeforeThereIsAStream) {
  SaxParser parser(ReadLimits::untrusted());
  EXPECT_TRUE(parser.root().is_nil());
  EXPECT_EQ(parser.error_text(), u"");
  EXPECT_EQ(parser.error_line(), 0U);
  EXPECT_EQ(parser.error_column(), 0U);
  std::istringstream in("<!DOCTYPE r><r/>");
  EXPECT_THROW(parser.initialize(&in), StateException);
  EXPECT_TRUE(parser.root().is_nil());
  EXPECT_EQ(parser.error_text(), limit_text("refuse_doctype: there is a DOCTYPE"));
  EXPECT_EQ(parser.error_column(), 13U);
}

TEST(ASaxParserWithLimits, KeepsThemForEveryStreamThatItIsGiven) {
  SaxParser parser(of_depth(1));
  for (int i = 0; i < 3; ++i) {
    std::istringstream deep("<r><a/></r>"), flat("<b>x</b>");
    EXPECT_THROW(parser.initialize(&deep).data(), StateException);
    EXPECT_EQ(parser.initialize(&flat).data(), u"x");
    EXPECT_EQ(parser.error_text(), u"");
  }
  std::istringstream first("<r/>"), second("<r><a/></r>");
  SaxParser other(first, of_depth(1));
  EXPECT_THROW(other.initialize(&second).data(), StateException);
}

TEST(ASaxParserWithLimits, GivesThemToItsCopies) {
  SaxParser const parser(of_depth(1));
  SaxParser copy(parser), assigned;
  assigned = parser;
  std::istringstream in("<r><a/></r>"), again("<r><a/></r>");
  EXPECT_THROW(copy.initialize(&in).data(), StateException);
  EXPECT_THROW(assigned.initialize(&again).data(), StateException);
  EXPECT_EQ(parser.error_text(), u"");
}

TEST(ASaxParserWithLimits, HasNoneAfterOneWithoutWasAssigned) {
  SaxParser parser(of_depth(1));
  parser = SaxParser();
  std::istringstream in("<r><a/></r>");
  EXPECT_EQ(parser.initialize(&in).child().tag(), tag::a);
}

TEST(ASaxParserWithLimits, TakesAReferenceOrAPointer) {
  std::istringstream in("<r><a/></r>"), again("<r><a/></r>");
  SaxParser const by_reference(in, of_depth(1)), by_pointer(&again, of_depth(1));
  EXPECT_THROW(by_reference.root().data(), StateException);
  EXPECT_THROW(by_pointer.root().data(), StateException);
  EXPECT_RAISES(SaxParser(static_cast<std::istream*>(nullptr), of_depth(1)), RuntimeException,
                Catalogue::BAD_READ);
}

TEST(ASaxParserWithLimits, TakesNoMoreThanOneByteTooManyFromItsStream) {
  for (std::size_t limit : {0U, 1U, 10U, 1023U, 1024U, 1025U, 5000U}) {
    Source source("<r>" + std::string(10000, ' ') + "</r>");
    SaxParser parser(of_bytes(limit));
    EXPECT_THROW(parser.initialize(&source).data(), StateException) << limit;
    EXPECT_EQ(source.taken(), limit + 1);
    EXPECT_EQ(parser.error_line(), 1U);
    EXPECT_LE(parser.error_column(), limit + 1);
  }
}

TEST(ASaxParserWithLimits, LetsAStreamBeReadUpToItsLimitOfBytes) {
  Source source("<r>" + std::string(10000, ' ') + "</r>");
  SaxParser const parser(source, of_bytes(10007));
  EXPECT_EQ(parser.root().data().length(), 10000U);
  EXPECT_EQ(source.taken(), 10007U);
}

TEST(ASaxParserWithLimits, StopsEndlessMarkupOfAStreamSoon) {
  for (char const* begin : {"<", "<r ", "<r a='", "<!--", "<?pi ", "<r><![CDATA["}) {
    Source source(begin + std::string(8000000, 'x'));
    SaxParser parser(ReadLimits::untrusted());
    EXPECT_THROW(walk(parser.initialize(&source)), StateException) << begin;
    EXPECT_EQ(parser.error_text().find(u"ReadLimits::markup_memory", 0), 0U) << begin;
    EXPECT_LT(source.taken(), 3000000U) << begin;
  }
}

}  // namespace
}  // namespace tests

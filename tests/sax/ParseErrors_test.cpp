#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>

#include "tests/sax/Source.h"
#include "tests/support/Raises.h"
#include "tests/support/TestTags.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/sax/SaxParser.h"

namespace tests {
namespace {

namespace tag = testtags;
using Orn::Catalogue;
using Orn::SaxParser;
using Orn::StateException;
using Orn::UString;

struct NotWellFormed {
  std::string xml;
  std::uint64_t line;
  std::uint64_t column;
};

NotWellFormed const not_well_formed[] = {
    {"", 1, 1},
    {" ", 1, 2},
    {"\n\n", 3, 1},
    {"junk", 1, 1},
    {"<?xml version='1.0'?>", 1, 22},
    {"<!--c-->", 1, 9},
    {"<r>", 1, 4},
    {"<r", 1, 3},
    {"<r><a></r>", 1, 9},
    {"<r>\n<a>\n</b></r>", 3, 3},
    {"<r>\n  <a>\n    <b></a>\n</r>", 3, 10},
    {"<r>\r\n<a>\r\n</b></r>", 3, 3},
    {"<r/><r/>", 1, 5},
    {"<r/>x", 1, 5},
    {"<r></r>\nx", 2, 1},
    {"<r>&u;</r>", 1, 7},
    {"<r a='1' a='2'/>", 1, 17},
    {"<r a=1/>", 1, 6},
    {"<r>\x01</r>", 1, 5},
    {"<r>]]></r>", 1, 7},
    {"<r><!-- -- --></r>", 1, 12},
    {"<r>&#0;</r>", 1, 8},
    {"<p:r/>", 1, 7},
    {"<r p:a=''/>", 1, 12},
    {"<r xmlns:p=''/>", 1, 16},
    {"<?xml version='2.0'?><r/>", 1, 20},
    {"<?xml version='1.0' encoding='nonsense'?><r/>", 1, 42},
    {"<!DOCTYPE r [<!ENTITY e SYSTEM 'no-such-file.ent'>]><r>&e;</r>", 1, 59},
};

void read_all(SaxParser& parser, std::string const& xml) {
  std::istringstream in(xml);
  parser.initialize(&in).data();
}

TEST(AnErrorOfTheParser, IsToldWithItsPlace) {
  for (NotWellFormed const& document : not_well_formed) {
    SCOPED_TRACE(document.xml);
    SaxParser parser;
    EXPECT_RAISES(read_all(parser, document.xml), StateException, Catalogue::NOT_VALID_STREAM);
    EXPECT_FALSE(parser.error_text().empty());
    EXPECT_EQ(parser.error_line(), document.line);
    EXPECT_EQ(parser.error_column(), document.column);
  }
}

TEST(AnErrorOfTheParser, IsNotThereBeforeItIsReached) {
  std::istringstream in("<r><a/>\n</b></r>");
  SaxParser const parser(in);
  EXPECT_EQ(parser.root().child().tag(), tag::a);
  EXPECT_EQ(parser.error_text(), u"");
  EXPECT_EQ(parser.error_line(), 0U);
  EXPECT_EQ(parser.error_column(), 0U);
  EXPECT_THROW(parser.root().data(), StateException);
  EXPECT_FALSE(parser.error_text().empty());
  EXPECT_EQ(parser.error_line(), 2U);
}

TEST(AnErrorOfTheParser, StaysWhenMoreIsAskedFor) {
  std::istringstream in("<r><a></r>");
  SaxParser const parser(in);
  EXPECT_THROW(parser.root().data(), StateException);
  UString const text = parser.error_text();
  EXPECT_THROW(parser.root().data(), StateException);
  EXPECT_EQ(parser.error_text(), text);
  EXPECT_EQ(parser.error_line(), 1U);
}

TEST(AnErrorOfTheParser, IsToldForBytesThatCannotBeDecoded) {
  SaxParser parser;
  EXPECT_RAISES(read_all(parser, "<r>\xff</r>"), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_FALSE(parser.error_text().empty());
  EXPECT_RAISES(read_all(parser, "<r>" + std::string(3000, '\n') + "\xff</r>"), StateException,
                Catalogue::NOT_VALID_STREAM);
  EXPECT_FALSE(parser.error_text().empty());
}

TEST(AnErrorOfTheParser, IsNotAWarning) {
  // The second declaration of an entity is worth a warning at most.
  SaxParser parser;
  EXPECT_NO_THROW(read_all(parser, "<!DOCTYPE r [<!ENTITY e 'x'><!ENTITY e 'y'>]><r>&e;</r>"));
  EXPECT_EQ(parser.root().data(), u"x");
  EXPECT_EQ(parser.error_text(), u"");
}

TEST(AnErrorOfTheParser, IsNotAFailureOfTheStreamOrOfTheRegistry) {
  Source source("<r><a/>" + std::string(3000, ' '));
  source.break_at(2000);
  SaxParser const broken(source);
  EXPECT_THROW(broken.root().data(), Orn::RuntimeException);
  EXPECT_THROW(broken.root().data(), StateException);
  EXPECT_EQ(broken.error_text(), u"");

  std::istringstream in("<r><unknown/></r>");
  SaxParser const parser(in);
  EXPECT_THROW(parser.root().data(), Orn::STPException);
  EXPECT_EQ(parser.error_text(), u"");
  EXPECT_EQ(parser.error_line(), 0U);
}

}  // namespace
}  // namespace tests

#include <gtest/gtest.h>

#include <string>

#include "tests/sax/ManyNames.h"
#include "tests/support/ReaderTest.h"
#include "tqxml/dom/DomParser.h"

namespace tests {
namespace {

using Orn::DomParser;

/// All names of one namespace, as elements with an attribute each.
std::string document(std::size_t ns) {
  std::string xml = manynames::root_start();
  for (std::size_t i = 0; i < manynames::NAMES; ++i) {
    std::string const name = manynames::name(ns, i);
    xml += "<" + name + " " + name + "='v'/>";
  }
  return xml + "</r>";
}

void expect_names(DomParser& parser, std::size_t ns) {
  DomParser::Elem root = parser.root();
  for (std::size_t i = 0; i < manynames::NAMES; ++i) {
    DomParser::Elem child = root.next_child();
    ASSERT_EQ(child.tag(), manynames::tag(ns, i));
    ASSERT_EQ(child.next_attr().tag(), manynames::tag(ns, i));
  }
  ASSERT_TRUE(root.next_child().is_nil());
}

// Names of a new document may well stand where those of the old one did.
TEST(NewText, HasItsOwnNamesHoweverOftenItIsReplaced) {
  DomParser parser;
  for (std::size_t round = 0; round < 20; ++round) {
    std::size_t const ns = round % manynames::NAMESPACES;
    parser.set_xml_doc_text(document(ns));
    expect_names(parser, ns);
  }
}

TEST(NewText, TakenOverFromAnotherParserHasItsOwnNames) {
  DomParser target(document(1));
  for (std::size_t round = 0; round < 20; ++round) {
    std::size_t const ns = round % manynames::NAMESPACES;
    DomParser const source(document(ns));
    target = source;
    expect_names(target, ns);
  }
}

TEST(NewText, OfOneNameEachHasThatName) {
  DomParser parser;
  for (std::size_t round = 0; round < 600; ++round) {
    std::size_t const ns = round % 3, i = round * 7 % manynames::NAMES;
    parser.set_xml_doc_text(manynames::root_start() + "<" + manynames::name(ns, i) + "/></r>");
    ASSERT_EQ(parser.root().child().tag(), manynames::tag(ns, i));
  }
}

TEST(NewText, LeavesTheHandlesOfOtherParsersAlone) {
  DomParser kept(document(2)), changed(document(1));
  DomParser::Elem root = kept.root();
  for (std::size_t i = 0; i < manynames::NAMES; ++i) {
    if (i % 30 == 0) {
      changed.set_xml_doc_text(document(i % 4));
      expect_names(changed, i % 4);
    }
    ASSERT_EQ(root.next_child().tag(), manynames::tag(2, i));
  }
}

}  // namespace
}  // namespace tests

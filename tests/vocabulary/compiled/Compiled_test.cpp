#include <gtest/gtest.h>

#include <fstream>

#include "tqutil/XmlTag.h"
#include "tqxml/sax/SaxParser.h"

namespace {

TEST(AGeneratedVocabulary, CompilesAndHasTheNumberOfEveryNameOfTheDocument) {
  std::ifstream in(TQ_AWKWARD_DOCUMENT);
  Orn::SaxParser parser;
  Orn::SaxParser::Elem names = parser.initialize(&in);
  int count = 0;
  for (auto name = names.next_child(); !name.is_nil(); name = names.next_child()) {
    EXPECT_GT(name.tag(), 0);
    for (auto attr = name.next_attr(); !attr.is_nil(); attr = name.next_attr()) {
      EXPECT_GT(attr.tag(), 0);
      ++count;
    }
    ++count;
  }
  // Some thousands of them are the macros.
  EXPECT_GT(count, 2000);
}

TEST(AGeneratedVocabulary, ShowsAttributesThoughItHasMoreNamesThanThereAreNumbersForThose) {
  std::ifstream in(TQ_AWKWARD_DOCUMENT);
  Orn::SaxParser parser;
  Orn::SaxParser::Elem names = parser.initialize(&in);
  auto const id = names.next_attr();
  ASSERT_FALSE(id.is_nil());
  EXPECT_EQ(Orn::XmlTag::lookup(id.tag()).simple_name(), u"id");
}

}  // namespace

#include <gtest/gtest.h>

#include <string>

#include "tests/dom/DomReader.h"

namespace tests {
namespace {

using Orn::DomParser;
using Elem = DomParser::Elem;

using ADocument = DomTest;

TEST_F(ADocument, OfTwentyThousandLevelsIsWalkedToItsBottom) {
  constexpr int levels = 20000;
  std::string xml;
  for (int i = 0; i < levels; ++i) xml += "<a>";
  xml += "bottom";
  for (int i = 0; i < levels; ++i) xml += "</a>";
  Elem element = root_of(xml);
  for (int i = 1; i < levels; ++i) element = element.child(tag::a);
  EXPECT_EQ(element.data(), u"bottom");
  EXPECT_TRUE(element.next_child().is_nil());
}

TEST_F(ADocument, WithTenThousandAttributesOnAnElementGivesThemAll) {
  constexpr int attributes = 10000;
  std::string xml = "<r";
  for (int i = 0; i < attributes; ++i) {
    xml += " n" + std::to_string(i) + "='" + std::to_string(i) + "'";
  }
  Elem root = root_of(xml + "/>");
  std::vector<bool> seen(attributes);
  for (auto attr = root.next_attr(); !attr.is_nil(); attr = root.next_attr()) {
    auto const i = std::stoul(attr.data().to_utf8());
    EXPECT_FALSE(seen.at(i)) << i;
    seen.at(i) = true;
  }
  EXPECT_EQ(std::count(seen.begin(), seen.end(), true), attributes);
}

TEST_F(ADocument, WithAnAttributeOfAMillionCharactersGivesItsValueWhole) {
  std::string const value(1000000, 'v');
  Elem root = root_of("<r a='" + value + "'/>");
  EXPECT_TRUE(root.next_attr().data().to_utf8() == value);
}

}  // namespace
}  // namespace tests

#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>
#include <string>
#include <utility>

#include "tests/sax/SaxReader.h"

namespace tests {
namespace {

using Orn::SaxParser;
using Elem = SaxParser::Elem;

std::string repeated(int times, std::string const& text) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

// Every element declares its namespace, since the parser looks for a declaration through all
// elements around it: with a single one this depth would take it half a minute.
constexpr int levels = 100000;

std::string nested(int depth) {
  return repeated(depth, "<a xmlns='urn:test:u' b='1'>") + "bottom" + repeated(depth, "</a>");
}

/// Runs `call` in a thread with a stack of 64 KiB. Records end one by one and not each inside of
/// the one that held it, which would take some fifty bytes of stack a level.
void on_a_small_stack(std::function<void()> call) {
  constexpr std::size_t size = 65536;
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, size), 0);
  pthread_t thread{};
  auto const run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &call), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

class ADocumentOfAHundredThousandLevels : public SaxTest {};

TEST_F(ADocumentOfAHundredThousandLevels, IsReadToItsBottom) {
  Elem element = root_of(nested(levels));
  for (int i = 1; i < levels; ++i) element = element.child(tag::u_a);
  EXPECT_EQ(element.data(), u"bottom");
  EXPECT_TRUE(element.next_child().is_nil());
}

TEST_F(ADocumentOfAHundredThousandLevels, IsReadToItsBottomTakingEveryChild) {
  Elem element = root_of(nested(levels));
  for (int i = 1; i < levels; ++i) element = element.next_child();
  EXPECT_EQ(element.data(), u"bottom");
}

/// The root of a document that has been read whole and is held by nothing else.
Elem whole(std::string const& xml) {
  std::istringstream in(xml);
  SaxParser const parser(in);
  parser.root().data();
  return parser.root();
}

TEST_F(ADocumentOfAHundredThousandLevels, IsReleasedOnASmallStack) {
  Elem root = whole(nested(levels));
  on_a_small_stack([&] { root = Elem(); });
  EXPECT_TRUE(root.is_nil());
}

TEST_F(ADocumentOfAHundredThousandLevels, IsReleasedOnASmallStackExceptForWhatIsHeld) {
  Elem root = whole(nested(levels));
  Elem bottom = root.child(), middle;
  for (int i = 2; i < levels; ++i) {
    bottom = bottom.child();
    if (i == levels / 2) middle = bottom;
  }
  on_a_small_stack([&] { root = Elem(); });
  EXPECT_EQ(bottom.data(), u"bottom");
  on_a_small_stack([&] { middle = Elem(); });
  EXPECT_EQ(bottom.data(), u"bottom");
}

TEST_F(ADocumentOfAHundredThousandLevels, IsReleasedOnASmallStackWhileItIsOpen) {
  std::istringstream in(nested(levels));
  SaxParser parser(in);
  Elem element = parser.root();
  for (int i = 1; i < levels; ++i) element = element.child();
  on_a_small_stack([&] { parser = SaxParser(); });
  EXPECT_EQ(element.tag(), tag::u_a);
}

TEST_F(ADocumentOfAHundredThousandLevels, WhoseElementsWereTakenIsReleasedOnASmallStack) {
  std::istringstream in(nested(levels));
  SaxParser parser(in);
  Elem element = parser.root();
  for (int i = 1; i < levels; ++i) element = element.next_child();
  on_a_small_stack([&] {
    element = Elem();
    parser = SaxParser();
  });
  EXPECT_TRUE(parser.root().is_nil());
}

TEST(AWideDocument, OfThousandsOfLevelsIsReleasedOnASmallStack) {
  std::string const leaves = repeated(50, "<b/>");
  Elem root = whole(repeated(2000, "<a>" + leaves) + repeated(2000, leaves + "</a>"));
  on_a_small_stack([&] { root = Elem(); });
  EXPECT_TRUE(root.is_nil());
}

TEST(AWideDocument, IsReleasedOnASmallStack) {
  Elem root = whole("<r>" + repeated(200000, "<a/>") + "</r>");
  on_a_small_stack([&] { root = Elem(); });
  EXPECT_TRUE(root.is_nil());
}

TEST(AWideDocument, WithTenThousandNamespaceDeclarationsOnAnElementGivesItsAttributesOnly) {
  std::string xml = "<r a='1'";
  for (int i = 0; i < 10000; ++i) {
    std::string const number = std::to_string(i);
    xml += " xmlns:n" + number + "='urn:" + number + "'";
  }
  Elem root = whole(xml + " b='2'/>");
  EXPECT_EQ(remaining_attributes(root), (Attributes{{tag::b, u"2"}, {tag::a, u"1"}}));
}

TEST(AWideDocument, WithAnAttributeOfAMillionCharactersGivesItsValueWhole) {
  std::string const value(1000000, 'v');
  Elem root = whole("<r a='" + value + "'/>");
  EXPECT_TRUE(root.next_attr().data().to_utf8() == value);
}

}  // namespace
}  // namespace tests

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/sax/SaxReader.h"

namespace tests {
namespace {

using Orn::SaxParser;
using Orn::UString;
using Elem = SaxParser::Elem;
using Attribute = SaxParser::Attribute;

/// More than wait to be used again.
constexpr std::size_t MANY = 100;

/// Short and long in turn.
std::string text_of(std::size_t i) {
  return std::to_string(i) + std::string(i % 7 == 0 ? 1000 : i % 20, 'x');
}

std::string item(std::size_t i) {
  return "<a b='" + text_of(i) + "' c='" + text_of(i + 1) + "'>" + text_of(i + 2) + "<d>" +
         text_of(i + 3) + "</d></a>";
}

std::string document(std::size_t items) {
  std::string xml = "<r>";
  for (std::size_t i = 0; i < items; ++i) xml += item(i);
  return xml + "</r>";
}

struct Held {
  Elem a;
  Attribute b, c;
  Elem d;
};

UString utf16(std::string const& text) { return UString::from_utf8(text); }

void expect_item(Held& held, std::size_t i) {
  ASSERT_EQ(held.a.tag(), tag::a);
  ASSERT_EQ(held.a.data(), utf16(text_of(i + 2)));
  ASSERT_EQ(held.b.tag(), tag::b);
  ASSERT_EQ(held.b.data(), utf16(text_of(i)));
  ASSERT_EQ(held.c.tag(), tag::c);
  ASSERT_EQ(held.c.data(), utf16(text_of(i + 1)));
  ASSERT_EQ(held.d.tag(), tag::d);
  ASSERT_EQ(held.d.data(), utf16(text_of(i + 3)));
}

/// The attributes in the order in which their names tell them.
Held take(Elem& root) {
  Held held;
  held.a = root.next_child();
  for (Attribute attr = held.a.next_attr(); !attr.is_nil(); attr = held.a.next_attr()) {
    (attr.tag() == tag::b ? held.b : held.c) = attr;
  }
  held.d = held.a.next_child();
  held.a.data();
  return held;
}

/// Forward, backward, and shuffled.
std::vector<std::vector<std::size_t>> orders() {
  std::vector<std::size_t> order(MANY);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::vector<std::vector<std::size_t>> all = {order};
  std::reverse(order.begin(), order.end());
  all.push_back(order);
  std::mt19937 random(1);
  for (int i = 0; i < 20; ++i) {
    std::shuffle(order.begin(), order.end(), random);
    all.push_back(order);
  }
  return all;
}

TEST(Records, OfElementsThatAreDroppedLeaveNothingInThoseThatFollow) {
  std::string xml = "<r>";
  for (std::size_t i = 0; i < MANY; ++i) {
    // After each that has all there can be comes one that has nothing.
    xml += item(i) + "<e/><x><y/></x>";
  }
  std::istringstream in(xml + "</r>");
  SaxParser const parser(in);
  Elem root = parser.root();
  for (std::size_t i = 0; i < MANY; ++i) {
    Held held = take(root);
    expect_item(held, i);
    held = Held();
    Elem e = root.next_child();
    ASSERT_EQ(e.tag(), tag::e);
    ASSERT_TRUE(e.next_attr().is_nil());
    ASSERT_TRUE(e.is_empty());
    ASSERT_TRUE(e.opt_child(tag::d).is_nil());
    ASSERT_EQ(e.data(), u"");
    ASSERT_TRUE(e.next_child().is_nil());
    Elem x = root.next_child();
    ASSERT_EQ(x.child().tag(), tag::y);
    ASSERT_FALSE(x.is_empty());
    ASSERT_TRUE(x.next_attr().is_nil());
    ASSERT_EQ(x.data(), u"");
  }
  EXPECT_TRUE(root.next_child().is_nil());
}

TEST(Records, StayAsTheyAreWhileOthersAreDroppedAndUsedAgain) {
  std::mt19937 random(2);
  std::istringstream in(document(3000));
  SaxParser const parser(in);
  Elem root = parser.root();
  std::vector<std::optional<Held>> held(MANY);
  std::vector<std::size_t> number(MANY);
  for (std::size_t i = 0; i < 3000; ++i) {
    std::size_t const place = random() % MANY;
    if (held[place].has_value()) expect_item(*held[place], number[place]);
    // Now and then many at once, so that more end than may wait.
    if (random() % 300 == 0) std::fill(held.begin(), held.end(), std::nullopt);
    held[place].reset();
    held[place] = take(root);
    number[place] = i;
    ASSERT_FALSE(testing::Test::HasFatalFailure());
  }
  for (std::size_t i = 0; i < MANY; ++i) {
    if (held[i].has_value()) expect_item(*held[i], number[i]);
  }
}

/// The parser is dropped after `before` of the releases.
void release_in(std::vector<std::size_t> const& order, std::size_t before) {
  std::istringstream in(document(MANY + 1));
  auto parser = std::make_optional<SaxParser>(in);
  std::optional<Elem> root = parser->root();
  std::vector<Held> held;
  for (std::size_t i = 0; i < MANY; ++i) held.push_back(take(*root));
  for (std::size_t i = 0; i < MANY; ++i) {
    if (i == before) parser.reset();
    if (i == before + 1) root.reset();
    Held& next = held[order[i]];
    expect_item(next, order[i]);
    // An attribute alone, then an element alone, keeps what it is.
    next.a = Elem();
    ASSERT_EQ(next.b.data(), utf16(text_of(order[i])));
    next.b = Attribute();
    ASSERT_EQ(next.d.data(), utf16(text_of(order[i] + 3)));
    ASSERT_EQ(next.c.data(), utf16(text_of(order[i] + 1)));
    next = Held();
  }
}

TEST(Records, MayOutliveTheParserAndEndInAnyOrder) {
  for (std::vector<std::size_t> const& order : orders()) {
    for (std::size_t const before : {0U, 1U, 31U, 32U, 33U, 98U, 99U}) {
      release_in(order, before);
      ASSERT_FALSE(testing::Test::HasFatalFailure()) << before;
    }
  }
}

TEST(Records, MayOutliveAParserThatIsGivenAnotherDocument) {
  std::istringstream first(document(MANY)), second(document(MANY));
  SaxParser parser(first);
  Elem root = parser.root();
  std::vector<Held> held;
  for (std::size_t i = 0; i < MANY; ++i) held.push_back(take(root));
  parser = SaxParser(second);
  root = parser.root();
  for (std::size_t i = 0; i < MANY; ++i) {
    expect_item(held[i], i);
    held[i] = take(root);
    ASSERT_FALSE(testing::Test::HasFatalFailure());
  }
  for (std::size_t i = 0; i < MANY; ++i) expect_item(held[i], i);
}

}  // namespace
}  // namespace tests

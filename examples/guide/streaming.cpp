// Documents read from a stream with SaxParser.

#include <sstream>

#include "shop.h"
#include "show.h"
#include "tqxml/sax/SaxParser.h"

using Orn::SaxParser;

namespace {

void walk() {
  section("walk");
  //! [walk]
  std::istringstream in("<order xmlns='urn:example:shop'><item>tea</item><item>cup</item></order>");
  SaxParser parser(in);
  SaxParser::Elem order = parser.root();
  order.match(shop::order);
  for (auto item = order.next_child(); !item.is_nil(); item = order.next_child()) {
    std::cout << item.data() << '\n';
  }
  //! [walk]
}

void consumed() {
  section("consumed");
  //! [consumed]
  std::istringstream in(
      "<order xmlns='urn:example:shop'><note>soon</note><item>tea</item></order>");
  SaxParser parser(in);
  SaxParser::Elem order = parser.root();
  std::cout << order.child(shop::item).data() << '\n';  // reads past the note and keeps it
  std::cout << order.next_child().data() << '\n';       // the note
  show_failure([&] { order.child(shop::item); });
  //! [consumed]
}

void malformed() {
  section("malformed");
  //! [malformed]
  std::istringstream in("<order xmlns='urn:example:shop'>\n<item>tea</note>\n</order>");
  SaxParser parser;
  try {
    SaxParser::Elem order = parser.initialize(&in);
    std::cout << order.next_child().data() << '\n';
  } catch (Orn::StateException const& e) {
    std::cout << e.what() << '\n'
              << parser.error_text() << ", line " << parser.error_line() << '\n';
  }
  //! [malformed]
}

}  // namespace

int main() {
  walk();
  consumed();
  malformed();
}

// What saves time and memory.

#include <sstream>

#include "shop.h"
#include "show.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/sax/SaxParser.h"

using Orn::DomParser;
using Orn::SaxParser;
using Orn::UString;
using Orn::XmlDoc;

namespace {

std::string received() {
  return "<order "
         "xmlns='urn:example:shop'><item>tea</item><item>cup</item><note>soon</note></order>";
}

void moved() {
  section("moved");
  //! [moved]
  std::string bytes = received();
  DomParser parser(std::move(bytes));  // takes the bytes over; a copy would be held beside them
  std::cout << parser.root().child(shop::note).data() << '\n';
  //! [moved]
}

void one_pass() {
  section("one-pass");
  DomParser parser(received());
  DomParser::Elem order = parser.root();
  //! [one-pass]
  UString note;
  int items = 0;
  for (auto part = order.next_child(); !part.is_nil(); part = order.next_child()) {
    if (part.tag() == shop::item) {
      ++items;
    } else if (part.tag() == shop::note) {
      note = part.data();
    }
  }
  std::cout << items << ' ' << note << '\n';
  //! [one-pass]
}

void tree_of_a_stream() {
  section("tree-of-a-stream");
  //! [tree-of-a-stream]
  std::istringstream in(received());
  SaxParser parser(in);
  SaxParser::Elem order = parser.root();
  XmlDoc::Elem const tree(order);  // reads the order to its end
  std::cout << tree.content() << '\n';
  //! [tree-of-a-stream]
}

void kept() {
  section("kept");
  DomParser parser(received());
  DomParser::Elem item = parser.root().child(shop::item);
  //! [kept]
  UString const text = item.data();  // makes a text each time that it is asked
  if (!text.empty()) std::cout << text << ' ' << text.length() << '\n';
  //! [kept]
}

}  // namespace

int main() {
  moved();
  one_pass();
  tree_of_a_stream();
  kept();
}

// Handles, copies and threads.

#include <string>
#include <thread>
#include <vector>

#include "shop.h"
#include "show.h"
#include "tqxml/dom/DomParser.h"

using Orn::DomParser;
using Orn::UString;
using Orn::XmlDoc;

namespace {

//! [values]
// The handles end with the parser; what leaves the function are values.
std::vector<UString> items_of(std::string const& text) {
  DomParser parser(text);
  DomParser::Elem order = parser.root();
  std::vector<UString> items;
  for (auto item = order.next_child(); !item.is_nil(); item = order.next_child()) {
    items.push_back(item.data());
  }
  return items;
}
//! [values]

std::string order_of(int number) {
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.add_elem(shop::item, UString::from_utf8(std::to_string(number)), true);
  doc.close();
  return doc.byte_array();
}

void copies() {
  section("copies");
  //! [copies]
  DomParser parser("<order xmlns='urn:example:shop'><item/><note/><item/></order>");
  DomParser::Elem order = parser.root();
  order.next_child();            // the item
  DomParser::Elem copy = order;  // goes on from here
  std::cout << (order.next_child().tag() == shop::note) << (copy.next_child().tag() == shop::note)
            << (parser.root().next_child().tag() == shop::item) << '\n';
  //! [copies]
}

void branches() {
  section("branches");
  //! [branches]
  XmlDoc doc;
  doc.push_elem(shop::order);
  XmlDoc other = doc;
  doc.add_elem(shop::note, u"for us", true);
  other.add_elem(shop::note, u"for them", true);
  //! [branches]
  show(doc);
  show(other);
}

void threads() {
  section("threads");
  //! [threads]
  std::vector<std::string> const orders = {order_of(1), order_of(2), order_of(3)};
  std::vector<std::vector<UString>> results(orders.size());
  std::vector<std::thread> readers;
  for (std::size_t i = 0; i < orders.size(); ++i) {
    readers.emplace_back([&, i] { results[i] = items_of(orders[i]); });
  }
  for (std::thread& reader : readers) reader.join();
  for (auto const& items : results) std::cout << items.at(0) << '\n';
  //! [threads]
}

}  // namespace

int main() {
  copies();
  branches();
  threads();
}

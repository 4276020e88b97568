// read_order FILE
//
// Reads an order strictly: whatever is missing, superfluous or in the wrong place is refused, with
// a message that says what was wanted and what was there. Ends with 1 then.

#include <algorithm>
#include <initializer_list>
#include <iostream>

#include "Order.h"
#include "attribute.h"
#include "files.h"
#include "numbers.h"
#include "shop.h"
#include "tqxml/dom/DomParser.h"

using Orn::DomParser;
using Orn::UString;

namespace {

//! [read]
// Gives the text of an element that has to have nothing but text.
UString text_of(DomParser::Elem element) {
  DomParser::Elem const inside = element.next_child();
  if (!inside.is_nil()) {
    throw std::runtime_error("there should be only text, and no " +
                             Orn::XmlTag::lookup(inside.tag()).to_string().to_utf8());
  }
  return element.data();
}

// Refuses every attribute but those named.
void allow_only(DomParser::Elem element, std::initializer_list<Orn::XmlTag::Id> names) {
  for (auto attr = element.next_attr(); !attr.is_nil(); attr = element.next_attr()) {
    if (std::find(names.begin(), names.end(), attr.tag()) == names.end()) {
      throw std::runtime_error("there should be no attribute " +
                               Orn::XmlTag::lookup(attr.tag()).to_string().to_utf8());
    }
  }
}

// Complains with the name of the attribute when it is missing.
UString value_of(DomParser::Elem const& element, Orn::XmlTag::Id name) {
  DomParser::Attribute const found = attribute(element, name);
  found.check_is_nil(Orn::XmlTag::lookup(name).simple_name());
  return found.data();
}

Item read_item(DomParser::Elem const& element) {
  allow_only(element, {shop::id, shop::quantity, shop::cents});
  Item item;
  item.article = value_of(element, shop::id);
  item.quantity = whole_number(value_of(element, shop::quantity));
  item.cents = whole_number(value_of(element, shop::cents));
  item.text = text_of(element);
  return item;
}

Order read_order(DomParser::Elem element) {
  element.match(shop::order);
  allow_only(element, {shop::id, shop::currency});
  Order order;
  order.number = value_of(element, shop::id);
  order.currency = value_of(element, shop::currency);
  DomParser::Elem part = element.next_child();
  part.match(shop::customer);
  order.customer = text_of(part);
  for (part = element.next_child(); !part.is_nil(); part = element.next_child()) {
    if (part.tag() != shop::item) break;
    order.items.push_back(read_item(part));
  }
  if (part.is_nil()) return order;
  part.match(shop::note);
  order.note = text_of(part);
  if (!element.next_child().is_nil()) throw std::runtime_error("something follows the note");
  return order;
}
//! [read]

void show(Order const& order) {
  std::cout << "order " << order.number << " of " << order.customer << '\n';
  for (Item const& item : order.items) {
    std::cout << "  " << item.quantity << " x " << with_point(item.cents) << "  " << item.text
              << " (" << item.article << ")\n";
  }
  std::cout << "  " << with_point(total_cents(order)) << ' ' << order.currency << " in all\n";
  if (!order.note.empty()) std::cout << "  note: " << order.note << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: read_order FILE\n";
    return 1;
  }
  try {
    DomParser parser(bytes_of(argv[1]));
    show(read_order(parser.root()));
  } catch (std::exception const& e) {
    std::cerr << argv[1] << ": " << e.what() << '\n';
    return 1;
  }
}

// make_orders COUNT
//
// Writes a document of so many orders to the standard output, in pieces, so that it takes the same
// memory however many they are.

#include <cstdint>
#include <iostream>

#include "numbers.h"
#include "shop.h"
#include "tqxml/writer/XmlDoc.h"

using Orn::XmlDoc;

namespace {

constexpr std::int32_t ORDERS_A_PIECE = 64;

void add_item(XmlDoc& doc, std::int32_t quantity, std::int32_t cents) {
  doc.push_elem(shop::item);
  doc.add_attr(shop::quantity, quantity);
  doc.add_attr(shop::cents, cents);
  doc.append_elem_body(u"tea", true);
  doc.pop_elem(shop::item);
}

void add_order(XmlDoc& doc, std::int32_t number) {
  doc.push_elem(shop::order);
  doc.add_attr(shop::id, number);
  doc.add_elem(shop::customer, u"Anna & Sons", true);
  add_item(doc, number % 5 + 1, number % 1000);
  add_item(doc, 1, 99);
  doc.pop_elem(shop::order);
}

//! [make]
void make_orders(std::int32_t count) {
  XmlDoc doc;
  doc.add_ns(shop::ns_shop, u"shop");
  doc.add_ns(shop::ns_price, u"price");  // all namespaces, before the first piece
  doc.push_elem(shop::orders);
  for (std::int32_t i = 1; i <= count && std::cout; ++i) {
    add_order(doc, i);
    if (i % ORDERS_A_PIECE == 0) std::cout << doc.inc_str();
  }
  doc.close();
  std::cout << doc.str() << std::flush;
}
//! [make]

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_orders COUNT\n";
    return 1;
  }
  try {
    make_orders(whole_number(Orn::UString::from_utf8(argv[1])));
  } catch (std::exception const& e) {
    std::cerr << "make_orders: " << e.what() << '\n';
    return 1;
  }
  return std::cout ? 0 : 1;
}

// write_order >FILE
//
// Writes an order to the standard output. Texts are escaped where they are written; attribute
// values are not, so what may hold a quotation mark or an ampersand goes through escape_attr.

#include <iostream>

#include "Order.h"
#include "shop.h"
#include "tqxml/writer/XmlDoc.h"

using Orn::XmlDoc;

namespace {

//! [write]
void write_item(XmlDoc& doc, Item const& item) {
  doc.push_elem(shop::item);
  doc.add_attr(shop::id, XmlDoc::escape_attr(item.article));
  doc.add_attr(shop::quantity, item.quantity);
  doc.add_attr(shop::cents, item.cents);
  doc.append_elem_body(item.text, true);
  doc.pop_elem(shop::item);
}

std::string write_order(Order const& order) {
  XmlDoc doc;
  doc.set_indented_format();
  doc.add_ns(shop::ns_shop, u"shop");
  doc.add_ns(shop::ns_price, u"price");
  doc.push_elem(shop::order);
  doc.add_attr(shop::id, XmlDoc::escape_attr(order.number));
  doc.add_attr(shop::currency, XmlDoc::escape_attr(order.currency));
  doc.add_elem(shop::customer, order.customer, true);
  for (Item const& item : order.items) write_item(doc, item);
  if (!order.note.empty()) doc.add_elem(shop::note, order.note, true);
  doc.pop_elem(shop::order);
  doc.close();
  return doc.byte_array();
}
//! [write]

Order sample() {
  Order order;
  order.number = u"2026-042";
  order.currency = u"EUR";
  order.customer = u"Anna Grün & Sons";
  order.items.push_back({u"tea-1", 2, 350, u"green tea"});
  order.items.push_back({u"12\" plate", 1, 1200, u"plate <blue>"});
  order.note = u"ring twice";
  return order;
}

}  // namespace

int main() {
  std::cout << write_order(sample()) << std::flush;
  return std::cout ? 0 : 1;
}

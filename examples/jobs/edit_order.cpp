// edit_order FILE
//
// Changes an order and writes it again: the plates are sold out, a pot is added, and there is
// another note. Everything else is kept, values that need escaping included.

#include <iostream>

#include "attribute.h"
#include "escaped_tree.h"
#include "files.h"
#include "shop.h"

using Orn::DomParser;
using Orn::XmlDoc;

namespace {

bool is_plate(DomParser::Elem const& part) {
  return part.tag() == shop::item && attribute(part, shop::id).data() == u"12\" plate";
}

XmlDoc::Elem pot() {
  XmlDoc::Elem item(shop::item);
  item.add_attr(shop::id, XmlDoc::escape_attr(u"pot & lid"));
  item.add_attr(shop::quantity, 1L);
  item.add_attr(shop::cents, 2400L);
  item.add_body(u"teapot", true);
  return item;
}

//! [edit]
// A tree cannot be taken apart, so it is built anew of what is to be kept.
XmlDoc::Elem edited(DomParser::Elem order) {
  order.match(shop::order);
  XmlDoc::Elem result(shop::order);
  copy_attributes(order, result);
  for (auto part = order.next_child(); !part.is_nil(); part = order.next_child()) {
    if (is_plate(part) || part.tag() == shop::note) continue;
    result.add_elem(escaped_tree(part));
  }
  result.add_elem(pot());
  result.add_elem(shop::note, u"plates are sold out", true);
  return result;
}
//! [edit]

//! [write]
void write(XmlDoc::Elem const& order) {
  XmlDoc doc;
  doc.set_indented_format();
  doc.add_ns(shop::ns_shop, u"shop");
  doc.add_ns(shop::ns_price, u"price");
  doc.add_elem(order);
  doc.close();
  std::cout << doc.byte_array() << std::flush;
}
//! [write]

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: edit_order FILE\n";
    return 1;
  }
  try {
    DomParser parser(bytes_of(argv[1]));
    write(edited(parser.root()));
  } catch (std::exception const& e) {
    std::cerr << argv[1] << ": " << e.what() << '\n';
    return 1;
  }
  return std::cout ? 0 : 1;
}

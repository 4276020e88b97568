// bridge_answer FILE
//
// FILE is the answer of another program: orders that it has delivered. Writes an invoice with their
// items, taken over from the answer as they are, and the total.

#include <cstdint>
#include <iostream>

#include "attribute.h"
#include "escaped_tree.h"
#include "files.h"
#include "numbers.h"
#include "shop.h"

using Orn::DomParser;
using Orn::UString;
using Orn::XmlDoc;

namespace {

std::int64_t cents_of(DomParser::Elem const& item) {
  return std::int64_t{whole_number(attribute(item, shop::quantity).data())} *
         whole_number(attribute(item, shop::cents).data());
}

//! [bridge]
// Writes the items of an order into the document, and gives what they cost. The prefixes are those
// of the document, whatever the answer has.
std::int64_t add_items(XmlDoc& doc, DomParser::Elem order) {
  order.match(shop::order);
  std::int64_t cents = 0;
  for (auto part = order.next_child(); !part.is_nil(); part = order.next_child()) {
    if (part.tag() != shop::item) continue;
    cents += cents_of(part);
    doc.add_elem(escaped_tree(part));
  }
  return cents;
}

void write_invoice(DomParser::Elem answer) {
  answer.match(shop::orders);
  XmlDoc doc;
  doc.set_indented_format();
  doc.push_elem(shop::invoice);
  std::int64_t cents = 0;
  for (auto order = answer.next_child(); !order.is_nil(); order = answer.next_child()) {
    cents += add_items(doc, order);
  }
  doc.add_elem(shop::total, UString::from_utf8(with_point(cents)), true);
  doc.close();
  std::cout << doc.byte_array() << std::flush;
}
//! [bridge]

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: bridge_answer FILE\n";
    return 1;
  }
  try {
    DomParser parser(bytes_of(argv[1]));
    write_invoice(parser.root());
  } catch (std::exception const& e) {
    std::cerr << argv[1] << ": " << e.what() << '\n';
    return 1;
  }
  return std::cout ? 0 : 1;
}

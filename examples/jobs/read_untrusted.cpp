// read_untrusted FILE
//
// Reads an order that anybody may have sent, as a stream and with limits, and says why when it is
// refused. Ends with 0 for an order, 1 for something else or what is malformed, and 2 for a
// document that asked for too much.

#include <fstream>
#include <iostream>

#include "shop.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/sax/SaxParser.h"

using Orn::Catalogue;
using Orn::ReadLimits;
using Orn::SaxParser;

namespace {

//! [limits]
// An order has three levels and some hundreds of bytes; nobody needs a hundred thousand.
ReadLimits limits_of_an_order() {
  ReadLimits limits = ReadLimits::untrusted();
  limits.bytes = 100'000;
  limits.depth = 8;
  limits.text = 1'000;
  limits.attribute_value = 1'000;
  return limits;
}
//! [limits]

int number_of_items(SaxParser::Elem order) {
  order.match(shop::order);
  int items = 0;
  for (auto part = order.next_child(); !part.is_nil(); part = order.next_child()) {
    if (part.tag() == shop::item) ++items;
  }
  return items;
}

//! [refuse]
int refuse(SaxParser const& parser, Orn::STPException const& e) {
  bool const from_the_library = e.message().catalogue() == Catalogue::table();
  if (from_the_library && e.message().index() == Catalogue::PARSER_ERROR) {
    std::cout << "refused: " << parser.error_text() << '\n';
    return 2;
  }
  if (from_the_library && e.message().index() == Catalogue::NOT_VALID_STREAM) {
    std::cout << "malformed in line " << parser.error_line() << ", column " << parser.error_column()
              << ": " << parser.error_text() << '\n';
  } else {
    std::cout << "not an order: " << e.what() << '\n';
  }
  return 1;
}
//! [refuse]

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: read_untrusted FILE\n";
    return 1;
  }
  std::ifstream in(argv[1], std::ios::binary);
  if (!in) {
    std::cerr << argv[1] << ": cannot be read\n";
    return 1;
  }
  SaxParser parser(limits_of_an_order());
  try {
    int const items = number_of_items(parser.initialize(&in));
    std::cout << "an order of " << items << " items\n";
    return 0;
  } catch (Orn::STPException const& e) {
    return refuse(parser, e);
  }
}

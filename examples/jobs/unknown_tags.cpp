// unknown_tags FILE
//
// Reads orders that other programs may have extended: names that are in no vocabulary are passed
// over and counted. What makes that possible is the one line of others.def. It holds for the whole
// process: without it the first unknown name would raise TagException.

#include <fstream>
#include <iostream>

#include "shop.h"
#include "tqutil/Vocabulary.h"
#include "tqxml/sax/SaxParser.h"

using Orn::SaxParser;

//! [catch-all]
namespace others {
#include "tqutil/vocabulary/constants.h"
#include "others.def"
#include "tqutil/vocabulary/end.h"
static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
#include "others.def"
#include "tqutil/vocabulary/end.h"
};
static Orn::Vocabulary const vocabulary("others", entries);
}  // namespace others
//! [catch-all]

namespace {

struct Unknown {
  int elements = 0;
  int attributes = 0;
};

//! [read]
void read_item(SaxParser::Elem item, Unknown& unknown) {
  std::cout << "item";
  for (auto attr = item.next_attr(); !attr.is_nil(); attr = item.next_attr()) {
    if (attr.tag() == others::other) {
      ++unknown.attributes;
    } else if (attr.tag() == shop::quantity) {
      std::cout << ' ' << attr.data() << " x";
    }
  }
  std::cout << ' ' << item.data() << '\n';
}

void read_order(SaxParser::Elem order, Unknown& unknown) {
  order.match(shop::order);
  for (auto part = order.next_child(); !part.is_nil(); part = order.next_child()) {
    if (part.tag() == others::other) {
      ++unknown.elements;  // and all that is inside of it is passed over with it
    } else if (part.tag() == shop::item) {
      read_item(part, unknown);
    }
  }
}
//! [read]

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: unknown_tags FILE\n";
    return 1;
  }
  try {
    std::ifstream in(argv[1], std::ios::binary);
    if (!in) throw std::runtime_error("cannot be read");
    SaxParser parser(in);
    Unknown unknown;
    read_order(parser.root(), unknown);
    std::cout << "unknown elements: " << unknown.elements
              << ", unknown attributes: " << unknown.attributes << '\n';
  } catch (std::exception const& e) {
    std::cerr << argv[1] << ": " << e.what() << '\n';
    return 1;
  }
}

#include <iostream>
#include <iterator>
#include <string>

#include "orders.h"
#include "tqxml/dom/DomParser.h"

int main() {
  std::string const bytes(std::istreambuf_iterator<char>(std::cin), {});
  try {
    Orn::DomParser parser(bytes);
    Orn::DomParser::Elem order = parser.root();
    order.match(orders::order);
    Orn::DomParser::Elem item = order.child(orders::item);
    Orn::DomParser::Elem note = order.opt_child(orders::note);
    std::cout << "item: " << item.data() << '\n';
    if (!note.is_nil()) std::cout << "note: " << note.data() << '\n';
  } catch (Orn::STPException const& e) {
    std::cerr << e.what() << '\n';
    return 1;
  }
}

#include <iostream>

#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/writer/XmlDoc.h"

namespace orders {
#include "tqutil/vocabulary/constants.h"
#include "orders.def"
#include "tqutil/vocabulary/end.h"
static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
#include "orders.def"
#include "tqutil/vocabulary/end.h"
};
static Orn::Vocabulary const vocabulary("orders", entries);
}  // namespace orders

int main() {
  Orn::XmlDoc doc;
  doc.push_elem(orders::order);
  doc.add_attr(orders::id, 42L);
  doc.add_elem(orders::item, u"fish & chips", true);
  doc.close();
  std::cout << doc.str() << '\n';

  Orn::DomParser parser(doc);
  Orn::DomParser::Elem order = parser.root();
  order.match(orders::order);
  std::cout << order.child(orders::item).data() << '\n';
  try {
    order.child(orders::note);
  } catch (Orn::StateException const& e) {
    std::cout << e.what() << '\n';
  }
}

#include <iostream>

#include "orders.h"
#include "tqxml/writer/XmlDoc.h"

int main() {
  Orn::XmlDoc doc;
  doc.push_elem(orders::order);
  doc.add_attr(orders::id, 42L);
  doc.add_elem(orders::item, u"fish & chips", true);
  doc.add_elem(orders::note, u"no vinegar", true);
  doc.pop_elem(orders::order);
  doc.close();
  std::cout << doc.byte_array() << '\n';
}

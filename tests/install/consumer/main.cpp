#include <iostream>

#include "orders.h"
#include "tqutil/Vocabulary.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/foundation/verid.h"
#include "tqxml/writer/XmlDoc.h"

namespace orders {

static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"

#include "orders.def"

#include "tqutil/vocabulary/end.h"
};

static Orn::Vocabulary const vocabulary("orders", entries);

}  // namespace orders

static bool closing_nothing_is_refused() {
  try {
    Orn::XmlDoc().pop_elem(orders::order);
  } catch (Orn::StateException const&) {
    return true;
  }
  return false;
}

int main() {
  Orn::XmlDoc doc;
  doc.push_elem(orders::order);
  doc.add_attr(orders::id, 42L);
  doc.add_elem(orders::note, Orn::UString(u"R&D"), true);
  doc.close();
  std::cout << doc.str() << '\n' << std::flush;
  return closing_nothing_is_refused() && libtqxml_print_verid() > 0 ? 0 : 1;
}

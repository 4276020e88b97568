// A program that has names and texts, and no documents.

#include <iostream>

#include "../consumer/orders.h"
#include "tqutil/STPException.h"
#include "tqutil/UString.h"
#include "tqutil/Vocabulary.h"

namespace orders {

static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"

#include "../consumer/orders.def"

#include "tqutil/vocabulary/end.h"
};

static Orn::Vocabulary const vocabulary("orders", entries);

}  // namespace orders

int main() {
  std::cout << Orn::XmlTag::lookup(orders::note).to_string() << '\n';
  try {
    Orn::XmlTag::lookup(u"urn:example:orders", u"nothing");
  } catch (Orn::STPException const& e) {
    std::cout << e.what() << '\n';
  }
}

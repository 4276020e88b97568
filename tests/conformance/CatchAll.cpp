#include "tests/conformance/CatchAll.h"

#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"

namespace tests {

void enter_catch_all() {
  static Orn::VocabularyEntry const ENTRIES[] = {
      {Orn::VocabularyEntry::CATCH_ALL, 1000, "any", Orn::XmlTag::NO_NS, u"any"}};
  Orn::Vocabulary("catch-all", ENTRIES);
}

}  // namespace tests

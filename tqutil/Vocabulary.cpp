#include "tqutil/Vocabulary.h"

#include "tqutil/Registry.h"

namespace Orn {

Vocabulary::Vocabulary(char const* name, VocabularyEntry const* entries, std::size_t count) {
  Registry::instance().add(name, entries, count);
}

}  // namespace Orn

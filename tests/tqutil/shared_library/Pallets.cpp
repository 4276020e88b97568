#include "tests/tqutil/shared_library/Pallets.h"

#include "tqutil/Vocabulary.h"

namespace pallets {
static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
#include "tests/tqutil/shared_library/Pallets.def"
#include "tqutil/vocabulary/end.h"
};
static Orn::Vocabulary const vocabulary("pallets", entries);
}  // namespace pallets

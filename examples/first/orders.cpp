#include "orders.h"

#include "tqutil/Vocabulary.h"

namespace orders {

static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
#include "orders.def"
#include "tqutil/vocabulary/end.h"
};

static Orn::Vocabulary const vocabulary("orders", entries);

}  // namespace orders

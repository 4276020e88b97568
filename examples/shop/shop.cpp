#include "shop.h"

#include "tqutil/Vocabulary.h"

namespace shop {

static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
#include "shop.def"
#include "tqutil/vocabulary/end.h"
};

static Orn::Vocabulary const vocabulary("shop", entries);

}  // namespace shop

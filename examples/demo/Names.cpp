#include "Names.h"

#include "tqutil/Vocabulary.h"

namespace demo::names {

static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
#include "names.def"
#include "tqutil/vocabulary/end.h"
};

static Orn::Vocabulary const vocabulary("demo", entries);

}  // namespace demo::names

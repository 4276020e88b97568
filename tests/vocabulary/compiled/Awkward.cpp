// All that the generated vocabulary has must compile behind these headers.
#include "Headers.h"
#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"

namespace awkward {
#include "tqutil/vocabulary/constants.h"

#include "awkward.def"

#include "tqutil/vocabulary/end.h"

static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"

#include "awkward.def"

#include "tqutil/vocabulary/end.h"
};
static Orn::Vocabulary const vocabulary("awkward", entries);
}  // namespace awkward

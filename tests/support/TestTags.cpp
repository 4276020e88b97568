#include "tests/support/TestTags.h"

#include "tqutil/Vocabulary.h"

namespace testtags {
namespace {

Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
#include "tests/support/TestTags.def"
#include "tqutil/vocabulary/end.h"
};

Orn::Vocabulary const vocabulary("testtags", entries);

}  // namespace
}  // namespace testtags

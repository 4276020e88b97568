#include "tqutil/Vocabulary.h"

#include "bench/orders/Names.h"

namespace bench {
namespace {

Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
// The entries stand between the two.
#include "bench/orders/orders.def"
#include "tqutil/vocabulary/end.h"
};

Orn::Vocabulary const vocabulary("orders", entries);

}  // namespace
}  // namespace bench

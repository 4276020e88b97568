#include "vocabulary/FreeNumbers.h"

#include <algorithm>
#include <limits>

#include "vocabulary/Failure.h"

namespace vocabulary {

void FreeNumbers::use_in_file(std::int32_t number) {
  used_.insert(number);
  if (!is_fixed_) next_ = std::max<std::int64_t>(next_, std::int64_t{number} + 1);
}

std::int32_t FreeNumbers::take() {
  while (used_.count(next_) != 0) ++next_;
  if (next_ > std::numeric_limits<std::int32_t>::max()) {
    throw Failure("there are no numbers left; choose where to begin with --first");
  }
  return static_cast<std::int32_t>(next_++);
}

}  // namespace vocabulary

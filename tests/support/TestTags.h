#ifndef TESTS_SUPPORT_TESTTAGS_H
#define TESTS_SUPPORT_TESTTAGS_H

#include "tqutil/XmlTag.h"

namespace testtags {
#include "tqutil/vocabulary/constants.h"
#include "tests/support/TestTags.def"
#include "tqutil/vocabulary/end.h"

/// A number that no vocabulary of the tests uses.
inline constexpr Orn::XmlTag::Id unregistered{9999};
}  // namespace testtags

#endif

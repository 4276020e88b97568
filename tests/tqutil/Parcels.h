#ifndef TESTS_TQUTIL_PARCELS_H
#define TESTS_TQUTIL_PARCELS_H

#include <cstdint>

#include "tqutil/XmlTag.h"

// clang-format off
namespace parcels {
#include "tqutil/vocabulary/constants.h"
#include "tests/tqutil/Parcels.def"
#include "tqutil/vocabulary/end.h"
}  // namespace parcels
// clang-format on

#endif

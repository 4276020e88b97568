#ifndef TESTS_TQUTIL_PARCELS_H
#define TESTS_TQUTIL_PARCELS_H

#include <cstdint>

#include "tqutil/XmlTag.h"

namespace parcels {
#include "tqutil/vocabulary/constants.h"
#include "tests/tqutil/Parcels.def"
#include "tqutil/vocabulary/end.h"
}  // namespace parcels

#endif

#ifndef TESTS_TQUTIL_SHARED_LIBRARY_PALLETS_H
#define TESTS_TQUTIL_SHARED_LIBRARY_PALLETS_H

#include "tqutil/XmlTag.h"

namespace pallets {
#include "tqutil/vocabulary/constants.h"
#include "tests/tqutil/shared_library/Pallets.def"
#include "tqutil/vocabulary/end.h"
}  // namespace pallets

#endif

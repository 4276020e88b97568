#include <gtest/gtest.h>

#include "tests/dom/DomReader.h"
#include "tests/sax/CatchAllContract.h"

namespace tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Dom, CatchAllContract, DomReader);

}  // namespace tests

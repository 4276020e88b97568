#include <gtest/gtest.h>

#include "tests/sax/CatchAllContract.h"
#include "tests/sax/SaxReader.h"

namespace tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Sax, CatchAllContract, SaxReader);

}  // namespace tests

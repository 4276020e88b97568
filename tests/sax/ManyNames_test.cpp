#include <gtest/gtest.h>

#include "tests/sax/ManyNamesContract.h"
#include "tests/sax/SaxReader.h"

namespace tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Sax, ManyNamesContract, SaxReader);

}  // namespace tests

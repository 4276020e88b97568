#include <gtest/gtest.h>

#include "tests/dom/DomReader.h"
#include "tests/sax/ManyNamesContract.h"

namespace tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Dom, ManyNamesContract, DomReader);

}  // namespace tests

#include "tests/dom/DomReader.h"
#include "tests/support/NavigationContract.h"

namespace tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Dom, NavigationContract, DomReader);

}  // namespace tests

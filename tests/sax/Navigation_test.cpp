#include "tests/sax/SaxReader.h"
#include "tests/support/NavigationContract.h"

namespace tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Sax, NavigationContract, SaxReader);

}  // namespace tests

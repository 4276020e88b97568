#include "tests/conformance/Surroundings.h"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>

// Debian's Xerces-C++ 3.2.4 loses what it knows of each external DTD, a hundred bytes or so.
extern "C" [[gnu::visibility("default")]] char const* __lsan_default_suppressions() {
  return "leak:xercesc_3_2::XMLScanner::scanProlog\n";
}

namespace tests {

void leave_the_network() {
  delete xercesc::XMLPlatformUtils::fgNetAccessor;
  xercesc::XMLPlatformUtils::fgNetAccessor = nullptr;
}

}  // namespace tests

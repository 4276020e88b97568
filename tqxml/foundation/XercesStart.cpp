#include "tqxml/foundation/XercesStart.h"

#include <iostream>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "tqxml/foundation/Raise.h"
#include "tqxml/foundation/XercesText.h"

namespace Orn {

bool start_xerces() {
  try {
    xercesc::XMLPlatformUtils::Initialize();
    return true;
  } catch (xercesc::XMLException const& e) {
    std::cerr << "Error during Xerces-c Initialization.\n"
              << "  Exception message:" << to_ustring(e.getMessage()).utf8_str() << std::endl;
    return false;
  }
}

void check_xerces_started(bool initialized_ok) {
  if (!initialized_ok) raise<RuntimeException>(Catalogue::UNABLE_TO_INITIALIZE_XERCES);
}

}  // namespace Orn

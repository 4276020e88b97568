#include "tqxml/foundation/XercesStart.h"

#include <iostream>
#include <optional>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "tqxml/foundation/Raise.h"
#include "tqxml/foundation/XercesText.h"

namespace Orn {

namespace {

// The message of the failure, if there is one.
std::optional<UString> initialize() {
  try {
    xercesc::XMLPlatformUtils::Initialize();
    return std::nullopt;
  } catch (xercesc::XMLException const& e) {
    return to_ustring(e.getMessage());
  }
}

}  // namespace

bool start_xerces() {
  // Xerces takes a second call for done even when the first has failed.
  static std::optional<UString> const failure = initialize();
  if (!failure) return true;
  static std::ios_base::Init const cerr_is_there;
  std::cerr << "Error during Xerces-c Initialization.\n"
            << "  Exception message:" << failure->utf8_str() << std::endl;
  return false;
}

void check_xerces_started(bool initialized_ok) {
  if (!initialized_ok) raise<RuntimeException>(Catalogue::UNABLE_TO_INITIALIZE_XERCES);
}

}  // namespace Orn

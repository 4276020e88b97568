#include "tqutil/UtilCatalogue.h"

namespace Orn {

char const** UtilCatalogue::table() noexcept {
  static char const* messages[] = {
      "tqutil 4",
      "TQUTL0001E Tag id %d is not registered; is its vocabulary linked into the program?",
      "TQUTL0002E Name '%s' in namespace '%s' is not registered.",
      "TQUTL0003E Namespace id %d is not registered; is its vocabulary linked into the program?",
      "TQUTL0004E Ill-formed UTF-8 at byte %ld.",
  };
  return messages;
}

}  // namespace Orn

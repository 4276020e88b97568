#ifndef TQUTIL_UTILCATALOGUE_H
#define TQUTIL_UTILCATALOGUE_H

#include "tqutil/UMessage.h"

namespace Orn {

/// The messages of this library itself.
class UtilCatalogue {
 public:
  enum Index {
    UNKNOWN_TAG_ID = 1,        ///< number
    UNKNOWN_TAG_NAME = 2,      ///< local name, namespace URI
    UNKNOWN_NAMESPACE_ID = 3,  ///< number
    ILL_FORMED_UTF8 = 4,       ///< offset in bytes
  };

  static char const** table() noexcept;

  static constexpr int REASON = 38;
  static constexpr int LOG_LEVEL = 2;
};

/// Raises an `E` with a message of this library: the one way in which it raises its exceptions.
template <class E>
[[noreturn]] void raise_util(UtilCatalogue::Index index, UMessage::Arg const& a1,
                             UMessage::Arg const& a2 = UMessage::Arg::nil) {
  throw E(UtilCatalogue::REASON, UMessage(UtilCatalogue::table(), index, a1, a2), nullptr, nullptr,
          UtilCatalogue::LOG_LEVEL);
}

}  // namespace Orn

#endif

#ifndef TQXML_FOUNDATION_RAISE_H
#define TQXML_FOUNDATION_RAISE_H

#include "tqutil/UMessage.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

namespace Orn {

constexpr STPException::stp_reason_code_t TQXML_REASON = 39;
constexpr STPException::stp_log_level_t TQXML_LOG_LEVEL = 2;

/// Raises an `E` with a message of the catalogue: the one way in which the library raises its
/// exceptions.
template <class E>
[[noreturn, gnu::noinline, gnu::cold]] void raise(UMessage const& message) {
  throw E(TQXML_REASON, message, nullptr, nullptr, TQXML_LOG_LEVEL);
}

template <class E>
[[noreturn, gnu::noinline, gnu::cold]] void raise(Catalogue::Index index,
                                                  UMessage::Arg const& a1 = UMessage::Arg::nil,
                                                  UMessage::Arg const& a2 = UMessage::Arg::nil) {
  raise<E>(UMessage(Catalogue::table(), index, a1, a2));
}

template <class E>
[[noreturn, gnu::noinline, gnu::cold]] void raise(Catalogue::Index index, UMessage::Arg const& a1,
                                                  UMessage::Arg const& a2, UMessage::Arg const& a3,
                                                  UMessage::Arg const& a4 = UMessage::Arg::nil) {
  UMessage::Arg const& nil = UMessage::Arg::nil;
  raise<E>(UMessage(Catalogue::table(), index, a1, a2, a3, a4, nil, nil, nil, nil, nil, nil));
}

}  // namespace Orn

#endif

#ifndef TQUTIL_UTILEXCEPTIONS_H
#define TQUTIL_UTILEXCEPTIONS_H

#include "tqutil/Export.h"
#include "tqutil/STPException.h"

namespace Orn {

/// A tag or a namespace that the registry does not know. The message names it: "TQUTL0001E" and
/// the number of a tag, "TQUTL0002E" and the local name and URI, "TQUTL0003E" and the number of a
/// namespace.
class TQUTIL_API TagException : public STPException {
 public:
  using STPException::STPException;
  /// Shares what the other carries.
  TagException(TagException const&) noexcept = default;
  /// The same, in the place of what this one carries.
  TagException& operator=(TagException const&) noexcept = default;
  /// Lets go of what the exception carries.
  ~TagException() override;
  /// A new copy, which the caller owns.
  [[nodiscard]] TagException* clone() const override;
};

/// Bytes that are not UTF-8. The message, "TQUTL0004E", names the offset of the first byte of the
/// sequence at fault, counted from 0.
class TQUTIL_API EncodingException : public STPException {
 public:
  using STPException::STPException;
  /// Shares what the other carries.
  EncodingException(EncodingException const&) noexcept = default;
  /// The same, in the place of what this one carries.
  EncodingException& operator=(EncodingException const&) noexcept = default;
  /// Lets go of what the exception carries.
  ~EncodingException() override;
  /// A new copy, which the caller owns.
  [[nodiscard]] EncodingException* clone() const override;
};

}  // namespace Orn

#endif

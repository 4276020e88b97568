#ifndef TQXML_FOUNDATION_EXCEPTIONS_H
#define TQXML_FOUNDATION_EXCEPTIONS_H

#include "tqutil/STPException.h"
#include "tqxml/foundation/Export.h"

namespace Orn {

// Every failure that the library itself detects is one of these three, with reason code 39, log
// level 2, no resource, no cause and a message of the catalogue (tqxml/foundation/Catalogue.h).
// They are thrown by value; catch them by reference, as themselves or as STPException. Failures
// of the registry and of text conversion (tqutil/UtilExceptions.h) and std::bad_alloc pass through
// the library unchanged, except that DomParser has a message for memory that runs out in the
// parser.

/// A call that the state of the object does not allow, or a document that does not have the shape
/// that the caller's navigation demands.
class TQXML_API StateException : public STPException {
 public:
  using STPException::STPException;
  /// Shares what the other carries.
  StateException(StateException const&) noexcept = default;
  /// The same, in the place of what this one carries.
  StateException& operator=(StateException const&) noexcept = default;
  /// Lets go of what the exception carries.
  ~StateException() override;
  /// A new copy, which the caller owns.
  [[nodiscard]] StateException* clone() const override;
};

/// An argument whose value cannot be written.
class TQXML_API IllegalArgException : public STPException {
 public:
  using STPException::STPException;
  /// Shares what the other carries.
  IllegalArgException(IllegalArgException const&) noexcept = default;
  /// The same, in the place of what this one carries.
  IllegalArgException& operator=(IllegalArgException const&) noexcept = default;
  /// Lets go of what the exception carries.
  ~IllegalArgException() override;
  /// A new copy, which the caller owns.
  [[nodiscard]] IllegalArgException* clone() const override;
};

/// A failure of the XML parser or of the input.
class TQXML_API RuntimeException : public STPException {
 public:
  using STPException::STPException;
  /// Shares what the other carries.
  RuntimeException(RuntimeException const&) noexcept = default;
  /// The same, in the place of what this one carries.
  RuntimeException& operator=(RuntimeException const&) noexcept = default;
  /// Lets go of what the exception carries.
  ~RuntimeException() override;
  /// A new copy, which the caller owns.
  [[nodiscard]] RuntimeException* clone() const override;
};

}  // namespace Orn

#endif

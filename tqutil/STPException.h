#ifndef TQUTIL_STPEXCEPTION_H
#define TQUTIL_STPEXCEPTION_H

#include <exception>
#include <memory>

#include "tqutil/Export.h"
#include "tqutil/UMessage.h"

namespace Orn {

/// What an exception may concern; known by name only.
class Resource;

/// The base of all exceptions of the product: a catalogue message with a reason code, a log level
/// and, where there is one, the exception that caused it.
///
/// Copies share what they carry, so copying does not fail. An exception may be read from several
/// threads.
class TQUTIL_API STPException : public std::exception {
 public:
  /// The product's number for what went wrong.
  using stp_reason_code_t = int;
  /// The product's number for how grave it is.
  using stp_log_level_t = int;

  /// Takes a copy of the message and, by its `clone()`, of the cause. The resource stays the
  /// caller's and must outlive the exception. `resource` and `cause` may be null. Reason, resource
  /// and level are only carried: what they mean is up to whoever raises and catches.
  STPException(stp_reason_code_t reason, UMessage const& msg, Resource const* resource,
               STPException const* cause, stp_log_level_t level);
  /// Shares what `other` carries.
  STPException(STPException const& other) noexcept;
  /// Lets go of what this one carries, and shares what `other` does. Returns this exception.
  STPException& operator=(STPException const& other) noexcept;
  /// Lets go of what the exception carries.
  ~STPException() override;

  /// A new copy, of the most derived class, which the caller owns.
  [[nodiscard]] virtual STPException* clone() const;

  /// As the constructor was given it: 39 from `libtqxml`, 38 from `libtqutil`.
  stp_reason_code_t reason_code() const noexcept;
  /// The message and its arguments, which tell a program what `what()` tells a reader. Good as long
  /// as this exception or a copy of it.
  UMessage const& message() const noexcept;
  /// What the constructor was given; null for exceptions of `libtqxml` and `libtqutil`.
  Resource const* resource() const noexcept;
  /// The exception that led to this one, or null. It lives as long as this one or a copy of it.
  STPException const* cause() const noexcept;
  /// As the constructor was given it: 2 from `libtqxml` and `libtqutil`.
  stp_log_level_t log_level() const noexcept;
  /// The text of the message in UTF-8, with the identifier in front. Good as long as this exception
  /// or a copy of it.
  char const* what() const noexcept override;

 private:
  struct State;
  std::shared_ptr<State const> state_;
};

}  // namespace Orn

#endif

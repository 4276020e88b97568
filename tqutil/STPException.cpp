#include "tqutil/STPException.h"

#include <string>

namespace Orn {

struct STPException::State {
  stp_reason_code_t reason;
  UMessage message;
  Resource const* resource;
  std::unique_ptr<STPException const> cause;
  stp_log_level_t level;
  /// Rendered here and now, so that what() can neither fail nor race.
  std::string what;
};

STPException::STPException(stp_reason_code_t reason, UMessage const& msg, Resource const* resource,
                           STPException const* cause, stp_log_level_t level) {
  std::unique_ptr<STPException const> own_cause(cause != nullptr ? cause->clone() : nullptr);
  state_ = std::make_shared<State const>(
      State{reason, msg, resource, std::move(own_cause), level, msg.text().to_utf8()});
}

STPException::STPException(STPException const& other) noexcept = default;
STPException& STPException::operator=(STPException const& other) noexcept = default;
STPException::~STPException() = default;

STPException* STPException::clone() const { return new STPException(*this); }

STPException::stp_reason_code_t STPException::reason_code() const noexcept {
  return state_->reason;
}
UMessage const& STPException::message() const noexcept { return state_->message; }
Resource const* STPException::resource() const noexcept { return state_->resource; }
STPException const* STPException::cause() const noexcept { return state_->cause.get(); }
STPException::stp_log_level_t STPException::log_level() const noexcept { return state_->level; }
char const* STPException::what() const noexcept { return state_->what.c_str(); }

}  // namespace Orn

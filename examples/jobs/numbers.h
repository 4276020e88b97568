#ifndef JOBS_NUMBERS_H
#define JOBS_NUMBERS_H

#include <charconv>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "tqutil/UString.h"

//! [whole-number]
// The number that a text is, in digits and nothing else.
inline std::int32_t whole_number(Orn::UString const& text) {
  std::string const digits = text.to_utf8();
  char const* const end = digits.data() + digits.size();
  std::int32_t number = -1;
  auto const [stop, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stop != end || number < 0) {
    throw std::runtime_error("'" + digits + "' is not a whole number up to 2147483647");
  }
  return number;
}
//! [whole-number]

// 1050 as 10.50.
inline std::string with_point(std::int64_t cents) {
  std::string const fraction = std::to_string(100 + cents % 100);
  return std::to_string(cents / 100) + '.' + fraction.substr(1);
}

#endif

#ifndef TQXML_WRITER_DECIMAL_H
#define TQXML_WRITER_DECIMAL_H

#include <array>
#include <charconv>
#include <limits>

#include "tqutil/UString.h"

namespace Orn {

/// A number in decimal: digits, with a "-" before those of a negative one, whatever the locale.
template <class Integer>
UString decimal(Integer value) {
  // The digits, and one more for the sign and for the incomplete last digit each.
  std::array<char, std::numeric_limits<Integer>::digits10 + 2> digits;
  char const* const begin = digits.data();
  char const* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  return UString(UString::string_type(begin, end));
}

}  // namespace Orn

#endif

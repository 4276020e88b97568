#ifndef TQXML_WRITER_DECIMAL_H
#define TQXML_WRITER_DECIMAL_H

#include <array>
#include <charconv>
#include <limits>
#include <string_view>

#include "tqutil/UString.h"

namespace Orn {

/// A number in decimal behind a few units of text: digits, with a "-" before those of a negative
/// one, whatever the locale.
template <class Integer>
UString decimal(Integer value, std::u16string_view before = {}) {
  // One digit more than all that are complete, and the sign.
  std::array<char, std::numeric_limits<Integer>::digits10 + 2> digits;
  char const* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  UString::string_type text(before.begin(), before.end());
  text.append(static_cast<char const*>(digits.data()), end);
  return UString(std::move(text));
}

}  // namespace Orn

#endif

#ifndef TQXML_WRITER_DECIMAL_H
#define TQXML_WRITER_DECIMAL_H

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string_view>

#include "tqutil/UString.h"

namespace Orn {

/// A number in decimal behind a unit or two of text: digits, with a "-" before those of a negative
/// one, whatever the locale.
template <class Integer>
UString decimal(Integer value, std::u16string_view before = {}) {
  // One digit more than all that are complete, and the sign.
  std::array<char, std::numeric_limits<Integer>::digits10 + 2> digits;
  char const* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  std::array<UString::unit_type, 2 + digits.size()> units;
  auto* const place = std::copy(before.begin(), before.end(), units.data());
  auto* const units_end = std::copy<char const*>(digits.data(), end, place);
  return UString(units.data(), static_cast<std::size_t>(units_end - units.data()));
}

}  // namespace Orn

#endif

#ifndef TQUTIL_UTF8_H
#define TQUTIL_UTF8_H

#include <cstddef>
#include <string>
#include <string_view>

namespace Orn {

/// `length` units of `text` in UTF-8, lone surrogates as U+FFFD. Runs of ASCII go at the speed of
/// memory, everything else unit by unit.
std::string utf16_to_utf8(unsigned short const* text, std::size_t length);

/// The text of `utf8`. Raises EncodingException when it is ill-formed.
std::basic_string<unsigned short> utf8_to_utf16(std::string_view utf8);

}  // namespace Orn

#endif

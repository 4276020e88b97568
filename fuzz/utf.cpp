#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <array>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Input.h"
#include "fuzz/Target.h"
#include "tqutil/UString.h"
#include "tqutil/UtilExceptions.h"

// Converts between UTF-8 and UTF-16, and compares the result with that of ICU's own functions:
// those for text to UTF-8, and from UTF-8 a converter, which the library does not use.

namespace fuzz {
namespace {

using Orn::UString;

void succeeded(UErrorCode status) { check(U_SUCCESS(status), u_errorName(status)); }

std::string utf8_by_icu(UString const& text) {
  std::string bytes(std::size_t{text.length()} * 3 + 1, '\0');
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(bytes.data(), static_cast<std::int32_t>(bytes.size()), &length, text.data(),
                     static_cast<std::int32_t>(text.length()), 0xFFFD, nullptr, &status);
  succeeded(status);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

/// The text of bytes, or where the first sequence that is not UTF-8 begins.
struct Decoded {
  UString text;
  std::optional<std::size_t> fault;

  bool operator==(Decoded const& other) const { return text == other.text && fault == other.fault; }
};

Decoded decoded_by_icu(std::string_view bytes) {
  UErrorCode status = U_ZERO_ERROR;
  static std::unique_ptr<UConverter, decltype(&ucnv_close)> const converter(
      ucnv_open("UTF-8", &status), &ucnv_close);
  ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  succeeded(status);
  ucnv_reset(converter.get());
  UString::string_type units(bytes.size() + 1, 0);
  UChar* to = units.data();
  char const* from = bytes.data();
  ucnv_toUnicode(converter.get(), &to, to + units.size(), &from, from + bytes.size(), nullptr, 1,
                 &status);
  if (U_SUCCESS(status)) {
    units.resize(static_cast<std::size_t>(to - units.data()));
    return {UString(std::move(units)), std::nullopt};
  }
  // It stands behind the bytes at fault.
  std::array<char, 8> fault{};
  auto length = static_cast<std::int8_t>(fault.size());
  status = U_ZERO_ERROR;
  ucnv_getInvalidChars(converter.get(), fault.data(), &length, &status);
  succeeded(status);
  return {UString(), static_cast<std::size_t>(from - bytes.data() - length)};
}

Decoded decoded(std::string_view bytes) {
  try {
    return {UString::from_utf8(bytes), std::nullopt};
  } catch (Orn::EncodingException const& e) {
    return {UString(), std::stoul(e.message().arg(1).text().to_utf8())};
  }
}

void from_utf8(std::string_view bytes) {
  Decoded const result = decoded(bytes);
  check(result == decoded_by_icu(bytes), "from_utf8 and ICU differ");
  if (!result.fault) check(result.text.to_utf8() == bytes, "there is another way back");
}

void to_utf8(UString const& text) {
  std::string const bytes = utf8_by_icu(text);
  check(text.to_utf8() == bytes, "to_utf8 and ICU differ");
  check(text.utf8_str() == bytes.substr(0, bytes.find('\0')), "utf8_str and ICU differ");
  std::ostringstream out;
  out << text;
  check(out.str() == bytes, "operator<< and ICU differ");
}

/// How much stands in front of what the input says: the lengths of blocks and buffers, and a few
/// more or less. That of the longest piece takes a thousand times as long as the others.
std::size_t next_shift(Input& input) {
  static std::vector<std::size_t> const boundaries = {8,  8,  8,   8,    8,    16,
                                                      24, 40, 136, 1032, 4104, 8200};
  std::size_t const choice = input.byte();
  std::size_t const boundary = choice == 171 ? 1048584 : boundaries[choice % boundaries.size()];
  return boundary - input.below(17) % (boundary + 1);
}

void run(Input input) {
  bool const decodes = input.flag();
  std::size_t const shift = next_shift(input);
  if (decodes) return from_utf8(std::string(shift, 'x').append(input.rest()));
  static std::vector<UString::unit_type> const fillers = {'x', 0xE9, 0x20AC, 0xD800, 0xDC00};
  UString text(UString::string_type(shift, input.one_of(fillers)));
  text.append(input.units(UString::npos));
  to_utf8(text);
}

}  // namespace
}  // namespace fuzz

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  fuzz::run(fuzz::Input(data, size));
  return 0;
}

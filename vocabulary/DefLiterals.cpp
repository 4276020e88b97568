#include "vocabulary/DefLiterals.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <stdexcept>

#include "tqutil/UString.h"
#include "tqutil/UtilExceptions.h"

namespace vocabulary {

namespace {

constexpr std::string_view SIMPLE_ESCAPES = "'\"?\\abfnrtv";
constexpr std::string_view SIMPLE_VALUES = "'\"?\\\a\b\f\n\r\t\v";

bool is_octal(char c) { return c >= '0' && c <= '7'; }
bool is_hexadecimal(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Reads what stands between the quotation marks.
class Unescaping {
 public:
  explicit Unescaping(std::string_view text) : rest_(text) {}

  std::u16string all() {
    while (!rest_.empty()) {
      std::size_t const escape = std::min(rest_.find('\\'), rest_.size());
      if (escape == 0) {
        rest_.remove_prefix(1);
        unescape();
      } else {
        append_utf8(rest_.substr(0, escape));
        rest_.remove_prefix(escape);
      }
    }
    return text_;
  }

 private:
  void unescape() {
    char const kind = rest_.empty() ? '\0' : rest_.front();
    std::size_t const simple = SIMPLE_ESCAPES.find(kind);
    if (simple != std::string_view::npos) {
      rest_.remove_prefix(1);
      text_ += static_cast<char16_t>(SIMPLE_VALUES[simple]);
    } else if (is_octal(kind)) {
      append_number(3, 8, is_octal);
    } else if (kind == 'x' || kind == 'u' || kind == 'U') {
      rest_.remove_prefix(1);
      std::size_t const digits = kind == 'u' ? 4 : 8;
      std::size_t const found = append_number(digits, 16, is_hexadecimal);
      if (found == 0 || (kind != 'x' && found != digits))
        fail("a \\" + std::string(1, kind) + " that means nothing");
    } else {
      fail("a \\ that means nothing");
    }
  }

  std::size_t append_number(std::size_t most_digits, int base, bool (*is_digit)(char)) {
    std::size_t count = 0;
    while (count < most_digits && count < rest_.size() && is_digit(rest_[count])) ++count;
    std::string const digits(rest_.substr(0, count));
    rest_.remove_prefix(count);
    append_character(static_cast<char32_t>(std::strtoul(digits.c_str(), nullptr, base)));
    return count;
  }

  void append_character(char32_t character) {
    if (character > 0x10FFFF) fail("a number beyond the last character");
    if (character < 0x10000) {
      text_ += static_cast<char16_t>(character);
    } else {
      text_ += static_cast<char16_t>(0xD7C0 + (character >> 10U));
      text_ += static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
    }
  }

  void append_utf8(std::string_view bytes) {
    try {
      Orn::UString const text = Orn::UString::from_utf8(bytes);
      for (unsigned int i = 0; i < text.length(); ++i) text_ += static_cast<char16_t>(text[i]);
    } catch (Orn::EncodingException const&) {
      fail("bytes that are not UTF-8");
    }
  }

  [[noreturn]] static void fail(std::string const& what) { throw std::invalid_argument(what); }

  std::string_view rest_;
  std::u16string text_;
};

std::string by_number(char16_t unit, char const* format) {
  std::array<char, 16> text{};
  // The format is one of those below.
  std::snprintf(text.data(), text.size(), format, static_cast<unsigned int>(unit));
  return text.data();
}

}  // namespace

std::optional<std::int32_t> number_of(std::string_view text, bool is_negative) {
  if (text == "INT32_MIN" && !is_negative) return std::numeric_limits<std::int32_t>::min();
  if (text == "INT32_MAX") {
    return is_negative ? -std::numeric_limits<std::int32_t>::max()
                       : std::numeric_limits<std::int32_t>::max();
  }
  std::string digits = is_negative ? "-" : "";
  std::remove_copy(text.begin(), text.end(), std::back_inserter(digits), '\'');
  char* end = nullptr;
  errno = 0;
  long long const value = std::strtoll(digits.c_str(), &end, 0);
  bool const is_in_range = value >= std::numeric_limits<std::int32_t>::min() &&
                           value <= std::numeric_limits<std::int32_t>::max();
  if (text.empty() || *end != '\0' || errno != 0 || !is_in_range) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

std::u16string text_of(std::string_view literal) {
  if (!literal.empty() && literal.front() == 'u') literal.remove_prefix(1);
  if (literal.size() < 2 || literal.back() != '"') {
    throw std::invalid_argument("a literal without its end");
  }
  return Unescaping(literal.substr(1, literal.size() - 2)).all();
}

std::string literal_of(std::u16string_view text) {
  std::string literal = "u\"";
  for (std::size_t i = 0; i < text.size(); ++i) {
    char16_t const unit = text[i];
    if (unit == u'"' || unit == u'\\') {
      literal.append("\\").append(1, static_cast<char>(unit));
    } else if (unit >= 0x20 && unit < 0x7F) {
      literal += static_cast<char>(unit);
    } else if (unit < 0xA0) {
      literal += by_number(unit, "\\%03o");
    } else if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < text.size()) {
      ++i;
      std::array<char, 16> escaped{};
      unsigned long const character = 0x10000UL + ((unit - 0xD800UL) << 10U) + (text[i] - 0xDC00UL);
      std::snprintf(escaped.data(), escaped.size(), "\\U%08lX", character);
      literal += escaped.data();
    } else {
      literal += by_number(unit, "\\u%04x");
    }
  }
  return literal + "\"";
}

}  // namespace vocabulary

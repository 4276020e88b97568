#include "tests/conformance/TreeText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "tqutil/UString.h"

namespace tests {

void TreeText::start(std::u16string_view uri, std::u16string_view name) { line(u'<', uri, name); }

void TreeText::attribute(std::u16string_view uri, std::u16string_view name,
                         std::u16string_view value) {
  line(u'@', uri, name);
  text_.back() = u' ';
  measured(value);
}

void TreeText::end(std::u16string_view data) {
  text_.push_back(u'>');
  measured(data);
}

void TreeText::line(char16_t kind, std::u16string_view uri, std::u16string_view name) {
  text_.push_back(kind);
  measured(uri);
  text_.back() = u' ';
  measured(name);
}

void TreeText::measured(std::u16string_view text) {
  std::string const length = std::to_string(text.size());
  text_.append(length.begin(), length.end()).append(u":").append(text).append(u"\n");
}

std::string digest_of(std::u16string_view text) {
  std::uint32_t digest = 2166136261U;
  for (char16_t const unit : text) digest = (digest ^ unit) * 16777619U;
  char digits[9];
  std::snprintf(digits, sizeof digits, "%08x", digest);
  return digits;
}

std::string first_difference(std::u16string const& a, std::u16string const& b) {
  auto const place = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
  auto const line_of = [place](std::u16string const& text) {
    std::size_t const newline = text.rfind(u'\n', static_cast<std::size_t>(place));
    std::size_t const begin = newline == std::u16string::npos || place == 0 ? 0 : newline + 1;
    std::u16string const line = text.substr(begin, text.find(u'\n', begin) - begin);
    return Orn::UString(line.data(), line.size()).to_utf8();
  };
  return "'" + line_of(a) + "' and not '" + line_of(b) + "'";
}

}  // namespace tests

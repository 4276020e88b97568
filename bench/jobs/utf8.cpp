#include <unicode/ustring.h>

#include <stdexcept>
#include <string>

#include "bench/jobs/Jobs.h"
#include "bench/jobs/Samples.h"
#include "bench/orders/OrderMaker.h"

namespace bench {
namespace {

using Orn::UString;

constexpr char16_t const* ASCII_WORDS[] = {u"order ", u"of ", u"several ", u"parts, ", u"paid "};
constexpr char16_t const* MIXED_WORDS[] = {
    u"order ",  u"gr\u00f6\u00dfer ", u"\u03bb\u03cc\u03b3\u03bf\u03c2 ",
    u"parts, ", u"\u4e2d\u6587 ",     u"\U0001f4e6\U0001f69a "};

template <std::size_t N>
Text make_text(char16_t const* const (&words)[N], std::size_t bytes) {
  Dice dice(1);
  UString text;
  std::size_t length = 0;
  while (true) {
    UString const word(words[dice.below(N)]);
    length += word.to_utf8().size();
    if (length > bytes) break;
    text.append(word);
  }
  std::string utf8 = text.to_utf8();
  return {std::move(text), std::move(utf8)};
}

Text make_ascii(std::size_t bytes) { return make_text(ASCII_WORDS, bytes); }
Text make_mixed(std::size_t bytes) { return make_text(MIXED_WORDS, bytes); }

std::string convert(Text const& text) { return text.utf16.to_utf8(); }

/// Counts first and converts then, since the length is not known before.
std::string convert_with_icu(Text const& text) {
  UErrorCode status = U_ZERO_ERROR;
  std::int32_t length = 0;
  auto const units = static_cast<std::int32_t>(text.utf16.length());
  u_strToUTF8(nullptr, 0, &length, text.utf16.data(), units, &status);
  std::string utf8(static_cast<std::size_t>(length), '\0');
  status = U_ZERO_ERROR;
  u_strToUTF8(utf8.data(), length, nullptr, text.utf16.data(), units, &status);
  if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
  return utf8;
}

/// What no conversion can do without.
std::string copy(Text const& text) { return {text.utf8.data(), text.utf8.size()}; }

struct Contender {
  char const* name;
  std::string (*convert)(Text const&);
};

constexpr Contender CONTENDERS[] = {{"tqxml", convert}, {"icu", convert_with_icu}, {"copy", copy}};

struct Job {
  char const* name;
  Text (*make)(std::size_t bytes);
};

constexpr Job JOBS[] = {{"utf8_ascii", make_ascii}, {"utf8_mixed", make_mixed}};

std::string name_of(Job const& job, Contender const& contender, Size const& size) {
  return std::string(job.name) + "/" + contender.name + "/" + size.name;
}

void check_one(Job const& job, Size const& size) {
  Text const text = job.make(size.bytes);
  expect(UString::from_utf8(text.utf8) == text.utf16, name_of(job, CONTENDERS[0], size));
  for (Contender const& contender : CONTENDERS) {
    expect(contender.convert(text) == text.utf8, name_of(job, contender, size));
  }
}

template <class Do>
void for_all(Do for_one) {
  for (Job const& job : JOBS) {
    for (Size const& size : SIZES) for_one(job, size);
  }
}

}  // namespace

void check_utf8() {
  for_all([](Job const& job, Size const& size) {
    if (size.bytes <= LARGEST_CHECKED) check_one(job, size);
  });
}

void register_utf8() {
  for_all([](Job const& job, Size const& size) {
    for (Contender const& contender : CONTENDERS) {
      register_work(
          name_of(job, contender, size), [&] { return job.make(size.bytes); }, contender.convert,
          [](Text const& text) { return text.utf8.size(); });
    }
  });
}

}  // namespace bench

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tqutil/UString.h"
#include "tqutil/UtilExceptions.h"

namespace {

using namespace std::string_literals;
using Orn::UString;

UString text_of(std::u16string const& units) { return UString(units.data(), units.size()); }

bool is_high(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool is_low(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

char byte(char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); }
char trail(char32_t value) { return byte(0x80 | (value & 0x3F)); }

void append_utf8(std::string& bytes, char32_t c) {
  if (c < 0x80) {
    bytes += byte(c);
  } else if (c < 0x800) {
    bytes += {byte(0xC0 | c >> 6), trail(c)};
  } else if (c < 0x10000) {
    bytes += {byte(0xE0 | c >> 12), trail(c >> 6), trail(c)};
  } else {
    bytes += {byte(0xF0 | c >> 18), trail(c >> 12), trail(c >> 6), trail(c)};
  }
}

void append_utf16(std::u16string& units, char32_t c) {
  if (c < 0x10000) {
    units += static_cast<char16_t>(c);
  } else {
    units += static_cast<char16_t>(0xD7C0 + (c >> 10));
    units += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
  }
}

std::string utf8(char32_t c) {
  std::string bytes;
  append_utf8(bytes, c);
  return bytes;
}

/// What a text should be in UTF-8, unit by unit.
std::string expected_utf8(std::u16string const& units) {
  std::string bytes;
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t const unit = units[i];
    char32_t const next = i + 1 < units.size() ? units[i + 1] : 0;
    if (is_high(unit) && is_low(next)) {
      append_utf8(bytes, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      ++i;
    } else {
      append_utf8(bytes, is_high(unit) || is_low(unit) ? 0xFFFD : unit);
    }
  }
  return bytes;
}

std::string hex(std::string_view bytes) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string shown;
  for (char const b : bytes) {
    auto const value = static_cast<unsigned char>(b);
    shown += {digits[value >> 4], digits[value & 15], ' '};
  }
  return shown;
}

void expect_utf8_of(std::u16string const& units) {
  std::string const expected = expected_utf8(units);
  std::string const actual = text_of(units).to_utf8();
  auto const first = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
  ASSERT_TRUE(actual == expected) << "of " << units.size() << " units, differs from byte "
                                  << first.second - expected.begin() << ": "
                                  << hex(std::string(first.first, actual.end()).substr(0, 16))
                                  << "is not "
                                  << hex(std::string(first.second, expected.end()).substr(0, 16));
}

/// Where the first sequence begins that Unicode's table of well-formed UTF-8 does not have.
std::optional<std::size_t> fault(std::string_view bytes) {
  struct Range {
    unsigned char first, last;
    bool has(char b) const {
      auto const value = static_cast<unsigned char>(b);
      return value >= first && value <= last;
    }
  };
  static constexpr Range any{0x80, 0xBF};
  static std::vector<std::vector<Range>> const well_formed = {
      {{0x00, 0x7F}},
      {{0xC2, 0xDF}, any},
      {{0xE0, 0xE0}, {0xA0, 0xBF}, any},
      {{0xE1, 0xEC}, any, any},
      {{0xED, 0xED}, {0x80, 0x9F}, any},
      {{0xEE, 0xEF}, any, any},
      {{0xF0, 0xF0}, {0x90, 0xBF}, any, any},
      {{0xF1, 0xF3}, any, any, any},
      {{0xF4, 0xF4}, {0x80, 0x8F}, any, any},
  };
  auto const length_at = [&](std::size_t at) -> std::size_t {
    for (auto const& row : well_formed) {
      std::size_t i = 0;
      while (i < row.size() && at + i < bytes.size() && row[i].has(bytes[at + i])) ++i;
      if (i == row.size()) return i;
    }
    return 0;
  };
  for (std::size_t at = 0; at < bytes.size();) {
    std::size_t const length = length_at(at);
    if (length == 0) return at;
    at += length;
  }
  return std::nullopt;
}

/// The offset that from_utf8 complains about.
std::optional<std::size_t> refused_at(std::string_view bytes) {
  try {
    static_cast<void>(UString::from_utf8(bytes));
    return std::nullopt;
  } catch (Orn::EncodingException const& e) {
    return std::stoul(e.message().arg(1).text().to_utf8());
  }
}

TEST(FromUtf8, OfEachCodePointGivesItsUnitsAndBackAgain) {
  std::u16string all_units;
  std::string all_bytes;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (is_high(c) || is_low(c)) continue;
    std::u16string units;
    append_utf16(units, c);
    UString const text = UString::from_utf8(utf8(c));
    ASSERT_EQ(text, text_of(units)) << std::hex << static_cast<unsigned long>(c);
    ASSERT_EQ(text.to_utf8(), utf8(c));
    all_units += units;
    all_bytes += utf8(c);
  }
  UString const all = UString::from_utf8(all_bytes);
  EXPECT_TRUE(all == text_of(all_units));
  EXPECT_TRUE(all.to_utf8() == all_bytes);
  EXPECT_TRUE(all.utf8_str() + 1 == all_bytes.substr(1));  // behind U+0000
}

TEST(FromUtf8, OfNoBytesIsEmpty) {
  EXPECT_TRUE(UString::from_utf8("").empty());
  EXPECT_TRUE(UString::from_utf8({}).empty());
}

TEST(FromUtf8, TakesZerosAsCharacters) {
  UString const text = UString::from_utf8("a\0b\0"s);
  EXPECT_EQ(text, UString(u"a\0b\0", 4));
  EXPECT_EQ(text.to_utf8(), "a\0b\0"s);
}

TEST(FromUtf8, KeepsAByteOrderMark) { EXPECT_EQ(UString::from_utf8("\xEF\xBB\xBFx"), u"\uFEFFx"); }

TEST(FromUtf8, RefusesBytesThatAreNotUtf8AndNamesTheFirstOfThem) {
  struct {
    std::string bytes;
    std::size_t offset;
  } const cases[] = {
      {"\x80", 0},  // a trail byte without a lead
      {"ab\xBF"
       "c",
       2},
      {"\xC3\xA9\x80", 2},  // one trail byte too many
      {"\xE2\x82\xAC\xAC", 3},
      {"\xF0\x9F\x98\x80\x80", 4},
      {"\xC0\xAF", 0},  // longer than need be
      {"x\xC1\xBF", 1},
      {"\xE0\x80\xAF", 0},
      {"\xE0\x9F\xBF", 0},
      {"\xF0\x80\x80\xAF", 0},
      {"\xF0\x8F\xBF\xBF", 0},
      {"a\xED\xA0\x80", 1},  // surrogates, lone and as a pair
      {"a\xED\xBF\xBF", 1},
      {"\xED\xA0\xBD\xED\xB8\x80", 0},
      {"\xF4\x90\x80\x80", 0},  // beyond U+10FFFF
      {"\xF5\x80\x80\x80", 0},
      {"\xF8\x88\x80\x80\x80", 0},
      {"\xFC\x84\x80\x80\x80\x80", 0},
      {"ab\xFE", 2},
      {"ab\xFF", 2},
      {"abc\xC3", 3},  // cut off by the end
      {"abc\xE2", 3},
      {"abc\xE2\x82", 3},
      {"abc\xF0", 3},
      {"abc\xF0\x9F", 3},
      {"abc\xF0\x9F\x98", 3},
      {"\xC3"
       "a",
       0},  // cut off by another character
      {"\xE2\x82"
       "a",
       0},
      {"\xF0\x9F\x98"
       "a",
       0},
      {"a\xE2\x82\xC3\xA9", 1},
      {"a\xC3\xC3\xA9", 1},
      {"\0\xC3\0"s, 1},
  };
  for (auto const& [bytes, offset] : cases) EXPECT_EQ(refused_at(bytes), offset) << hex(bytes);
}

TEST(FromUtf8, AcceptsTheFirstAndLastSequenceOfEachLength) {
  for (char32_t const c :
       U"\0\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFDD0\uFFFD\uFFFE\uFFFF"
       U"\U00010000\U0010FFFF") {
    EXPECT_EQ(refused_at(utf8(c)), std::nullopt) << hex(utf8(c));
  }
}

TEST(FromUtf8, AcceptsAndRefusesEachSingleByteAsUnicodeSays) {
  for (int value = 0; value < 256; ++value) {
    std::string const bytes(1, static_cast<char>(value));
    EXPECT_EQ(refused_at(bytes), fault(bytes)) << hex(bytes);
  }
}

/// The bytes at which the rules of UTF-8 change.
constexpr unsigned char turning_points[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF,
                                            0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC, 0xED, 0xEE,
                                            0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF};

TEST(FromUtf8, AcceptsAndRefusesTriplesOfBytesAsUnicodeSays) {
  for (unsigned char const a : turning_points) {
    for (unsigned char const b : turning_points) {
      for (unsigned char const c : turning_points) {
        std::string const bytes = {byte(a), byte(b), byte(c)};
        ASSERT_EQ(refused_at(bytes), fault(bytes)) << hex(bytes);
      }
    }
  }
}

TEST(FromUtf8, AcceptsAndRefusesRandomBytesAsUnicodeSays) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    std::string bytes(random() % 6, 'x');
    // Something well-formed in front, so that the fault is not always at the beginning.
    append_utf8(bytes, std::array{U'a', U'\u00e9', U'\u20ac', U'\U0001F600'}[random() % 4]);
    for (std::size_t n = random() % 6; n > 0; --n) {
      bytes += byte(turning_points[random() % std::size(turning_points)]);
    }
    ASSERT_EQ(refused_at(bytes), fault(bytes)) << hex(bytes);
  }
}

constexpr std::size_t boundaries[] = {16, 32, 64, 128, 256, 1024, 4096, 8192, 65536, 1 << 20};

TEST(FromUtf8, NamesTheSameByteHoweverLongTheTextBeforeItIs) {
  std::string const tails[] = {
      "\x80",
      "\xC3",
      "\xE2\x82",
      "\xF0\x9F\x98",
      "\xED\xA0\x80",
      "\xC3\xA9\x80",
      "\xE2\x82\xAC\x80\x80",
      "\xF0\x9F\x98\x80\x80\x80\x80\x80",
      "\xF0\x9F\x98\x80\xF0\x9F\x98\x80\xF0\x9F\x98",
  };
  for (std::size_t const boundary : boundaries) {
    for (std::size_t length = boundary - 9; length <= boundary + 1; ++length) {
      for (std::string const& tail : tails) {
        std::string const bytes = std::string(length, 'x') + tail;
        ASSERT_EQ(refused_at(bytes), length + *fault(tail)) << hex(tail);
      }
    }
  }
}

TEST(FromUtf8, OfALongTextGivesAllOfItWhereverItsCharactersLie) {
  for (std::size_t shift = 0; shift < 4; ++shift) {
    std::string bytes(shift, 'x');
    std::u16string units(shift, u'x');
    while (bytes.size() < (3U << 20)) {
      bytes += "\xF0\x9F\x98\x80";
      units += u"\U0001F600";
    }
    EXPECT_TRUE(UString::from_utf8(bytes) == text_of(units)) << shift;
  }
}

constexpr char16_t kinds_of_unit[] = {u'a', u'\u00e9', u'\u20ac', u'\xD83D', u'\xDE00'};

void expect_utf8_of_all(std::u16string& units, std::size_t from) {
  if (from == units.size()) return expect_utf8_of(units);
  for (char16_t const unit : kinds_of_unit) {
    units[from] = unit;
    expect_utf8_of_all(units, from + 1);
  }
}

TEST(ToUtf8, OfEveryShortMixtureHasAReplacementForEachLoneSurrogate) {
  for (std::size_t length = 0; length <= 6; ++length) {
    std::u16string units(length, u'x');
    expect_utf8_of_all(units, 0);
  }
}

TEST(ToUtf8, ReplacesEachLoneSurrogateByOneReplacementCharacter) {
  EXPECT_EQ(text_of({u'\xD800'}).to_utf8(), "\xEF\xBF\xBD");
  EXPECT_EQ(text_of({u'\xDFFF', u'\xD800'}).to_utf8(), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(text_of({u'a', u'\xD83D', u'\xD83D', u'\xDE00', u'\xDE00', u'b'}).to_utf8(),
            "a\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD"
            "b");
}

TEST(ToUtf8, OfEachUnitAloneIsThatCharacterOrItsReplacement) {
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    expect_utf8_of({static_cast<char16_t>(unit)});
  }
}

std::vector<std::u16string> fragments() {
  return {u"\U0001F600",
          {u'\xD83D'},
          {u'\xDE00'},
          {u'\xDE00', u'\xD83D'},
          {u'\xD83D', u'\xD83D', u'\xDE00'},
          u"\u00e9",
          u"\u20ac\u20ac",
          std::u16string(1, u'\0')};
}

TEST(ToUtf8, OfAFragmentBetweenRunsOfAsciiIsTheSameWhateverTheirLengths) {
  for (std::size_t before = 0; before <= 70; ++before) {
    for (std::size_t after = 0; after <= 70; after += 1 + after / 4) {
      for (std::u16string const& fragment : fragments()) {
        expect_utf8_of(std::u16string(before, u'a') + fragment + std::u16string(after, u'z'));
      }
    }
  }
}

TEST(ToUtf8, OfAFragmentAroundAnyBoundaryIsTheSame) {
  for (std::size_t const boundary : boundaries) {
    if (boundary > 65536) continue;
    for (char16_t const filler : {u'a', u'\u00e9', u'\u20ac'}) {
      for (std::size_t before = boundary - 4; before <= boundary + 1; ++before) {
        for (std::u16string const& fragment : fragments()) {
          expect_utf8_of(std::u16string(before, filler) + fragment + u"tail");
        }
      }
    }
  }
}

TEST(ToUtf8, OfPairsIsTheSameWhereverTheBoundariesFall) {
  for (std::size_t shift = 0; shift < 2; ++shift) {
    std::u16string units(shift, u'\u00e9');
    for (int i = 0; i < 20000; ++i) units += u"\U0001F600";
    expect_utf8_of(units);
    expect_utf8_of(units + u'\xD83D');
  }
}

TEST(ToUtf8, OfRandomMixturesOfRunsIsTheSameAsUnitByUnit) {
  std::mt19937 random(2);
  for (int i = 0; i < 300; ++i) {
    std::u16string units;
    for (std::size_t runs = random() % 12; runs > 0; --runs) {
      units.append(random() % 80, kinds_of_unit[random() % std::size(kinds_of_unit)]);
    }
    expect_utf8_of(units);
  }
}

TEST(ToUtf8, LeavesTheResultOfUtf8StrAsItWas) {
  UString text(u"one");
  char const* const bytes = text.utf8_str();
  text.append(u" more");
  EXPECT_EQ(text.to_utf8(), "one more");
  EXPECT_STREQ(bytes, "one");
}

TEST(Utf8Str, IsTheTextInUtf8) {
  EXPECT_STREQ(UString().utf8_str(), "");
  EXPECT_STREQ(UString(u"a\u00e9\u20ac\U0001F600").utf8_str(),
               "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_STREQ(text_of({u'\xDC00', u'x', u'\xD800'}).utf8_str(), "\xEF\xBF\xBDx\xEF\xBF\xBD");
}

TEST(Utf8Str, HasAZeroBehindEvenATextWithZerosInIt) {
  UString const text(u"a\0b", 3);
  EXPECT_EQ(std::string(text.utf8_str(), 4), "a\0b\0"s);
}

TEST(Utf8Str, OfTheChangedTextIsTheNewText) {
  UString text(u"one");
  EXPECT_STREQ(text.utf8_str(), "one");
  text.append(u" and two");
  EXPECT_STREQ(text.utf8_str(), "one and two");
  text.clear();
  EXPECT_STREQ(text.utf8_str(), "");
}

TEST(Utf8Str, OfOtherObjectsDoesNotDisturbIt) {
  std::vector<UString> texts;
  for (int i = 0; i < 100; ++i) texts.push_back(UString::from_utf8("text " + std::to_string(i)));
  std::vector<char const*> bytes;
  for (UString const& text : texts) bytes.push_back(text.utf8_str());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(bytes[i], "text " + std::to_string(i));
  }
}

TEST(Utf8Str, OfACopyDoesNotDisturbIt) {
  UString const text(u"the original's text");
  char const* const bytes = text.utf8_str();
  {
    UString copy(text);
    copy.append(u", changed");
    EXPECT_STREQ(copy.utf8_str(), "the original's text, changed");
  }
  EXPECT_STREQ(bytes, "the original's text");
}

/// Whether what `utf8_str()` gave is still there after `change`. The text is long, so that memory
/// given back is soon used for something else.
testing::AssertionResult survives(std::function<void(UString&)> const& change) {
  std::string const expected(200, 'x');
  UString text = UString::from_utf8(expected);
  char const* const bytes = text.utf8_str();
  change(text);
  std::vector<std::string> const others(20, std::string(200, 'y'));
  if (bytes == expected) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "it has become something else";
}

TEST(Utf8Str, StaysWhileTheTextIsChanged) {
  UString const other(u"another text");
  EXPECT_TRUE(survives([&](UString& text) { text.append(other); }));
  EXPECT_TRUE(survives([&](UString& text) { text.insert(0, other); }));
  EXPECT_TRUE(survives([&](UString& text) { text.replace(0, 100, other); }));
  EXPECT_TRUE(survives([](UString& text) { text.erase(0, 100); }));
  EXPECT_TRUE(survives([](UString& text) { text.clear(); }));
  EXPECT_TRUE(survives([](UString& text) { text.reserve(10000); }));
}

TEST(Utf8Str, StaysWhileTheTextIsAssigned) {
  UString const other(u"another text");
  other.utf8_str();
  EXPECT_TRUE(survives([&](UString& text) { text.assign(other); }));
  EXPECT_TRUE(survives([&](UString& text) { text = other; }));
  EXPECT_TRUE(survives([](UString& text) { text = UString(u"a temporary text"); }));
  EXPECT_TRUE(survives([](UString& text) {
    UString temporary(u"a temporary text");
    temporary.utf8_str();
    text = std::move(temporary);
  }));
}

TEST(Utf8Str, StaysWhileTheTextIsMovedElsewhere) {
  EXPECT_TRUE(survives([](UString& text) { UString const moved(std::move(text)); }));
  EXPECT_TRUE(survives([](UString& text) {
    UString moved;
    moved = std::move(text);
  }));
  EXPECT_TRUE(survives([](UString& text) {
    UString other(u"another text");
    std::swap(text, other);
    other.clear();
    other.utf8_str();
  }));
}

}  // namespace

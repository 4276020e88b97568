#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tqutil/UString.h"

namespace {

using Orn::UString;
using Unit = UString::unit_type;

UString text_of(std::u16string_view units) { return UString(units.data(), units.size()); }

std::vector<Unit> units_of(std::u16string_view units) { return {units.begin(), units.end()}; }

int sign(int comparison) { return (comparison > 0) - (comparison < 0); }

void expect_as_standard(std::u16string_view a, std::u16string_view b) {
  UString const text_a = text_of(a), text_b = text_of(b);
  ASSERT_EQ(sign(text_a.compare(text_b)), sign(a.compare(b)));
  ASSERT_EQ(sign(text_b.compare(text_a)), sign(b.compare(a)));
  ASSERT_EQ(text_a == text_b, a == b);
  ASSERT_EQ(text_a != text_b, a != b);
  ASSERT_EQ(text_a < text_b, a < b);
  ASSERT_EQ(text_b < text_a, b < a);
}

constexpr char16_t alphabet[] = {u'\0',     u'\u0001', u'\u00FF', u'\u0100', u'a',
                                 u'\x7FFF', u'\x8000', u'\xD83D', u'\xFF00', u'\xFFFF'};

std::u16string random_units(std::size_t length, std::mt19937& random) {
  std::u16string units;
  while (units.size() < length) units += alphabet[random() % std::size(alphabet)];
  return units;
}

TEST(Comparison, OfTextsThatShareTheirBeginningIsByTheFirstUnitThatDiffers) {
  std::mt19937 random(1);
  for (std::size_t a = 0; a <= 40; ++a) {
    for (std::size_t b = 0; b <= 40; ++b) {
      for (std::size_t common = 0; common <= std::min(a, b); ++common) {
        std::u16string const beginning = random_units(common, random);
        std::u16string const text_a = beginning + random_units(a - common, random);
        expect_as_standard(text_a, beginning + random_units(b - common, random));
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << a << ' ' << b << ' ' << common;
      }
    }
  }
}

TEST(Comparison, OfTextsThatDifferInOneUnitIsByThatUnit) {
  std::mt19937 random(2);
  for (std::size_t length = 1; length <= 40; ++length) {
    for (std::size_t place = 0; place < length; ++place) {
      for (char16_t const unit : alphabet) {
        std::u16string const text = random_units(length, random);
        std::u16string other = text;
        other[place] = unit;
        // Behind it, the order is the other way round as often as not.
        for (std::size_t i = place + 1; i < length; ++i) other[i] = alphabet[random() % 10];
        expect_as_standard(text, other);
        expect_as_standard(text, text);
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << length << ' ' << place;
      }
    }
  }
}

TEST(Comparison, OfABeginningWithTheWholeIsSmaller) {
  std::mt19937 random(3);
  std::u16string const whole = random_units(40, random);
  for (std::size_t length = 0; length <= 40; ++length) {
    expect_as_standard(whole.substr(0, length), whole);
    // What stands behind the end in memory is of no account.
    UString cut = text_of(whole);
    cut.erase(static_cast<unsigned int>(length), UString::npos);
    EXPECT_TRUE(cut == text_of(whole.substr(0, length)));
    EXPECT_EQ(sign(cut.compare(text_of(whole))), length == 40 ? 0 : -1);
  }
}

TEST(UStringOfUnits, HoldsAsManyAsAreAskedForAndAZeroBehindThem) {
  std::mt19937 random(4);
  std::vector<Unit> const units = units_of(random_units(100, random));
  for (std::size_t length = 0; length <= units.size(); ++length) {
    UString const text(units.data(), length);
    ASSERT_EQ(text.length(), length);
    ASSERT_TRUE(std::equal(text.data(), text.data() + length, units.data()));
    ASSERT_EQ(text.data()[length], 0U);
  }
}

TEST(UStringOfUnits, IsEmptyForNoUnitsWhereverTheyAre) {
  Unit const* const none = nullptr;
  EXPECT_EQ(UString(none, 0), UString());
  Unit const unit = u'x';
  EXPECT_EQ(UString(&unit, 0), UString());
}

std::string by_icu(std::u16string_view units) {
  std::string bytes(3 * units.size() + 1, '\0');
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(bytes.data(), static_cast<std::int32_t>(bytes.size()), &length,
                     reinterpret_cast<UChar const*>(units.data()),
                     static_cast<std::int32_t>(units.size()), 0xFFFD, nullptr, &status);
  EXPECT_TRUE(U_SUCCESS(status));
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

void expect_utf8_as_of_icu(std::u16string const& units) {
  std::string const expected = by_icu(units);
  std::vector<Unit> const text = units_of(units);
  ASSERT_TRUE(text_of(units).to_utf8() == expected) << units.size();
  ASSERT_TRUE(UString::to_utf8(text.data(), text.size()) == expected) << units.size();
}

/// Runs of ASCII and of other characters, with surrogates that are paired and lone ones.
std::u16string mixture(std::size_t length, std::mt19937& random) {
  static std::u16string const pieces[] = {u"a",        u"\u00e9",   u"\u0800", u"\U0001F600",
                                          {u'\xD83D'}, {u'\xDE00'}, {u'\0'},   u"\uFFFF"};
  std::u16string units;
  while (units.size() < length) {
    std::u16string const& piece = pieces[random() % std::size(pieces)];
    for (std::size_t n = 1 + random() % 30; n > 0; --n) units += piece;
  }
  units.resize(length);
  return units;
}

TEST(ToUtf8OfMixtures, IsAsOfIcuAroundTheEndsOfBlocks) {
  std::mt19937 random(5);
  for (std::size_t const end : {16U, 32U, 64U, 1365U, 2048U, 4045U, 4096U, 8192U, 12288U}) {
    for (std::size_t length = end - 16; length <= end + 16; ++length) {
      for (int round = 0; round < 20; ++round) {
        expect_utf8_as_of_icu(mixture(length, random));
        ASSERT_FALSE(testing::Test::HasFatalFailure());
      }
    }
  }
}

TEST(ToUtf8OfMixtures, IsAsOfIcuForUnitsAtRandom) {
  std::mt19937 random(6);
  for (std::size_t length = 0; length <= 300; ++length) {
    std::u16string units, surrogates;
    for (std::size_t i = 0; i < length; ++i) {
      units += static_cast<char16_t>(random());
      surrogates += static_cast<char16_t>(0xD800 + random() % 0x800);
    }
    expect_utf8_as_of_icu(units);
    expect_utf8_as_of_icu(surrogates);
    ASSERT_FALSE(testing::Test::HasFatalFailure());
  }
}

TEST(ToUtf8OfMixtures, IsAsOfIcuWhereverASurrogateStands) {
  for (std::u16string const& piece : {std::u16string(u"\U0001F600"), std::u16string(1, u'\xD83D'),
                                      std::u16string(1, u'\xDE00')}) {
    for (char16_t const filler : {u'a', u'\u00e9', u'\u20ac'}) {
      for (std::size_t const end : {16U, 1365U, 2048U, 4096U}) {
        for (std::size_t before = end - 16; before <= end + 16; ++before) {
          std::u16string const units = std::u16string(before, filler) + piece;
          expect_utf8_as_of_icu(units);
          expect_utf8_as_of_icu(units + std::u16string(40, filler));
          ASSERT_FALSE(testing::Test::HasFatalFailure());
        }
      }
    }
  }
}

TEST(ToUtf8OfUnits, ReadsNoFurtherThanItIsTold) {
  std::vector<Unit> const units = units_of(u"a\U0001F600b");
  EXPECT_EQ(UString::to_utf8(units.data(), 0), "");
  EXPECT_EQ(UString::to_utf8(nullptr, 0), "");
  EXPECT_EQ(UString::to_utf8(units.data(), 1), "a");
  EXPECT_EQ(UString::to_utf8(units.data(), 2), "a\xEF\xBF\xBD");
  EXPECT_EQ(UString::to_utf8(units.data(), 3), "a\xF0\x9F\x98\x80");
}

}  // namespace

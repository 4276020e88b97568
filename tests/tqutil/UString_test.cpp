#include "tqutil/UString.h"

#include <gtest/gtest.h>

#include <functional>
#include <iomanip>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using Orn::UString;
using Unit = UString::unit_type;
using Standard = UString::string_type;

constexpr unsigned int npos = UString::npos;
constexpr Unit const* null_units = nullptr;
constexpr char16_t const* null_text = nullptr;

constexpr Unit unit(char16_t c) { return c; }

UString text_of(std::u16string const& units) { return UString(units.data(), units.size()); }

int sign(int comparison) { return (comparison > 0) - (comparison < 0); }

TEST(UString, MadeFromNothingIsEmpty) {
  UString const text;
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(text.length(), 0U);
  EXPECT_EQ(text.data()[0], 0);
  EXPECT_EQ(text[0], 0);
}

TEST(UString, MadeFromANullPointerIsEmpty) {
  EXPECT_TRUE(UString(null_units).empty());
  EXPECT_TRUE(UString(null_text).empty());
  EXPECT_TRUE(UString(null_text, 0).empty());
}

TEST(UString, MadeFromAZeroTerminatedTextIsACopyOfIt) {
  Unit units[] = {'a', 0xE9, 0xD83D, 0xDE00, 0};
  UString const text(units);
  units[0] = 'x';
  EXPECT_EQ(text, u"a\u00e9\U0001F600");
  EXPECT_EQ(text.length(), 4U);
  EXPECT_FALSE(text.empty());
}

TEST(UString, MadeFromATextAndALengthHoldsThatManyUnitsWhateverTheyAre) {
  UString const text(u"a\0b\xD800", 4);
  ASSERT_EQ(text.length(), 4U);
  EXPECT_EQ(text[0], 'a');
  EXPECT_EQ(text[1], 0);
  EXPECT_EQ(text[2], 'b');
  EXPECT_EQ(text[3], 0xD800);
  EXPECT_EQ(text[4], 0);
}

TEST(UString, MadeFromAStandardStringHoldsAllItsUnits) {
  Unit const units[] = {'a', 0, 'b', 0xDC00};
  UString const text = Standard(units, 4);
  EXPECT_EQ(text, text_of({u'a', u'\0', u'b', u'\xDC00'}));
  Standard const standard(units, 4);
  UString copy(standard);
  EXPECT_EQ(copy, text);
  copy.append(u"no more");
  EXPECT_EQ(standard, Standard(units, 4));
}

TEST(UString, ItsUnitsAreFollowedByAZero) {
  UString text;
  for (unsigned int length = 0; length < 40; ++length) {
    EXPECT_EQ(text.data()[length], 0);
    EXPECT_EQ(text[length], 0);
    text.append(unit(u'x'));
  }
}

TEST(UString, CopiesAreDeep) {
  UString original(u"original");
  UString copy(original);
  UString assigned;
  assigned = original;
  UString assigned_by_name;
  assigned_by_name.assign(original);
  original.append(u" no more");
  EXPECT_EQ(copy, u"original");
  EXPECT_EQ(assigned, u"original");
  EXPECT_EQ(assigned_by_name, u"original");
}

TEST(UString, MayBeAssignedToItself) {
  UString text(u"a text that is too long for a small buffer");
  UString const& same = text;
  text = same;
  text.assign(same);
  EXPECT_EQ(text, u"a text that is too long for a small buffer");
}

TEST(UString, MovesWithoutCopyingAndLeavesAUsableText) {
  static_assert(std::is_nothrow_move_constructible_v<UString>);
  static_assert(std::is_nothrow_move_assignable_v<UString>);
  UString original(u"a text that is too long for a small buffer");
  Unit const* const units = original.data();
  UString moved(std::move(original));
  EXPECT_EQ(moved.data(), units);
  original = UString(u"new");
  EXPECT_EQ(original, u"new");
  original = std::move(moved);
  EXPECT_EQ(original, u"a text that is too long for a small buffer");
}

TEST(UString, AppendsEveryKindOfTextInOrder) {
  Unit const units[] = {'c', 'd', 0};
  UString text(u"a");
  text.append(UString(u"b")).append(units).append(u"ef").append(u"g\0h", 3).append(unit(u'i'));
  EXPECT_EQ(text, text_of({u'a', u'b', u'c', u'd', u'e', u'f', u'g', u'\0', u'h', u'i'}));
}

TEST(UString, AppendingNothingChangesNothing) {
  UString text(u"abc");
  text.append(null_units).append(null_text).append(null_text, 0).append(UString()).append(u"");
  EXPECT_EQ(text, u"abc");
}

TEST(UString, AppendsAZeroUnitAsAnyOther) {
  UString text(u"a");
  text.append(unit(0)).append(unit(u'b'));
  EXPECT_EQ(text.length(), 3U);
  EXPECT_EQ(text, UString(u"a\0b", 3));
}

TEST(UString, MayBeAppendedToItself) {
  std::u16string expected = u"0123456789";
  UString text(expected.c_str());
  for (int i = 0; i < 8; ++i) {
    text.append(text);
    expected += expected;
    ASSERT_EQ(text, text_of(expected));
  }
}

TEST(UString, MayBeAppendedToItselfByItsUnits) {
  for (unsigned int from = 0; from <= 10; ++from) {
    UString text(u"0123456789");
    std::u16string const expected = u"0123456789" + std::u16string(u"0123456789").substr(from);
    text.append(text.data() + from);
    EXPECT_EQ(text, text_of(expected));
  }
}

TEST(UString, MayBeInsertedIntoItselfAndReplacedByItself) {
  UString text(u"0123456789");
  EXPECT_EQ(text.insert(4, text), u"01230123456789456789");
  text = UString(u"0123456789");
  EXPECT_EQ(text.replace(2, 5, text), u"010123456789789");
}

TEST(UString, InsertsInFrontOfAUnitAndAtTheEnd) {
  UString text(u"bd");
  EXPECT_EQ(text.insert(1, UString(u"c")), u"bcd");
  EXPECT_EQ(text.insert(0, UString(u"a")), u"abcd");
  EXPECT_EQ(text.insert(4, UString(u"e")), u"abcde");
  EXPECT_EQ(text.insert(2, UString()), u"abcde");
}

TEST(UString, InsertsByUnitsEvenBetweenTheHalvesOfAPair) {
  UString text(u"\U0001F600");
  text.insert(1, UString(u"x"));
  EXPECT_EQ(text, text_of({u'\xD83D', u'x', u'\xDE00'}));
}

TEST(UString, ReplacesTheUnitsNamedOrAsManyAsThereAre) {
  EXPECT_EQ(UString(u"abcd").replace(1, 2, UString(u"XYZ")), u"aXYZd");
  EXPECT_EQ(UString(u"abcd").replace(1, 0, UString(u"X")), u"aXbcd");
  EXPECT_EQ(UString(u"abcd").replace(1, 2, UString()), u"ad");
  EXPECT_EQ(UString(u"abcd").replace(2, 99, UString(u"X")), u"abX");
  EXPECT_EQ(UString(u"abcd").replace(2, npos, UString(u"X")), u"abX");
  EXPECT_EQ(UString(u"abcd").replace(4, npos, UString(u"X")), u"abcdX");
}

TEST(UString, ErasesTheUnitsNamedOrAsManyAsThereAre) {
  EXPECT_EQ(UString(u"abcd").erase(1, 2), u"ad");
  EXPECT_EQ(UString(u"abcd").erase(1, 0), u"abcd");
  EXPECT_EQ(UString(u"abcd").erase(2, 99), u"ab");
  EXPECT_EQ(UString(u"abcd").erase(2, npos - 1), u"ab");
  EXPECT_EQ(UString(u"abcd").erase(0, npos), u"");
  EXPECT_EQ(UString(u"abcd").erase(4, 1), u"abcd");
}

TEST(UString, GivesTheUnitsNamedOrAsManyAsThereAre) {
  UString const text(u"abcd");
  EXPECT_EQ(text.substr(1, 2), u"bc");
  EXPECT_EQ(text.substr(1, 0), u"");
  EXPECT_EQ(text.substr(2, 99), u"cd");
  EXPECT_EQ(text.substr(2, npos - 1), u"cd");
  EXPECT_EQ(text.substr(0, npos), u"abcd");
  EXPECT_EQ(text.substr(4, npos), u"");
}

std::vector<std::function<void(UString&)>> calls_at(unsigned int pos) {
  return {
      [pos](UString& text) { text.insert(pos, UString(u"X")); },
      [pos](UString& text) { text.insert(pos, UString()); },
      [pos](UString& text) { text.replace(pos, 0, UString(u"X")); },
      [pos](UString& text) { text.replace(pos, npos, UString(u"X")); },
      [pos](UString& text) { text.erase(pos, 0); },
      [pos](UString& text) { text.erase(pos, npos); },
      [pos](UString& text) { static_cast<void>(text.substr(pos, 0)); },
      [pos](UString& text) { static_cast<void>(text.substr(pos, npos)); },
  };
}

TEST(UString, APositionBeyondTheEndIsRefusedAndChangesNothing) {
  for (unsigned int const pos : {4U, 5U, 1000U, 0x80000000U, npos - 1, npos}) {
    for (auto const& call : calls_at(pos)) {
      UString text(u"abc");
      EXPECT_THROW(call(text), std::out_of_range);
      EXPECT_EQ(text, u"abc");
    }
  }
}

TEST(UString, APositionAtTheEndIsAccepted) {
  for (auto const& call : calls_at(3)) {
    UString text(u"abc");
    EXPECT_NO_THROW(call(text));
  }
}

TEST(UString, ATextThatWouldBecomeTooLongIsRefusedAndChangesNothing) {
  constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
  UString text(u"abc");
  EXPECT_THROW(text.append(u"x", most), std::length_error);
  EXPECT_THROW(text.append(u"x", std::size_t{npos}), std::length_error);
  EXPECT_THROW(text.append(u"x", std::size_t{UString::max_length} - 2), std::length_error);
  EXPECT_THROW(UString(u"x", most), std::length_error);
  EXPECT_THROW(UString(u"x", std::size_t{UString::max_length} + 1), std::length_error);
  EXPECT_THROW(text.reserve(npos), std::length_error);
  EXPECT_EQ(text, u"abc");
}

TEST(UString, ClearedIsEmpty) {
  UString text(u"abc");
  text.clear();
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(text, u"");
  EXPECT_EQ(text.data()[0], 0);
}

TEST(UString, FindsTheFirstPlaceOfATextAtOrAfterAPosition) {
  UString const text(u"abcabc");
  UString const wanted(u"bc");
  EXPECT_EQ(text.find(wanted, 0), 1U);
  EXPECT_EQ(text.find(wanted, 1), 1U);
  EXPECT_EQ(text.find(wanted, 2), 4U);
  EXPECT_EQ(text.find(wanted, 4), 4U);
  EXPECT_EQ(text.find(wanted, 5), npos);
  EXPECT_EQ(text.find(text, 0), 0U);
}

TEST(UString, FindsTheFirstPlaceOfAUnitAtOrAfterAPosition) {
  UString const text(u"ab\0ab", 5);
  EXPECT_EQ(text.find(unit(u'b'), 0), 1U);
  EXPECT_EQ(text.find(unit(u'b'), 1), 1U);
  EXPECT_EQ(text.find(unit(u'b'), 2), 4U);
  EXPECT_EQ(text.find(unit(0), 0), 2U);
  EXPECT_EQ(text.find(unit(u'a'), 4), npos);
}

TEST(UString, FindsNothingWhereThereIsNothing) {
  EXPECT_EQ(npos, std::numeric_limits<unsigned int>::max());
  UString const text(u"abc");
  for (unsigned int const from : {0U, 3U, 4U, npos - 1, npos}) {
    EXPECT_EQ(text.find(UString(u"x"), from), npos);
    EXPECT_EQ(text.find(UString(u"abcd"), from), npos);
    EXPECT_EQ(text.find(unit(u'x'), from), npos);
    EXPECT_EQ(text.find(unit(0), from), npos);
  }
  EXPECT_EQ(UString().find(unit(u'x'), 0), npos);
}

TEST(UString, FindsTheEmptyTextWhereTheSearchBegins) {
  UString const text(u"abc");
  for (unsigned int from = 0; from <= 3; ++from) EXPECT_EQ(text.find(UString(), from), from);
  EXPECT_EQ(text.find(UString(), 4), npos);
  EXPECT_EQ(text.find(UString(), npos), npos);
  EXPECT_EQ(UString().find(UString(), 0), 0U);
}

TEST(UString, FindsTextsWithZerosInThem) {
  UString const text(u"a\0b\0c", 5);
  EXPECT_EQ(text.find(UString(u"\0c", 2), 0), 3U);
  EXPECT_EQ(text.find(UString(u"\0d", 2), 0), npos);
}

TEST(UString, FindsLoneSurrogatesInsidePairs) {
  EXPECT_EQ(UString(u"x\U0001F600").find(unit(u'\xDE00'), 0), 2U);
}

// In ascending order by code units, in which the supplementary characters come before U+E000.
std::vector<UString> ascending_texts() {
  return {
      UString(),
      UString(u"\0", 1),
      UString(u"\0\0", 2),
      UString(u"A"),
      UString(u"AB"),
      UString(u"a"),
      UString(u"a\0", 2),
      UString(u"a\0b", 3),
      UString(u"aa"),
      UString(u"b"),
      UString(u"\u00e9"),
      text_of({u'\xD800'}),
      UString(u"\U00010000"),
      UString(u"\U0010FFFF"),
      text_of({u'\xDFFF'}),
      UString(u"\uE000"),
      UString(u"\uFFFF"),
      UString(u"\uFFFF\uFFFF"),
  };
}

TEST(UString, ComparesByCodeUnits) {
  std::vector<UString> const texts = ascending_texts();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t k = 0; k < texts.size(); ++k) {
      int const expected = (i > k) - (i < k);
      EXPECT_EQ(sign(texts[i].compare(texts[k])), expected) << i << ", " << k;
      EXPECT_EQ(texts[i] == texts[k], expected == 0);
      EXPECT_EQ(texts[i] != texts[k], expected != 0);
      EXPECT_EQ(texts[i] < texts[k], expected < 0);
    }
  }
}

TEST(UString, ComparesWithAPlainTextAsWithTheTextMadeOfIt) {
  std::u16string const plain[] = {u"", u"a", u"aa", u"b", u"\u00e9", u"\U00010000", u"\uFFFF"};
  for (UString const& text : ascending_texts()) {
    for (std::u16string const& other : plain) {
      int const expected = sign(text.compare(text_of(other)));
      EXPECT_EQ(sign(text.compare(other.c_str())), expected) << text;
      EXPECT_EQ(text == other.c_str(), expected == 0);
      EXPECT_EQ(other.c_str() == text, expected == 0);
      EXPECT_EQ(text != other.c_str(), expected != 0);
      EXPECT_EQ(other.c_str() != text, expected != 0);
      EXPECT_EQ(text < other.c_str(), expected < 0);
      EXPECT_EQ(other.c_str() < text, expected > 0);
    }
  }
}

TEST(UString, ComparesWithANullPointerAsWithTheEmptyText) {
  EXPECT_EQ(UString().compare(null_text), 0);
  EXPECT_GT(UString(u"a").compare(null_text), 0);
  EXPECT_GT(UString(u"\0", 1).compare(null_text), 0);
  EXPECT_TRUE(UString() == null_text);
  EXPECT_TRUE(null_text != UString(u"a"));
  EXPECT_TRUE(null_text < UString(u"a"));
}

TEST(UString, IsAKeyOfOrderedSetsAndMaps) {
  std::vector<UString> const texts = ascending_texts();
  std::set<UString> const ordered(texts.rbegin(), texts.rend());
  EXPECT_EQ(std::vector<UString>(ordered.begin(), ordered.end()), texts);
  std::map<UString, int> numbers;
  for (UString const& text : texts) ++numbers[text];
  EXPECT_EQ(numbers.size(), texts.size());
}

TEST(UString, EqualTextsHashAlikeHoweverTheyCameAbout) {
  std::hash<UString> const hash;
  UString grown;
  grown.reserve(1000);
  grown.append(u"x").append(u"a\0b", 3).erase(0, 1);
  EXPECT_EQ(hash(grown), hash(UString(u"a\0b", 3)));
  EXPECT_EQ(hash(UString()), hash(UString(null_text)));
}

TEST(UString, DifferentTextsSeldomHashAlike) {
  std::hash<UString> const hash;
  std::set<std::size_t> hashes;
  for (char16_t high = 1; high <= 100; ++high) {
    for (char16_t low = 0; low < 100; ++low) hashes.insert(hash(text_of({high, low})));
  }
  EXPECT_GE(hashes.size(), 9900U);
}

TEST(UString, IsAKeyOfUnorderedSets) {
  std::vector<UString> const texts = ascending_texts();
  std::unordered_set<UString> set(texts.begin(), texts.end());
  set.insert(texts.begin(), texts.end());
  EXPECT_EQ(set.size(), texts.size());
  for (UString const& text : texts) EXPECT_EQ(set.count(text), 1U);
  EXPECT_EQ(set.count(UString(u"absent")), 0U);
}

template <class... Manipulators>
std::string printed(UString const& text, Manipulators... manipulators) {
  std::ostringstream out;
  (out << ... << manipulators) << text << '|' << std::setw(2) << 7;
  return out.str();
}

TEST(UString, PrintsAsUtf8) {
  EXPECT_EQ(printed(UString(u"a\u00e9\u20ac\U0001F600")),
            "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80| 7");
  EXPECT_EQ(printed(text_of({u'a', u'\xD800', u'b'})),
            "a\xEF\xBF\xBD"
            "b| 7");
  EXPECT_EQ(printed(UString(u"a\0b", 3)), std::string("a\0b| 7", 6));
}

TEST(UString, PrintsInAFieldOnce) {
  EXPECT_EQ(printed(UString(u"abc"), std::setw(6)), "   abc| 7");
  EXPECT_EQ(printed(UString(u"abc"), std::left, std::setw(6)), "abc   |7 ");
  EXPECT_EQ(printed(UString(u"abc"), std::setfill('*'), std::setw(5)), "**abc|*7");
  EXPECT_EQ(printed(UString(u"abc"), std::setw(2)), "abc| 7");
  EXPECT_EQ(printed(UString(), std::setw(2)), "  | 7");
}

TEST(UString, PrintsNothingOnAStreamThatHasFailed) {
  std::ostringstream out;
  out.setstate(std::ios::failbit);
  out << UString(u"abc");
  EXPECT_EQ(out.str(), "");
}

TEST(UString, MayBeReadFromSeveralThreads) {
  UString const text(u"abc\u00e9\U0001F600 and so on, longer than a small buffer");
  std::string const expected = text.to_utf8();
  std::vector<std::thread> threads;
  std::vector<int> good(8);
  for (int& count : good) {
    threads.emplace_back([&] {
      for (int i = 0; i < 1000; ++i) {
        UString const copy(text);
        count += copy == text && text.find(unit(u'\xDE00'), 0) == 5 && text.to_utf8() == expected;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(good, std::vector<int>(8, 1000));
}

}  // namespace

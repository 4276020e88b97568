#include "tqxml/writer/UnitSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "tqutil/UString.h"

namespace tests {
namespace {

using Unit = Orn::UString::unit_type;
using Units = std::vector<Unit>;

constexpr std::size_t LONGEST = 70;

/// Beyond any text and its place stand units that are looked for: they are not to be found.
template <Unit... WANTED>
class Search {
 public:
  using Subject = Orn::UnitSearch<WANTED...>;

  /// `text` at each place that a block of eight units can have in memory.
  static void expect_as_by_a_plain_loop(Units const& text) {
    for (std::size_t offset = 0; offset < 8; ++offset) expect_at(offset, text);
  }

 private:
  static constexpr Unit FIRST[] = {WANTED...};
  static constexpr Unit UNTOUCHED = 0xABCD;

  static bool is_wanted(Unit unit) {
    return std::find(std::begin(FIRST), std::end(FIRST), unit) != std::end(FIRST);
  }

  static void expect_at(std::size_t offset, Units const& text) {
    Units memory(offset, FIRST[0]);
    memory.insert(memory.end(), text.begin(), text.end());
    memory.insert(memory.end(), 8, FIRST[0]);
    Unit const* const from = memory.data() + offset;
    Unit const* const end = from + text.size();
    Unit const* const place = std::find_if(from, end, is_wanted);
    auto const in_front = static_cast<std::ptrdiff_t>(place - from);

    ASSERT_EQ(Subject::find(from, end) - from, in_front) << text.size() << " at " << offset;
    ASSERT_EQ(Subject::find_singly(from, end) - from, in_front);

    Units copy(offset + text.size() + 8, UNTOUCHED);
    Unit* const to = copy.data() + offset;
    ASSERT_EQ(Subject::copy_until(from, end, to) - from, in_front)
        << text.size() << " at " << offset;
    ASSERT_TRUE(std::equal(from, place, to)) << in_front << " of " << text.size();
    // The room is for all of the text, and nothing more.
    ASSERT_TRUE(std::all_of(copy.data(), to, [](Unit unit) { return unit == UNTOUCHED; }));
    ASSERT_TRUE(std::all_of(to + text.size(), copy.data() + copy.size(),
                            [](Unit unit) { return unit == UNTOUCHED; }));
  }
};

/// Units of which each differs from those near it, and none is looked for.
Units other_units(std::size_t length) {
  Units units;
  for (std::size_t i = 0; i < length; ++i) units.push_back(static_cast<Unit>(0x100 + i));
  return units;
}

TEST(UnitSearch, FindsAUnitAtEachPlaceOfATextOfAnyLength) {
  for (std::size_t length = 0; length <= LONGEST; ++length) {
    for (std::size_t place = 0; place <= length; ++place) {
      Units text = other_units(length);
      if (place < length) text[place] = u'&';
      Search<u'&'>::expect_as_by_a_plain_loop(text);
      ASSERT_FALSE(testing::Test::HasFailure());
    }
  }
}

TEST(UnitSearch, FindsEachOfSeveralUnits) {
  for (Unit const wanted : {u'&', u'<', u'>', u'"', u'\r'}) {
    for (std::size_t length = 1; length <= LONGEST; ++length) {
      for (std::size_t place = 0; place < length; ++place) {
        Units text = other_units(length);
        text[place] = wanted;
        Search<u'&', u'<', u'>', u'"', u'\r'>::expect_as_by_a_plain_loop(text);
        ASSERT_FALSE(testing::Test::HasFailure());
      }
    }
  }
}

TEST(UnitSearch, FindsTheFirstOfThoseThatAreThere) {
  for (std::size_t first = 0; first < LONGEST; ++first) {
    for (std::size_t second = first + 1; second < LONGEST; ++second) {
      for (bool const swapped : {false, true}) {
        Units text = other_units(LONGEST);
        text[first] = swapped ? u'<' : u'&';
        text[second] = swapped ? u'&' : u'<';
        Search<u'&', u'<'>::expect_as_by_a_plain_loop(text);
        ASSERT_FALSE(testing::Test::HasFailure());
      }
    }
  }
}

TEST(UnitSearch, TellsUnitsApartByAllOfTheirBits) {
  for (std::size_t length = 0; length <= LONGEST; ++length) {
    Units text;
    // Each differs from one that is wanted by one bit.
    for (std::size_t i = 0; i < length; ++i) {
      text.push_back(static_cast<Unit>((i % 3 == 0 ? u'&' : 0x7FFE) ^ (1U << i % 16U)));
    }
    std::replace(text.begin(), text.end(), Unit{0x7FFE}, Unit{u'x'});
    Search<u'&', 0x7FFE>::expect_as_by_a_plain_loop(text);
    ASSERT_FALSE(testing::Test::HasFailure());
  }
}

TEST(UnitSearch, FindsTheFirstUnitOfAllAndTheLastBeforeTheHighestBit) {
  for (Unit const wanted : {Unit{0}, Unit{0x7FFF}}) {
    for (std::size_t place = 0; place < LONGEST; ++place) {
      Units text = other_units(LONGEST);
      text[place] = wanted;
      // The same but for the highest bit.
      if (place > 0) text[place - 1] = static_cast<Unit>(wanted ^ 0x8000U);
      Search<0, 0x7FFF>::expect_as_by_a_plain_loop(text);
      ASSERT_FALSE(testing::Test::HasFailure());
    }
  }
}

TEST(UnitSearch, OfNothingIsItsEnd) {
  using Subject = Orn::UnitSearch<u'&'>;
  Unit const* const none = nullptr;
  EXPECT_EQ(Subject::find(none, none), none);
  EXPECT_EQ(Subject::copy_until(none, none, nullptr), none);
}

}  // namespace
}  // namespace tests

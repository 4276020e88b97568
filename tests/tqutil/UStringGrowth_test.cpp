#include <gtest/gtest.h>

#include <type_traits>

#include "tqutil/UString.h"

namespace {

using Orn::UString;

constexpr unsigned int MANY = 1U << 20;
/// Doublings that lead from one unit to MANY.
constexpr int DOUBLINGS = 20;

/// Counts how often a text gets another buffer.
class Watch {
 public:
  explicit Watch(UString const& text) : text_(text) { look(); }

  void look() {
    if (text_.data() == data_ && text_.capacity() == capacity_) return;
    data_ = text_.data();
    capacity_ = text_.capacity();
    ++buffers_;
  }

  int buffers() const { return buffers_; }

 private:
  UString const& text_;
  UString::unit_type const* data_ = nullptr;
  unsigned int capacity_ = 0;
  int buffers_ = 0;
};

template <class Prepare>
int buffers_used_by_many_appends(Prepare prepare) {
  UString text;
  Watch watch(text);
  for (unsigned int i = 0; i < MANY; ++i) {
    prepare(text);
    watch.look();
    text.append(static_cast<UString::unit_type>('a' + i % 26));
    watch.look();
  }
  EXPECT_EQ(text.length(), MANY);
  EXPECT_EQ(text[MANY - 1], 'a' + (MANY - 1) % 26);
  return watch.buffers();
}

TEST(UStringGrowth, ByAppendingDoublesTheBuffer) {
  EXPECT_LE(buffers_used_by_many_appends([](UString&) {}), DOUBLINGS + 1);
}

TEST(UStringGrowth, ByReservingAFixedAmountMoreDoublesTheBuffer) {
  auto const keep_100_spare = [](UString& text) {
    if (text.capacity() - text.length() < 100) text.reserve(text.capacity() + 2048);
  };
  EXPECT_LE(buffers_used_by_many_appends(keep_100_spare), DOUBLINGS + 1);
}

TEST(UStringGrowth, ByReservingOneUnitMoreDoublesTheBuffer) {
  auto const make_room_for_one = [](UString& text) { text.reserve(text.length() + 1); };
  EXPECT_LE(buffers_used_by_many_appends(make_room_for_one), DOUBLINGS + 1);
}

TEST(UStringGrowth, ByAppendingPiecesOfAnyKindDoublesTheBuffer) {
  UString const piece(u"0123456789");
  UString text;
  Watch watch(text);
  for (int i = 0; i < 20000; ++i) {
    text.append(piece).append(piece.data()).append(u"0123456789").append(u"0123456789", 10);
    watch.look();
  }
  EXPECT_EQ(text.length(), 800000U);
  EXPECT_LE(watch.buffers(), DOUBLINGS + 1);
}

TEST(UStringGrowth, AReservedCapacityIsReported) {
  for (unsigned int units = 0; units < 5000; units += 7) {
    UString text;
    text.reserve(units);
    EXPECT_GE(text.capacity(), units);
    EXPECT_TRUE(text.empty());
  }
}

TEST(UStringGrowth, AReservedCapacityIsUsedWithoutAnotherBuffer) {
  UString text;
  text.reserve(5000);
  Watch watch(text);
  for (unsigned int i = 0; i < 5000; ++i) text.append(UString::unit_type{'x'});
  watch.look();
  EXPECT_EQ(watch.buffers(), 1);
}

TEST(UStringGrowth, AReserveThatGrowsAtLeastDoublesTheCapacity) {
  UString text;
  while (text.capacity() < MANY) {
    unsigned int const before = text.capacity();
    text.reserve(before + 1);
    ASSERT_GE(text.capacity(), 2 * before);
  }
}

TEST(UStringGrowth, AReserveOfNoMoreThanThereIsDoesNothing) {
  UString text(u"abc");
  text.reserve(1000);
  Watch watch(text);
  for (unsigned int const units : {0U, 1U, 3U, 999U, 1000U, text.capacity()}) {
    text.reserve(units);
    watch.look();
  }
  EXPECT_EQ(watch.buffers(), 1);
  EXPECT_EQ(text, u"abc");
}

TEST(UStringGrowth, ReservingKeepsTheText) {
  UString text(u"a\0b", 3);
  text.reserve(10000);
  EXPECT_EQ(text, UString(u"a\0b", 3));
  EXPECT_EQ(text[3], 0);
}

TEST(UStringGrowth, ClearingKeepsTheCapacity) {
  UString text(u"abc");
  text.reserve(1000);
  Watch watch(text);
  text.clear();
  watch.look();
  EXPECT_EQ(watch.buffers(), 1);
  EXPECT_GE(text.capacity(), 1000U);
}

}  // namespace

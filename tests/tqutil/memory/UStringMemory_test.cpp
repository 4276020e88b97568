#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "tests/tqutil/memory/Heap.h"
#include "tqutil/UString.h"

namespace {

using Orn::UString;
using tests::Heap;

constexpr char16_t long_text[] = u"a text that is too long for any small buffer inside a string";

/// The blocks that ICU has given out since this object was made.
class IcuBlocks {
 public:
  long live() const { return Heap::icu.live() - live_; }
  long taken() const { return Heap::icu.taken() - taken_; }

 private:
  long live_ = Heap::icu.live();
  long taken_ = Heap::icu.taken();
};

TEST(UStringMemory, OfAnObjectOnTheHeapIsIcus) {
  IcuBlocks const blocks;
  auto* const text = new UString(u"x");
  EXPECT_EQ(blocks.live(), 1);
  EXPECT_EQ(*text, u"x");
  delete text;
  EXPECT_EQ(blocks.live(), 0);
}

TEST(UStringMemory, OfAnArrayOnTheHeapIsIcus) {
  IcuBlocks const blocks;
  auto* const texts = new UString[3];
  EXPECT_EQ(blocks.live(), 1);
  texts[2].append(long_text);
  delete[] texts;
  EXPECT_EQ(blocks.live(), 0);
}

TEST(UStringMemory, OfAnObjectHeldByAPointerClassIsIcus) {
  IcuBlocks const blocks;
  auto text = std::make_unique<UString>(u"x");
  EXPECT_EQ(blocks.live(), 1);
  text.reset();
  EXPECT_EQ(blocks.live(), 0);
}

TEST(UStringMemory, OfAnObjectAskedForWithoutExceptionsIsIcus) {
  IcuBlocks const blocks;
  std::unique_ptr<UString> text(new (std::nothrow) UString(u"x"));
  EXPECT_EQ(blocks.live(), 1);
  EXPECT_EQ(*text, u"x");
  text.reset();
  EXPECT_EQ(blocks.live(), 0);
}

TEST(UStringMemory, OfAnArrayAskedForWithoutExceptionsIsIcus) {
  IcuBlocks const blocks;
  std::unique_ptr<UString[]> texts(new (std::nothrow) UString[3]);
  EXPECT_EQ(blocks.live(), 1);
  texts[2].append(long_text);
  texts.reset();
  EXPECT_EQ(blocks.live(), 0);
}

TEST(UStringMemory, OfAnObjectInAGivenPlaceIsThatPlace) {
  IcuBlocks const blocks;
  alignas(UString) unsigned char place[sizeof(UString)];
  auto* const text = new (place) UString(u"x");
  EXPECT_EQ(static_cast<void*>(text), place);
  text->~UString();
  EXPECT_EQ(blocks.taken(), 0);
}

TEST(UStringMemory, OfAnObjectThatIsAValueIsNotIcus) {
  IcuBlocks const blocks;
  std::vector<UString> const texts(10, UString(long_text));
  EXPECT_EQ(blocks.taken(), 0);
}

TEST(UStringMemory, ThatIcuRefusesRaisesBadAlloc) {
  Heap::icu.refuse_after(0);
  EXPECT_THROW(std::make_unique<UString>(u"x"), std::bad_alloc);
  EXPECT_TRUE(Heap::icu.stop_refusing());
  Heap::icu.refuse_after(0);
  EXPECT_THROW(std::make_unique<UString[]>(3), std::bad_alloc);
  EXPECT_TRUE(Heap::icu.stop_refusing());
}

TEST(UStringMemory, ThatIcuRefusesIsNullWhenAskedForWithoutExceptions) {
  Heap::icu.refuse_after(0);
  std::unique_ptr<UString> const text(new (std::nothrow) UString(u"x"));
  EXPECT_TRUE(Heap::icu.stop_refusing());
  EXPECT_EQ(text, nullptr);
}

TEST(UStringMemory, OfAnObjectWhoseTextFindsNoRoomIsGivenBack) {
  IcuBlocks const blocks;
  Heap::cpp.refuse_after(0);
  EXPECT_THROW(std::make_unique<UString>(long_text), std::bad_alloc);
  EXPECT_TRUE(Heap::cpp.stop_refusing());
  Heap::cpp.refuse_after(0);
  EXPECT_THROW(static_cast<void>(new (std::nothrow) UString(long_text)), std::bad_alloc);
  EXPECT_TRUE(Heap::cpp.stop_refusing());
  Heap::cpp.refuse_after(0);
  EXPECT_THROW(static_cast<void>(new (std::nothrow) UString[2]{u"x", long_text}), std::bad_alloc);
  EXPECT_TRUE(Heap::cpp.stop_refusing());
  EXPECT_EQ(blocks.taken(), 3);
  EXPECT_EQ(blocks.live(), 0);
}

TEST(UStringMemory, OfAGivenPlaceIsLeftAloneWhenTheTextFindsNoRoom) {
  IcuBlocks const blocks;
  alignas(UString) unsigned char place[sizeof(UString)];
  Heap::cpp.refuse_after(0);
  EXPECT_THROW(static_cast<void>(new (place) UString(long_text)), std::bad_alloc);
  EXPECT_TRUE(Heap::cpp.stop_refusing());
  EXPECT_EQ(blocks.taken(), 0);
}

TEST(UStringMemory, GivenBackOfNothingIsNothing) {
  IcuBlocks const blocks;
  UString::operator delete(nullptr);
  UString::operator delete[](nullptr);
  UString::operator delete(nullptr, std::nothrow);
  EXPECT_EQ(blocks.live(), 0);
}

// Each of these needs memory when the text is short and the other long.
std::vector<std::function<void(UString&, UString const&)>> growing_calls() {
  return {
      [](UString& text, UString const& other) { text = other; },
      [](UString& text, UString const& other) { text.assign(other); },
      [](UString& text, UString const& other) { text.append(other); },
      [](UString& text, UString const& other) { text.append(other.data()); },
      [](UString& text, UString const&) { text.append(long_text); },
      [](UString& text, UString const&) { text.append(long_text, 50); },
      [](UString& text, UString const& other) { text.insert(1, other); },
      [](UString& text, UString const& other) { text.replace(1, 1, other); },
      [](UString& text, UString const&) { text.reserve(1000); },
  };
}

TEST(UStringMemory, ThatIsRefusedToAChangeLeavesTheTextAsItWas) {
  UString const other(long_text);
  for (auto const& call : growing_calls()) {
    UString text(u"abc");
    long const refusals =
        tests::refuse_each_allocation([&] { call(text, other); }, [&] { EXPECT_EQ(text, u"abc"); });
    EXPECT_GE(refusals, 1);
    EXPECT_NE(text.capacity(), UString(u"abc").capacity());
  }
}

TEST(UStringMemory, ThatIsRefusedToAConversionRaisesBadAllocAndLosesNothing) {
  UString const text(long_text);
  std::string const bytes = text.to_utf8();
  std::vector<std::function<void()>> const calls = {
      [&] { text.to_utf8(); },
      [&] { UString(text).utf8_str(); },
      [&] { UString::from_utf8(bytes); },
      [&] { text.substr(1, 50); },
      [&] { UString const copy(text); },
      [&] { UString const copy(text.data()); },
  };
  for (auto const& call : calls) {
    long const live = Heap::cpp.live();
    EXPECT_GE(tests::refuse_each_allocation(call, [] {}), 1);
    EXPECT_EQ(Heap::cpp.live(), live);
  }
  EXPECT_EQ(text, long_text);
}

TEST(UStringMemory, IsNotTakenToMoveCompareAndSearch) {
  UString text(long_text);
  UString other(long_text);
  UString const wanted(u"inside a string");
  long const taken = Heap::cpp.taken();
  UString moved(std::move(text));
  text = std::move(moved);
  EXPECT_TRUE(text == other);
  EXPECT_EQ(text.compare(long_text), 0);
  EXPECT_EQ(text.find(wanted, 0), text.length() - wanted.length());
  EXPECT_EQ(std::hash<UString>()(text), std::hash<UString>()(other));
  text.erase(3, 10);
  text.clear();
  EXPECT_EQ(Heap::cpp.taken(), taken);
}

}  // namespace

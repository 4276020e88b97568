#include "tqxml/foundation/TextBuffer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tqutil/UString.h"

namespace {

using namespace std::string_view_literals;
using Orn::TextBuffer;
using Orn::UString;
using Unit = TextBuffer::Unit;

/// No two of them next to each other, or a block apart, are the same.
std::u16string units_of(std::size_t length, std::size_t seed = 0) {
  std::u16string units;
  for (std::size_t i = 0; i < length; ++i) {
    units += static_cast<char16_t>(u'!' + (i * 7 + seed * 31) % 60000);
  }
  return units;
}

UString text_of(std::u16string const& units) { return UString(units.data(), units.size()); }

std::u16string model_of(UString const& text) {
  return std::u16string(text.data(), text.data() + text.length());
}

std::u16string model_of(TextBuffer const& buffer) { return model_of(buffer.text()); }

using Append = void (*)(TextBuffer&, std::u16string const&);

/// Each way to append a text.
Append const ways[] = {
    [](TextBuffer& to, std::u16string const& units) { to.append(std::u16string_view(units)); },
    [](TextBuffer& to, std::u16string const& units) { to.append(text_of(units)); },
    [](TextBuffer& to, std::u16string const& units) { to.append(units.data(), units.size()); },
    [](TextBuffer& to, std::u16string const& units) {
      UString const text = text_of(units);
      to.append(text.data(), text.length());
    },
    [](TextBuffer& to, std::u16string const& units) {
      to.append(text_of(u"in front" + units + u"behind"), 8,
                static_cast<unsigned int>(units.size()));
    },
    [](TextBuffer& to, std::u16string const& units) {
      TextBuffer::Pen pen = to.pen_for(units.size());
      for (char16_t const unit : units) pen.put(Unit{unit});
      to.end_at(pen);
    },
};

TEST(TextBuffer, IsEmptyAtFirst) {
  TextBuffer const buffer;
  EXPECT_TRUE(buffer.empty());
  EXPECT_EQ(buffer.length(), 0U);
  EXPECT_EQ(buffer.text(), u"");
  EXPECT_EQ(buffer.to_utf8(), "");
}

TEST(TextBuffer, WithoutMemoryTakesATextOfAnyLength) {
  for (Append const append : ways) {
    for (std::size_t length = 0; length <= 200; ++length) {
      TextBuffer buffer;
      append(buffer, units_of(length));
      ASSERT_EQ(buffer.length(), length);
      ASSERT_EQ(buffer.empty(), length == 0);
      ASSERT_EQ(model_of(buffer), units_of(length)) << length;
    }
  }
}

TEST(TextBuffer, HoldsAllThatWasAppendedInItsOrder) {
  for (Append const append : ways) {
    for (bool const rising : {true, false}) {
      TextBuffer buffer;
      std::u16string model;
      for (std::size_t i = 0; i <= 200; ++i) {
        std::u16string const units = units_of(rising ? i : 200 - i, i);
        append(buffer, units);
        model += units;
        ASSERT_EQ(buffer.length(), model.size());
        ASSERT_EQ(model_of(buffer), model) << i;
      }
    }
  }
}

TEST(TextBuffer, TakesATextOfAnyLengthWhereItsRoomEnds) {
  for (Append const append : ways) {
    for (std::size_t length = 0; length <= 200; ++length) {
      for (std::size_t spare = 0; spare <= 9; ++spare) {
        TextBuffer buffer;
        buffer.make_room(40);
        std::u16string const front = units_of(buffer.capacity() - spare, 5);
        buffer.append(front.data(), front.size());
        std::u16string const model = front + units_of(length, 6);
        append(buffer, units_of(length, 6));
        ASSERT_EQ(model_of(buffer), model) << length << " with room for " << spare;
      }
    }
  }
}

TEST(TextBuffer, TakesSeveralTextsThatShareTheRoomMadeForThem) {
  for (std::size_t first = 0; first <= 40; ++first) {
    for (std::size_t second = 0; second <= 40; ++second) {
      UString const a = text_of(units_of(first, 1)), b = text_of(units_of(second, 2));
      TextBuffer buffer;
      TextBuffer::Pen pen = buffer.pen_for(first + 1 + second + 2);
      buffer.end_at(pen.put(a).put(Unit{u':'}).put(b).put(u"=\""sv));
      ASSERT_EQ(model_of(buffer), units_of(first, 1) + u":" + units_of(second, 2) + u"=\"");
    }
  }
}

TEST(TextBuffer, HasAPlaceForNothingAtAll) {
  TextBuffer buffer;
  buffer.end_at(buffer.pen_for(0).put(UString()));
  EXPECT_TRUE(buffer.empty());
  buffer.append(UString(u"x"));
  EXPECT_EQ(buffer.text(), u"x");
}

TEST(TextBuffer, IsNotChangedByAPenThatIsNotHandedBack) {
  TextBuffer buffer;
  buffer.append(UString(u"text"));
  buffer.pen_for(20).put(UString(u" that is given up"));
  EXPECT_EQ(buffer.text(), u"text");
}

TEST(TextBuffer, TakesZerosAndLoneSurrogates) {
  std::u16string const units = {u'\0', u'\xDC00', u'\0', u'\xD800'};
  for (Append const append : ways) {
    TextBuffer buffer;
    append(buffer, units);
    EXPECT_EQ(model_of(buffer), units);
    EXPECT_EQ(buffer.to_utf8(), std::string("\0\xEF\xBF\xBD\0\xEF\xBF\xBD", 8));
  }
}

TEST(TextBuffer, InsertsInFrontOfAnyPlaceAndLeavesTheRestAsItIs) {
  for (std::size_t length : {0U, 1U, 5U, 7U, 8U, 9U, 20U, 47U, 48U, 100U}) {
    for (std::size_t pos = 0; pos <= length; ++pos) {
      for (std::size_t inserted = 0; inserted <= 60; ++inserted) {
        std::u16string model = units_of(length, 1);
        TextBuffer buffer;
        buffer.append(model.data(), model.size());
        UString const text = text_of(units_of(inserted, 2));
        buffer.insert(pos, inserted, [&](TextBuffer::Pen pen) { pen.put(text); });
        model.insert(pos, units_of(inserted, 2));
        ASSERT_EQ(model_of(buffer), model) << inserted << " at " << pos << " of " << length;
      }
    }
  }
}

TEST(TextBuffer, InsertsSeveralTextsAtOnce) {
  for (std::size_t behind = 0; behind <= 20; ++behind) {
    TextBuffer buffer;
    std::u16string const rest = units_of(behind, 3);
    buffer.append(std::u16string_view(u"<r"));
    buffer.append(rest.data(), rest.size());
    buffer.insert(2, 10, [](TextBuffer::Pen pen) {
      pen.put(u" "sv)
          .put(UString(u"x"))
          .put(u"=\""sv)
          .put(UString(u"uri"))
          .put(u"\""sv)
          .put(UString(u"!"))
          .put(u"?"sv);
    });
    ASSERT_EQ(model_of(buffer), u"<r x=\"uri\"!?" + rest);
  }
}

TEST(TextBuffer, IsCutAndGoesOnFromThere) {
  std::u16string const model = units_of(100);
  for (std::size_t pos = 0; pos <= 100; ++pos) {
    TextBuffer buffer;
    buffer.append(model.data(), model.size());
    std::size_t const room = buffer.capacity();
    buffer.cut(pos);
    EXPECT_EQ(buffer.length(), pos);
    EXPECT_EQ(buffer.capacity(), room);
    ASSERT_EQ(model_of(buffer), model.substr(0, pos));
    buffer.append(UString(u"again"));
    ASSERT_EQ(model_of(buffer), model.substr(0, pos) + u"again");
  }
}

TEST(TextBuffer, GivesTheTextFromAnyPlaceOn) {
  std::u16string const model = units_of(60);
  TextBuffer buffer;
  buffer.append(model.data(), model.size());
  for (std::size_t pos = 0; pos <= model.size(); ++pos) {
    EXPECT_EQ(model_of(buffer.text(pos)), model.substr(pos)) << pos;
  }
}

TEST(TextBuffer, CopiedGoesOnIndependently) {
  for (std::size_t length = 0; length <= 120; ++length) {
    TextBuffer buffer;
    buffer.append(text_of(units_of(length)));
    TextBuffer copy(buffer);
    copy.append(UString(u"copy"));
    buffer.append(UString(u"original"));
    ASSERT_EQ(model_of(copy), units_of(length) + u"copy");
    ASSERT_EQ(model_of(buffer), units_of(length) + u"original");
  }
}

TEST(TextBuffer, CopiedWithoutMemoryIsEmpty) {
  TextBuffer const none;
  TextBuffer copy(none);
  EXPECT_TRUE(copy.empty());
  EXPECT_EQ(copy.text(), u"");
  copy.append(UString(u"x"));
  EXPECT_EQ(copy.text(), u"x");
}

TEST(TextBuffer, MovedLeavesAnEmptyOneThatCanBeUsed) {
  TextBuffer buffer;
  buffer.append(UString(u"a text that is moved"));
  TextBuffer moved(std::move(buffer));
  EXPECT_EQ(moved.text(), u"a text that is moved");
  TextBuffer& left = buffer;
  EXPECT_TRUE(left.empty());
  left.append(UString(u"new"));
  EXPECT_EQ(left.text(), u"new");
  EXPECT_EQ(moved.text(), u"a text that is moved");
}

TEST(TextBuffer, TakesTheTextOfAnotherByAssignment) {
  TextBuffer a, b;
  a.append(UString(u"the text of a"));
  b.append(UString(u"b"));
  b = a;
  EXPECT_EQ(b.text(), u"the text of a");
  a.append(UString(u" and more"));
  EXPECT_EQ(b.text(), u"the text of a");
  b = std::move(a);
  EXPECT_EQ(b.text(), u"the text of a and more");
  b = TextBuffer();
  EXPECT_TRUE(b.empty());
  EXPECT_EQ(b.capacity(), 0U);
}

TEST(TextBuffer, MayBeAssignedToItself) {
  TextBuffer buffer;
  buffer.append(UString(u"the text of the buffer"));
  TextBuffer& same = buffer;
  buffer = same;
  EXPECT_EQ(buffer.text(), u"the text of the buffer");
  buffer.append(UString(u"!"));
  EXPECT_EQ(buffer.text(), u"the text of the buffer!");
}

TEST(TextBuffer, GrowsAndKeepsItsText) {
  TextBuffer buffer;
  std::u16string model;
  std::size_t growths = 0;
  while (model.size() < 1000000) {
    std::size_t const room = buffer.capacity();
    std::u16string const units = units_of(997, model.size());
    buffer.append(units.data(), units.size());
    model += units;
    if (buffer.capacity() == room) continue;
    ++growths;
    ASSERT_EQ(model_of(buffer), model);
  }
  EXPECT_EQ(model_of(buffer), model);
  EXPECT_LE(growths, 20U);
}

TEST(TextBuffer, HasTheRoomThatWasMade) {
  for (std::size_t const units : {0U, 1U, 47U, 48U, 49U, 1000U, 100000U}) {
    TextBuffer buffer;
    buffer.append(UString(u"text"));
    buffer.make_room(units);
    EXPECT_GT(buffer.spare_room(), units);
    std::size_t const room = buffer.capacity();
    std::u16string const filling(units, u'x');
    buffer.append(filling.data(), units);
    EXPECT_EQ(buffer.capacity(), room);
    EXPECT_EQ(model_of(buffer), u"text" + filling);
  }
}

TEST(TextBuffer, RefusesMoreThanAnyUStringHoldsAndKeepsItsText) {
  TextBuffer buffer;
  EXPECT_THROW(buffer.make_room(UString::max_length), std::length_error);
  EXPECT_THROW(buffer.make_room(static_cast<std::size_t>(-1)), std::length_error);
  EXPECT_TRUE(buffer.empty());
  buffer.append(UString(u"text"));
  EXPECT_THROW(buffer.make_room(UString::max_length - 4U), std::length_error);
  EXPECT_THROW(buffer.pen_for(UString::max_length), std::length_error);
  EXPECT_THROW(buffer.pen_for(static_cast<std::size_t>(-1)), std::length_error);
  EXPECT_THROW(buffer.insert(0, static_cast<std::size_t>(-1), [](TextBuffer::Pen) { FAIL(); }),
               std::length_error);
  EXPECT_EQ(buffer.text(), u"text");
  buffer.append(UString(u"!"));
  EXPECT_EQ(buffer.text(), u"text!");
}

#if SIZE_MAX == UINT32_MAX
TEST(TextBuffer, IsABadAllocWhereAddressesEndAndKeepsItsText) {
  // Four gibibytes in all, of which a part is taken already.
  std::vector<TextBuffer> buffers(4);
  std::size_t failures = 0;
  for (TextBuffer& buffer : buffers) {
    buffer.append(UString(u"text"));
    try {
      buffer.make_room(std::size_t{1} << 29U);
    } catch (std::bad_alloc const&) {
      ++failures;
    }
  }
  EXPECT_GT(failures, 0U);
  for (TextBuffer& buffer : buffers) {
    EXPECT_EQ(buffer.text(), u"text");
    buffer.append(UString(u"!"));
    EXPECT_EQ(buffer.text(), u"text!");
  }
}
#endif

}  // namespace

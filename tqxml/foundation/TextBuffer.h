#ifndef TQXML_FOUNDATION_TEXTBUFFER_H
#define TQXML_FOUNDATION_TEXTBUFFER_H

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "tqutil/UString.h"

namespace Orn {

/// A text that grows at its end: UTF-16 in one block of memory. Unlike a string it gives out room
/// that nobody has filled yet, and a large block grows without being copied. For this library
/// alone.
class TextBuffer {
 public:
  using Unit = UString::unit_type;

  TextBuffer() noexcept = default;
  TextBuffer(TextBuffer const& other);
  TextBuffer(TextBuffer&& other) noexcept { swap(other); }
  TextBuffer& operator=(TextBuffer other) noexcept {
    swap(other);
    return *this;
  }
  ~TextBuffer();

  std::size_t length() const noexcept { return static_cast<std::size_t>(end_ - begin_); }

  bool empty() const noexcept { return end_ == begin_; }
  std::size_t capacity() const noexcept { return static_cast<std::size_t>(limit_ - begin_); }
  /// How many units fit before the block of memory must grow.
  std::size_t spare_room() const noexcept { return static_cast<std::size_t>(limit_ - end_); }

  /// Writes into room that has been made before, without looking after it.
  class Pen {
   public:
    Pen& put(Unit unit) noexcept {
      *to_++ = unit;
      return *this;
    }
    /// For the fixed pieces of markup.
    Pen& put(std::u16string_view text) noexcept {
      std::memcpy(to_, text.data(), text.size() * sizeof(Unit));
      to_ += text.size();
      return *this;
    }
    /// Most texts are names, for which a call would take longer than the copy.
    Pen& put(UString const& text) noexcept {
      put_block(text.data());
      if (text.length() > BLOCK) put_more(text.data(), text.length());
      to_ += text.length();
      return *this;
    }
    /// Puts a text up to the first unit that `Search`, a UnitSearch, looks for, and gives its
    /// place.
    template <class Search>
    Unit const* put_until(UString const& text) noexcept {
      static_assert(Search::BLOCK == BLOCK, "a short text is read and put as a whole block");
      Unit const* const from = text.data();
      Unit const* const end = from + text.length();
      Unit const* const place = text.length() < BLOCK ? Search::copy_short_until(from, end, to_)
                                                      : Search::copy_until(from, end, to_);
      to_ += place - from;
      return place;
    }

   private:
    friend class TextBuffer;
    /// What can be copied from any UString, and to the end of any room.
    static constexpr std::size_t BLOCK = UString::least_capacity + 1;
    /// From here on a call pays.
    static constexpr std::size_t LONG = 128;

    explicit Pen(Unit* to) noexcept : to_(to) {}

    void put_block(Unit const* text) noexcept { std::memcpy(to_, text, BLOCK * sizeof(Unit)); }
    /// What stands behind the first block. The last block may overlap the one before.
    void put_more(Unit const* text, std::size_t units) noexcept {
      std::size_t done = BLOCK;
      if (units < LONG) {
        for (; units - done > BLOCK; done += BLOCK) copy_block(done, text);
        copy_block(units - BLOCK, text);
      } else {
        std::memcpy(to_ + done, text + done, (units - done) * sizeof(Unit));
      }
    }
    void copy_block(std::size_t at, Unit const* text) noexcept {
      std::memcpy(to_ + at, text + at, BLOCK * sizeof(Unit));
    }

    Unit* to_;
  };

  /// A pen at the end of the text, with room for `units` units. What it writes belongs to the text
  /// once it is given to `end_at`. Raises std::length_error for a text that no UString can hold,
  /// std::bad_alloc when memory runs out.
  Pen pen_for(std::size_t units) {
    make_room(units);
    return Pen(end_);
  }
  void end_at(Pen const& pen) noexcept { end_ = pen.to_; }

  /// Raises as `pen_for` does, and leaves the text as it was. There is always room for one unit
  /// more, so that a pen has a place even for the empty text.
  void make_room(std::size_t units) {
    if (units >= spare_room()) grow(units);
  }

  void append(UString const& text) { end_at(pen_for(text.length()).put(text)); }
  void append(std::u16string_view text) { end_at(pen_for(text.size()).put(text)); }
  template <class AnyUnit>
  void append(AnyUnit const* text, std::size_t units) {
    static_assert(sizeof(AnyUnit) == sizeof(Unit));
    make_room(units);
    if (units != 0) std::memcpy(end_, text, units * sizeof(Unit));
    end_ += units;
  }
  void append(UString const& text, unsigned int pos, unsigned int units) {
    append(text.data() + pos, units);
  }
  /// Inserts in front of `pos` the `units` units that `fill` writes with the pen it is given.
  template <class Fill>
  void insert(std::size_t pos, std::size_t units, Fill fill) {
    make_room(units);
    Unit* const place = begin_ + pos;
    std::memmove(place + units, place, static_cast<std::size_t>(end_ - place) * sizeof(Unit));
    end_ += units;
    // What the pen puts beyond the end must not stay there.
    std::array<Unit, Pen::BLOCK> behind;
    std::memcpy(behind.data(), place + units, sizeof behind);
    fill(Pen(place));
    std::memcpy(place + units, behind.data(), sizeof behind);
  }
  /// Takes away what stands from `pos` on, and keeps the room.
  void cut(std::size_t pos) noexcept { end_ = begin_ + pos; }

  /// What stands from `pos` on.
  UString text(std::size_t pos = 0) const { return UString(begin_ + pos, length() - pos); }
  std::string to_utf8() const;

 private:
  void swap(TextBuffer& other) noexcept {
    std::swap(begin_, other.begin_);
    std::swap(end_, other.end_);
    std::swap(limit_, other.limit_);
  }
  [[gnu::noinline, gnu::cold]] void grow(std::size_t units);

  Unit* begin_ = nullptr;
  Unit* end_ = nullptr;
  /// Behind it is room for what a pen puts beyond the end of a text.
  Unit* limit_ = nullptr;
};

}  // namespace Orn

#endif

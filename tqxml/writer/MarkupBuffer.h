#ifndef TQXML_WRITER_MARKUPBUFFER_H
#define TQXML_WRITER_MARKUPBUFFER_H

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "tqutil/UString.h"
#include "tqxml/foundation/Export.h"

namespace Orn {

/// The text of a document while it is being written: UTF-16 in one block of memory. Unlike a string
/// it gives out room that nobody has filled yet, and a large block grows without being copied.
/// For the writer alone.
class TQXML_API MarkupBuffer {
 public:
  using Unit = UString::unit_type;

  MarkupBuffer() noexcept = default;
  MarkupBuffer(MarkupBuffer const& other);
  MarkupBuffer& operator=(MarkupBuffer const& other);
  ~MarkupBuffer();

  std::size_t length() const noexcept { return static_cast<std::size_t>(end_ - begin_); }

  /// How many units fit before the block must grow.
  std::size_t spare_room() const noexcept { return static_cast<std::size_t>(limit_ - end_); }

  /// Where the next `units` units go. They belong to the text once `end_at` says so. Raises
  /// std::length_error for a text that no UString can hold, std::bad_alloc when memory runs out.
  Unit* room_for(std::size_t units) {
    if (units > spare_room()) grow(units);
    return end_;
  }
  void end_at(Unit* end) noexcept { end_ = end; }

  void append(Unit const* text, std::size_t units) { end_at(put(room_for(units), text, units)); }
  void append(UString const& text) { append(text.data(), text.length()); }
  void append(UString const& text, unsigned int pos, unsigned int units) {
    append(text.data() + pos, units);
  }
  void append(char16_t const* text, std::size_t units) {
    end_at(put(room_for(units), text, units));
  }
  void append(std::u16string_view text) { append(text.data(), text.size()); }
  void insert(std::size_t pos, MarkupBuffer const& text);
  /// Takes away what stands from `pos` on, and keeps the room.
  void cut(std::size_t pos) noexcept { end_ = begin_ + pos; }

  /// What stands from `pos` on.
  UString text(std::size_t pos = 0) const;
  std::string to_utf8() const;

  /// Copies units to where there is room for them, and gives the place behind them.
  template <class AnyUnit>
  static Unit* put(Unit* to, AnyUnit const* text, std::size_t units) noexcept {
    static_assert(sizeof(AnyUnit) == sizeof(Unit));
    if (units != 0) std::memcpy(to, text, units * sizeof(Unit));
    return to + units;
  }

 private:
  void grow(std::size_t units);

  Unit* begin_ = nullptr;
  Unit* end_ = nullptr;
  Unit* limit_ = nullptr;
};

}  // namespace Orn

#endif

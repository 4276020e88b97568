#include "tqxml/foundation/TextBuffer.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace Orn {
namespace {

// What a text stays below: what a UString can hold, and what addresses leave room for.
constexpr std::size_t MAX_LENGTH =
    std::min<std::size_t>(UString::max_length, PTRDIFF_MAX / sizeof(TextBuffer::Unit) - 64);

// In code units: a block of memory is no smaller for fewer.
constexpr std::size_t LEAST_ROOM = 8;

}  // namespace

TextBuffer::TextBuffer(TextBuffer const& other) { append(other.begin_, other.length()); }

// NOLINTNEXTLINE(cppcoreguidelines-no-malloc): goes with the realloc below.
TextBuffer::~TextBuffer() { std::free(begin_); }

std::string TextBuffer::to_utf8() const { return UString::to_utf8(begin_, length()); }

// At least doubles the room, so that a text costs time in proportion to its length. The C library
// can move large blocks by their pages, which no allocator of C++ can do.
void TextBuffer::grow(std::size_t units) {
  std::size_t const used = length();
  if (units >= MAX_LENGTH - used) throw std::length_error("the text is too long");
  std::size_t const doubled = std::max(std::min(capacity(), MAX_LENGTH / 2) * 2, LEAST_ROOM);
  std::size_t const wanted = std::max(used + units + 1, doubled);
  // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
  void* const block = std::realloc(begin_, (wanted + Pen::BLOCK) * sizeof(Unit));
  if (block == nullptr) throw std::bad_alloc();
  begin_ = static_cast<Unit*>(block);
  end_ = begin_ + used;
  limit_ = begin_ + wanted;
}

}  // namespace Orn

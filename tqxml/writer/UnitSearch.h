#ifndef TQXML_WRITER_UNITSEARCH_H
#define TQXML_WRITER_UNITSEARCH_H

#if defined(__i386__) || defined(__x86_64__)
#include <emmintrin.h>
#define TQXML_SEARCH_WITH_SSE2
#endif

#include <cstddef>
#include <cstring>

#include "tqutil/UString.h"

namespace Orn {

/// Finds the first of a few code units in a text, eight units at a time where the processor can.
template <UString::unit_type... WANTED>
class UnitSearch {
 public:
  using Unit = UString::unit_type;

  /// Units that are looked at together.
  static constexpr std::ptrdiff_t BLOCK = 8;

  /// The place of the first of them, or `end`.
  static Unit const* find(Unit const* from, Unit const* end) noexcept {
#ifdef TQXML_SEARCH_WITH_SSE2
    if (end - from >= BLOCK && has_sse2()) return find_in_blocks(from, end);
#endif
    return find_singly(from, end);
  }

  /// The same, and copies what stands in front of that place to `to`, where there must be room for
  /// all of the text: what is behind it is of no account.
  static Unit const* copy_until(Unit const* from, Unit const* end, Unit* to) noexcept {
#ifdef TQXML_SEARCH_WITH_SSE2
    if (end - from >= BLOCK && has_sse2()) return copy_blocks(from, end, to);
#endif
    while (from != end && !((*from == WANTED) || ...)) *to++ = *from++;
    return from;
  }

  /// As `copy_until`, for a text of less than a block, of which a whole block can be read and for
  /// which there is room for a block.
  static Unit const* copy_short_until(Unit const* from, Unit const* end, Unit* to) noexcept {
#ifdef TQXML_SEARCH_WITH_SSE2
    if (has_sse2()) return copy_part_of_block(from, end, to);
#endif
    return copy_until(from, end, to);
  }

  static Unit const* find_singly(Unit const* from, Unit const* end) noexcept {
    while (from != end && !((*from == WANTED) || ...)) ++from;
    return from;
  }

 private:
#ifdef TQXML_SEARCH_WITH_SSE2
#ifdef __SSE2__
  static constexpr bool has_sse2() noexcept { return true; }
#else
  static bool has_sse2() noexcept { return __builtin_cpu_supports("sse2") != 0; }
#endif

  static constexpr std::ptrdiff_t BLOCKS = 4;

  /// For a text of at least one block.
  [[gnu::target("sse2")]] static Unit const* find_in_blocks(Unit const* from,
                                                            Unit const* end) noexcept {
    while (end - from >= BLOCK * BLOCKS && !is_in_several(from)) from += BLOCK * BLOCKS;
    for (; end - from >= BLOCK; from += BLOCK) {
      if (int const mask = _mm_movemask_epi8(matches(from)); mask != 0) return from + first(mask);
    }
    if (from == end) return end;
    // Of the last block the beginning has been searched, and had none.
    int const mask = _mm_movemask_epi8(matches(end - BLOCK));
    return mask == 0 ? end : end - BLOCK + first(mask);
  }

  /// For a text of at least one block.
  [[gnu::target("sse2")]] static Unit const* copy_blocks(Unit const* from, Unit const* end,
                                                         Unit* to) noexcept {
    for (; end - from > BLOCK; from += BLOCK, to += BLOCK) {
      if (int const mask = copy_block(from, to); mask != 0) return from + first(mask);
    }
    // The last block may overlap the one before.
    int const mask = copy_block(end - BLOCK, to - (BLOCK - (end - from)));
    return mask == 0 ? end : end - BLOCK + first(mask);
  }

  [[gnu::target("sse2")]] static Unit const* copy_part_of_block(Unit const* from, Unit const* end,
                                                                Unit* to) noexcept {
    unsigned int const behind = ~0U << static_cast<unsigned int>(2 * (end - from));
    return from + first(copy_block(from, to) | static_cast<int>(behind));
  }

  [[gnu::target("sse2")]] static int copy_block(Unit const* from, Unit* to) noexcept {
    std::memcpy(to, from, BLOCK * sizeof(Unit));
    return _mm_movemask_epi8(matches(from));
  }

  [[gnu::target("sse2")]] static bool is_in_several(Unit const* block) noexcept {
    __m128i found = matches(block);
    for (int i = 1; i < BLOCKS; ++i) found = _mm_or_si128(found, matches(block + i * BLOCK));
    return _mm_movemask_epi8(found) != 0;
  }

  /// All bits of each unit that is one of them, none of the others.
  [[gnu::target("sse2")]] static __m128i matches(Unit const* block) noexcept {
    __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(block));
    __m128i found = _mm_setzero_si128();
    ((found = _mm_or_si128(found, _mm_cmpeq_epi16(units, _mm_set1_epi16(WANTED)))), ...);
    return found;
  }

  /// The unit of the first match: a mask has two bits for each.
  static std::ptrdiff_t first(int mask) noexcept {
    return __builtin_ctz(static_cast<unsigned int>(mask)) / 2;
  }
#endif
};

}  // namespace Orn

#endif

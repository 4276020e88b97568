#include "tqutil/Utf8.h"

#if defined(__i386__) || defined(__x86_64__)
#include <emmintrin.h>
#endif
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

#include "tqutil/UtilCatalogue.h"
#include "tqutil/UtilExceptions.h"

namespace Orn {
namespace {

using Unit = unsigned short;
using UnitString = std::basic_string<Unit>;

static_assert(std::is_same_v<UChar, Unit>, "ICU must be used with UCHAR_TYPE=uint16_t");

constexpr UChar32 REPLACEMENT = 0xFFFD;

// ICU counts in 32 bits, so long texts go through it in pieces.
constexpr std::size_t MAX_PIECE = std::size_t{1} << 20;

// How many units are converted one by one before packing is worth another try, and the most bytes
// that they become with the second half of a pair.
constexpr std::ptrdiff_t MIXED_UNITS = 16;
constexpr std::ptrdiff_t MIXED_BYTES = (MIXED_UNITS + 1) * 3;

// Copies the ASCII units that `text` begins with, a byte each, and returns their number.
std::size_t pack_ascii_singly(Unit const* text, std::size_t length, char* bytes) {
  std::size_t done = 0;
  for (; done < length && text[done] <= 0x7F; ++done) bytes[done] = static_cast<char>(text[done]);
  return done;
}

#if defined(__i386__) || defined(__x86_64__)

#ifdef __SSE2__
constexpr bool has_sse2() { return true; }
#else
bool has_sse2() { return __builtin_cpu_supports("sse2") != 0; }
#endif

// The first block that is not all ASCII ends it.
[[gnu::target("sse2")]] std::size_t pack_ascii_blocks(Unit const* text, std::size_t length,
                                                      char* bytes) {
  constexpr std::size_t BLOCK = 16;
  __m128i const beyond_ascii = _mm_set1_epi16(static_cast<short>(0xFF80));
  std::size_t done = 0;
  for (; length - done >= BLOCK; done += BLOCK) {
    auto const* const from = reinterpret_cast<__m128i const*>(text + done);
    __m128i const low = _mm_loadu_si128(from);
    __m128i const high = _mm_loadu_si128(from + 1);
    __m128i const beyond = _mm_and_si128(_mm_or_si128(low, high), beyond_ascii);
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(beyond, _mm_setzero_si128())) != 0xFFFF) break;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes + done), _mm_packus_epi16(low, high));
  }
  return done;
}

std::size_t pack_ascii(Unit const* text, std::size_t length, char* bytes) {
  std::size_t const done = has_sse2() ? pack_ascii_blocks(text, length, bytes) : 0;
  return done + pack_ascii_singly(text + done, length - done, bytes + done);
}

#else

std::size_t pack_ascii(Unit const* text, std::size_t length, char* bytes) {
  return pack_ascii_singly(text, length, bytes);
}

#endif

// ICU's macros narrow without a cast.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"

// The character that a surrogate at `from` is half of, or what stands for a lone one. Moves behind
// it.
char* put_surrogate(Unit const*& from, Unit const* end, char* to) {
  std::ptrdiff_t units = 0;
  std::ptrdiff_t bytes = 0;
  UChar32 character = 0;
  U16_NEXT(from, units, end - from, character);
  if (U_IS_SURROGATE(character)) character = REPLACEMENT;
  U8_APPEND_UNSAFE(to, bytes, character);
  from += units;
  return to + bytes;
}

// Converts a few units of whatever kind, and moves behind them.
char* convert_mixed(Unit const*& text, Unit const* end, char* to) {
  Unit const* from = text;
  Unit const* const limit = from + std::min(end - from, MIXED_UNITS);
  while (from < limit) {
    unsigned int const unit = *from;
    if (U16_IS_SURROGATE(unit)) {
      to = put_surrogate(from, end, to);
      continue;
    }
    ++from;
    if (unit < 0x80) {
      *to++ = static_cast<char>(unit);
    } else if (unit < 0x800) {
      *to++ = static_cast<char>(0xC0 | unit >> 6U);
      *to++ = static_cast<char>(0x80 | (unit & 0x3F));
    } else {
      *to++ = static_cast<char>(0xE0 | unit >> 12U);
      *to++ = static_cast<char>(0x80 | (unit >> 6U & 0x3F));
      *to++ = static_cast<char>(0x80 | (unit & 0x3F));
    }
  }
  text = from;
  return to;
}

// The longest beginning of `utf8` that is not too long for ICU and cuts no well-formed sequence.
std::string_view utf8_piece(std::string_view utf8) {
  if (utf8.size() <= MAX_PIECE) return utf8;
  auto const* const bytes = reinterpret_cast<std::uint8_t const*>(utf8.data());
  auto end = static_cast<std::int32_t>(MAX_PIECE);
  U8_SET_CP_START(bytes, 0, end);
  return utf8.substr(0, static_cast<std::size_t>(end));
}

// The offset of the first sequence in `utf8` that is not UTF-8.
std::int32_t ill_formed_offset(std::string_view utf8) {
  char const* const bytes = utf8.data();
  auto const length = static_cast<std::int32_t>(utf8.size());
  std::int32_t next = 0;
  while (next < length) {
    std::int32_t const start = next;
    UChar32 character = 0;
    U8_NEXT(bytes, next, length, character);
    if (character < 0) return start;
  }
  return length;
}

#pragma GCC diagnostic pop

}  // namespace

// By way of a buffer, since a string can only be made longer by filling it with zeros first.
std::string utf16_to_utf8(unsigned short const* text, std::size_t length) {
  std::array<char, 4096> buffer;
  char const* const full = buffer.data() + buffer.size() - MIXED_BYTES;
  Unit const* from = text;
  Unit const* const end = text + length;
  std::string bytes;
  if (length > buffer.size()) bytes.reserve(length + length / 32);
  while (from != end) {
    char* to = buffer.data();
    while (from != end && to < full) {
      auto const room = static_cast<std::size_t>(std::min(end - from, full - to));
      std::size_t const packed = pack_ascii(from, room, to);
      from += packed;
      to += packed;
      to = convert_mixed(from, end, to);
    }
    bytes.append(buffer.data(), static_cast<std::size_t>(to - buffer.data()));
  }
  return bytes;
}

UnitString utf8_to_utf16(std::string_view utf8) {
  UnitString text;
  text.reserve(utf8.size());
  std::size_t done = 0;
  while (done < utf8.size()) {
    std::string_view const piece = utf8_piece(utf8.substr(done));
    auto const piece_length = static_cast<std::int32_t>(piece.size());
    std::size_t const filled = text.size();
    text.resize(filled + piece.size());
    std::int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(&text[filled], piece_length, &written, piece.data(), piece_length, &status);
    if (U_FAILURE(status) != 0) {
      raise_util<EncodingException>(UtilCatalogue::ILL_FORMED_UTF8,
                                    static_cast<long>(done) + ill_formed_offset(piece));
    }
    text.resize(filled + static_cast<std::size_t>(written));
    done += piece.size();
  }
  return text;
}

}  // namespace Orn

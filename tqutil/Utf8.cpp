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

constexpr char32_t REPLACEMENT = 0xFFFD;

// ICU counts in 32 bits, so long texts go through it in pieces; and so that what it writes stays in
// the cache.
constexpr std::size_t MAX_PIECE = std::size_t{1} << 20;
constexpr std::size_t MAX_UTF16_PIECE = 1024;

// The most bytes that a UTF-16 unit becomes.
constexpr std::size_t MAX_EXPANSION = 3;

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

// How many units ICU is to convert before packing is worth another try: up to the next stretch of
// ASCII, and never between the two halves of a surrogate pair.
std::size_t non_ascii_piece(Unit const* text, std::size_t length) {
  constexpr std::size_t ASCII_STRETCH = 16;
  // One less than the most, for the second half of a pair.
  std::size_t const limit = std::min(length, MAX_UTF16_PIECE - 1);
  std::size_t stretch = 0;
  for (std::size_t i = 0; i < limit; ++i) {
    stretch = text[i] <= 0x7F ? stretch + 1 : 0;
    if (stretch == ASCII_STRETCH) return i + 1 - ASCII_STRETCH;
  }
  bool const cuts_pair =
      limit < length && U16_IS_LEAD(text[limit - 1]) && U16_IS_TRAIL(text[limit]);
  return cuts_pair ? limit + 1 : limit;
}

std::size_t convert_piece(Unit const* text, std::size_t length, char* bytes) {
  std::int32_t written = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(bytes, static_cast<std::int32_t>(length * MAX_EXPANSION), &written, text,
                     static_cast<std::int32_t>(length), REPLACEMENT, nullptr, &status);
  return static_cast<std::size_t>(written);
}

// ICU's macros narrow without a cast.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"

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
  std::array<char, MAX_UTF16_PIECE * MAX_EXPANSION> buffer;
  std::string bytes;
  if (length > buffer.size()) bytes.reserve(length + length / 32);
  std::size_t done = 0;
  while (done < length) {
    std::size_t const packed =
        pack_ascii(text + done, std::min(length - done, buffer.size()), buffer.data());
    bytes.append(buffer.data(), packed);
    done += packed;
    if (done == length || packed == buffer.size()) continue;
    std::size_t const piece = non_ascii_piece(text + done, length - done);
    bytes.append(buffer.data(), convert_piece(text + done, piece, buffer.data()));
    done += piece;
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

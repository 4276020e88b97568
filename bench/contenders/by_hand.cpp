#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#if defined(__i386__) || defined(__x86_64__)
#include <emmintrin.h>
#define BENCH_BY_HAND_WITH_SSE2
#endif

#include "bench/contenders/Contenders.h"
#include "bench/orders/Names.h"
#include "tqutil/UString.h"

namespace bench {
namespace {

using Orn::UString;
using Orn::XmlTag;
using Unit = UString::unit_type;

/// Code units in one growing block. Moving it costs little: the system moves large blocks by their
/// pages.
class Units {
 public:
  /// Makes room for that many more, and returns where they go.
  Unit* room_for(std::size_t more) {
    if (capacity_ - length_ < more) grow(length_ + more);
    return block_.get() + length_;
  }
  /// Up to there it has been written.
  void written_to(Unit const* end) { length_ = static_cast<std::size_t>(end - block_.get()); }

  Unit const* begin() const { return block_.get(); }
  std::size_t length() const { return length_; }

 private:
  struct Free {
    void operator()(void* block) const { std::free(block); }
  };

  void grow(std::size_t wanted) {
    std::size_t const capacity = 2 * wanted + 1024;
    void* const block = std::realloc(block_.get(), capacity * sizeof(Unit));
    if (block == nullptr) throw std::bad_alloc();
    static_cast<void>(block_.release());
    block_.reset(static_cast<Unit*>(block));
    capacity_ = capacity;
  }

  std::unique_ptr<Unit, Free> block_;
  std::size_t length_ = 0;
  std::size_t capacity_ = 0;
};

/// Units in a vector register, which is what is looked at and copied at once.
constexpr std::size_t BLOCK = 8;
/// The most units that one unit of a text becomes: "&amp;".
constexpr std::size_t LONGEST_REFERENCE = 5;
/// The most units of a name with its prefix, with room to write half a block beyond it.
constexpr std::size_t LONGEST_NAME = 32;

/// Copies `N` units.
template <std::size_t N>
void put_units(Unit* to, Unit const* from) {
  std::memcpy(to, from, N * sizeof(Unit));
}

/// Copies `N` to `2 * N` units, some of them twice.
template <std::size_t N>
void put_both_ends(Unit* to, Unit const* from, std::size_t length) {
  put_units<N>(to, from);
  put_units<N>(to + length - N, from + length - N);
}

/// Names and values have a few units, for which a call would take longer than the copy.
Unit* put(Unit* to, Unit const* from, std::size_t length) {
  if (length > 2 * BLOCK) {
    std::memcpy(to, from, length * sizeof(Unit));
  } else if (length >= BLOCK) {
    put_both_ends<BLOCK>(to, from, length);
  } else if (length >= BLOCK / 2) {
    put_both_ends<BLOCK / 2>(to, from, length);
  } else {
    for (std::size_t i = 0; i < length; ++i) to[i] = from[i];
  }
  return to + length;
}

template <std::size_t N>
Unit* put(Unit* to, char16_t const (&literal)[N]) {
  std::memcpy(to, literal, (N - 1) * sizeof(Unit));
  return to + N - 1;
}

Unit* put(Unit* to, UString const& text) { return put(to, text.data(), text.length()); }

struct Prefix {
  Unit units[4];
  std::size_t length;
};

/// By the number of the namespace.
constexpr Prefix PREFIXES[] = {{{}, 0}, {{'N', '1', ':'}, 3}, {{'N', '2', ':'}, 3}};

Unit* put_name(Unit* to, XmlTag const& tag) {
  Prefix const& prefix = PREFIXES[static_cast<std::size_t>(tag.ns_id())];
  put_units<4>(to, prefix.units);
  return put(to + prefix.length, tag.simple_name());
}

Unit* put_escaped(Unit* to, Unit const* begin, Unit const* at) {
  switch (*at) {
    case u'&':
      return put(to, u"&amp;");
    case u'<':
      return put(to, u"&lt;");
    case u'>':
      if (at - begin >= 2 && at[-1] == u']' && at[-2] == u']') return put(to, u"&gt;");
      break;
    default:
      break;
  }
  *to = *at;
  return to + 1;
}

/// Where it stands in a text and in the output.
struct Place {
  Unit const* at;
  Unit* to;
};

#ifdef BENCH_BY_HAND_WITH_SSE2
#ifdef __SSE2__
constexpr bool has_sse2() { return true; }
#else
bool has_sse2() { return __builtin_cpu_supports("sse2") != 0; }
#endif

[[gnu::target("sse2")]] __m128i equal(__m128i units, char16_t unit) {
  return _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(unit)));
}

/// How many units stand before the first of the block that may need escaping.
[[gnu::target("sse2")]] std::size_t plain_units(__m128i block) {
  __m128i const special =
      _mm_or_si128(_mm_or_si128(equal(block, u'&'), equal(block, u'<')), equal(block, u'>'));
  auto const bits = static_cast<unsigned int>(_mm_movemask_epi8(special));
  return bits == 0 ? BLOCK : static_cast<std::size_t>(__builtin_ctz(bits)) / 2;
}

/// Escapes in steps of `N` units, as long as there are that many.
template <std::size_t N>
[[gnu::target("sse2")]] Place put_steps(Place place, Unit const* begin, Unit const* end) {
  auto [at, to] = place;
  while (static_cast<std::size_t>(end - at) >= N) {
    __m128i block = _mm_setzero_si128();
    put_units<N>(reinterpret_cast<Unit*>(&block), at);
    std::memcpy(to, &block, N * sizeof(Unit));
    // Behind the units there are zeros, which count as plain.
    std::size_t const plain = plain_units(block);
    if (plain >= N) {
      at += N;
      to += N;
    } else {
      to = put_escaped(to + plain, begin, at + plain);
      at += plain + 1;
    }
  }
  return {at, to};
}

[[gnu::target("sse2")]] Place put_blocks(Place place, Unit const* begin, Unit const* end) {
  return put_steps<BLOCK / 2>(put_steps<BLOCK>(place, begin, end), begin, end);
}
#endif

/// There must be room for each unit's longest reference.
Unit* put_text(Unit* to, UString const& text) {
  Unit const* const begin = text.data();
  Unit const* const end = begin + text.length();
  Place place{begin, to};
#ifdef BENCH_BY_HAND_WITH_SSE2
  if (has_sse2()) place = put_blocks(place, begin, end);
#endif
  for (; place.at != end; ++place.at) place.to = put_escaped(place.to, begin, place.at);
  return place.to;
}

Unit* put_start(Unit* to, XmlTag const& tag) {
  *to++ = u'<';
  return put_name(to, tag);
}

Unit* put_end(Unit* to, XmlTag const& tag) {
  to = put_name(put(to, u"</"), tag);
  *to++ = u'>';
  return to;
}

Unit* put_attribute(Unit* to, XmlTag::Id id, UString const& value) {
  *to++ = u' ';
  to = put(put_name(to, XmlTag::lookup(id)), u"=\"");
  to = put(to, value);
  *to++ = u'"';
  return to;
}

Unit* put_leaf(Unit* to, XmlTag::Id id, UString const& text) {
  XmlTag const& tag = XmlTag::lookup(id);
  to = put_start(to, tag);
  *to++ = u'>';
  return put_end(put_text(to, text), tag);
}

Unit* put_order(Unit* to, Order const& record) {
  XmlTag const& tag = XmlTag::lookup(order);
  to = put_start(to, tag);
  for (std::size_t i = 0; i < attribute_names.size(); ++i) {
    to = put_attribute(to, attribute_names[i], record.attributes[i].utf16);
  }
  *to++ = u'>';
  for (std::size_t i = 0; i < field_names.size(); ++i) {
    to = put_leaf(to, field_names[i], record.fields[i].utf16);
  }
  return put_end(to, tag);
}

/// At most so many units.
std::size_t length_of(Order const& record) {
  std::size_t length =
      (2 + attribute_names.size() + 2 * field_names.size()) * (LONGEST_NAME + BLOCK);
  for (Text const& attribute : record.attributes) length += attribute.utf16.length();
  for (Text const& field : record.fields) length += LONGEST_REFERENCE * field.utf16.length();
  return length;
}

char* put_character(char* to, char32_t c) {
  auto const put_byte = [&to](char32_t byte) { *to++ = static_cast<char>(byte); };
  if (c < 0x80) {
    put_byte(c);
  } else if (c < 0x800) {
    put_byte(0xc0 | c >> 6U);
    put_byte(0x80 | (c & 0x3f));
  } else if (c < 0x10000) {
    put_byte(0xe0 | c >> 12U);
    put_byte(0x80 | (c >> 6U & 0x3f));
    put_byte(0x80 | (c & 0x3f));
  } else {
    put_byte(0xf0 | c >> 18U);
    put_byte(0x80 | (c >> 12U & 0x3f));
    put_byte(0x80 | (c >> 6U & 0x3f));
    put_byte(0x80 | (c & 0x3f));
  }
  return to;
}

/// The character at `at`, which moves behind it. Surrogates come in pairs, for there are no others
/// in the records.
char32_t next_character(Unit const*& at) {
  char32_t const first = *at++;
  if (first < 0xd800 || first > 0xdbff) return first;
  return ((first - 0xd800) << 10U) + (*at++ - 0xdc00U) + 0x10000;
}

/// Bytes that are converted at once, so that they stay in the cache: a string could not be made
/// without being filled with zeros first.
constexpr std::size_t PIECE_OF_OUTPUT = 4096;

/// Where it stands in the units and in the bytes made of them.
struct Conversion {
  Unit const* at;
  char* to;

  /// As long as there is room for a block behind it.
  bool goes_on(Unit const* end, char const* full) const { return at < end && to <= full; }
};

#ifdef BENCH_BY_HAND_WITH_SSE2
/// Converts a block, and returns how many units stand before the first beyond ASCII; bytes behind
/// theirs mean nothing.
[[gnu::target("sse2")]] std::size_t pack_block(char* to, Unit const* from) {
  __m128i const block = _mm_loadu_si128(reinterpret_cast<__m128i const*>(from));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(block, block));
  __m128i const high = _mm_and_si128(block, _mm_set1_epi16(static_cast<short>(0xff80)));
  auto const ascii =
      static_cast<unsigned int>(_mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128())));
  return ascii == 0xffff ? BLOCK : static_cast<std::size_t>(__builtin_ctz(~ascii)) / 2;
}

/// Up to what is beyond ASCII, or less than a block.
[[gnu::target("sse2")]] Conversion pack_ascii(Conversion place, Unit const* end, char const* full) {
  std::size_t ascii = BLOCK;
  while (ascii == BLOCK && static_cast<std::size_t>(end - place.at) >= BLOCK && place.to <= full) {
    ascii = pack_block(place.to, place.at);
    place.at += ascii;
    place.to += ascii;
  }
  return place;
}
#endif

/// Converts from `at` on, which moves behind, as much as goes into a piece. Returns its end.
char* put_piece(char* to, Unit const*& at, Unit const* end) {
  char const* const full = to + PIECE_OF_OUTPUT - BLOCK;
  Conversion place{at, to};
  while (place.goes_on(end, full)) {
#ifdef BENCH_BY_HAND_WITH_SSE2
    if (has_sse2()) place = pack_ascii(place, end, full);
    if (!place.goes_on(end, full)) break;
#endif
    place.to = put_character(place.to, next_character(place.at));
  }
  at = place.at;
  return place.to;
}

std::string to_utf8(Units const& units) {
  std::string utf8;
  utf8.reserve(units.length() + units.length() / 16);
  char piece[PIECE_OF_OUTPUT];
  Unit const* at = units.begin();
  Unit const* const end = at + units.length();
  while (at < end) {
    char const* const piece_end = put_piece(piece, at, end);
    utf8.append(piece, static_cast<std::size_t>(piece_end - piece));
  }
  return utf8;
}

/// As the limit it may take for granted what XmlDoc finds out, keeps or checks: which namespaces
/// there are and their prefixes, so that the root's start tag is a fixed text; that attributes need
/// no escaping; that everything is open that is closed, and fit for XML.
std::string write(Orders const& records) {
  Units out;
  out.written_to(
      put(out.room_for(PIECE_OF_OUTPUT),
          u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
          u"<N1:orders xmlns:N1=\"urn:example:orders\" xmlns:N2=\"urn:example:parts\">"));
  for (Order const& record : records) {
    out.written_to(put_order(out.room_for(length_of(record)), record));
  }
  XmlTag const& root = XmlTag::lookup(orders);
  out.written_to(put_end(out.room_for(LONGEST_NAME + BLOCK), root));
  return to_utf8(out);
}

}  // namespace

void add_by_hand(Contenders& contenders) { contenders.writers.push_back({"by_hand", write}); }

}  // namespace bench

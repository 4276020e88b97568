#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "bench/contenders/Contenders.h"
#include "bench/orders/Names.h"
#include "tqutil/UString.h"

namespace bench {
namespace {

using namespace std::string_view_literals;

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

constexpr std::size_t BLOCK = 8;
/// The most units that one unit of a text becomes: "&amp;".
constexpr std::size_t LONGEST_REFERENCE = 5;

Unit* put(Unit* to, Unit const* text, std::size_t length) {
  std::memcpy(to, text, length * sizeof(Unit));
  return to + length;
}

Unit* put(Unit* to, std::u16string_view text) {
  std::memcpy(to, text.data(), text.size() * sizeof(Unit));
  return to + text.size();
}

Unit* put(Unit* to, UString const& text) { return put(to, text.data(), text.length()); }

/// The prefix of each namespace by its number.
constexpr std::u16string_view PREFIXES[] = {u"", u"N1:", u"N2:"};

Unit* put_name(Unit* to, XmlTag const& tag) {
  return put(put(to, PREFIXES[static_cast<std::size_t>(tag.ns_id())]), tag.simple_name());
}

Unit* put_escaped(Unit* to, Unit const* begin, Unit const* at) {
  switch (*at) {
    case u'&':
      return put(to, u"&amp;"sv);
    case u'<':
      return put(to, u"&lt;"sv);
    case u'>':
      if (at - begin >= 2 && at[-1] == u']' && at[-2] == u']') return put(to, u"&gt;"sv);
      break;
    default:
      break;
  }
  *to = *at;
  return to + 1;
}

#ifdef __SSE2__
/// Copies a block, and returns how many of its units stand before the first that may need escaping.
std::size_t copy_plain(Unit* to, Unit const* from) {
  __m128i const block = _mm_loadu_si128(reinterpret_cast<__m128i const*>(from));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), block);
  __m128i const special = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi16(block, _mm_set1_epi16(u'&')),
                                                    _mm_cmpeq_epi16(block, _mm_set1_epi16(u'<'))),
                                       _mm_cmpeq_epi16(block, _mm_set1_epi16(u'>')));
  auto const bits = static_cast<unsigned int>(_mm_movemask_epi8(special));
  return bits == 0 ? BLOCK : static_cast<std::size_t>(__builtin_ctz(bits)) / 2;
}
#else
std::size_t copy_plain(Unit* to, Unit const* from) {
  std::size_t i = 0;
  for (; i < BLOCK && from[i] != u'&' && from[i] != u'<' && from[i] != u'>'; ++i) to[i] = from[i];
  return i;
}
#endif

/// There must be room for each unit's longest reference.
Unit* put_text(Unit* to, UString const& text) {
  Unit const* const begin = text.data();
  Unit const* const end = begin + text.length();
  Unit const* at = begin;
  while (static_cast<std::size_t>(end - at) >= BLOCK) {
    std::size_t const plain = copy_plain(to, at);
    at += plain;
    to += plain;
    if (plain < BLOCK) to = put_escaped(to, begin, at++);
  }
  while (at < end) to = put_escaped(to, begin, at++);
  return to;
}

constexpr std::u16string_view HEAD =
    u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
    u"<N1:orders xmlns:N1=\"urn:example:orders\" xmlns:N2=\"urn:example:parts\">";
constexpr std::u16string_view TAIL = u"</N1:orders>";

void append(Units& out, std::u16string_view text) {
  out.written_to(put(out.room_for(text.size()), text));
}

std::size_t room_for_name(XmlTag const& tag) { return std::size_t{3} + tag.simple_name().length(); }

void append_start(Units& out, XmlTag const& tag) {
  Unit* to = out.room_for(room_for_name(tag) + 1);
  *to++ = u'<';
  out.written_to(put_name(to, tag));
}

void append_end(Units& out, XmlTag const& tag) {
  Unit* to = put(out.room_for(room_for_name(tag) + 3), u"</"sv);
  to = put_name(to, tag);
  *to++ = u'>';
  out.written_to(to);
}

void append_attribute(Units& out, XmlTag::Id id, UString const& value) {
  XmlTag const& tag = XmlTag::lookup(id);
  Unit* to = out.room_for(room_for_name(tag) + value.length() + 4);
  *to++ = u' ';
  to = put(put_name(to, tag), u"=\""sv);
  to = put(to, value);
  *to++ = u'"';
  out.written_to(to);
}

void append_leaf(Units& out, XmlTag::Id id, UString const& text) {
  XmlTag const& tag = XmlTag::lookup(id);
  Unit* to = out.room_for(2 * room_for_name(tag) + LONGEST_REFERENCE * text.length() + 5);
  *to++ = u'<';
  to = put_name(to, tag);
  *to++ = u'>';
  to = put(put_text(to, text), u"</"sv);
  to = put_name(to, tag);
  *to++ = u'>';
  out.written_to(to);
}

void append_order(Units& out, Order const& record) {
  append_start(out, XmlTag::lookup(order));
  for (std::size_t i = 0; i < attribute_names.size(); ++i) {
    append_attribute(out, attribute_names[i], record.attributes[i].utf16);
  }
  append(out, u">"sv);
  for (std::size_t i = 0; i < field_names.size(); ++i) {
    append_leaf(out, field_names[i], record.fields[i].utf16);
  }
  append_end(out, XmlTag::lookup(order));
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

/// Converts a block if it is all ASCII.
#ifdef __SSE2__
bool pack_ascii(char* to, Unit const* from) {
  __m128i const block = _mm_loadu_si128(reinterpret_cast<__m128i const*>(from));
  __m128i const high = _mm_and_si128(block, _mm_set1_epi16(static_cast<short>(0xff80)));
  if (_mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128())) != 0xffff) return false;
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(block, block));
  return true;
}
#else
bool pack_ascii(char* to, Unit const* from) {
  unsigned int all = 0;
  for (std::size_t i = 0; i < BLOCK; ++i) {
    all |= from[i];
    to[i] = static_cast<char>(from[i]);
  }
  return all < 0x80;
}
#endif

/// Makes the string in pieces that stay in the cache, since it could not be made without being
/// filled with zeros first.
std::string to_utf8(Units const& units) {
  std::string utf8;
  utf8.reserve(units.length() + units.length() / 16);
  char piece[4096];
  char const* const full = piece + sizeof piece - 4 * BLOCK;
  Unit const* at = units.begin();
  Unit const* const end = at + units.length();
  while (at < end) {
    char* to = piece;
    while (at < end && to <= full) {
      if (static_cast<std::size_t>(end - at) >= BLOCK && pack_ascii(to, at)) {
        at += BLOCK;
        to += BLOCK;
      } else {
        to = put_character(to, next_character(at));
      }
    }
    utf8.append(piece, static_cast<std::size_t>(to - piece));
  }
  return utf8;
}

std::string write(Orders const& records) {
  Units out;
  append(out, HEAD);
  for (Order const& record : records) append_order(out, record);
  append(out, TAIL);
  return to_utf8(out);
}

}  // namespace

void add_by_hand(Contenders& contenders) { contenders.writers.push_back({"by_hand", write}); }

}  // namespace bench

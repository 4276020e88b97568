#ifndef TQUTIL_USTRING_H
#define TQUTIL_USTRING_H

#include <cstddef>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "tqutil/Export.h"

namespace Orn {

/// A text of UTF-16 code units, held by value and copied deeply.
///
///     UString text(u"caf\u00e9");
///     text.append(u" au lait").append(static_cast<unsigned short>('!'));
///     std::cout << text << '\n';                      // as UTF-8
///     UString same = UString::from_utf8("caf\xc3\xa9 au lait!");
///
/// Positions, lengths and capacities count code units, not characters. Nothing is normalised and
/// surrogates are not checked: a text may hold lone ones. A position beyond the end of the text
/// raises std::out_of_range, a text of more than `max_length` units std::length_error, and a
/// failed allocation std::bad_alloc; the text is then as it was. Wherever a pointer to a
/// zero-terminated text is taken, the null pointer stands for the empty text.
///
/// Distinct objects may be used from distinct threads, and one object may be read from several,
/// with one exception: `utf8_str()` writes to a buffer of its object.
class TQUTIL_API UString {
 public:
  /// A code unit: 16 bits.
  using unit_type = unsigned short;
  /// The standard string of such units.
  using string_type = std::basic_string<unit_type>;

  /// What `find` returns when there is nothing to find, and as a count: all the rest.
  static constexpr unsigned int npos = ~0U;
  /// The longest text, in code units. Where addresses have 32 bits memory ends earlier: a text
  /// there has at most 2^29 units.
  static constexpr unsigned int max_length = npos - 1;
  /// The least capacity, in code units: so many and one more can be copied from the `data()` of any
  /// text, whatever stands behind its end.
  static constexpr unsigned int least_capacity = 7;

  /// An empty text.
  UString() noexcept = default;
  /// A copy of a zero-terminated text.
  UString(unit_type const* text);
  /// The same.
  UString(char16_t const* text);
  /// A copy of the first `length` units of `text`, which may hold U+0000.
  UString(char16_t const* text, std::size_t length)
      : text_(length == 1 ? string_type(1, *text) : copied(units_of(text), length)) {}
  /// The same.
  UString(unit_type const* text, std::size_t length) : text_(copied(text, length)) {}
  /// A copy of a standard string of 16-bit units.
  UString(string_type const& text);
  /// The same without a copy: what is left in `text` is not specified.
  UString(string_type&& text);

  /// @{

  /// Copies are independent. What is left in a text that was moved from is not specified. What
  /// `utf8_str()` returned for either side stays as it is.
  UString(UString const& other) = default;
  UString(UString&& other) noexcept = default;
  UString& operator=(UString const& other) = default;
  UString& operator=(UString&& other) noexcept = default;
  /// @}

  /// Frees the text, and what `utf8_str()` returned.
  ~UString() = default;

  /// The text of `utf8`. Raises EncodingException, which names the byte, when it is ill-formed.
  static UString from_utf8(std::string_view utf8);

  /// Puts a copy of `other` in the place of the text. Returns this text, as all do that
  /// follow and give a UString&.
  UString& assign(UString const& other);

  /// Appends a text, which may be this one. Appending costs time in proportion to what is appended,
  /// averaged over many calls, whatever calls of `reserve` stand between them.
  UString& append(UString const& other);
  /// Appends the `n` units of `other` from `pos` on, or as many as there are.
  UString& append(UString const& other, unsigned int pos, unsigned int n);
  /// Appends a zero-terminated text.
  UString& append(unit_type const* text);
  /// The same.
  UString& append(char16_t const* text);
  /// Appends the first `length` units of `text`, which may hold U+0000.
  UString& append(char16_t const* text, std::size_t length) {
    return length == 1 ? append(static_cast<unit_type>(*text)) : append(units_of(text), length);
  }
  /// The same.
  UString& append(unit_type const* text, std::size_t length) {
    if (length == 0) return *this;
    check_room_for(length);
    text_.append(text, length);
    return *this;
  }
  /// Appends one unit.
  UString& append(unit_type unit);

  /// Inserts `other` in front of the unit at `pos`; `pos` may be the length.
  UString& insert(unsigned int pos, UString const& other);
  /// Puts `other` in the place of the `n` units from `pos` on, or of as many as there are.
  UString& replace(unsigned int pos, unsigned int n, UString const& other);
  /// Removes the `n` units from `pos` on, or as many as there are.
  UString& erase(unsigned int pos, unsigned int n);
  /// Makes the text empty and keeps its capacity.
  void clear() noexcept { text_.clear(); }

  /// Makes room for at least `units` code units in all. When that means growing, the capacity at
  /// least doubles, so that requests which rise by a constant do not copy the text each time.
  void reserve(unsigned int units);
  /// How many code units fit without a further allocation; never less than was reserved.
  unsigned int capacity() const noexcept;

  /// How many code units the text has.
  unsigned int length() const noexcept { return static_cast<unsigned int>(text_.size()); }
  /// Whether the text has no units.
  bool empty() const noexcept { return text_.empty(); }
  /// The units, with a zero unit behind the last. Good until the text is next changed.
  unit_type const* data() const noexcept { return text_.c_str(); }
  /// The unit at `pos`, which must be at most the length (where the closing zero stands).
  unit_type operator[](unsigned int pos) const noexcept { return text_[pos]; }

  /// The first position at or after `from`, or `npos`. An empty text is found at `from` itself,
  /// unless that is beyond the end.
  unsigned int find(UString const& wanted, unsigned int from) const noexcept;
  /// The same for one unit.
  unsigned int find(unit_type wanted, unsigned int from) const noexcept;
  /// The `n` units from `pos` on, or as many as there are.
  UString substr(unsigned int pos, unsigned int n) const;

  /// Negative, 0 or positive as this text sorts before, with or after the other by code units.
  int compare(UString const& other) const noexcept;
  /// The same.
  int compare(char16_t const* other) const noexcept;

  /// The text in UTF-8, zero-terminated, each lone surrogate as U+FFFD. Good until the next
  /// `utf8_str()` of the same object, or its destruction; changing the text does not change it.
  char const* utf8_str() const;
  /// The same as a string of its own, which also carries U+0000. Leaves the object untouched.
  std::string to_utf8() const;
  /// The same for `length` units that need not be in a UString.
  static std::string to_utf8(unit_type const* text, std::size_t length);

  /// @{

  /// A UString on the heap lives in ICU's memory. When there is none left those that take
  /// std::nothrow give null, the others raise std::bad_alloc.
  static void* operator new(std::size_t size);
  static void* operator new[](std::size_t size);
  static void* operator new(std::size_t size, void* place) noexcept;
  static void* operator new(std::size_t size, std::nothrow_t const&) noexcept;
  static void* operator new[](std::size_t size, std::nothrow_t const&) noexcept;
  static void operator delete(void* block) noexcept;
  static void operator delete[](void* block) noexcept;
  static void operator delete(void* block, void* place) noexcept;
  static void operator delete(void* block, std::nothrow_t const&) noexcept;
  static void operator delete[](void* block, std::nothrow_t const&) noexcept;
  /// @}

 private:
  /// Holds what utf8_str() returned last. It belongs to the object, not to its text: copying or
  /// moving the text leaves the buffers on both sides as they are.
  class Utf8Buffer {
   public:
    Utf8Buffer() noexcept = default;
    Utf8Buffer(Utf8Buffer const&) noexcept {}
    Utf8Buffer(Utf8Buffer&&) noexcept {}
    Utf8Buffer& operator=(Utf8Buffer const&) noexcept { return *this; }
    Utf8Buffer& operator=(Utf8Buffer&&) noexcept { return *this; }
    ~Utf8Buffer() = default;

    TQUTIL_LOCAL char const* hold(std::string&& bytes);

   private:
    std::unique_ptr<std::string> bytes_;
  };

  // Distinct types of one representation. Nothing may be read by way of the other type; a string
  // copies several units as bytes, and only a single one as what it is.
  static unit_type const* units_of(char16_t const* text) noexcept {
    return reinterpret_cast<unit_type const*>(text);
  }
  static string_type copied(unit_type const* text, std::size_t length) {
    return length == 0 ? string_type() : string_type(text, checked_length(length));
  }
  // The string itself sees to the room, and grows geometrically.
  void check_room_for(std::size_t more) const {
    if (more > max_length - text_.size()) raise_too_long();
  }
  static std::size_t checked_length(std::size_t length) {
    if (length > max_length) raise_too_long();
    return length;
  }
  [[noreturn]] static void raise_too_long();

  string_type text_;
  mutable Utf8Buffer utf8_;
};

/// @{

/// Compares two texts by code units. Where one is a zero-terminated text, null is the empty one.
inline bool operator==(UString const& a, UString const& b) noexcept {
  return a.length() == b.length() &&
         std::memcmp(a.data(), b.data(), a.length() * sizeof(UString::unit_type)) == 0;
}
inline bool operator!=(UString const& a, UString const& b) noexcept { return !(a == b); }
inline bool operator<(UString const& a, UString const& b) noexcept { return a.compare(b) < 0; }

inline bool operator==(UString const& a, char16_t const* b) noexcept { return a.compare(b) == 0; }
inline bool operator==(char16_t const* a, UString const& b) noexcept { return b == a; }
inline bool operator!=(UString const& a, char16_t const* b) noexcept { return !(a == b); }
inline bool operator!=(char16_t const* a, UString const& b) noexcept { return !(b == a); }
inline bool operator<(UString const& a, char16_t const* b) noexcept { return a.compare(b) < 0; }
inline bool operator<(char16_t const* a, UString const& b) noexcept { return b.compare(a) > 0; }
/// @}

/// Writes the text as UTF-8, as `UString::to_utf8()` gives it; field width and fill apply.
TQUTIL_API std::ostream& operator<<(std::ostream& out, UString const& text);

}  // namespace Orn

/// Makes keys of texts in the unordered containers of the standard library.
template <>
struct std::hash<Orn::UString> {
  /// The same for equal texts. Costs the length of the text.
  TQUTIL_API std::size_t operator()(Orn::UString const& text) const noexcept;
};

#endif

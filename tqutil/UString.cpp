#include "tqutil/UString.h"

#include <unicode/uobject.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "tqutil/Utf8.h"

// With it a string has room for `least_capacity` units in itself.
#if defined(__GLIBCXX__) && !_GLIBCXX_USE_CXX11_ABI
#error "the strings of the old ABI are too small for UString::least_capacity"
#endif

namespace Orn {
namespace {

// Not u_strlen, which counts in 32 bits with a sign.
template <class Unit>
std::size_t length_of(Unit const* text) {
  return text == nullptr ? 0 : std::char_traits<Unit>::length(text);
}

template <class String>
String&& not_too_long(String&& text) {
  if (text.size() > UString::max_length) throw std::length_error("UString is too long");
  return std::forward<String>(text);
}

// How many units two texts of `length` units begin with in common, compared a word at a time.
std::size_t common_beginning(UString::unit_type const* a, UString::unit_type const* b,
                             std::size_t length) {
  using Word = std::uintptr_t;
  constexpr std::size_t UNITS = sizeof(Word) / sizeof(UString::unit_type);
  std::size_t same = 0;
  for (; length - same >= UNITS; same += UNITS) {
    Word word_a = 0;
    Word word_b = 0;
    std::memcpy(&word_a, a + same, sizeof(Word));
    std::memcpy(&word_b, b + same, sizeof(Word));
    if (word_a != word_b) break;
  }
  while (same < length && a[same] == b[same]) ++same;
  return same;
}

unsigned int position(std::size_t found) {
  return found == UString::string_type::npos ? UString::npos : static_cast<unsigned int>(found);
}

// A count that reaches to the end, whatever the word size says is "all the rest".
std::size_t count(unsigned int n) { return n == UString::npos ? UString::string_type::npos : n; }

void* not_null(void* block) {
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

UString::UString(unit_type const* text) : UString(text, length_of(text)) {}
UString::UString(char16_t const* text) : UString(text, length_of(text)) {}
UString::UString(string_type const& text) : text_(not_too_long(text)) {}

UString::UString(string_type&& text) : text_(not_too_long(std::move(text))) {}

UString UString::from_utf8(std::string_view utf8) { return utf8_to_utf16(utf8); }

UString& UString::assign(UString const& other) { return *this = other; }

UString& UString::append(UString const& other) {
  check_room_for(other.text_.size());
  text_.append(other.text_);
  return *this;
}

UString& UString::append(UString const& other, unsigned int pos, unsigned int n) {
  check_room_for(std::min<std::size_t>(n, other.text_.size()));
  text_.append(other.text_, pos, count(n));
  return *this;
}

UString& UString::append(unit_type const* text) { return append(text, length_of(text)); }

UString& UString::append(char16_t const* text) { return append(text, length_of(text)); }

UString& UString::append(unit_type unit) {
  check_room_for(1);
  text_.push_back(unit);
  return *this;
}

UString& UString::insert(unsigned int pos, UString const& other) {
  check_room_for(other.text_.size());
  text_.insert(pos, other.text_);
  return *this;
}

UString& UString::replace(unsigned int pos, unsigned int n, UString const& other) {
  check_room_for(other.text_.size());
  text_.replace(pos, count(n), other.text_);
  return *this;
}

UString& UString::erase(unsigned int pos, unsigned int n) {
  text_.erase(pos, count(n));
  return *this;
}

void UString::reserve(unsigned int units) {
  if (units <= capacity()) return;
  if (units > max_length) throw std::length_error("UString::reserve");
  std::size_t const doubled = std::min<std::size_t>(std::size_t{capacity()} * 2, text_.max_size());
  text_.reserve(std::max<std::size_t>(units, doubled));
}

unsigned int UString::capacity() const noexcept {
  return static_cast<unsigned int>(std::min<std::size_t>(text_.capacity(), max_length));
}

unsigned int UString::find(UString const& wanted, unsigned int from) const noexcept {
  return position(text_.find(wanted.text_, from));
}

unsigned int UString::find(unit_type wanted, unsigned int from) const noexcept {
  return position(text_.find(wanted, from));
}

UString UString::substr(unsigned int pos, unsigned int n) const {
  return text_.substr(pos, count(n));
}

int UString::compare(UString const& other) const noexcept {
  std::size_t const common = std::min(text_.size(), other.text_.size());
  std::size_t const same = common_beginning(data(), other.data(), common);
  if (same < common) return text_[same] < other.text_[same] ? -1 : 1;
  if (text_.size() == other.text_.size()) return 0;
  return text_.size() < other.text_.size() ? -1 : 1;
}

int UString::compare(char16_t const* other) const noexcept {
  if (other == nullptr) return text_.empty() ? 0 : 1;
  for (unit_type const unit : text_) {
    if (*other == 0) return 1;
    if (unit != *other) return unit < *other ? -1 : 1;
    ++other;
  }
  return *other == 0 ? 0 : -1;
}

char const* UString::utf8_str() const { return utf8_.hold(to_utf8()); }

std::string UString::to_utf8() const { return to_utf8(text_.data(), text_.size()); }

std::string UString::to_utf8(unit_type const* text, std::size_t length) {
  return utf16_to_utf8(text, length);
}

// ICU's operators give null where C++ promises an exception.
void* UString::operator new(std::size_t size) { return not_null(icu::UMemory::operator new(size)); }
void* UString::operator new[](std::size_t size) {
  return not_null(icu::UMemory::operator new[](size));
}
void* UString::operator new(std::size_t, void* place) noexcept { return place; }
void* UString::operator new(std::size_t size, std::nothrow_t const&) noexcept {
  return icu::UMemory::operator new(size);
}
void* UString::operator new[](std::size_t size, std::nothrow_t const&) noexcept {
  return icu::UMemory::operator new[](size);
}
void UString::operator delete(void* block) noexcept { icu::UMemory::operator delete(block); }
void UString::operator delete[](void* block) noexcept { icu::UMemory::operator delete[](block); }
void UString::operator delete(void*, void*) noexcept {}
void UString::operator delete(void* block, std::nothrow_t const&) noexcept {
  icu::UMemory::operator delete(block);
}
void UString::operator delete[](void* block, std::nothrow_t const&) noexcept {
  icu::UMemory::operator delete[](block);
}

char const* UString::Utf8Buffer::hold(std::string&& bytes) {
  if (bytes_ == nullptr) {
    bytes_ = std::make_unique<std::string>(std::move(bytes));
  } else {
    *bytes_ = std::move(bytes);
  }
  return bytes_->c_str();
}

void UString::raise_too_long() { throw std::length_error("UString is too long"); }

std::ostream& operator<<(std::ostream& out, UString const& text) { return out << text.to_utf8(); }

}  // namespace Orn

std::size_t std::hash<Orn::UString>::operator()(Orn::UString const& text) const noexcept {
  std::string_view const bytes(reinterpret_cast<char const*>(text.data()),
                               text.length() * sizeof(Orn::UString::unit_type));
  return std::hash<std::string_view>()(bytes);
}

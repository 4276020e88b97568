#include "bench/contenders/Walk.h"

#include "bench/orders/Views.h"

namespace bench {
namespace {

constexpr std::uint64_t START = 1;
constexpr std::uint64_t TEXT = 2;
constexpr std::uint64_t END = 3;

// The standard library's own differs between word sizes.
std::uint64_t hash(std::string_view bytes) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (char const c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  return hash;
}

std::uint64_t scramble(std::uint64_t value) {
  value = (value ^ (value >> 32U)) * 0xd6e8feb86659fd93U;
  return value ^ (value >> 32U);
}

std::string utf8_of(std::u16string_view text) {
  return Orn::UString(text.data(), text.size()).to_utf8();
}

}  // namespace

void Digest::start(Orn::XmlTag::Id id) {
  mix(START);
  mix(static_cast<std::uint64_t>(id));
}

void Digest::attribute(Orn::XmlTag::Id id, std::string_view value) {
  attributes_ += scramble(hash(value) + static_cast<std::uint64_t>(id));
}

void Digest::attribute(Orn::XmlTag::Id id, std::u16string_view value) {
  attribute(id, utf8_of(value));
}

void Digest::attribute(Orn::XmlTag::Id id, Orn::UString const& value) {
  attribute(id, value.to_utf8());
}

void Digest::text(std::string_view text) {
  mix(TEXT);
  mix(hash(text));
}

void Digest::text(std::u16string_view text) { this->text(utf8_of(text)); }

void Digest::text(Orn::UString const& text) { this->text(text.to_utf8()); }

void Digest::end() { mix(END); }

void Digest::mix(std::uint64_t more) {
  value_ = scramble(value_ * 31 + attributes_) + more;
  attributes_ = 0;
}

}  // namespace bench

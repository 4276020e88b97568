#include "tqutil/UMessage.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

namespace Orn {
namespace {

UString decimal(long value) { return UString::from_utf8(std::to_string(value)); }

// The number of messages that a catalogue's header, "NAME COUNT", declares; as many as there can be
// when it declares none.
long message_count(char const** catalogue) {
  char const* const blank = catalogue[0] == nullptr ? nullptr : std::strrchr(catalogue[0], ' ');
  if (blank == nullptr) return std::numeric_limits<int>::max();
  char* end = nullptr;
  long const count = std::strtol(blank + 1, &end, 10);
  return end == blank + 1 || *end != '\0' ? std::numeric_limits<int>::max() : count;
}

// Null when there is no such message.
char const* find_message(char const** catalogue, int index) {
  if (catalogue == nullptr || index < 0 || index > message_count(catalogue)) return nullptr;
  return catalogue[index];
}

UString unknown_message(char const** catalogue, int index) {
  UString text(u"Message ");
  text.append(decimal(index)).append(u" of ");
  if (catalogue == nullptr || catalogue[0] == nullptr) return text.append(u"no catalogue");
  return text.append(u"the catalogue '").append(UString::from_utf8(catalogue[0])).append(u"'");
}

// The length of the placeholder that `format` begins with; 0 when it begins with none.
std::size_t placeholder_length(std::string_view format) {
  for (std::string_view const placeholder : {"%s", "%d", "%ld"}) {
    if (format.substr(0, placeholder.size()) == placeholder) return placeholder.size();
  }
  return 0;
}

}  // namespace

UMessage::Arg const UMessage::Arg::nil;

UMessage::Arg::~Arg() = default;

UString UMessage::Arg::text() const {
  struct Print {
    UString operator()(std::monostate) const { return {}; }
    UString operator()(std::int32_t value) const { return decimal(value); }
    UString operator()(long value) const { return decimal(value); }
    UString operator()(UString const& value) const { return value; }
  };
  return std::visit(Print(), value_.value_);
}

UMessage::UMessage(char const** catalogue, int index, Arg const& a1, Arg const& a2)
    : UMessage(catalogue, index, a1, a2, Arg::nil, Arg::nil, Arg::nil, Arg::nil, Arg::nil, Arg::nil,
               Arg::nil, Arg::nil) {}

UMessage::UMessage(char const** catalogue, int index, Arg const& a1, Arg const& a2, Arg const& a3,
                   Arg const& a4, Arg const& a5, Arg const& a6, Arg const& a7, Arg const& a8,
                   Arg const& a9, Arg const& a10)
    : catalogue_(catalogue), index_(index) {
  Arg const* const slots[MAX_ARGS] = {&a1, &a2, &a3, &a4, &a5, &a6, &a7, &a8, &a9, &a10};
  std::size_t used = MAX_ARGS;
  while (used > 0 && slots[used - 1]->kind() == Arg::KIND_NIL) --used;
  args_.reserve(used);
  for (std::size_t i = 0; i < used; ++i) args_.push_back(*slots[i]);
}

UMessage::Arg const& UMessage::arg(int i) const noexcept {
  if (i < 1 || static_cast<std::size_t>(i) > args_.size()) return Arg::nil;
  return args_[static_cast<std::size_t>(i) - 1];
}

UString UMessage::text() const {
  char const* const message = find_message(catalogue_, index_);
  if (message == nullptr) return unknown_message(catalogue_, index_);
  UString result;
  std::string_view rest(message);
  int next_arg = 1;
  while (!rest.empty()) {
    std::size_t const literal = std::min(rest.find('%'), rest.size());
    result.append(UString::from_utf8(rest.substr(0, literal)));
    rest.remove_prefix(literal);
    if (rest.empty()) break;
    if (std::size_t const length = placeholder_length(rest); length != 0) {
      result.append(arg(next_arg++).text());
      rest.remove_prefix(length);
    } else {
      result.append(UString::unit_type{'%'});
      rest.remove_prefix(rest.substr(0, 2) == "%%" ? 2 : 1);
    }
  }
  return result;
}

UString UMessage::sprintf(char const** catalogue, int index, Arg const& a) {
  return UMessage(catalogue, index, a).text();
}

}  // namespace Orn

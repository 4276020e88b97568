#include "vocabulary/Names.h"

#include "tqutil/UString.h"

namespace vocabulary {

std::string to_utf8(std::u16string_view text) {
  return Orn::UString(text.data(), text.size()).to_utf8();
}

std::string to_string(NameView const& name) {
  std::string const local = to_utf8(name.local);
  return name.uri.empty() ? local : "{" + to_utf8(name.uri) + "}" + local;
}

void NameList::add(NameView const& name, Use use, std::string const& file, std::size_t line) {
  auto place = places_.find(name);
  if (place == places_.end()) {
    Name const own{std::u16string(name.uri), std::u16string(name.local)};
    place = places_.emplace(own, entries_.size()).first;
    entries_.push_back({own, {file, line}});
  }
  if (use == ATTRIBUTE) entries_[place->second].is_attribute = true;
}

void NameList::add_prefix(std::u16string_view uri, std::u16string_view prefix) {
  prefixes_.emplace(uri, prefix);
}

std::u16string NameList::prefix_of(std::u16string_view uri) const {
  auto const place = prefixes_.find(uri);
  return place == prefixes_.end() ? std::u16string() : place->second;
}

}  // namespace vocabulary

#include "tqxml/writer/NamespaceTable.h"

#include <algorithm>
#include <utility>

namespace Orn {

bool NamespaceTable::Declaration::operator<(Declaration const& other) const noexcept {
  int const uris = uri == other.uri ? 0 : uri->compare(*other.uri);
  return uris < 0 || (uris == 0 && prefix < other.prefix);
}

// Most tables are filled in order. What is behind all others moves none of them, and is the first
// prefix of no namespace that had one.
UString const& NamespaceTable::add(UString const& uri, UString prefix) {
  Declaration added{&uri, std::move(prefix)};
  if (!goes_behind_few(added)) return insert(std::move(added));
  few_[few_count_] = std::move(added);
  return few_[few_count_++].prefix;
}

// Whether it can stand behind the few, in order and with a place.
bool NamespaceTable::goes_behind_few(Declaration const& added) const {
  if (few_count_ == 0) return many_.empty();
  return few_count_ < few_.size() && few_[few_count_ - 1] < added;
}

UString const& NamespaceTable::insert(Declaration&& added) {
  answers_.forget();
  if (few_count_ != 0) {
    auto* const end = few_.begin() + few_count_;
    auto* const place = std::lower_bound(few_.begin(), end, added);
    if (place != end && !(added < *place)) return place->prefix;
    if (end != few_.end()) return insert_among_few(place, std::move(added));
    move_few_to_many();
  }
  return many_.insert(std::move(added)).first->prefix;
}

UString const& NamespaceTable::insert_among_few(Declaration* place, Declaration&& added) {
  auto* const end = few_.begin() + few_count_;
  std::move_backward(place, end, end + 1);
  *place = std::move(added);
  ++few_count_;
  return place->prefix;
}

void NamespaceTable::move_few_to_many() {
  std::set<Declaration> all(few_.begin(), few_.begin() + few_count_);
  many_.swap(all);
  few_count_ = 0;
}

UString const* NamespaceTable::find(UString const& uri) const {
  for (std::size_t i = 0; i < few_count_; ++i) {
    if (few_[i].uri == &uri || *few_[i].uri == uri) return &few_[i].prefix;
  }
  if (many_.empty()) return nullptr;
  // The empty prefix sorts before all others.
  auto const first = many_.lower_bound(Declaration{&uri, UString()});
  return first != many_.end() && *first->uri == uri ? &first->prefix : nullptr;
}

}  // namespace Orn

#include "tqxml/writer/NamespaceTable.h"

#include <algorithm>
#include <utility>

namespace Orn {

bool NamespaceTable::Declaration::operator<(Declaration const& other) const noexcept {
  int const uris = uri == other.uri ? 0 : uri->compare(*other.uri);
  return uris < 0 || (uris == 0 && prefix < other.prefix);
}

void NamespaceTable::add(UString const& uri, UString prefix) {
  answers_.forget();
  Declaration added{&uri, std::move(prefix)};
  if (many_.empty() && add_to_few(added)) return;
  if (many_.empty()) {
    std::set<Declaration> all(few_.begin(), few_.begin() + few_count_);
    many_.swap(all);
    few_count_ = 0;
  }
  many_.insert(std::move(added));
}

// Whether there was a place.
bool NamespaceTable::add_to_few(Declaration& added) {
  auto* const end = few_.begin() + few_count_;
  auto* const place = std::lower_bound(few_.begin(), end, added);
  if (place != end && !(added < *place)) return true;
  if (end == few_.end()) return false;
  std::move_backward(place, end, end + 1);
  *place = std::move(added);
  ++few_count_;
  return true;
}

UString const* NamespaceTable::find(UString const& uri) const {
  for (std::size_t i = 0; i < few_count_; ++i) {
    if (*few_[i].uri == uri) return &few_[i].prefix;
  }
  if (many_.empty()) return nullptr;
  // The empty prefix sorts before all others.
  auto const first = many_.lower_bound(Declaration{&uri, UString()});
  return first != many_.end() && *first->uri == uri ? &first->prefix : nullptr;
}

}  // namespace Orn

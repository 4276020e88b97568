#include "tqxml/writer/NamespaceTable.h"

namespace Orn {

void NamespaceTable::add(UString const& uri, UString const& prefix) {
  declarations_.insert(Declaration{&uri, prefix});
  answers_.forget();
}

UString const* NamespaceTable::find(UString const& uri) const {
  if (declarations_.empty()) return nullptr;
  // The empty prefix sorts before all others.
  auto const first = declarations_.lower_bound(Declaration{&uri, UString()});
  return first != declarations_.end() && *first->uri == uri ? &first->prefix : nullptr;
}

}  // namespace Orn

#include "bench/orders/NameIndex.h"

#include <utility>

#include "bench/orders/Names.h"
#include "bench/orders/PrefixedName.h"
#include "bench/orders/Views.h"

namespace bench {
namespace {

using Orn::XmlTag;

std::vector<XmlTag::Id> all_order_names() {
  std::vector<XmlTag::Id> ids{orders, order};
  ids.insert(ids.end(), attribute_names.begin(), attribute_names.end());
  ids.insert(ids.end(), field_names.begin(), field_names.end());
  return ids;
}

}  // namespace

template <class Char>
void NameTable<Char>::add(View uri, View name, XmlTag::Id id) {
  if (++used_ > slots_.size() / 2) grow();
  std::size_t slot = hash(uri, name) & mask();
  while (slots_[slot].id != XmlTag::NO_TAG) slot = (slot + 1) & mask();
  slots_[slot] = {std::basic_string<Char>(uri), std::basic_string<Char>(name), id};
}

template <class Char>
void NameTable<Char>::grow() {
  std::vector<Entry> const old = std::exchange(slots_, std::vector<Entry>(2 * slots_.size()));
  used_ = 1;
  for (Entry const& entry : old) {
    if (entry.id != XmlTag::NO_TAG) add(entry.uri, entry.name, entry.id);
  }
}

template class NameTable<char>;
template class NameTable<char16_t>;

NameIndex::NameIndex(std::vector<XmlTag::Id> const& ids) {
  for (XmlTag::Id const id : ids) {
    XmlTag const& tag = XmlTag::lookup(id);
    utf16_.add(utf16_view(tag.ns()), utf16_view(tag.simple_name()), id);
    utf8_.add(tag.ns().to_utf8(), tag.simple_name().to_utf8(), id);
    qualified_.add({}, prefixed_name(id), id);
  }
}

NameIndex const& order_names() {
  static NameIndex const index(all_order_names());
  return index;
}

}  // namespace bench

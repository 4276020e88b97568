#ifndef BENCH_ORDERS_NAMEINDEX_H
#define BENCH_ORDERS_NAMEINDEX_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tqutil/XmlTag.h"

namespace bench {

/// Pairs of a namespace URI and a name, hashed by what the name and the end of the URI are made of.
/// Looking up allocates nothing.
template <class Char>
class NameTable {
 public:
  using View = std::basic_string_view<Char>;

  void add(View uri, View name, Orn::XmlTag::Id id);

  /// NO_TAG for a pair that was not added.
  Orn::XmlTag::Id find(View uri, View name) const {
    for (std::size_t slot = hash(uri, name) & mask();; slot = (slot + 1) & mask()) {
      Entry const& entry = slots_[slot];
      if (entry.id == Orn::XmlTag::NO_TAG || entry.is(uri, name)) return entry.id;
    }
  }

 private:
  struct Entry {
    std::basic_string<Char> uri;
    std::basic_string<Char> name;
    Orn::XmlTag::Id id = Orn::XmlTag::NO_TAG;

    bool is(View other_uri, View other_name) const {
      return equal(name, other_name) && equal(uri, other_uri);
    }
  };

  // Comparing views of char16_t takes a loop in the standard library.
  static bool equal(View a, View b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Char)) == 0);
  }

  static std::size_t hash(View uri, View name) {
    std::uint32_t hash = uri.empty() ? 0 : static_cast<std::uint32_t>(uri.back());
    for (Char const c : name) hash = (hash ^ static_cast<std::uint32_t>(c)) * 0x01000193U;
    return hash ^ (hash >> 15U);
  }

  std::size_t mask() const { return slots_.size() - 1; }
  void grow();

  /// Their number is a power of two, and at least half of them are free.
  std::vector<Entry> slots_ = std::vector<Entry>(16);
  std::size_t used_ = 0;
};

extern template class NameTable<char>;
extern template class NameTable<char16_t>;

/// Names to numbers, for readers of libraries that have no registry of their own. Every one of them
/// maps its names here, in the encoding that it has them in.
class NameIndex {
 public:
  explicit NameIndex(std::vector<Orn::XmlTag::Id> const& ids);

  // Each gives NO_TAG for an unknown name.
  Orn::XmlTag::Id find(std::u16string_view uri, std::u16string_view name) const {
    return utf16_.find(uri, name);
  }
  Orn::XmlTag::Id find(std::string_view uri, std::string_view name) const {
    return utf8_.find(uri, name);
  }
  /// For readers that know nothing of namespaces: by the name with the prefix that the documents
  /// have, such as "N1:order".
  Orn::XmlTag::Id find_qualified(std::string_view name) const { return qualified_.find({}, name); }

 private:
  NameTable<char16_t> utf16_;
  NameTable<char> utf8_;
  NameTable<char> qualified_;
};

/// The names of the orders.
NameIndex const& order_names();

}  // namespace bench

#endif

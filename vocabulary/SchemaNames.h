#ifndef VOCABULARY_SCHEMANAMES_H
#define VOCABULARY_SCHEMANAMES_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "vocabulary/Names.h"

namespace vocabulary {

inline constexpr std::u16string_view SCHEMA_URI = u"http://www.w3.org/2001/XMLSchema";

/// Tells which names a schema declares, from its elements in the order of the document.
class SchemaNames {
 public:
  /// The value of the attribute without a namespace, if it is there.
  using Attributes = std::function<std::optional<std::u16string_view>(std::u16string_view)>;
  /// The namespace of a prefix at this place; the empty prefix has one, too.
  using Prefixes = std::function<std::u16string_view(std::u16string_view)>;

  /// A name that an element of the schema declares or refers to.
  struct Found {
    Name name;
    NameList::Use use;
  };

  std::optional<Found> start_element(NameView const& element, Attributes const& attributes,
                                     Prefixes const& prefixes);
  void end_element();

 private:
  void begin(Attributes const& attributes);
  Name declared_name(std::u16string_view local, NameList::Use use,
                     Attributes const& attributes) const;

  std::size_t depth_ = 0;
  /// The depth of the xs:annotation around, which may hold anything; 0 outside of one.
  std::size_t annotation_ = 0;
  std::u16string target_namespace_;
  bool elements_are_qualified_ = false;
  bool attributes_are_qualified_ = false;
};

}  // namespace vocabulary

#endif

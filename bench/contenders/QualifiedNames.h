#ifndef BENCH_CONTENDERS_QUALIFIEDNAMES_H
#define BENCH_CONTENDERS_QUALIFIEDNAMES_H

#include <array>

namespace bench {

// The documents' names with their prefixes, for writers that take them as they shall stand in the
// document. Those that know namespaces take them as well, and are spared to look the prefixes up.

inline constexpr char const* ROOT_NAME = "N1:orders";
inline constexpr char const* ORDER_NAME = "N1:order";
/// In the order of attribute_names.
inline constexpr std::array<char const*, 3> ATTRIBUTE_NAMES{"N1:number", "N1:date", "N1:status"};
/// In the order of field_names.
inline constexpr std::array<char const*, 6> FIELD_NAMES{"N1:buyer", "N1:street", "N1:note",
                                                        "N2:part",  "N2:maker",  "N2:price"};

struct NamespaceDeclaration {
  char const* name;
  char const* uri;
};

inline constexpr std::array<NamespaceDeclaration, 2> NAMESPACE_DECLARATIONS{{
    {"xmlns:N1", "urn:example:orders"},
    {"xmlns:N2", "urn:example:parts"},
}};

}  // namespace bench

#endif

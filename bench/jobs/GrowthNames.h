#ifndef BENCH_JOBS_GROWTHNAMES_H
#define BENCH_JOBS_GROWTHNAMES_H

#include <cstdint>

#include "bench/orders/NameIndex.h"
#include "tqutil/XmlTag.h"

namespace bench {

// More names than anybody writes down: attributes that can all stand on one element, and namespaces
// with an element each.

inline constexpr std::int32_t GROWTH_ATTRIBUTES = 10000;
inline constexpr std::int32_t GROWTH_NAMESPACES = 4000;

/// From 0 on.
Orn::XmlTag::Id growth_attribute(std::int32_t index);
/// The element of the namespace with that index, from 0 on.
Orn::XmlTag::Id growth_element(std::int32_t index);

/// All of these names, and those of the orders.
NameIndex const& growth_names();

}  // namespace bench

#endif

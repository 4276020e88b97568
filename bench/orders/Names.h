#ifndef BENCH_ORDERS_NAMES_H
#define BENCH_ORDERS_NAMES_H

#include <array>

#include "tqutil/XmlTag.h"

namespace bench {

#include "tqutil/vocabulary/constants.h"
// The constants stand between the two.
#include "bench/orders/orders.def"
#include "tqutil/vocabulary/end.h"

/// In the order in which they are written.
inline constexpr std::array<Orn::XmlTag::Id, 3> attribute_names{number, date, status};
inline constexpr std::array<Orn::XmlTag::Id, 6> field_names{buyer, street, note,
                                                            part,  maker,  price};

}  // namespace bench

#endif

#ifndef JOBS_ORDER_H
#define JOBS_ORDER_H

#include <cstdint>
#include <vector>

#include "tqutil/UString.h"

// An order as a program keeps it. On the wire it is
//
//   <shop:order shop:id="2026-042" price:currency="EUR">
//     <shop:customer>Anna</shop:customer>
//     <shop:item shop:id="tea-1" shop:quantity="2" price:cents="350">green tea</shop:item>
//     <shop:note>ring twice</shop:note>
//   </shop:order>
//
// with any number of items, and a note or none.

struct Item {
  Orn::UString article;
  std::int32_t quantity = 0;
  std::int32_t cents = 0;
  Orn::UString text;
};

struct Order {
  Orn::UString number;
  Orn::UString currency;
  Orn::UString customer;
  std::vector<Item> items;
  Orn::UString note;
};

inline std::int64_t total_cents(Order const& order) {
  std::int64_t total = 0;
  for (Item const& item : order.items) total += std::int64_t{item.quantity} * item.cents;
  return total;
}

#endif

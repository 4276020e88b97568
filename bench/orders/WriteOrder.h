#ifndef BENCH_ORDERS_WRITEORDER_H
#define BENCH_ORDERS_WRITEORDER_H

#include <cstddef>

#include "bench/orders/Names.h"
#include "bench/orders/Orders.h"
#include "tqxml/writer/XmlDoc.h"

namespace bench {

/// Writes a record into the open root. The values of its attributes are of kinds that need no
/// escaping; the texts may hold anything.
inline void write_order(Orn::XmlDoc& doc, Order const& record) {
  doc.push_elem(order);
  for (std::size_t i = 0; i < attribute_names.size(); ++i) {
    doc.add_attr(attribute_names[i], record.attributes[i].utf16);
  }
  for (std::size_t i = 0; i < field_names.size(); ++i) {
    doc.add_elem(field_names[i], record.fields[i].utf16, true);
  }
  doc.pop_elem(order);
}

}  // namespace bench

#endif

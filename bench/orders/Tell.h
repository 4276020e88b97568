#ifndef BENCH_ORDERS_TELL_H
#define BENCH_ORDERS_TELL_H

#include <cstddef>

#include "bench/orders/Names.h"
#include "bench/orders/Orders.h"

namespace bench {

/// Tells a sink (bench/contenders/Walk.h) what a reader of the document with these records must
/// tell it.
template <class Sink>
void tell(Orders const& records, Sink& sink) {
  sink.start(orders);
  for (Order const& record : records) {
    sink.start(order);
    for (std::size_t i = 0; i < attribute_names.size(); ++i) {
      sink.attribute(attribute_names[i], record.attributes[i].utf8);
    }
    for (std::size_t i = 0; i < field_names.size(); ++i) {
      sink.start(field_names[i]);
      sink.text(record.fields[i].utf8);
      sink.end();
    }
    sink.end();
  }
  sink.end();
}

}  // namespace bench

#endif

#ifndef BENCH_ORDERS_ORDERS_H
#define BENCH_ORDERS_ORDERS_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "tqutil/UString.h"

namespace bench {

/// One text, ready for writers of either encoding.
struct Text {
  Orn::UString utf16;
  std::string utf8;
};

/// The values of one record: its attributes, and its child elements, each with a text.
struct Order {
  std::array<Text, 3> attributes;
  std::array<Text, 6> fields;
};

/// What one document holds: a root with these records.
using Orders = std::vector<Order>;

/// The same records in every run: as many as fit into a document of that many bytes, but at least
/// one. Texts have 5 to 40 characters; one in eight holds "&" or "<", one in sixteen characters
/// beyond ASCII.
Orders make_orders(std::size_t bytes);

}  // namespace bench

#endif

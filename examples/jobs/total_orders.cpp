// make_orders 1000000 | total_orders
//
// Totals the orders on the standard input while they come in, and needs the same memory however
// many they are. On a terminal a line shows how far it has come.

#include <sys/resource.h>
#include <unistd.h>

#include <cstdint>
#include <iostream>
#include <optional>
#include <stdexcept>

#include "numbers.h"
#include "shop.h"
#include "tqxml/sax/SaxParser.h"

using Orn::SaxParser;

namespace {

struct Totals {
  std::int64_t orders = 0;
  std::int64_t cents = 0;
};

// A line on the standard error stream that is written over and over, and only where somebody sees
// it.
class Progress {
 public:
  void show(Totals const& totals) const {
    if (!shown_ || totals.orders % ORDERS_BETWEEN != 0) return;
    std::cerr << '\r' << totals.orders << " orders" << std::flush;
  }
  void clear() const {
    if (shown_) std::cerr << "\r\x1b[K" << std::flush;
  }

 private:
  static constexpr std::int64_t ORDERS_BETWEEN = 1000;
  bool shown_ = isatty(STDERR_FILENO) != 0;
};

//! [item]
// Attributes come in any order, and once: all are taken before it is seen what is missing.
std::int64_t cents_of(SaxParser::Elem item) {
  std::optional<std::int64_t> quantity;
  std::optional<std::int64_t> cents;
  for (auto attr = item.next_attr(); !attr.is_nil(); attr = item.next_attr()) {
    if (attr.tag() == shop::quantity) quantity = whole_number(attr.data());
    if (attr.tag() == shop::cents) cents = whole_number(attr.data());
  }
  if (!quantity || !cents) throw std::runtime_error("an item has no quantity or no price");
  return *quantity * *cents;
}
//! [item]

//! [total]
// Each order is forgotten when the next one is taken: nothing keeps a handle on it.
Totals total(SaxParser::Elem orders, Progress const& progress) {
  orders.match(shop::orders);
  Totals totals;
  for (auto order = orders.next_child(); !order.is_nil(); order = orders.next_child()) {
    order.match(shop::order);
    for (auto part = order.next_child(); !part.is_nil(); part = order.next_child()) {
      if (part.tag() == shop::item) totals.cents += cents_of(part);
    }
    ++totals.orders;
    progress.show(totals);
  }
  return totals;
}
//! [total]

long peak_of_memory_in_kib() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

}  // namespace

int main() {
  std::ios::sync_with_stdio(false);
  SaxParser parser;
  Progress const progress;
  try {
    Totals const totals = total(parser.initialize(&std::cin), progress);
    progress.clear();
    std::cout << totals.orders << " orders, " << with_point(totals.cents) << " in all\n";
    std::cerr << "at most " << peak_of_memory_in_kib() << " KiB of memory\n";
  } catch (std::exception const& e) {
    progress.clear();
    std::cerr << e.what() << '\n';
    if (parser.error_line() > 0) {
      std::cerr << "line " << parser.error_line() << ", column " << parser.error_column() << ": "
                << parser.error_text() << '\n';
    }
    return 1;
  }
}

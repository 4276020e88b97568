#ifndef BENCH_ORDERS_ORDERMAKER_H
#define BENCH_ORDERS_ORDERMAKER_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

#include "bench/orders/Orders.h"

namespace bench {

/// Random numbers that are the same on every platform, which the distributions of the standard
/// library do not promise.
class Dice {
 public:
  explicit Dice(std::uint_fast32_t seed) : random_(seed) {}

  /// From 0 on, less than `n`, which must be small beside 2^31.
  std::size_t below(std::size_t n) { return random_() % n; }
  bool one_in(std::size_t n) { return below(n) == 0; }

 private:
  std::minstd_rand random_;
};

/// Gives one record after the other, without end. The values of the attributes are a number, a date
/// and a word, which need no escaping.
class OrderMaker {
 public:
  /// How many characters a text has.
  struct Lengths {
    std::size_t least = 5;
    std::size_t most = 40;
  };

  OrderMaker() = default;
  explicit OrderMaker(Lengths lengths) : lengths_(lengths) {}

  Order next();

 private:
  std::u16string text();

  Lengths lengths_;
  Dice dice_{20240229};
  std::size_t made_ = 0;
};

/// Bytes that a record takes in the document that this library writes.
std::size_t length_in_document(Order const& order);
/// Bytes of that document without its records.
std::size_t length_around_orders();

}  // namespace bench

#endif

#ifndef BENCH_ORDERS_ORDERSBUFFER_H
#define BENCH_ORDERS_ORDERSBUFFER_H

#include <cstdint>
#include <streambuf>
#include <string>

#include "bench/orders/OrderMaker.h"

namespace bench {

/// A document of orders of about that many bytes, that is made while it is read.
class OrdersBuffer : public std::streambuf {
 public:
  explicit OrdersBuffer(std::uint64_t bytes);

  /// Bytes made so far.
  std::uint64_t made() const { return made_; }

 protected:
  int_type underflow() override;

 private:
  void make_part();
  void give_part();

  std::uint64_t bytes_;
  std::uint64_t made_ = 0;
  bool ended_ = false;
  OrderMaker maker_;
  std::string part_;
};

}  // namespace bench

#endif

#include "bench/jobs/Samples.h"

#include <map>

#include "bench/orders/Names.h"
#include "bench/orders/WriteOrder.h"

namespace bench {
namespace {

Sample make_sample(std::size_t bytes) {
  Orders records = make_orders(bytes);
  Orn::XmlDoc doc(orders);
  for (Order const& record : records) write_order(doc, record);
  doc.close();
  return {std::move(records), doc.byte_array()};
}

}  // namespace

Sample const& sample(Size const& size) {
  static std::map<std::size_t, Sample> samples;
  auto const found = samples.find(size.bytes);
  if (found != samples.end()) return found->second;
  return samples.emplace(size.bytes, make_sample(size.bytes)).first->second;
}

}  // namespace bench

#include "bench/contenders/Contenders.h"
#include "bench/contenders/TqxmlReaders.h"
#include "bench/orders/Names.h"
#include "bench/orders/WriteOrder.h"
#include "tqxml/writer/XmlDoc.h"

namespace bench {
namespace {

std::string write(Orders const& records) {
  Orn::XmlDoc doc(orders);
  for (Order const& record : records) write_order(doc, record);
  doc.close();
  return doc.byte_array();
}

}  // namespace

void add_tqxml(Contenders& contenders) {
  contenders.writers.push_back({"tqxml", write});
  contenders.whole_readers.push_back({"tqxml", read_with<TqxmlWhole>()});
  contenders.whole_readers.push_back({"tqxml_stream", read_with<TqxmlStream>()});
  contenders.stream_readers.push_back({"tqxml", read_with<TqxmlStream>()});
}

}  // namespace bench

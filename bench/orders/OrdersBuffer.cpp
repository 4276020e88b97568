#include "bench/orders/OrdersBuffer.h"

#include <cstddef>

#include "bench/orders/Names.h"
#include "bench/orders/PrefixedName.h"

namespace bench {
namespace {

void append_escaped(std::string& out, std::string const& text) {
  for (char const c : text) {
    if (c == '&') {
      out += "&amp;";
    } else if (c == '<') {
      out += "&lt;";
    } else {
      out += c;
    }
  }
}

void append_order(std::string& out, Order const& record) {
  out += "<" + prefixed_name(order);
  for (std::size_t i = 0; i < attribute_names.size(); ++i) {
    out += " " + prefixed_name(attribute_names[i]) + "=\"" + record.attributes[i].utf8 + "\"";
  }
  out += ">";
  for (std::size_t i = 0; i < field_names.size(); ++i) {
    std::string const name = prefixed_name(field_names[i]);
    out += "<" + name + ">";
    append_escaped(out, record.fields[i].utf8);
    out += "</" + name + ">";
  }
  out += "</" + prefixed_name(order) + ">";
}

}  // namespace

OrdersBuffer::OrdersBuffer(std::uint64_t bytes) : bytes_(bytes) {
  part_ =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
      "<N1:orders xmlns:N1=\"urn:example:orders\" xmlns:N2=\"urn:example:parts\">";
  give_part();
}

OrdersBuffer::int_type OrdersBuffer::underflow() {
  if (ended_) return traits_type::eof();
  make_part();
  give_part();
  return traits_type::to_int_type(*gptr());
}

void OrdersBuffer::make_part() {
  part_.clear();
  if (made_ < bytes_) {
    append_order(part_, maker_.next());
  } else {
    part_ = "</N1:orders>";
    ended_ = true;
  }
}

void OrdersBuffer::give_part() {
  made_ += part_.size();
  setg(part_.data(), part_.data(), part_.data() + part_.size());
}

}  // namespace bench

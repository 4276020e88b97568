// What is the same with 32 and with 64 bits.

#include <cstdint>
#include <limits>

#include "attribute.h"
#include "shop.h"
#include "show.h"

using Orn::DomParser;
using Orn::UString;
using Orn::XmlDoc;

namespace {

void large_number() {
  section("large-number");
  //! [large-number]
  std::int64_t const number = 20'000'000'000;
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.add_attr(shop::id, UString::from_utf8(std::to_string(number)));  // long may have 32 bits
  doc.close();
  DomParser parser(doc);
  std::string const value = attribute(parser.root(), shop::id).data().to_utf8();
  std::cout << (std::stoll(value) == number) << '\n';
  //! [large-number]
}

}  // namespace

int main() { large_number(); }

#ifndef TESTS_DOM_DOMREADER_H
#define TESTS_DOM_DOMREADER_H

#include <string>

#include "tests/support/ReaderTest.h"
#include "tqxml/dom/DomParser.h"

namespace tests {

class DomReader {
 public:
  using Elem = Orn::DomParser::Elem;
  using Attribute = Orn::DomParser::Attribute;
  static constexpr char16_t const* ELEM = u"DomParser::Elem";
  static constexpr char16_t const* ATTRIBUTE = u"DomParser::Attribute";

  explicit DomReader(std::string const& xml) : parser_(xml) {}
  Elem root() { return parser_.root(); }

 private:
  Orn::DomParser parser_;
};

using DomTest = ReaderTest<DomReader>;

}  // namespace tests

#endif

#ifndef TESTS_SAX_SAXREADER_H
#define TESTS_SAX_SAXREADER_H

#include <sstream>
#include <string>

#include "tests/support/ReaderTest.h"
#include "tqxml/sax/SaxParser.h"

namespace tests {

class SaxReader {
 public:
  using Elem = Orn::SaxParser::Elem;
  using Attribute = Orn::SaxParser::Attribute;
  static constexpr char16_t const* ELEM = u"SaxParser::Elem";
  static constexpr char16_t const* ATTRIBUTE = u"SaxParser::Attribute";

  explicit SaxReader(std::string const& xml) : stream_(xml), parser_(stream_) {}
  Elem root() { return parser_.root(); }

 private:
  std::istringstream stream_;
  Orn::SaxParser parser_;
};

using SaxTest = ReaderTest<SaxReader>;

}  // namespace tests

#endif

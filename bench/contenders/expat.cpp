#include <expat.h>

#include <cstddef>
#include <memory>
#include <new>
#include <stdexcept>
#include <string_view>

#include "bench/contenders/Contenders.h"
#include "bench/contenders/EventWalk.h"
#include "bench/contenders/Pieces.h"
#include "bench/orders/NameIndex.h"

namespace bench {
namespace {

/// Stands in the names that Expat reports, between URI and local name.
constexpr char SEPARATOR = '|';

Orn::XmlTag::Id id_of(std::string_view name) {
  std::size_t const separator = name.rfind(SEPARATOR);
  if (separator == std::string_view::npos) return order_names().find(std::string_view(), name);
  return order_names().find(name.substr(0, separator), name.substr(separator + 1));
}

template <class Sink>
class Parser {
 public:
  explicit Parser(Sink& sink) : walk_(sink), parser_(XML_ParserCreateNS(nullptr, SEPARATOR)) {
    if (parser_ == nullptr) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), &walk_);
    XML_SetElementHandler(parser_.get(), start, end);
    XML_SetCharacterDataHandler(parser_.get(), characters);
  }

  void parse(std::string_view piece, bool is_last) {
    auto const length = static_cast<int>(piece.size());
    if (XML_Parse(parser_.get(), piece.data(), length, is_last) != XML_STATUS_OK) {
      throw std::runtime_error(XML_ErrorString(XML_GetErrorCode(parser_.get())));
    }
  }

 private:
  using Walk = EventWalk<Sink, char>;

  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  static void XMLCALL start(void* data, XML_Char const* name, XML_Char const** attributes) {
    Walk& walk = *static_cast<Walk*>(data);
    walk.start(id_of(name));
    // Names and values take turns.
    for (; *attributes != nullptr; attributes += 2)
      walk.attribute(id_of(*attributes), attributes[1]);
  }

  static void XMLCALL end(void* data, XML_Char const*) { static_cast<Walk*>(data)->end(); }

  static void XMLCALL characters(void* data, XML_Char const* part, int length) {
    static_cast<Walk*>(data)->characters({part, static_cast<std::size_t>(length)});
  }

  Walk walk_;
  std::unique_ptr<XML_ParserStruct, Free> parser_;
};

/// There is no tree to be had: the events of a document that is given at once.
struct Whole {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    Parser<Sink>(sink).parse(document, true);
  }
};

struct Stream {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    Parser<Sink> parser(sink);
    Pieces pieces(document);
    for (std::string_view piece = pieces.next(); !piece.empty(); piece = pieces.next()) {
      parser.parse(piece, false);
    }
    parser.parse({}, true);
  }
};

}  // namespace

void add_expat(Contenders& contenders) {
  contenders.whole_readers.push_back({"expat", read_with<Whole>()});
  contenders.stream_readers.push_back({"expat", read_with<Stream>()});
}

}  // namespace bench

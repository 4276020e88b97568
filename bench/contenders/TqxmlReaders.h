#ifndef BENCH_CONTENDERS_TQXMLREADERS_H
#define BENCH_CONTENDERS_TQXMLREADERS_H

#include <istream>
#include <string>
#include <string_view>

#include "bench/contenders/Pieces.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/sax/SaxParser.h"

namespace bench {

template <class Elem, class Sink>
void walk_attributes(Elem& element, Sink& sink) {
  for (auto attribute = element.next_attr(); !attribute.is_nil(); attribute = element.next_attr()) {
    sink.attribute(attribute.tag(), attribute.data());
  }
}

/// Each child is dropped before the next is taken, which is what bounds the memory of a stream.
template <class Elem, class Sink>
void walk(Elem element, Sink& sink) {
  sink.start(element.tag());
  walk_attributes(element, sink);
  bool has_children = false;
  for (Elem child = element.next_child(); !child.is_nil(); child = element.next_child()) {
    has_children = true;
    walk(std::move(child), sink);
  }
  if (!has_children) sink.text(element.data());
  sink.end();
}

struct TqxmlWhole {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    Orn::DomParser parser{std::string(document)};
    walk(parser.root(), sink);
  }
};

struct TqxmlStream {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    PieceBuffer pieces(document);
    std::istream in(&pieces);
    Orn::SaxParser parser(in);
    walk(parser.root(), sink);
  }
};

}  // namespace bench

#endif

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlreader.h>
#include <libxml/xmlwriter.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/contenders/Contenders.h"
#include "bench/contenders/EventWalk.h"
#include "bench/contenders/Pieces.h"
#include "bench/contenders/QualifiedNames.h"
#include "bench/orders/NameIndex.h"

namespace bench {
namespace {

template <auto free>
struct Free {
  template <class Resource>
  void operator()(Resource* resource) const {
    free(resource);
  }
};

template <class Resource, auto free>
using Owned = std::unique_ptr<Resource, Free<free>>;

template <class Owner>
Owner made(Owner owner) {
  if (owner == nullptr) throw std::bad_alloc();
  return owner;
}

xmlChar const* xml_text(char const* text) { return reinterpret_cast<xmlChar const*>(text); }

std::string_view view(xmlChar const* text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<char const*>(text);
}

class DocumentWriter {
 public:
  void start_document() { check(xmlTextWriterStartDocument(writer(), nullptr, "UTF-8", nullptr)); }
  void start(char const* name) { check(xmlTextWriterStartElement(writer(), xml_text(name))); }
  void attribute(char const* name, char const* value) {
    check(xmlTextWriterWriteAttribute(writer(), xml_text(name), xml_text(value)));
  }
  void leaf(char const* name, char const* text) {
    check(xmlTextWriterWriteElement(writer(), xml_text(name), xml_text(text)));
  }
  void end() { check(xmlTextWriterEndElement(writer())); }
  void end_document() { check(xmlTextWriterEndDocument(writer())); }

  /// The document, once it has been ended.
  std::string text() const {
    return {reinterpret_cast<char const*>(xmlBufferContent(buffer_.get())),
            static_cast<std::size_t>(xmlBufferLength(buffer_.get()))};
  }

 private:
  xmlTextWriter* writer() const { return writer_.get(); }

  static void check(int result) {
    if (result < 0) throw std::runtime_error("libxml2 cannot write");
  }

  Owned<xmlBuffer, xmlBufferFree> buffer_ = made(decltype(buffer_)(xmlBufferCreate()));
  Owned<xmlTextWriter, xmlFreeTextWriter> writer_ =
      made(decltype(writer_)(xmlNewTextWriterMemory(buffer_.get(), 0)));
};

void write_order(DocumentWriter& writer, Order const& record) {
  writer.start(ORDER_NAME);
  for (std::size_t i = 0; i < ATTRIBUTE_NAMES.size(); ++i) {
    writer.attribute(ATTRIBUTE_NAMES[i], record.attributes[i].utf8.c_str());
  }
  for (std::size_t i = 0; i < FIELD_NAMES.size(); ++i) {
    writer.leaf(FIELD_NAMES[i], record.fields[i].utf8.c_str());
  }
  writer.end();
}

std::string write(Orders const& records) {
  DocumentWriter writer;
  writer.start_document();
  writer.start(ROOT_NAME);
  for (NamespaceDeclaration const& each : NAMESPACE_DECLARATIONS) {
    writer.attribute(each.name, each.uri);
  }
  for (Order const& record : records) write_order(writer, record);
  writer.end();
  writer.end_document();
  return writer.text();
}

constexpr int PARSE_OPTIONS = XML_PARSE_NONET | XML_PARSE_COMPACT;

std::runtime_error parse_error() {
  xmlError const* const error = xmlGetLastError();
  return std::runtime_error(error == nullptr ? "libxml2 cannot parse" : error->message);
}

/// An element or an attribute.
template <class Node>
Orn::XmlTag::Id id_of(Node const& node) {
  return order_names().find(node.ns == nullptr ? std::string_view() : view(node.ns->href),
                            view(node.name));
}

/// What the text nodes from this one on hold. It is one as a rule; otherwise they are put together
/// in `space`.
std::string_view text_from(xmlNode const* node, std::string& space) {
  if (node == nullptr) return {};
  if (node->next == nullptr) return view(node->content);
  space.clear();
  for (; node != nullptr; node = node->next) space += view(node->content);
  return space;
}

template <class Walk>
void tell_attributes(xmlNode const& element, Walk& walk, std::string& space) {
  for (xmlAttr const* each = element.properties; each != nullptr; each = each->next) {
    walk.attribute(id_of(*each), text_from(each->children, space));
  }
}

template <class Sink>
class TreeWalk {
 public:
  explicit TreeWalk(Sink& sink) : sink_(sink) {}

  void walk(xmlNode const& element) {
    sink_.start(id_of(element));
    tell_attributes(element, sink_, space_);
    bool has_children = false;
    for (xmlNode const* child = element.children; child != nullptr; child = child->next) {
      if (child->type != XML_ELEMENT_NODE) continue;
      has_children = true;
      walk(*child);
    }
    if (!has_children) sink_.text(text_from(element.children, space_));
    sink_.end();
  }

 private:
  Sink& sink_;
  std::string space_;
};

struct Whole {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    Owned<xmlDoc, xmlFreeDoc> const parsed(xmlReadMemory(
        document.data(), static_cast<int>(document.size()), nullptr, nullptr, PARSE_OPTIONS));
    if (parsed == nullptr) throw parse_error();
    TreeWalk<Sink>(sink).walk(*xmlDocGetRootElement(parsed.get()));
  }
};

int read_piece(void* pieces, char* to, int most) {
  return static_cast<int>(static_cast<Pieces*>(pieces)->read(to, static_cast<std::size_t>(most)));
}

template <class Sink>
class PullWalk {
 public:
  PullWalk(Pieces& pieces, Sink& sink)
      : walk_(sink),
        reader_(made(decltype(reader_)(
            xmlReaderForIO(read_piece, nullptr, &pieces, nullptr, nullptr, PARSE_OPTIONS)))) {}

  void walk() {
    int more = 0;
    while ((more = xmlTextReaderRead(reader_.get())) == 1) tell();
    if (more < 0) throw parse_error();
  }

 private:
  void tell() {
    switch (xmlTextReaderNodeType(reader_.get())) {
      case XML_READER_TYPE_ELEMENT:
        tell_start();
        break;
      case XML_READER_TYPE_TEXT:
      case XML_READER_TYPE_CDATA:
      case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
        walk_.characters(view(xmlTextReaderConstValue(reader_.get())));
        break;
      case XML_READER_TYPE_END_ELEMENT:
        walk_.end();
        break;
      default:
        break;
    }
  }

  /// The reader makes a node of each start tag anyway. Its names and values are there for the
  /// taking, whereas the reader's own functions look strings up for each of them.
  void tell_start() {
    xmlNode const& element = *xmlTextReaderCurrentNode(reader_.get());
    walk_.start(id_of(element));
    tell_attributes(element, walk_, space_);
    if (xmlTextReaderIsEmptyElement(reader_.get()) == 1) walk_.end();
  }

  EventWalk<Sink, char> walk_;
  std::string space_;
  Owned<xmlTextReader, xmlFreeTextReader> reader_;
};

struct Stream {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    Pieces pieces(document);
    PullWalk<Sink>(pieces, sink).walk();
  }
};

}  // namespace

void add_libxml2(Contenders& contenders) {
  contenders.writers.push_back({"libxml2", write});
  contenders.whole_readers.push_back({"libxml2", read_with<Whole>()});
  contenders.stream_readers.push_back({"libxml2", read_with<Stream>()});
}

}  // namespace bench

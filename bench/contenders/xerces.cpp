#include <memory>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>

#include "bench/contenders/Contenders.h"
#include "bench/contenders/XercesReaders.h"
#include "bench/orders/Names.h"
#include "bench/orders/Views.h"

namespace bench {
namespace {

using Orn::XmlTag;

struct Release {
  template <class Resource>
  void operator()(Resource* resource) const {
    resource->release();
  }
};

template <class Resource>
using Owned = std::unique_ptr<Resource, Release>;

/// An element or attribute name as Xerces wants it.
struct QualifiedName {
  explicit QualifiedName(XmlTag::Id id) {
    XmlTag const& tag = XmlTag::lookup(id);
    uri = utf16_view(tag.ns());
    name = (tag.ns_id() == ns_orders ? u"N1:" : u"N2:");
    name += utf16_view(tag.simple_name());
  }

  std::u16string uri;
  std::u16string name;
};

/// The names are made once a program, as its writer would.
QualifiedName const& qualified(XmlTag::Id id) {
  static std::vector<QualifiedName> const names = [] {
    std::vector<QualifiedName> made;
    for (int number = orders; number <= price; ++number) made.emplace_back(XmlTag::Id(number));
    return made;
  }();
  return names[static_cast<std::size_t>(id - orders)];
}

XMLCh const* text_of(Text const& text) { return utf16_view(text.utf16).data(); }

xercesc::DOMElement* new_element(xercesc::DOMDocument& document, XmlTag::Id id) {
  QualifiedName const& name = qualified(id);
  return document.createElementNS(name.uri.c_str(), name.name.c_str());
}

xercesc::DOMElement* new_order(xercesc::DOMDocument& document, Order const& record) {
  xercesc::DOMElement* const element = new_element(document, order);
  for (std::size_t i = 0; i < attribute_names.size(); ++i) {
    QualifiedName const& name = qualified(attribute_names[i]);
    element->setAttributeNS(name.uri.c_str(), name.name.c_str(), text_of(record.attributes[i]));
  }
  for (std::size_t i = 0; i < field_names.size(); ++i) {
    xercesc::DOMElement* const field = new_element(document, field_names[i]);
    field->appendChild(document.createTextNode(text_of(record.fields[i])));
    element->appendChild(field);
  }
  return element;
}

void declare_namespaces(xercesc::DOMElement& root) {
  XMLCh const* const xmlns = xercesc::XMLUni::fgXMLNSURIName;
  root.setAttributeNS(xmlns, u"xmlns:N1", qualified(orders).uri.c_str());
  root.setAttributeNS(xmlns, u"xmlns:N2", qualified(part).uri.c_str());
}

std::string serialized(xercesc::DOMImplementation& dom, xercesc::DOMDocument const& document) {
  Owned<xercesc::DOMLSSerializer> const serializer(dom.createLSSerializer());
  Owned<xercesc::DOMLSOutput> const output(dom.createLSOutput());
  xercesc::MemBufFormatTarget target;
  output->setEncoding(u"UTF-8");
  output->setByteStream(&target);
  serializer->write(&document, output.get());
  return {reinterpret_cast<char const*>(target.getRawBuffer()), target.getLen()};
}

/// Makes a document of nodes and serialises it, the only way of writing that Xerces has.
std::string write(Orders const& records) {
  xercesc::DOMImplementation& dom =
      *xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
  QualifiedName const& name = qualified(orders);
  Owned<xercesc::DOMDocument> const document(
      dom.createDocument(name.uri.c_str(), name.name.c_str(), nullptr));
  xercesc::DOMElement& root = *document->getDocumentElement();
  declare_namespaces(root);
  for (Order const& record : records) root.appendChild(new_order(*document, record));
  return serialized(dom, *document);
}

struct Whole {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    read_xerces_whole(document, order_names(), sink);
  }
};

template <class Names>
struct Stream {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    PieceBuffer pieces(document);
    std::istream in(&pieces);
    read_xerces_stream<Names>(in, order_names(), sink);
  }
};

}  // namespace

// Xerces is initialised already, by this library.
void add_xerces(Contenders& contenders) {
  contenders.writers.push_back({"xerces", write});
  contenders.whole_readers.push_back({"xerces", read_with<Whole>()});
  contenders.stream_readers.push_back({"xerces", read_with<Stream<LookedUpNames>>()});
  contenders.stream_readers.push_back({"xerces_cached", read_with<Stream<RememberedNames>>()});
}

}  // namespace bench

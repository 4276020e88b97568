#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "tests/conformance/Reading.h"
#include "tests/conformance/TreeText.h"
#include "tests/dom/XercesReference.h"
#include "tqutil/UString.h"

namespace tests {
namespace {

using xercesc::DOMNode;

std::u16string_view view(XMLCh const* text) {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}

std::string utf8(XMLCh const* text) { return Orn::UString(text).to_utf8(); }

std::string complaint_of(xercesc::SAXParseException const& e) {
  return std::to_string(e.getLineNumber()) + ":" + std::to_string(e.getColumnNumber()) + " " +
         utf8(e.getMessage());
}

std::string complaint_of(int code, XMLCh const* text) {
  return "exception " + std::to_string(code) + " " + utf8(text);
}

/// A TreeText whose names are entered into the registry.
class NamedTree {
 public:
  explicit NamedTree(DocumentNames* names) : names_(names) {}

  void start(XMLCh const* uri, XMLCh const* name) {
    enter(uri, name);
    tree_.start(view(uri), view(name));
  }
  void attribute(XMLCh const* uri, XMLCh const* name, XMLCh const* value) {
    enter(uri, name);
    tree_.attribute(view(uri), view(name), view(value));
  }
  void end(std::u16string_view data) { tree_.end(data); }
  std::u16string const& text() const { return tree_.text(); }

 private:
  void enter(XMLCh const* uri, XMLCh const* name) {
    if (names_ != nullptr) names_->number_of(view(uri), view(name));
  }

  DocumentNames* names_;
  TreeText tree_;
};

void write_start(DOMNode const& element, NamedTree& tree) {
  tree.start(element.getNamespaceURI(), element.getLocalName());
  xercesc::DOMNamedNodeMap const& attributes = *element.getAttributes();
  for (XMLSize_t i = attributes.getLength(); i != 0; --i) {
    DOMNode const& attribute = *attributes.item(i - 1);
    if (view(attribute.getNamespaceURI()) == xercesc::XMLUni::fgXMLNSURIName) continue;
    tree.attribute(attribute.getNamespaceURI(), attribute.getLocalName(), attribute.getNodeValue());
  }
}

std::u16string data_of(DOMNode const& element) {
  std::u16string data;
  for (DOMNode const* part = element.getFirstChild(); part != nullptr;
       part = part->getNextSibling()) {
    switch (part->getNodeType()) {
      case DOMNode::TEXT_NODE:
      case DOMNode::CDATA_SECTION_NODE:
        data += part->getNodeValue();
        break;
      case DOMNode::ELEMENT_NODE:
        data.append(u"<").append(part->getNodeName()).append(u">");
        break;
      default:
        break;
    }
  }
  return data;
}

DOMNode const* element_from(DOMNode const* node) {
  while (node != nullptr && node->getNodeType() != DOMNode::ELEMENT_NODE) {
    node = node->getNextSibling();
  }
  return node;
}

std::u16string tree_below(DOMNode const& root, DocumentNames* names) {
  NamedTree tree(names);
  DOMNode const* element = &root;
  write_start(root, tree);
  while (true) {
    DOMNode const* next = element_from(element->getFirstChild());
    while (next == nullptr) {
      tree.end(data_of(*element));
      if (element == &root) return tree.text();
      next = element_from(element->getNextSibling());
      element = element->getParentNode();
    }
    element = next;
    write_start(*element, tree);
  }
}

/// The bytes of a text in the pieces that the streaming reader takes from a stream: the place that
/// the parser names for a byte that it cannot decode depends on them.
class Pieces : public xercesc::InputSource {
 public:
  explicit Pieces(std::string const& bytes) : bytes_(bytes) {}
  xercesc::BinInputStream* makeStream() const override { return new Stream(bytes_); }

 private:
  class Stream : public xercesc::BinInputStream {
   public:
    explicit Stream(std::string const& bytes) : bytes_(bytes) {}
    XMLFilePos curPos() const override { return place_; }
    XMLCh const* getContentType() const override { return nullptr; }
    XMLSize_t readBytes(XMLByte* to, XMLSize_t wanted) override {
      XMLSize_t const size = std::min({wanted, bytes_.size() - place_, XMLSize_t(1024)});
      std::memcpy(to, bytes_.data() + place_, size);
      place_ += size;
      return size;
    }

   private:
    std::string const& bytes_;
    XMLSize_t place_ = 0;
  };

  std::string const& bytes_;
};

/// Makes a tree of what the parser reports, up to its first complaint.
class TreeHandler : public xercesc::DefaultHandler {
 public:
  explicit TreeHandler(DocumentNames* names) : tree_(names) {}

  void startElement(XMLCh const* uri, XMLCh const* name, XMLCh const* /*qname*/,
                    xercesc::Attributes const& attributes) override {
    tree_.start(uri, name);
    for (XMLSize_t i = attributes.getLength(); i != 0; --i) {
      tree_.attribute(attributes.getURI(i - 1), attributes.getLocalName(i - 1),
                      attributes.getValue(i - 1));
    }
    data_.emplace_back();
  }
  void endElement(XMLCh const*, XMLCh const*, XMLCh const*) override {
    tree_.end(data_.back());
    data_.pop_back();
  }
  void characters(XMLCh const* text, XMLSize_t length) override {
    data_.back().append(text, length);
  }
  void ignorableWhitespace(XMLCh const* text, XMLSize_t length) override {
    characters(text, length);
  }
  void error(xercesc::SAXParseException const& e) override { complain(complaint_of(e)); }
  void fatalError(xercesc::SAXParseException const& e) override { complain(complaint_of(e)); }

  void complain(std::string const& complaint) {
    if (complaint_.empty()) complaint_ = complaint;
  }

  Reading reading() const {
    return complaint_.empty() ? Reading{"", tree_.text()} : Reading{complaint_, u""};
  }

 private:
  NamedTree tree_;
  /// The texts of the elements that have not ended.
  std::vector<std::u16string> data_;
  std::string complaint_;
};

}  // namespace

Reading read_by_xerces_dom(std::string const& xml, DocumentNames* names) {
  XercesReference reference(xml);
  try {
    return {"", tree_below(*reference.root(), names)};
  } catch (xercesc::SAXParseException const& e) {
    return {complaint_of(e), u""};
  } catch (xercesc::XMLException const& e) {
    return {complaint_of(e.getCode(), e.getMessage()), u""};
  } catch (xercesc::DOMException const& e) {
    return {complaint_of(e.code, e.getMessage()), u""};
  }
}

Reading read_by_xerces_sax(std::string const& xml, DocumentNames* names) {
  std::unique_ptr<xercesc::SAX2XMLReader> const parser(
      xercesc::XMLReaderFactory::createXMLReader());
  parser->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, true);
  parser->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
  parser->setFeature(xercesc::XMLUni::fgXercesSchema, false);
  parser->setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
  XMLSize_t no_bytes = 0;
  parser->setProperty(xercesc::XMLUni::fgXercesLowWaterMark, &no_bytes);
  TreeHandler handler(names);
  parser->setContentHandler(&handler);
  parser->setErrorHandler(&handler);
  try {
    parser->parse(Pieces(xml));
  } catch (xercesc::XMLException const& e) {
    handler.complain("0:0 " + utf8(e.getMessage()));
  }
  return handler.reading();
}

}  // namespace tests

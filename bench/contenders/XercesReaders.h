#ifndef BENCH_CONTENDERS_XERCESREADERS_H
#define BENCH_CONTENDERS_XERCESREADERS_H

#include <algorithm>
#include <istream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLDocumentHandler.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "bench/contenders/Pieces.h"
#include "bench/orders/NameIndex.h"

namespace bench {

// Xerces-C++ as it is used without a library in between, with the same settings as both readers of
// this library have.

inline std::u16string_view xerces_view(XMLCh const* text) {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}

/// Walks a document that is parsed as a whole.
template <class Sink>
class XercesWalk {
 public:
  XercesWalk(NameIndex const& names, Sink& sink) : names_(names), sink_(sink) {}

  void walk(xercesc::DOMElement const& element) {
    sink_.start(id_of(element));
    walk_attributes(element);
    xercesc::DOMElement const* child = element.getFirstElementChild();
    if (child == nullptr) tell_text(element);
    for (; child != nullptr; child = child->getNextElementSibling()) walk(*child);
    sink_.end();
  }

 private:
  Orn::XmlTag::Id id_of(xercesc::DOMNode const& node) const {
    return names_.find(xerces_view(node.getNamespaceURI()), xerces_view(node.getLocalName()));
  }

  void walk_attributes(xercesc::DOMElement const& element) {
    xercesc::DOMNamedNodeMap const& attributes = *element.getAttributes();
    XMLSize_t const count = attributes.getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
      xercesc::DOMNode const& attribute = *attributes.item(i);
      Orn::XmlTag::Id const id = id_of(attribute);
      // Namespace declarations are among them.
      if (id != Orn::XmlTag::NO_TAG) sink_.attribute(id, xerces_view(attribute.getNodeValue()));
    }
  }

  void tell_text(xercesc::DOMElement const& leaf) {
    xercesc::DOMNode const* part = leaf.getFirstChild();
    if (part != nullptr && part->getNextSibling() == nullptr) {
      sink_.text(xerces_view(part->getNodeValue()));
      return;
    }
    text_.clear();
    for (; part != nullptr; part = part->getNextSibling()) text_ += part->getNodeValue();
    sink_.text(std::u16string_view(text_));
  }

  NameIndex const& names_;
  Sink& sink_;
  std::u16string text_;
};

template <class Sink>
void read_xerces_whole(std::string_view document, NameIndex const& names, Sink& sink) {
  xercesc::HandlerBase error_handler;
  xercesc::XercesDOMParser parser;
  parser.setDoNamespaces(true);
  parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
  parser.setErrorHandler(&error_handler);
  xercesc::MemBufInputSource const source(reinterpret_cast<XMLByte const*>(document.data()),
                                          document.size(), "document");
  parser.parse(source);
  XercesWalk<Sink>(names, sink).walk(*parser.getDocument()->getDocumentElement());
}

/// A std::istream for the parser, which takes at most `PIECE` bytes at a time from it.
class XercesStreamSource : public xercesc::InputSource {
 public:
  explicit XercesStreamSource(std::istream& in) : in_(in) {}

  xercesc::BinInputStream* makeStream() const override { return new Stream(in_); }

 private:
  class Stream : public xercesc::BinInputStream {
   public:
    explicit Stream(std::istream& in) : in_(in) {}
    XMLFilePos curPos() const override { return position_; }
    XMLSize_t readBytes(XMLByte* to, XMLSize_t most) override {
      in_.read(reinterpret_cast<char*>(to),
               static_cast<std::streamsize>(std::min<XMLSize_t>(most, PIECE)));
      auto const count = static_cast<XMLSize_t>(in_.gcount());
      position_ += count;
      return count;
    }
    XMLCh const* getContentType() const override { return nullptr; }

   private:
    std::istream& in_;
    XMLFilePos position_ = 0;
  };

  std::istream& in_;
};

/// Looks each name up when it comes.
class LookedUpNames {
 public:
  LookedUpNames(NameIndex const& names, xercesc::SAXParser const& parser)
      : names_(names), parser_(parser) {}

  Orn::XmlTag::Id element(xercesc::XMLElementDecl const& decl, unsigned int uri_id) const {
    return find(uri_id, decl.getBaseName());
  }
  Orn::XmlTag::Id attribute(xercesc::XMLAttr const& attribute) const {
    return find(attribute.getURIId(), attribute.getName());
  }

 private:
  Orn::XmlTag::Id find(unsigned int uri_id, XMLCh const* name) const {
    return names_.find(xerces_view(parser_.getURIText(uri_id)), xerces_view(name));
  }

  NameIndex const& names_;
  xercesc::SAXParser const& parser_;
};

/// Looks a name up when it first comes, and afterwards goes by what the parser knows it by: the
/// declaration of an element that it keeps for each name, and numbers for the URIs.
class RememberedNames {
 public:
  RememberedNames(NameIndex const& names, xercesc::SAXParser const& parser)
      : names_(names, parser) {}

  Orn::XmlTag::Id element(xercesc::XMLElementDecl const& decl, unsigned int uri_id) {
    if (decl.getId() >= elements_.size()) elements_.resize(decl.getId() + 1);
    Element& known = elements_[decl.getId()];
    if (known.decl != &decl || known.uri_id != uri_id) {
      known = {&decl, uri_id, names_.element(decl, uri_id)};
    }
    return known.id;
  }

  Orn::XmlTag::Id attribute(xercesc::XMLAttr const& attribute) {
    std::u16string_view const name = xerces_view(attribute.getName());
    std::size_t const place = place_of(attribute.getURIId(), name);
    Attribute& known = attributes_[place];
    if (known.uri_id != attribute.getURIId() || known.name != name) {
      known = {std::u16string(name), attribute.getURIId(), names_.attribute(attribute)};
    }
    return known.id;
  }

 private:
  struct Element {
    xercesc::XMLElementDecl const* decl = nullptr;
    unsigned int uri_id = 0;
    Orn::XmlTag::Id id = Orn::XmlTag::NO_TAG;
  };
  struct Attribute {
    std::u16string name;
    unsigned int uri_id = 0;
    Orn::XmlTag::Id id = Orn::XmlTag::NO_TAG;
  };

  static constexpr std::size_t PLACES = 64;

  static std::size_t place_of(unsigned int uri_id, std::u16string_view name) {
    return (name.size() * 7 + name.front() * std::size_t{3} + name.back() + uri_id) % PLACES;
  }

  LookedUpNames names_;
  std::vector<Element> elements_;
  std::vector<Attribute> attributes_ = std::vector<Attribute>(PLACES);
};

/// Tells what comes in from a progressive parse. Keeps nothing but the text of the current leaf.
template <class Names, class Sink>
class XercesEvents : public xercesc::XMLDocumentHandler {
 public:
  XercesEvents(NameIndex const& names, xercesc::SAXParser const& parser, Sink& sink)
      : names_(names, parser), sink_(sink) {}

  void startElement(xercesc::XMLElementDecl const& decl, unsigned int uri_id, XMLCh const*,
                    xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes, XMLSize_t count,
                    bool is_empty, bool /*is_root*/) override {
    sink_.start(names_.element(decl, uri_id));
    for (XMLSize_t i = 0; i < count; ++i) tell_attribute(*attributes.elementAt(i));
    is_leaf_ = true;
    text_.clear();
    if (is_empty) end();
  }

  void endElement(xercesc::XMLElementDecl const&, unsigned int, bool, XMLCh const*) override {
    end();
  }

  void docCharacters(XMLCh const* text, XMLSize_t length, bool /*cdata_section*/) override {
    text_.append(text, length);
  }

  void docComment(XMLCh const*) override {}
  void docPI(XMLCh const*, XMLCh const*) override {}
  void endDocument() override {}
  void endEntityReference(xercesc::XMLEntityDecl const&) override {}
  void ignorableWhitespace(XMLCh const*, XMLSize_t, bool) override {}
  void resetDocument() override {}
  void startDocument() override {}
  void startEntityReference(xercesc::XMLEntityDecl const&) override {}
  void XMLDecl(XMLCh const*, XMLCh const*, XMLCh const*, XMLCh const*) override {}

 private:
  void tell_attribute(xercesc::XMLAttr const& attribute) {
    Orn::XmlTag::Id const id = names_.attribute(attribute);
    // Namespace declarations are among them.
    if (id != Orn::XmlTag::NO_TAG) sink_.attribute(id, xerces_view(attribute.getValue()));
  }

  void end() {
    if (is_leaf_) sink_.text(std::u16string_view(text_));
    sink_.end();
    is_leaf_ = false;
  }

  Names names_;
  Sink& sink_;
  /// No child has come yet in the element that was begun last.
  bool is_leaf_ = false;
  std::u16string text_;
};

template <class Names, class Sink>
void read_xerces_stream(std::istream& in, NameIndex const& names, Sink& sink) {
  xercesc::HandlerBase error_handler;
  xercesc::SAXParser parser;
  parser.setDoNamespaces(true);
  parser.setValidationScheme(xercesc::SAXParser::Val_Never);
  parser.setLoadExternalDTD(false);
  parser.setLowWaterMark(0);
  parser.setErrorHandler(&error_handler);
  XercesEvents<Names, Sink> events(names, parser, sink);
  parser.installAdvDocHandler(&events);
  XercesStreamSource const source(in);
  xercesc::XMLPScanToken token;
  if (!parser.parseFirst(source, token)) return;
  while (parser.parseNext(token)) {
  }
}

}  // namespace bench

#endif

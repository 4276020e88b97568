#ifndef TQXML_FOUNDATION_GUARDEDPARSER_H
#define TQXML_FOUNDATION_GUARDEDPARSER_H

#include <utility>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "tqxml/foundation/GuardedMemory.h"
#include "tqxml/foundation/LimitGuard.h"

namespace Orn {

/// What a guarded parser needs before it is made and until it is gone; its class derives from this
/// first.
class ParserGuard : public xercesc::XMLEntityResolver {
 public:
  explicit ParserGuard(ReadLimits const& limits) : guard(limits) {}

  /// Refuses whatever Xerces is about to open, or leaves it to Xerces.
  xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* /*resource*/) override {
    guard.external_entity();
    return nullptr;
  }

  LimitGuard guard;
  GuardedMemory memory{guard};
};

/// A parser whose events are counted before it has them itself: the one place where limits meet the
/// parser of a reader.
template <class Parser>
class GuardedParser : public Parser {
 protected:
  template <class... Args>
  explicit GuardedParser(ParserGuard& parser_guard, Args&&... args)
      : Parser(std::forward<Args>(args)...), guard_(parser_guard.guard) {
    this->setXMLEntityResolver(&parser_guard);
    this->setDisableDefaultEntityResolution(guard_.limits().refuse_external);
  }

  void startDocument() override {
    {
      LimitGuard::Delivery const delivery(guard_);
      Parser::startDocument();
    }
    guard_.begin(scanner().getLocator());
  }

  void XMLDecl(XMLCh const* version, XMLCh const* encoding, XMLCh const* standalone,
               XMLCh const* actual_encoding) override {
    guard_.encoding(encoding);
    LimitGuard::Delivery const delivery(guard_);
    Parser::XMLDecl(version, encoding, standalone, actual_encoding);
  }

  void endDocument() override {
    {
      // A tree is given a copy of each of its entities.
      LimitGuard::Copying const copying(guard_);
      Parser::endDocument();
    }
    guard_.end();
  }

  void doctypeDecl(xercesc::DTDElementDecl const& root, XMLCh const* public_id,
                   XMLCh const* system_id, bool has_internal_subset,
                   bool has_external_subset) override {
    guard_.doctype(has_external_subset);
    LimitGuard::Delivery const delivery(guard_);
    Parser::doctypeDecl(root, public_id, system_id, has_internal_subset, has_external_subset);
  }

  void entityDecl(xercesc::DTDEntityDecl const& decl, bool is_parameter_entity,
                  bool is_ignored) override {
    // No delivery: all that is declared is one piece of markup.
    guard_.entity_declared(decl.getValueLen());
    Parser::entityDecl(decl, is_parameter_entity, is_ignored);
  }

  void startEntityReference(xercesc::XMLEntityDecl const& decl) override {
    guard_.entity_in_content(decl.getValueLen());
    {
      LimitGuard::Delivery const delivery(guard_);
      Parser::startEntityReference(decl);
    }
    if (decl.isExternal()) guard_.expect_decoder();
  }

  void startElement(xercesc::XMLElementDecl const& decl, unsigned int uri_id, XMLCh const* prefix,
                    xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes,
                    XMLSize_t attribute_count, bool is_empty, bool is_root) override {
    guard_.start_element(decl, attributes, attribute_count, scanner().getXMLNSNamespaceId());
    LimitGuard::Delivery const delivery(guard_);
    Parser::startElement(decl, uri_id, prefix, attributes, attribute_count, is_empty, is_root);
  }

  void endElement(xercesc::XMLElementDecl const& decl, unsigned int uri_id, bool is_root,
                  XMLCh const* prefix) override {
    guard_.end_element();
    LimitGuard::Delivery const delivery(guard_);
    Parser::endElement(decl, uri_id, is_root, prefix);
  }

  void docCharacters(XMLCh const* text, XMLSize_t length, bool cdata_section) override {
    guard_.text(length);
    LimitGuard::Delivery const delivery(guard_);
    Parser::docCharacters(text, length, cdata_section);
  }

  void ignorableWhitespace(XMLCh const* text, XMLSize_t length, bool cdata_section) override {
    guard_.text(length);
    LimitGuard::Delivery const delivery(guard_);
    Parser::ignorableWhitespace(text, length, cdata_section);
  }

  void docComment(XMLCh const* text) override {
    guard_.comment(text);
    LimitGuard::Delivery const delivery(guard_);
    Parser::docComment(text);
  }

  void docPI(XMLCh const* target, XMLCh const* text) override {
    guard_.instruction(target, text);
    LimitGuard::Delivery const delivery(guard_);
    Parser::docPI(target, text);
  }

 private:
  xercesc::XMLScanner const& scanner() const { return reference(this->getScanner()); }
  static xercesc::XMLScanner const& reference(xercesc::XMLScanner const& scanner) {
    return scanner;
  }
  static xercesc::XMLScanner const& reference(xercesc::XMLScanner const* scanner) {
    return *scanner;
  }

  LimitGuard& guard_;
};

}  // namespace Orn

#endif

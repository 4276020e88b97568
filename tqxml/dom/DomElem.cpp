#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/NavigationErrors.h"
#include "tqxml/foundation/XercesText.h"

namespace Orn {
namespace {

using xercesc::DOMNode;

bool is_element(DOMNode const* node) { return node->getNodeType() == DOMNode::ELEMENT_NODE; }

bool is_text(DOMNode const* node) {
  DOMNode::NodeType const type = node->getNodeType();
  return type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE;
}

// `node` itself or the first of its following siblings that is an element; null without one.
DOMNode* first_element_from(DOMNode* node) {
  while (node != nullptr && !is_element(node)) node = node->getNextSibling();
  return node;
}

bool is_named(DOMNode const* node, XmlTag const& tag) {
  return tag.simple_name() == node->getLocalName() && tag.ns() == node->getNamespaceURI();
}

void append_start_tag(UString& text, DOMNode const* element) {
  text.append(u"<").append(element->getNodeName()).append(u">");
}

}  // namespace

DomParser::Elem::~Elem() = default;

void DomParser::Elem::check_is_nil(UString const& name) const {
  if (is_nil()) raise_nil_element(u"DomParser::Elem", name);
}

XmlTag::Id DomParser::Elem::tag() const {
  static UString const name(u"tag");
  check_is_nil(name);
  if (tag_id == XmlTag::NO_TAG) {
    tag_id = lookup(node->getNamespaceURI(), node->getLocalName()).id();
  }
  return tag_id;
}

void DomParser::Elem::match(XmlTag::Id expected) const {
  XmlTag::Id const actual = tag();
  if (actual != expected) raise_tag_mismatch(Catalogue::OPERATION_ELEM_MATCH, expected, actual);
}

DomParser::Elem DomParser::Elem::child() const {
  static UString const name(u"child");
  check_is_nil(name);
  DOMNode* const found = first_element_from(node->getFirstChild());
  if (found == nullptr) raise_no_children(tag());
  return Elem(found);
}

DomParser::Elem DomParser::Elem::child(XmlTag::Id id) const {
  static UString const name(u"child");
  check_is_nil(name);
  Elem found = opt_child(id);
  if (found.is_nil()) raise_missing_child(id, tag());
  return found;
}

DomParser::Elem DomParser::Elem::opt_child(XmlTag::Id id) const {
  static UString const name(u"opt_child");
  check_is_nil(name);
  XmlTag const& wanted = XmlTag::lookup(id);
  DOMNode* candidate = first_element_from(node->getFirstChild());
  while (candidate != nullptr && !is_named(candidate, wanted)) {
    candidate = first_element_from(candidate->getNextSibling());
  }
  return candidate == nullptr ? Elem() : Elem(candidate, id);
}

DomParser::Elem DomParser::Elem::next_child() {
  static UString const name(u"next_child");
  check_is_nil(name);
  DOMNode* const from =
      child_cursor != nullptr ? child_cursor->getNextSibling() : node->getFirstChild();
  child_cursor = first_element_from(from);
  return Elem(child_cursor);
}

DomParser::Attribute DomParser::Elem::next_attr() {
  static UString const name(u"next_attr");
  check_is_nil(name);
  if (!node->hasAttributes()) return Attribute();
  if (attrs == nullptr) {
    attrs = node->getAttributes();
    attr_index = static_cast<std::int32_t>(attrs->getLength()) - 1;
  }
  while (attr_index >= 0) {
    DOMNode* const attribute = attrs->item(static_cast<XMLSize_t>(attr_index));
    --attr_index;
    if (!is_xmlns_namespace(attribute->getNamespaceURI())) return Attribute(attribute);
  }
  return Attribute();
}

UString DomParser::Elem::data() const {
  static UString const name(u"data");
  check_is_nil(name);
  UString text;
  for (DOMNode const* part = node->getFirstChild(); part != nullptr;
       part = part->getNextSibling()) {
    if (is_text(part)) {
      text.append(part->getNodeValue());
    } else if (is_element(part)) {
      append_start_tag(text, part);
    }
  }
  return text;
}

bool DomParser::Elem::is_empty() const {
  static UString const name(u"is_empty");
  check_is_nil(name);
  for (DOMNode const* part = node->getFirstChild(); part != nullptr;
       part = part->getNextSibling()) {
    if (is_text(part) || is_element(part)) return false;
  }
  return true;
}

void DomParser::Elem::check_is_empty(bool expected) const {
  bool const actual = is_empty();
  if (actual != expected) raise_is_empty_mismatch(tag(), expected, actual);
}

}  // namespace Orn

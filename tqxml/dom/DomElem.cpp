#include <utility>
#include <xercesc/dom/DOMCharacterData.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include "tqxml/dom/TagCache.h"
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

// What stands in a node that `is_text`, which knows its length.
UString text_of(DOMNode const* node) {
  auto const* const text = static_cast<xercesc::DOMCharacterData const*>(node);
  return UString(text->getData(), text->getLength());
}

// Most elements have one text.
void append(UString& text, UString&& part) {
  if (text.empty()) {
    text = std::move(part);
  } else {
    text.append(part);
  }
}

void append_start_tag(UString& text, DOMNode const* element) {
  text.append(u"<").append(element->getNodeName()).append(u">");
}

}  // namespace

DomParser::Elem::~Elem() = default;

void DomParser::Elem::check_is_nil(UString const& name) const {
  if (is_nil()) raise_nil_element(u"DomParser::Elem", name);
}

// What the handle refers to, for the operation of that name.
inline DOMNode& DomParser::Elem::known_node(char16_t const* operation) const {
  if (is_nil()) check_is_nil(UString(operation));
  return *node;
}

[[gnu::flatten]] XmlTag::Id DomParser::Elem::tag() const {
  DOMNode const& element = known_node(u"tag");
  if (tag_id == XmlTag::NO_TAG) tag_id = tags->of(element);
  return tag_id;
}

void DomParser::Elem::match(XmlTag::Id expected) const {
  XmlTag::Id const actual = tag();
  if (actual != expected) raise_tag_mismatch(Catalogue::OPERATION_ELEM_MATCH, expected, actual);
}

DomParser::Elem DomParser::Elem::child() const {
  DOMNode* const found = first_element_from(known_node(u"child").getFirstChild());
  if (found == nullptr) raise_no_children(tag());
  return Elem(found, tags);
}

DomParser::Elem DomParser::Elem::child(XmlTag::Id id) const {
  known_node(u"child");
  Elem found = opt_child(id);
  if (found.is_nil()) raise_missing_child(id, tag());
  return found;
}

DomParser::Elem DomParser::Elem::opt_child(XmlTag::Id id) const {
  DOMNode const& element = known_node(u"opt_child");
  XmlTag const& wanted = XmlTag::lookup(id);
  DOMNode* candidate = first_element_from(element.getFirstChild());
  while (candidate != nullptr && !is_named(candidate, wanted)) {
    candidate = first_element_from(candidate->getNextSibling());
  }
  return candidate == nullptr ? Elem() : Elem(candidate, tags, id);
}

[[gnu::flatten]] DomParser::Elem DomParser::Elem::next_child() {
  DOMNode const& element = known_node(u"next_child");
  child_cursor = first_element_from(child_cursor != nullptr ? child_cursor->getNextSibling()
                                                            : element.getFirstChild());
  return Elem(child_cursor, tags);
}

[[gnu::flatten]] DomParser::Attribute DomParser::Elem::next_attr() {
  DOMNode const& element = known_node(u"next_attr");
  if (attrs == nullptr) {
    if (!element.hasAttributes()) return Attribute();
    attrs = element.getAttributes();
    attr_index = static_cast<std::int32_t>(attrs->getLength()) - 1;
  }
  while (attr_index >= 0) {
    DOMNode* const attribute = attrs->item(static_cast<XMLSize_t>(attr_index));
    --attr_index;
    if (!is_xmlns_namespace(attribute->getNamespaceURI())) return Attribute(attribute, tags);
  }
  return Attribute();
}

[[gnu::flatten]] UString DomParser::Elem::data() const {
  UString text;
  for (DOMNode const* part = known_node(u"data").getFirstChild(); part != nullptr;
       part = part->getNextSibling()) {
    if (is_text(part)) {
      append(text, text_of(part));
    } else if (is_element(part)) {
      append_start_tag(text, part);
    }
  }
  return text;
}

bool DomParser::Elem::is_empty() const {
  for (DOMNode const* part = known_node(u"is_empty").getFirstChild(); part != nullptr;
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

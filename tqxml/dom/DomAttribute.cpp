#include <xercesc/dom/DOMNode.hpp>

#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/NavigationErrors.h"
#include "tqxml/foundation/XercesMemory.h"
#include "tqxml/foundation/XercesText.h"

namespace Orn {

DomParser::Attribute::~Attribute() = default;

void DomParser::Attribute::check_is_nil(UString const& name) const {
  if (is_nil()) raise_nil_attribute(u"DomParser::Attribute", name);
}

XmlTag::Id DomParser::Attribute::tag() const {
  static UString const name(u"tag");
  check_is_nil(name);
  if (tag_id == XmlTag::NO_TAG) {
    tag_id = lookup(node->getNamespaceURI(), node->getLocalName()).id();
  }
  return tag_id;
}

void DomParser::Attribute::match(XmlTag::Id expected) const {
  XmlTag::Id const actual = tag();
  if (actual != expected) {
    raise_tag_mismatch(Catalogue::OPERATION_ATTRIBUTE_MATCH, expected, actual);
  }
}

UString DomParser::Attribute::data() const {
  static UString const name(u"data");
  check_is_nil(name);
  // The parser may put the value together only now.
  return with_xerces_memory([this] { return to_ustring(node->getNodeValue()); });
}

}  // namespace Orn

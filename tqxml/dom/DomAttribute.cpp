#include <xercesc/dom/DOMNode.hpp>

#include "tqxml/dom/TagCache.h"
#include "tqxml/foundation/NavigationErrors.h"
#include "tqxml/foundation/XercesMemory.h"
#include "tqxml/foundation/XercesText.h"

namespace Orn {

DomParser::Attribute::~Attribute() = default;

void DomParser::Attribute::check_is_nil(UString const& name) const {
  if (is_nil()) raise_nil_attribute(u"DomParser::Attribute", name);
}

// What the handle refers to, for the operation of that name.
inline xercesc::DOMNode& DomParser::Attribute::known_node(char16_t const* operation) const {
  if (is_nil()) check_is_nil(UString(operation));
  return *node;
}

[[gnu::flatten]] XmlTag::Id DomParser::Attribute::tag() const {
  xercesc::DOMNode const& attribute = known_node(u"tag");
  if (tag_id == XmlTag::NO_TAG) tag_id = tags->of(attribute);
  return tag_id;
}

void DomParser::Attribute::match(XmlTag::Id expected) const {
  XmlTag::Id const actual = tag();
  if (actual != expected) {
    raise_tag_mismatch(Catalogue::OPERATION_ATTRIBUTE_MATCH, expected, actual);
  }
}

[[gnu::flatten]] UString DomParser::Attribute::data() const {
  xercesc::DOMNode const& attribute = known_node(u"data");
  // The parser may put the value together only now.
  return with_xerces_memory([&] { return to_ustring(attribute.getNodeValue()); });
}

}  // namespace Orn

#ifndef SHOP_ATTRIBUTE_H
#define SHOP_ATTRIBUTE_H

#include "tqxml/dom/DomParser.h"

//! [attribute]
// The attribute `name` of an element; nil when it has none.
inline Orn::DomParser::Attribute attribute(Orn::DomParser::Elem const& element,
                                           Orn::XmlTag::Id name) {
  Orn::DomParser::Elem from_the_first = element.restarted();
  Orn::DomParser::Attribute candidate = from_the_first.next_attr();
  while (!candidate.is_nil() && candidate.tag() != name) candidate = from_the_first.next_attr();
  return candidate;
}
//! [attribute]

#endif

#ifndef DEMO_ATTRIBUTES_H
#define DEMO_ATTRIBUTES_H

#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"
#include "tqxml/dom/DomParser.h"

namespace demo {

/// The attribute `name` of a freshly found element; nil when it has none.
Orn::DomParser::Attribute attribute(Orn::DomParser::Elem element, Orn::XmlTag::Id name);

/// The language that an element says it is in, by its xml:lang; empty when it does not.
Orn::UString language(Orn::DomParser::Elem const& element);

}  // namespace demo

#endif

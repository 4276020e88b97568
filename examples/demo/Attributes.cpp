#include "Attributes.h"

#include "Names.h"

namespace demo {

using Orn::DomParser;
using Orn::UString;
using Orn::XmlTag;

DomParser::Attribute attribute(DomParser::Elem element, XmlTag::Id name) {
  DomParser::Attribute candidate = element.next_attr();
  while (!candidate.is_nil() && candidate.tag() != name) candidate = element.next_attr();
  return candidate;
}

UString language(DomParser::Elem const& element) {
  DomParser::Attribute const lang = attribute(element, names::lang);
  return lang.is_nil() ? UString() : lang.data();
}

}  // namespace demo

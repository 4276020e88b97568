#ifndef DEMO_ATTRIBUTES_H
#define DEMO_ATTRIBUTES_H

#include "Names.h"
#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"

namespace demo {

/// The attribute `name` of an element of either reader whose attributes have not been asked for
/// yet; nil when it has none.
template <class Elem>
auto attribute(Elem element, Orn::XmlTag::Id name) {
  auto candidate = element.next_attr();
  while (!candidate.is_nil() && candidate.tag() != name) candidate = element.next_attr();
  return candidate;
}

/// The language that an element says it is in, by its xml:lang; empty when it does not.
template <class Elem>
Orn::UString language(Elem const& element) {
  auto const lang = attribute(element, names::lang);
  return lang.is_nil() ? Orn::UString() : lang.data();
}

}  // namespace demo

#endif

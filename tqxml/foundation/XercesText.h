#ifndef TQXML_FOUNDATION_XERCESTEXT_H
#define TQXML_FOUNDATION_XERCESTEXT_H

#include <string_view>
#include <type_traits>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XercesDefs.hpp>

#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"

namespace Orn {

// The one place that knows how the parser keeps text: zero-terminated, of char16_t, with the null
// pointer for a text that is absent.

static_assert(std::is_same_v<XMLCh, char16_t>, "Xerces-C++ must be built with char16_t for XMLCh");

inline std::u16string_view view(XMLCh const* text) {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}

inline UString to_ustring(XMLCh const* text) { return UString(text); }

/// The registry entry of a name as the parser reports it.
inline XmlTag const& lookup(XMLCh const* ns_uri, XMLCh const* local_name) {
  return XmlTag::lookup(view(ns_uri), view(local_name));
}

/// Whether an attribute in that namespace is a namespace declaration, with or without a prefix.
inline bool is_xmlns_namespace(XMLCh const* ns_uri) {
  return xercesc::XMLString::equals(ns_uri, xercesc::XMLUni::fgXMLNSURIName);
}

/// The same of an attribute as the scanner reports it, which knows the namespace of xmlns:p, and
/// has a plain xmlns without one.
inline bool is_namespace_declaration(xercesc::XMLAttr const& attribute, unsigned int xmlns_uri_id) {
  return attribute.getURIId() == xmlns_uri_id ||
         (view(attribute.getPrefix()).empty() &&
          xercesc::XMLString::equals(attribute.getName(), xercesc::XMLUni::fgXMLNSString));
}

}  // namespace Orn

#endif

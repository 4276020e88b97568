#include "tqxml/sax/TagCache.h"

#include <cstring>

#include "tqxml/foundation/XercesText.h"

namespace Orn {
namespace {

// The scanner knows the namespace of xmlns:p, but reports a plain xmlns without one.
bool is_namespace_declaration(xercesc::XMLAttr const& attribute, xercesc::XMLScanner const& scanner) {
  return attribute.getURIId() == scanner.getXMLNSNamespaceId() ||
         (view(attribute.getPrefix()).empty() &&
          xercesc::XMLString::equals(attribute.getName(), xercesc::XMLUni::fgXMLNSString));
}

std::size_t mixture(unsigned int uri_id, std::u16string_view name) {
  if (name.empty()) return uri_id;
  return uri_id + name.size() * 3 + name.front() * std::size_t{5} + name.back() * std::size_t{7};
}

}  // namespace

XmlTag::Id SaxParser::TagCache::of_element(xercesc::XMLElementDecl const& decl,
                                           unsigned int uri_id,
                                           xercesc::XMLScanner const& scanner) {
  Element& seen = elements_[decl.getId() % elements_.size()];
  if (seen.decl != &decl || seen.uri_id != uri_id) {
    seen = {&decl, uri_id, lookup(scanner.getURIText(uri_id), decl.getBaseName()).id()};
  }
  return seen.tag;
}

XmlTag::Id SaxParser::TagCache::of_attribute(xercesc::XMLAttr const& attribute,
                                             xercesc::XMLScanner const& scanner) {
  std::u16string_view const name = view(attribute.getName());
  unsigned int const uri_id = attribute.getURIId();
  Attribute& seen = attributes_[mixture(uri_id, name) % attributes_.size()];
  if (!seen.is(uri_id, name)) {
    if (is_namespace_declaration(attribute, scanner)) return XmlTag::NO_TAG;
    seen = {&lookup(scanner.getURIText(uri_id), attribute.getName()), uri_id};
  }
  return seen.tag->id();
}

// A name for which the catch-all tag stands is another than that of the tag, and never found here.
bool SaxParser::TagCache::Attribute::is(unsigned int wanted_uri_id,
                                        std::u16string_view name) const noexcept {
  return tag != nullptr && uri_id == wanted_uri_id &&
         tag->simple_name().length() == name.size() &&
         std::memcmp(tag->simple_name().data(), name.data(), name.size() * sizeof(char16_t)) == 0;
}

}  // namespace Orn

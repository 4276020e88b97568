#include "tqxml/sax/TagCache.h"

#include <cstdint>
#include <cstring>
#include <utility>

#include "tqxml/foundation/XercesText.h"

namespace Orn {
namespace {

// The scanner knows the namespace of xmlns:p, but reports a plain xmlns without one.
bool is_namespace_declaration(xercesc::XMLAttr const& attribute, xercesc::XMLScanner const& scanner) {
  return attribute.getURIId() == scanner.getXMLNSNamespaceId() ||
         (view(attribute.getPrefix()).empty() &&
          xercesc::XMLString::equals(attribute.getName(), xercesc::XMLUni::fgXMLNSString));
}

std::uint32_t mixture(unsigned int uri_id, std::u16string_view name) {
  std::uint32_t mixed = uri_id;
  for (char16_t const unit : name) mixed = mixed * 31 + unit;
  return mixed;
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
  // A name stands in one of two places.
  std::size_t const place = mixture(uri_id, name) % attributes_.size();
  Attribute& first = attributes_[place];
  if (first.is(uri_id, name)) return first.tag->id();
  Attribute& second = attributes_[place ^ 1U];
  if (second.is(uri_id, name)) return second.tag->id();
  if (is_namespace_declaration(attribute, scanner)) return XmlTag::NO_TAG;
  Attribute const found{&lookup(scanner.getURIText(uri_id), attribute.getName()), uri_id};
  second = std::exchange(first, found);
  return found.tag->id();
}

// A name for which the catch-all tag stands is another than that of the tag, and never found here.
bool SaxParser::TagCache::Attribute::is(unsigned int wanted_uri_id,
                                        std::u16string_view name) const noexcept {
  return tag != nullptr && uri_id == wanted_uri_id &&
         tag->simple_name().length() == name.size() &&
         std::memcmp(tag->simple_name().data(), name.data(), name.size() * sizeof(char16_t)) == 0;
}

}  // namespace Orn

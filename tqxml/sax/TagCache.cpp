#include "tqxml/sax/TagCache.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "tqxml/foundation/XercesText.h"

namespace Orn {
namespace {

bool same(UString const& text, std::u16string_view other) {
  return text.length() == other.size() && std::equal(other.begin(), other.end(), text.data());
}

/// A name, measured and mixed in one go.
struct MeasuredName {
  explicit MeasuredName(XMLCh const* name) : text(name) {
    for (; name[length] != 0; ++length) mixture = mixture * 31 + name[length];
  }

  XMLCh const* text;
  std::size_t length = 0;
  std::uint32_t mixture = 0;
};

}  // namespace

XmlTag::Id SaxParser::TagCache::of_element(xercesc::XMLElementDecl const& decl, unsigned int uri_id,
                                           xercesc::XMLScanner const& scanner) {
  Element& seen = elements_[decl.getId() % elements_.size()];
  if (seen.decl != &decl || seen.uri_id != uri_id) {
    seen = {&decl, uri_id, lookup(scanner.getURIText(uri_id), decl.getBaseName()).id()};
  }
  return seen.tag;
}

XmlTag::Id SaxParser::TagCache::of_attribute(xercesc::XMLAttr const& attribute,
                                             xercesc::XMLScanner const& scanner) {
  MeasuredName const name(attribute.getName());
  unsigned int const uri_id = attribute.getURIId();
  // A name stands in one of two places.
  std::size_t const place = (name.mixture + uri_id) % attributes_.size();
  Attribute& first = attributes_[place];
  if (first.is(uri_id, name.text, name.length)) return first.tag->id();
  Attribute& second = attributes_[place ^ 1U];
  if (second.is(uri_id, name.text, name.length)) return second.tag->id();
  // Declarations never get into a place.
  if (is_namespace_declaration(attribute, scanner.getXMLNSNamespaceId())) return XmlTag::NO_TAG;
  std::u16string_view const ns_uri = view(scanner.getURIText(uri_id));
  XmlTag const& tag = XmlTag::lookup(ns_uri, {name.text, name.length});
  // Nor does the catch-all tag, whose name is not the one that it stands for.
  bool const is_its_own =
      same(tag.simple_name(), {name.text, name.length}) && same(tag.ns(), ns_uri);
  if (is_its_own) second = std::exchange(first, Attribute{&tag, uri_id});
  return tag.id();
}

bool SaxParser::TagCache::Attribute::is(unsigned int wanted_uri_id, XMLCh const* name,
                                        std::size_t length) const noexcept {
  return tag != nullptr && uri_id == wanted_uri_id && same(tag->simple_name(), {name, length});
}

}  // namespace Orn

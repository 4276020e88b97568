#ifndef TQXML_SAX_TAGCACHE_H
#define TQXML_SAX_TAGCACHE_H

#include <array>
#include <cstddef>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>

#include "tqxml/sax/SaxParser.h"

namespace Orn {

/// The tags of names as the scanner reports them. A document has few names and has them again and
/// again: those that were seen last are found by what the scanner knows them by, the others in the
/// registry. For elements that is a declaration, which stays where it is; the names of attributes
/// have no lasting place, and are compared.
class SaxParser::TagCache {
 public:
  /// Both raise TagException for a name that the registry does not know. `scanner` must be the same
  /// throughout the parse.
  XmlTag::Id of_element(xercesc::XMLElementDecl const& decl, unsigned int uri_id,
                        xercesc::XMLScanner const& scanner);
  /// NO_TAG for a namespace declaration.
  XmlTag::Id of_attribute(xercesc::XMLAttr const& attribute, xercesc::XMLScanner const& scanner);

 private:
  /// The scanner keeps one declaration for each qualified name.
  struct Element {
    xercesc::XMLElementDecl const* decl = nullptr;
    unsigned int uri_id = 0;
    XmlTag::Id tag = XmlTag::NO_TAG;
  };
  struct Attribute {
    XmlTag const* tag = nullptr;
    unsigned int uri_id = 0;

    bool is(unsigned int wanted_uri_id, XMLCh const* name, std::size_t length) const noexcept;
  };

  std::array<Element, 64> elements_;
  std::array<Attribute, 64> attributes_;
};

}  // namespace Orn

#endif

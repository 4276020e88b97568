#ifndef TQXML_FOUNDATION_NAVIGATIONERRORS_H
#define TQXML_FOUNDATION_NAVIGATIONERRORS_H

#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"
#include "tqxml/foundation/Catalogue.h"

namespace Orn {

// What a reader raises when a document does not have the shape that its caller demands. Every
// reader offers the same operations, so that they complain in the same words.

/// `handle` is the class of the handle, "DomParser::Elem" for example, and `operation` the name of
/// the operation that was called on it, without parentheses.
[[noreturn]] void raise_nil_element(char16_t const* handle, UString const& operation);
[[noreturn]] void raise_nil_attribute(char16_t const* handle, UString const& operation);

/// `operation` is one of the catalogue's operation names.
[[noreturn]] void raise_tag_mismatch(Catalogue::Index operation, XmlTag::Id expected,
                                     XmlTag::Id actual);

[[noreturn]] void raise_no_children(XmlTag::Id element);
[[noreturn]] void raise_missing_child(XmlTag::Id wanted, XmlTag::Id element);
[[noreturn]] void raise_is_empty_mismatch(XmlTag::Id element, bool expected, bool actual);

}  // namespace Orn

#endif

#ifndef TESTS_SUPPORT_ELEMTESTACCESS_H
#define TESTS_SUPPORT_ELEMTESTACCESS_H

#include <cstddef>
#include <vector>

#include "tqxml/writer/ElemChild.h"
#include "tqxml/writer/XmlDoc.h"

namespace Orn {

/// Lets tests look into an element tree, of which the library itself gives only markup away.
class ElemTestAccess {
 public:
  static XmlTag::Id tag(XmlDoc::Elem const& elem) { return elem.tag; }
  static std::vector<XmlDoc::Elem::attr_t> const& attrs(XmlDoc::Elem const& elem) {
    return elem.attrs;
  }
  static std::size_t child_count(XmlDoc::Elem const& elem) { return elem.children.size(); }
  /// Null for a child of the other kind.
  static UString const* text(XmlDoc::Elem const& elem, std::size_t child) {
    return elem.children[child]->text();
  }
  static XmlDoc::Elem const* elem(XmlDoc::Elem const& elem, std::size_t child) {
    return elem.children[child]->elem();
  }
};

}  // namespace Orn

#endif

#ifndef TQXML_SAX_ATTRIBUTEIMPL_H
#define TQXML_SAX_ATTRIBUTEIMPL_H

#include "tqxml/sax/SaxParser.h"

namespace Orn {

/// The record of one attribute: counted like the record of an element (ElemImpl.h), by the element
/// that carries it and by handles. It knows nothing of its element and may outlive it.
class SaxParser::AttributeImpl {
 public:
  AttributeImpl(XmlTag::Id tag, char16_t const* value) : tag(tag), data(value) {}

  static void retain(AttributeImpl* record) noexcept { ++record->refcnt_; }
  static void release(AttributeImpl* record) noexcept {
    if (--record->refcnt_ == 0) delete record;
  }

  XmlTag::Id const tag;
  UString const data;

 private:
  friend class SaxParser::ElemImpl;

  unsigned int refcnt_ = 1;
  /// The attribute before this one in the document, whose reference the element holds.
  AttributeImpl* previous_ = nullptr;
};

}  // namespace Orn

#endif

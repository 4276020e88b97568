#ifndef TQXML_SAX_ATTRIBUTEIMPL_H
#define TQXML_SAX_ATTRIBUTEIMPL_H

#include <string>

#include "tqxml/sax/RecordPool.h"
#include "tqxml/sax/RecordText.h"
#include "tqxml/sax/SaxParser.h"

namespace Orn {

/// The record of one attribute: counted like the record of an element (ElemImpl.h), by the element
/// that carries it and by handles. It knows nothing of its element and may outlive it.
class SaxParser::AttributeImpl {
 public:
  AttributeImpl(AttributeImpl const&) = delete;
  AttributeImpl& operator=(AttributeImpl const&) = delete;

  static void retain(AttributeImpl* record) noexcept { ++record->refcnt_; }
  static void release(AttributeImpl* record) noexcept {
    if (--record->refcnt_ != 0) return;
    record->data_.forget();
    record->pool_->give_back(record);
  }

  XmlTag::Id tag() const noexcept { return tag_; }
  UString data() const { return data_.text(); }

 private:
  friend class SaxParser::ElemImpl;
  friend class SaxParser::RecordPool;

  explicit AttributeImpl(RecordPool* pool) noexcept : pool_(pool) {}
  ~AttributeImpl() = default;

  void begin(XmlTag::Id tag) noexcept {
    tag_ = tag;
    refcnt_ = 1;
  }
  void set_value(char16_t const* value) {
    data_.append(value, std::char_traits<char16_t>::length(value));
  }
  AttributeImpl*& next_waiting() noexcept { return previous_; }

  /// Stays as long as the record, which it counts among its users.
  RecordPool* const pool_;
  unsigned int refcnt_ = 0;
  XmlTag::Id tag_ = XmlTag::NO_TAG;
  RecordText data_;
  /// The attribute before this one in the document, whose reference the element holds; in a record
  /// that waits to be used again, the next one that does.
  AttributeImpl* previous_ = nullptr;
};

}  // namespace Orn

#endif

#ifndef TQXML_SAX_ELEMIMPL_H
#define TQXML_SAX_ELEMIMPL_H

#include <cstddef>

#include "tqxml/sax/AttributeImpl.h"
#include "tqxml/sax/SaxParser.h"

namespace Orn {

/// The record of one element: what has been read of it and not been given away.
///
/// How counting works. A record is made with one reference, its maker's, and ends with the last.
/// References are held by
///
///   - handles, and the SaxParser, for the root;
///   - the parser, on every element that it is inside of, from start tag to end tag;
///   - an element, on each child that next_child() has not given away, and on all attributes.
///
/// All of them point downwards, so there are no cycles: no record keeps its parent, and an
/// attribute does not keep its element. What is still open is kept by the parser, so that a caller
/// may let go of an element while the parser is in the middle of it; such an element ends with its
/// end tag, and what is read of it until then is not kept.
///
/// An open record asks the parser for more input. The parser tells those that survive it, after
/// which asking raises NOT_VALID_STREAM.
class SaxParser::ElemImpl {
 public:
  ElemImpl(ElemImpl const&) = delete;
  ElemImpl& operator=(ElemImpl const&) = delete;

  static void retain(ElemImpl* record) noexcept { ++record->refcnt_; }
  /// Ends the record, and whatever only it was holding, with the last reference. Takes no stack for
  /// the depth of the document.
  static void release(ElemImpl* record) noexcept;

  // For the parser, which fills the record.

  void add_child(Ref<ElemImpl> const& child) noexcept;
  void add_attribute(XmlTag::Id tag, char16_t const* value);
  void append_text(char16_t const* text, std::size_t length) { data_.append(text, length); }
  /// Whether anyone but the parser, which holds a reference while the element is open, does so too.
  bool is_reachable() const noexcept { return refcnt_ > 1; }
  /// The end tag has been read.
  void end() noexcept { open_ = false; }
  /// There is no parser any more.
  void forget_parser() noexcept { parser_ = nullptr; }

  // For the handles. Each reads only what it needs.

  Ref<ElemImpl> child();
  Ref<ElemImpl> opt_child(XmlTag::Id id);
  Ref<ElemImpl> next_child();
  Ref<AttributeImpl> next_attr() noexcept;
  UString data();
  bool is_empty();

  XmlTag::Id tag() const noexcept { return tag_; }

 private:
  friend class SaxParser::RecordPool;

  explicit ElemImpl(RecordPool* pool) noexcept : pool_(pool) {}
  ~ElemImpl() = default;

  void begin(ParserImpl* parser, XmlTag::Id tag) noexcept;
  void end_record() noexcept;
  void read_on();
  /// A record that waits has no sibling.
  ElemImpl*& next_waiting() noexcept { return next_sibling_; }

  /// Stays as long as the record, which it counts among its users.
  RecordPool* const pool_;
  ParserImpl* parser_ = nullptr;
  unsigned int refcnt_ = 0;
  XmlTag::Id tag_ = XmlTag::NO_TAG;
  bool has_children_ = false;
  bool open_ = false;
  bool next_child_used_ = false;
  RecordText data_;
  /// The children that have not been given away, in document order.
  ElemImpl* first_child_ = nullptr;
  ElemImpl* last_child_ = nullptr;
  /// The next of the parent's children; in a record that is ending, the next one to end, and in one
  /// that waits to be used again, the next one that does.
  ElemImpl* next_sibling_ = nullptr;
  /// All attributes, and where next_attr() goes on. Both lead from the last to the first.
  AttributeImpl* last_attribute_ = nullptr;
  AttributeImpl* next_attribute_ = nullptr;
};

}  // namespace Orn

#endif

#ifndef TQXML_SAX_RECORDPOOL_H
#define TQXML_SAX_RECORDPOOL_H

#include "tqxml/foundation/Ref.h"
#include "tqxml/sax/SaxParser.h"

namespace Orn {

/// Where records come from, and where a few that have ended wait to be used again, with the memory
/// of their texts: who walks a document and drops what he has seen takes no memory for each
/// element.
///
/// Counted by the parser, and by each record that is in use, which may outlive the parser.
class SaxParser::RecordPool {
 public:
  static Ref<RecordPool> make() { return Ref<RecordPool>::adopt(new RecordPool); }
  RecordPool(RecordPool const&) = delete;
  RecordPool& operator=(RecordPool const&) = delete;

  static void retain(RecordPool* pool) noexcept { ++pool->refcnt_; }
  static void release(RecordPool* pool) noexcept {
    if (--pool->refcnt_ == 0) delete pool;
  }

  /// Records with one reference, the caller's.
  ElemImpl* take_elem(ParserImpl* parser, XmlTag::Id tag);
  AttributeImpl* take_attribute(XmlTag::Id tag, char16_t const* value);
  /// For records that nobody refers to any more, and that refer to none.
  void give_back(ElemImpl* record) noexcept;
  void give_back(AttributeImpl* record) noexcept;

  /// There will be no parser any more: nothing waits from now on.
  void close() noexcept;

 private:
  /// More than a walk that drops what it has seen needs at once, as deep as documents usually are.
  static constexpr unsigned int MOST_WAITING = 32;

  /// Records that wait, linked by a member of theirs, `next_waiting`.
  template <class Record>
  struct Waiting {
    Record* first = nullptr;
    unsigned int free_places = MOST_WAITING;
  };

  RecordPool() = default;
  ~RecordPool() { close(); }

  template <class Record>
  Record* take_from(Waiting<Record>& waiting);
  template <class Record>
  void give_back_to(Waiting<Record>& waiting, Record* record) noexcept;
  template <class Record>
  static void close(Waiting<Record>& waiting) noexcept;

  Waiting<ElemImpl> elems_;
  Waiting<AttributeImpl> attributes_;
  unsigned int refcnt_ = 1;
};

}  // namespace Orn

#endif

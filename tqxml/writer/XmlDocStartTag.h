#ifndef TQXML_WRITER_XMLDOCSTARTTAG_H
#define TQXML_WRITER_XMLDOCSTARTTAG_H

#include "tqxml/foundation/Raise.h"
#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/XmlDoc.h"

// What every start tag takes, to be put in place where it is used.

namespace Orn {
namespace start_tag {

// Code units: room made when a document begins, and by which it grows when a start tag finds less
// than the least spare room.
inline constexpr std::size_t ROOM = 2048;
inline constexpr std::size_t LEAST_SPARE_ROOM = 100;

}  // namespace start_tag

// A tag and the prefix to write for it, empty for a name without one.
inline XmlDoc::QualifiedName XmlDoc::qualify(XmlTag::Id tag, bool default_ns) {
  XmlTag const& entry = XmlTag::lookup(tag);
  UString const* const prefix = ns_decls.prefix_of(entry);
  return {entry, prefix != nullptr ? *prefix : new_ns_prefix(entry, default_ns)};
}

inline void XmlDoc::check_start_tag_allowed() const {
  if (state != DOC_STARTED && state != DOC_ROOT_OPEN) {
    raise<StateException>(Catalogue::START_TAG_DISALLOWED);
  }
}

inline void XmlDoc::close_start_tag() {
  if (!start_tag_open) return;
  out.append(markup::START_TAG_END);
  start_tag_open = false;
}

// Puts everything up to the "<", and gives the pen for that many units more. Nothing may be raised
// until the caller has given it to `end_at`, for the document counts the start tag as open already.
inline TextBuffer::Pen XmlDoc::open_start_tag(std::size_t units) {
  check_start_tag_allowed();
  if (out.spare_room() < start_tag::LEAST_SPARE_ROOM) {
    out.make_room(out.spare_room() + start_tag::ROOM);
  }
  if (indented) {
    close_start_tag();
    add_indent();
  }
  TextBuffer::Pen pen = out.pen_for(units + 2);
  if (start_tag_open) pen.put(markup::START_TAG_END);
  pen.put(markup::START_TAG_BEGIN);
  start_tag_open = true;
  after_start_tag = true;
  return pen;
}

inline void XmlDoc::begin_start_tag(QualifiedName name) {
  TextBuffer::Pen pen = open_start_tag(name.length());
  name.put(pen);
  out.end_at(pen);
  if (name.prefix.empty()) add_own_declaration(name);
  tags.push_back(name.tag.id());
}

}  // namespace Orn

#endif

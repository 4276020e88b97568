#include "tqxml/writer/XmlDoc.h"

#include <algorithm>

#include "tqxml/foundation/Raise.h"
#include "tqxml/writer/Decimal.h"
#include "tqxml/writer/Escape.h"
#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/XmlDocStartTag.h"

// The core of the writer: the life cycle of a document, elements, attributes, text and output. What
// else a document holds is in XmlDocMarkup.cpp, prefixes and declarations in XmlDocNamespaces.cpp,
// the step from state to state in XmlDocState.cpp.

namespace Orn {

XmlDoc::XmlDoc() = default;
XmlDoc::XmlDoc(XmlTag::Id root) { start_doc(root); }
XmlDoc::XmlDoc(XmlDoc const& other) = default;
XmlDoc& XmlDoc::operator=(XmlDoc const& other) = default;
XmlDoc::~XmlDoc() = default;

void XmlDoc::set_indented_format() { indented = true; }

void XmlDoc::start_doc(XmlTag::Id root) {
  if (root != XmlTag::NO_TAG && state <= DOC_STARTED) {
    open_root(root);
  } else if (state == DOC_INITIAL) {
    write_declaration();
  }
}

// What add_xml_decl writes for "UTF-8", and leaves: it counts as a start tag that is complete.
void XmlDoc::write_declaration() {
  out.make_room(start_tag::ROOM);
  next_state();
  out.append(markup::DEFAULT_DECLARATION);
  after_start_tag = true;
}

XmlDoc::QualifiedName XmlDoc::open_root(XmlTag::Id root) {
  // The name comes first: a tag that is refused leaves a fresh document fresh.
  QualifiedName const name = qualify(root, false);
  if (state == DOC_INITIAL) write_declaration();
  next_state();
  begin_start_tag(name);
  root_tag = root;
  ns_insert_pos = static_cast<std::uint32_t>(out.length());
  return name;
}

void XmlDoc::start_doc_or_begin_start_tag(XmlTag::Id tag, bool default_ns) {
  if (state > DOC_STARTED) {
    begin_inner(tag, default_ns);
  } else {
    start_doc(tag);
  }
}

// The start tag of an element that is written whole. Without a tag it would have nothing to close.
XmlDoc::QualifiedName XmlDoc::begin_leaf(XmlTag::Id tag, bool default_ns) {
  return state > DOC_STARTED ? begin_inner(tag, default_ns) : open_root(tag);
}

XmlDoc::QualifiedName XmlDoc::begin_inner(XmlTag::Id tag, bool default_ns) {
  check_start_tag_allowed();
  QualifiedName const name = qualify(tag, default_ns);
  begin_start_tag(name);
  return name;
}

void XmlDoc::add_indent() {
  if (!indented || state == DOC_STARTED) return;
  out.append(markup::LINE_FEED);
  for (std::size_t depth = tags.size(); depth > 0; --depth) out.append(markup::INDENT);
}

// What is called for every element and attribute is compiled in one piece.

[[gnu::flatten]] XmlTag::Id XmlDoc::push_elem(XmlTag::Id tag, bool default_ns) {
  start_doc_or_begin_start_tag(tag, default_ns);
  return tag;
}

[[gnu::flatten]] void XmlDoc::pop_elem(XmlTag::Id tag) { do_pop_elem(tag); }

void XmlDoc::do_pop_elem(XmlTag::Id tag) {
  if (tags.empty() || (tag != XmlTag::NO_TAG && tag != tags.back())) {
    raise<StateException>(Catalogue::POPPED_ELEMENT_MISMATCH);
  }
  write_end_tag(qualify(tags.back(), true));
}

void XmlDoc::write_end_tag(QualifiedName name) {
  tags.pop_back();
  if (indented && !after_start_tag) {
    close_start_tag();
    add_indent();
  }
  TextBuffer::Pen pen = out.pen_for(name.length() + 4);
  if (start_tag_open) pen.put(markup::START_TAG_END);
  pen.put(markup::END_TAG_BEGIN);
  name.put(pen);
  out.end_at(pen.put(markup::END_TAG_END));
  start_tag_open = false;
  after_start_tag = false;
  if (!tags.empty()) return;
  next_state();
  if (indented) out.append(markup::LINE_FEED);
}

void XmlDoc::add_elem(XmlTag::Id tag, bool default_ns) {
  begin_leaf(tag, default_ns);
  out.append(markup::EMPTY_TAG_END);
  tags.pop_back();
  start_tag_open = false;
  after_start_tag = false;
  if (tags.empty()) next_state();
}

[[gnu::flatten]] void XmlDoc::add_elem(XmlTag::Id tag, UString const& text, bool do_escape) {
  if (text.empty()) {
    add_elem(tag, false);
    return;
  }
  if (state == DOC_ROOT_OPEN) {
    QualifiedName const name = qualify(tag, false);
    if (put_leaf_at_once(name, text, do_escape)) return;
  }
  write_leaf(tag, text, do_escape);
}

// Most leaves have a prefix, and a text that stays as it is. Of what is put here nothing counts
// until all of it is there. The result is false when it has to be written step by step.
bool XmlDoc::put_leaf_at_once(QualifiedName name, UString const& text, bool do_escape) {
  std::size_t const markup_units = 2 * name.length() + 6;
  std::size_t const units = std::max(markup_units + text.length(), start_tag::LEAST_SPARE_ROOM);
  if (indented || name.prefix.empty() || out.spare_room() <= units) return false;
  TextBuffer::Pen pen = out.pen_for(units);
  if (start_tag_open) pen.put(markup::START_TAG_END);
  name.put(pen.put(markup::START_TAG_BEGIN));
  pen.put(markup::START_TAG_END);
  if (!do_escape) {
    pen.put(text);
  } else if (!put_if_plain(pen, text)) {
    return false;
  }
  name.put(pen.put(markup::END_TAG_BEGIN));
  out.end_at(pen.put(markup::END_TAG_END));
  start_tag_open = false;
  after_start_tag = false;
  return true;
}

void XmlDoc::write_leaf(XmlTag::Id tag, UString const& text, bool do_escape) {
  QualifiedName const name = begin_leaf(tag, false);
  append_elem_body(text, do_escape);
  write_end_tag(name);
}

[[gnu::flatten]] void XmlDoc::add_attr(XmlTag::Id name, UString const& value) {
  if (!start_tag_open) raise<StateException>(Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
  QualifiedName const qualified = qualify(name, false);
  std::size_t const value_units = std::size_t{value.length()} + 3;
  TextBuffer::Pen pen = out.pen_for(qualified.length() + 1 + value_units);
  qualified.put(pen.put(markup::BLANK));
  if (qualified.prefix.empty()) {
    out.end_at(pen);
    add_own_declaration(qualified);
    pen = out.pen_for(value_units);
  }
  out.end_at(pen.put(markup::VALUE_BEGIN).put(value).put(markup::VALUE_END));
}

void XmlDoc::add_attr(XmlTag::Id name, long value) { add_attr(name, decimal(value)); }

void XmlDoc::append_elem_body(UString const& text, bool do_escape) {
  if (tags.empty()) raise<StateException>(Catalogue::NO_OPEN_ELEMENT_FOR_BODY);
  close_start_tag();
  if (do_escape) {
    append_escaped(out, text);
  } else {
    out.append(text);
  }
}

void XmlDoc::close() {
  if (state == DOC_INITIAL) {
    state = DOC_CLOSED;
    return;
  }
  if (state == DOC_ROOT_OPEN) {
    if (tags.back() != root_tag) raise<StateException>(Catalogue::ACTIVE_PUSHED_ELEMENTS);
    pop_elem(root_tag);
  }
  if (state != DOC_CLOSE_PENDING) raise<StateException>(Catalogue::NOT_CLOSE_PENDING);
  insert_ns_decls();
  next_state();
}

void XmlDoc::check_doc_closed() const {
  if (state != DOC_CLOSED) raise<StateException>(Catalogue::CLOSE_NOT_CALLED);
}

UString XmlDoc::str() const {
  check_doc_closed();
  return out.text();
}

std::string XmlDoc::byte_array() const {
  check_doc_closed();
  std::string bytes = out.to_utf8();
  bytes.resize(std::min(bytes.find('\0'), bytes.size()));
  return bytes;
}

UString XmlDoc::inc_str() {
  if (state == DOC_INITIAL) raise<StateException>(Catalogue::NOT_STARTED);
  close_start_tag();
  insert_ns_decls();
  UString piece = out.text();
  out.cut(0);
  return piece;
}

}  // namespace Orn

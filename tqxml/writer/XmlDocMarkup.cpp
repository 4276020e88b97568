#include "tqxml/foundation/Raise.h"
#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/XmlDocStartTag.h"

// The markup that is not plain elements: CDATA sections, comments, processing instructions and the
// XML declaration.

namespace Orn {

void XmlDoc::add_elem_CDATA(XmlTag::Id tag, UString const& text) {
  UString const terminator(markup::CDATA_END.data(), markup::CDATA_END.size());
  if (text.find(terminator, 0) != UString::npos) {
    raise<IllegalArgException>(Catalogue::CDATA_TERMINATOR_IN_TEXT, terminator, text, text);
  }
  QualifiedName const name = begin_leaf(tag, false);
  close_start_tag();
  out.append(markup::CDATA_BEGIN);
  append_elem_body(text, false);
  out.append(markup::CDATA_END);
  write_end_tag(name);
}

void XmlDoc::add_comment(UString const& text) {
  add_bracketed(markup::COMMENT_BEGIN, text, markup::COMMENT_END);
}

void XmlDoc::add_processing_instruction(UString const& text) {
  add_bracketed(markup::INSTRUCTION_MARK, text, markup::INSTRUCTION_MARK);
}

void XmlDoc::add_bracketed(std::u16string_view opening, UString const& text,
                           std::u16string_view closing) {
  begin_bracketed(opening);
  out.append(text);
  end_bracketed(closing);
}

void XmlDoc::add_xml_decl(UString const& encoding) {
  begin_bracketed(markup::INSTRUCTION_MARK);
  out.append(markup::XML_DECL_BEGIN);
  out.append(encoding);
  out.append(markup::VALUE_END);
  end_bracketed(markup::INSTRUCTION_MARK);
}

// All of these count as a start tag, for the state of the document and for indentation.
void XmlDoc::begin_bracketed(std::u16string_view opening) {
  if (state == DOC_INITIAL) next_state();
  out.end_at(open_start_tag(opening.size()).put(opening));
}

void XmlDoc::end_bracketed(std::u16string_view closing) {
  out.append(closing);
  close_start_tag();
}

}  // namespace Orn

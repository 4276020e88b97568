#include "tqxml/foundation/Raise.h"
#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/XmlDoc.h"

// The markup that is not plain elements: CDATA sections, comments, processing instructions and the
// XML declaration.

namespace Orn {

void XmlDoc::add_elem_CDATA(XmlTag::Id tag, UString const& text) {
  if (text.find(markup::CDATA_END, 0) != UString::npos) {
    raise<IllegalArgException>(Catalogue::CDATA_TERMINATOR_IN_TEXT, markup::CDATA_END, text, text);
  }
  begin_leaf(tag, false);
  close_start_tag();
  out.append(markup::CDATA_BEGIN);
  append_elem_body(text, false);
  out.append(markup::CDATA_END);
  pop_elem(tag);
}

void XmlDoc::add_comment(UString const& text) {
  add_bracketed(markup::COMMENT_BEGIN, text, markup::COMMENT_END);
}

void XmlDoc::add_processing_instruction(UString const& text) {
  add_bracketed(markup::INSTRUCTION_MARK, text, markup::INSTRUCTION_MARK);
}

// Both count as a start tag, for the state of the document and for indentation.
void XmlDoc::add_bracketed(UString const& opening, UString const& text, UString const& closing) {
  if (state == DOC_INITIAL) next_state();
  open_start_tag();
  out.append(opening).append(text).append(closing);
  close_start_tag();
}

void XmlDoc::add_xml_decl(UString const& encoding) {
  UString declaration(markup::XML_DECL_BEGIN);
  declaration.append(encoding).append(markup::VALUE_END);
  add_processing_instruction(declaration);
}

}  // namespace Orn

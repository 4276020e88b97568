#include "tqxml/writer/MarkupText.h"

namespace Orn::markup {

UString const START_TAG_BEGIN(u"<");
UString const START_TAG_END(u">");
UString const EMPTY_TAG_END(u"/>");
UString const END_TAG_BEGIN(u"</");
UString const END_TAG_END(u">");
UString const CDATA_BEGIN(u"<![CDATA[");
UString const CDATA_END(u"]]>");
UString const NAMESPACE_SEPARATOR(u":");
UString const DEFAULT_ENCODING(u"UTF-8");

UString const LINE_FEED(u"\n");
UString const INDENT(u"  ");
UString const BLANK(u" ");
UString const VALUE_BEGIN(u"=\"");
UString const VALUE_END(u"\"");
UString const XMLNS(u" xmlns");
UString const COMMENT_BEGIN(u"!-- ");
UString const COMMENT_END(u" --");
UString const INSTRUCTION_MARK(u"?");
UString const XML_DECL_BEGIN(u"xml version=\"1.0\" encoding=\"");

}  // namespace Orn::markup

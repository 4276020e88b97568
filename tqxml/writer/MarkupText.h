#ifndef TQXML_WRITER_MARKUPTEXT_H
#define TQXML_WRITER_MARKUPTEXT_H

#include "tqutil/UString.h"

namespace Orn::markup {

// The fixed pieces of markup, built once while the library is loaded.
extern UString const START_TAG_BEGIN;      // <
extern UString const START_TAG_END;        // >
extern UString const EMPTY_TAG_END;        // />
extern UString const END_TAG_BEGIN;        // </
extern UString const END_TAG_END;          // >
extern UString const CDATA_BEGIN;          // <![CDATA[
extern UString const CDATA_END;            // ]]>
extern UString const NAMESPACE_SEPARATOR;  // :
extern UString const DEFAULT_ENCODING;     // UTF-8

extern UString const LINE_FEED;
extern UString const INDENT;  // two blanks
extern UString const BLANK;
extern UString const VALUE_BEGIN;       // ="
extern UString const VALUE_END;         // "
extern UString const XMLNS;             //  xmlns, with the blank before it
extern UString const COMMENT_BEGIN;     // !-- , with the blank behind it
extern UString const COMMENT_END;       //  --, with the blank before it
extern UString const INSTRUCTION_MARK;  // ?
extern UString const XML_DECL_BEGIN;    // xml version="1.0" encoding="

}  // namespace Orn::markup

#endif

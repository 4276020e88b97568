#ifndef TQXML_WRITER_ESCAPE_H
#define TQXML_WRITER_ESCAPE_H

#include "tqutil/UString.h"
#include "tqxml/foundation/TextBuffer.h"

namespace Orn {

/// Appends to `dest` what `XmlDoc::escape(text)` gives, without a copy in between.
void append_escaped(TextBuffer& dest, UString const& text);

/// Puts `text`, for which there must be room. The result is false, and what was put of no account,
/// where `XmlDoc::escape(text)` may be another text.
bool put_if_plain(TextBuffer::Pen& pen, UString const& text);

/// Whether `XmlDoc::escape(text)` may be another text.
bool needs_escape(UString const& text);

}  // namespace Orn

#endif

#ifndef TQXML_WRITER_ESCAPE_H
#define TQXML_WRITER_ESCAPE_H

#include "tqutil/UString.h"

namespace Orn {

/// Appends to `dest` what `XmlDoc::escape(text)` gives, without a copy in between.
void append_escaped(UString& dest, UString const& text);

}  // namespace Orn

#endif

#ifndef TQXML_WRITER_MARKUPTEXT_H
#define TQXML_WRITER_MARKUPTEXT_H

#include <string_view>

namespace Orn::markup {

// The fixed pieces of markup.

using Piece = std::u16string_view;

inline constexpr Piece START_TAG_BEGIN = u"<";
inline constexpr Piece START_TAG_END = u">";
inline constexpr Piece EMPTY_TAG_END = u"/>";
inline constexpr Piece END_TAG_BEGIN = u"</";
inline constexpr Piece END_TAG_END = u">";
inline constexpr Piece CDATA_BEGIN = u"<![CDATA[";
inline constexpr Piece CDATA_END = u"]]>";
inline constexpr Piece NAMESPACE_SEPARATOR = u":";
inline constexpr Piece DEFAULT_DECLARATION = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

inline constexpr Piece LINE_FEED = u"\n";
inline constexpr Piece INDENT = u"  ";
inline constexpr Piece BLANK = u" ";
inline constexpr Piece VALUE_BEGIN = u"=\"";
inline constexpr Piece VALUE_END = u"\"";
inline constexpr Piece XMLNS = u" xmlns";
inline constexpr Piece COMMENT_BEGIN = u"!-- ";
inline constexpr Piece COMMENT_END = u" --";
inline constexpr Piece INSTRUCTION_MARK = u"?";
inline constexpr Piece XML_DECL_BEGIN = u"xml version=\"1.0\" encoding=\"";

}  // namespace Orn::markup

#endif

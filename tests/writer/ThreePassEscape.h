#ifndef TESTS_WRITER_THREEPASSESCAPE_H
#define TESTS_WRITER_THREEPASSESCAPE_H

#include <string>

namespace tests {

inline std::u16string replaced(std::u16string text, std::u16string const& what,
                               std::u16string const& by) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::u16string::npos; at += by.size()) {
    text.replace(at, what.size(), by);
  }
  return text;
}

/// Escaped element content by its definition: the shorter of both forms, CDATA when they are
/// equally long.
inline std::u16string in_three_passes(std::u16string const& text) {
  std::u16string const entities =
      replaced(replaced(replaced(text, u"&", u"&amp;"), u"<", u"&lt;"), u"]]>", u"]]&gt;");
  std::u16string const cdata = u"<![CDATA[" + text + u"]]>";
  bool const may_wrap = text.find(u"]]>") == std::u16string::npos;
  return entities != text && may_wrap && cdata.size() <= entities.size() ? cdata : entities;
}

}  // namespace tests

#endif

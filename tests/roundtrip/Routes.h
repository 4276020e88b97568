#ifndef TESTS_ROUNDTRIP_ROUTES_H
#define TESTS_ROUNDTRIP_ROUTES_H

#include <vector>

#include "tests/support/TestTags.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {

/// A way for a text to get into a document and out again, in an element `u_a`.
struct Route {
  char const* name;
  void (*write)(Orn::XmlDoc&, Orn::UString const&);
  Orn::UString (*read)(Orn::DomParser::Elem&);
  /// Whether the text is element content, whose line ends every reader normalises.
  bool normalises_line_ends;
};

inline Route const escaped_text = {
    "escaped text",
    [](Orn::XmlDoc& doc, Orn::UString const& text) { doc.add_elem(testtags::u_a, text, true); },
    [](Orn::DomParser::Elem& elem) { return elem.data(); }, true};

inline Route const cdata = {
    "CDATA",
    [](Orn::XmlDoc& doc, Orn::UString const& text) { doc.add_elem_CDATA(testtags::u_a, text); },
    [](Orn::DomParser::Elem& elem) { return elem.data(); }, true};

inline Route const escaped_attribute = {
    "escaped attribute",
    [](Orn::XmlDoc& doc, Orn::UString const& text) {
      doc.push_elem(testtags::u_a);
      doc.add_attr(testtags::u_b, Orn::XmlDoc::escape_attr(text));
      doc.pop_elem(testtags::u_a);
    },
    [](Orn::DomParser::Elem& elem) { return elem.next_attr().data(); }, false};

/// What a reader makes of the line ends in element content: line feeds.
inline Orn::UString with_line_feeds(Orn::UString const& text) {
  Orn::UString normalised;
  for (unsigned int i = 0; i < text.length(); ++i) {
    bool const carriage_return = text[i] == '\r';
    if (carriage_return && text[i + 1] == '\n') continue;
    normalised.append(carriage_return ? static_cast<unsigned short>('\n') : text[i]);
  }
  return normalised;
}

/// What is to be read back along the route when `text` has been written.
inline Orn::UString expected(Route const& route, Orn::UString const& text) {
  return route.normalises_line_ends ? with_line_feeds(text) : text;
}

/// The texts as they are read back from one document that holds them all.
inline std::vector<Orn::UString> sent(Route const& route, std::vector<Orn::UString> const& texts) {
  Orn::XmlDoc doc(testtags::u_r);
  for (Orn::UString const& text : texts) route.write(doc, text);
  doc.close();

  Orn::DomParser parser(doc);
  Orn::DomParser::Elem root = parser.root();
  std::vector<Orn::UString> read;
  for (auto elem = root.next_child(); !elem.is_nil(); elem = root.next_child()) {
    read.push_back(route.read(elem));
  }
  return read;
}

inline Orn::UString sent(Route const& route, Orn::UString const& text) {
  return sent(route, std::vector{text}).at(0);
}

}  // namespace tests

#endif

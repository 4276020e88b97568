#include "TypeCatalogue.h"

#include "Attributes.h"
#include "Names.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/writer/XmlDoc.h"

namespace demo {

using Orn::DomParser;
using Orn::UString;
using Orn::XmlDoc;

namespace {

// The writer takes attribute values as they are, so what may hold a quotation mark is escaped here.
void write_title(XmlDoc& doc, Title const& title) {
  doc.push_elem(names::title);
  if (!title.language.empty()) doc.add_attr(names::lang, XmlDoc::escape_attr(title.language));
  doc.append_elem_body(title.text, true);
  doc.pop_elem(names::title);
}

void write_type(XmlDoc& doc, FileType const& type) {
  doc.push_elem(names::file_type);
  doc.add_attr(names::id, XmlDoc::escape_attr(type.id));
  for (Title const& title : type.titles) write_title(doc, title);
  for (UString const& pattern : type.patterns) doc.add_elem(names::pattern, pattern, true);
  doc.pop_elem(names::file_type);
}

FileType read_type(DomParser::Elem element) {
  element.match(names::file_type);
  FileType type;
  type.id = attribute(element, names::id).data();
  for (auto part = element.next_child(); !part.is_nil(); part = element.next_child()) {
    if (part.tag() == names::title) {
      type.titles.push_back({language(part), part.data()});
    } else {
      part.match(names::pattern);
      type.patterns.push_back(part.data());
    }
  }
  return type;
}

}  // namespace

std::string write_catalogue(std::vector<FileType> const& types) {
  XmlDoc doc;
  doc.set_indented_format();
  doc.add_ns(names::ns_catalogue, UString(u"types"));
  // The only prefix that this namespace may have; the writer would make one up.
  doc.add_ns(names::ns_xml, UString(u"xml"));
  doc.push_elem(names::file_types);
  for (FileType const& type : types) write_type(doc, type);
  doc.close();
  return doc.byte_array();
}

std::vector<FileType> read_catalogue(std::string const& text) {
  DomParser parser(text);
  DomParser::Elem root = parser.root();
  root.match(names::file_types);
  std::vector<FileType> types;
  for (auto element = root.next_child(); !element.is_nil(); element = root.next_child()) {
    types.push_back(read_type(element));
  }
  return types;
}

}  // namespace demo

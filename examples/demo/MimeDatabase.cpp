#include "MimeDatabase.h"

#include <sstream>
#include <stdexcept>

#include "Attributes.h"
#include "Names.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/sax/SaxParser.h"

namespace demo {

using Orn::DomParser;
using Orn::SaxParser;

namespace {

// Both readers promise the same navigation, so what follows serves both. A type and a glob without
// these attributes would be of no use, so they are asked for without looking: data() of a nil
// attribute raises.

template <class Elem>
FileType read_type(Elem element) {
  FileType type;
  type.id = attribute(element, names::type).data();
  for (Elem part = element.next_child(); !part.is_nil(); part = element.next_child()) {
    if (part.tag() == names::comment) {
      type.titles.push_back({language(part), part.data()});
    } else if (part.tag() == names::glob) {
      type.patterns.push_back(attribute(part, names::pattern_of_glob).data());
    }
  }
  return type;
}

template <class Elem, class Visitor>
void visit_types(Elem root, Visitor const& visit) {
  root.match(names::mime_info);
  for (Elem element = root.next_child(); !element.is_nil(); element = root.next_child()) {
    if (element.tag() == names::mime_type) visit(read_type(element));
  }
}

// The message of a stream that is not well-formed leaves out what the parser knows about it.
std::string with_parser_error(SaxParser const& parser, Orn::STPException const& e) {
  std::ostringstream text;
  text << e.what() << ": line " << parser.error_line() << ", column " << parser.error_column()
       << ": " << parser.error_text();
  return text.str();
}

}  // namespace

std::vector<FileType> read_mime_database(std::string const& text) {
  std::vector<FileType> types;
  DomParser parser(text);
  visit_types(parser.root(), [&types](FileType const& type) { types.push_back(type); });
  return types;
}

void stream_mime_database(std::istream& in, std::function<void(FileType const&)> const& visit) {
  SaxParser parser;
  try {
    visit_types(parser.initialize(&in), visit);
  } catch (Orn::StateException const& e) {
    if (parser.error_text().empty()) throw;
    throw std::runtime_error(with_parser_error(parser, e));
  }
}

}  // namespace demo

#include "MimeDatabase.h"

#include "Attributes.h"
#include "Names.h"

namespace demo {

using Orn::DomParser;
using Orn::UString;

namespace {

// A type and a glob without these attributes would be of no use, so they are asked for without
// looking: data() of a nil attribute raises.
UString id_of(DomParser::Elem const& type) { return attribute(type, names::type).data(); }
UString pattern_of(DomParser::Elem const& glob) {
  return attribute(glob, names::pattern_of_glob).data();
}

FileType read_type(DomParser::Elem element) {
  FileType type;
  type.id = id_of(element);
  for (auto part = element.next_child(); !part.is_nil(); part = element.next_child()) {
    if (part.tag() == names::comment) {
      type.titles.push_back({language(part), part.data()});
    } else if (part.tag() == names::glob) {
      type.patterns.push_back(pattern_of(part));
    }
  }
  return type;
}

}  // namespace

std::vector<FileType> read_mime_database(std::string const& text) {
  DomParser parser(text);
  DomParser::Elem root = parser.root();
  root.match(names::mime_info);
  std::vector<FileType> types;
  for (auto element = root.next_child(); !element.is_nil(); element = root.next_child()) {
    if (element.tag() == names::mime_type) types.push_back(read_type(element));
  }
  return types;
}

}  // namespace demo

#include "TypeTree.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "Names.h"
#include "TypeCatalogue.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/sax/SaxParser.h"
#include "tqxml/writer/XmlDoc.h"

namespace demo {

using Orn::DomParser;
using Orn::SaxParser;
using Orn::UString;
using Orn::XmlDoc;

namespace {

bool is_plain(UString const& value) { return XmlDoc::escape_attr(value) == value; }

bool has_plain_attributes(FileType const& type) {
  return is_plain(type.id) &&
         std::all_of(type.titles.begin(), type.titles.end(),
                     [](Title const& title) { return is_plain(title.language); });
}

template <class Elem>
XmlDoc::Elem tree_of_child(Elem root, std::size_t position) {
  Elem child = root.next_child();
  for (; position > 0; --position) child = root.next_child();
  return XmlDoc::Elem(child);
}

XmlDoc::Elem make_tree(std::string const& catalogue, std::size_t position) {
  DomParser whole(catalogue);
  std::istringstream in(catalogue);
  SaxParser stream(in);
  XmlDoc::Elem tree = tree_of_child(whole.root(), position);
  if (tree != tree_of_child(stream.root(), position)) {
    throw std::runtime_error("the readers make different trees of one element");
  }
  return tree;
}

std::string write_alone(XmlDoc::Elem const& tree) {
  XmlDoc doc;
  doc.add_ns(names::ns_xml, u"xml");
  doc.push_elem(names::file_types);
  doc.add_elem(tree);
  doc.close();
  return doc.byte_array();
}

}  // namespace

std::vector<TreeJourney> send_through_a_tree(std::string const& catalogue,
                                             std::vector<FileType> const& types) {
  auto const chosen = std::find_if(types.begin(), types.end(), has_plain_attributes);
  if (chosen == types.end()) return {};
  XmlDoc::Elem tree = make_tree(catalogue, static_cast<std::size_t>(chosen - types.begin()));
  tree.add_elem(names::pattern, u"*.demo", true);
  return {TreeJourney{*chosen, read_catalogue(write_alone(tree)).at(0)}};
}

}  // namespace demo

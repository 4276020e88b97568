#include <cstddef>
#include <istream>
#include <memory>
#include <string>
#include <vector>

#include "bench/contenders/Pieces.h"
#include "bench/contenders/XercesReaders.h"
#include "bench/jobs/Jobs.h"
#include "bench/jobs/Samples.h"
#include "bench/jobs/Trees.h"
#include "bench/orders/Names.h"
#include "bench/orders/Tell.h"

namespace bench {
namespace {

using Elem = Orn::XmlDoc::Elem;

/// A tree of the records, and every element of it: only who built a tree can get at what is below
/// its root.
struct BuiltTree {
  Elem root{orders};
  std::vector<Elem const*> elements;
};

void build_order(BuiltTree& tree, Order const& record) {
  Elem& element = tree.root.add_elem(Elem(order));
  tree.elements.push_back(&element);
  for (std::size_t i = 0; i < attribute_names.size(); ++i) {
    element.add_attr(attribute_names[i], record.attributes[i].utf16);
  }
  for (std::size_t i = 0; i < field_names.size(); ++i) {
    tree.elements.push_back(&element.add_elem(field_names[i], record.fields[i].utf16, true));
  }
}

void build(BuiltTree& tree, Orders const& records) {
  for (Order const& record : records) build_order(tree, record);
  tree.elements.push_back(&tree.root);
}

std::size_t copy_every_level(BuiltTree const& tree) {
  std::size_t copies = 0;
  for (Elem const* element : tree.elements) {
    Elem const copy(*element);
    copies += copy.empty() ? 0 : 1;
  }
  return copies;
}

struct TwoTrees {
  Elem one;
  Elem other;
};

/// The document, and what is made of it before the time counts.
template <class Made>
struct Given {
  std::string const& document;
  Made made;
};

Given<Elem> tree_of(Size const& size) {
  std::string const& document = sample(size).document;
  return {document, tree_from_dom(document)};
}

Given<TwoTrees> two_trees_of(Size const& size) {
  std::string const& document = sample(size).document;
  return {document, {tree_from_stream(document), tree_from_stream(document)}};
}

std::unique_ptr<Given<BuiltTree>> built_tree_of(Size const& size) {
  auto given = std::make_unique<Given<BuiltTree>>(Given<BuiltTree>{sample(size).document, {}});
  build(given->made, sample(size).records);
  return given;
}

std::string name_of(char const* job, Size const& size) {
  return std::string(job) + "/tqxml/" + size.name;
}

void check_one(Size const& size) {
  Sample const& is = sample(size);
  TwoTrees const trees = two_trees_of(size).made;
  expect(trees.one == trees.other, name_of("tree_compare", size));
  Digest right;
  tell(is.records, right);
  // The readers differ in the order of the attributes.
  for (Elem const& tree : {tree_from_dom(is.document), trees.one}) {
    Digest read;
    read_xerces_whole(tree_to_document(tree), order_names(), read);
    expect(read.value() == right.value(), name_of("tree_to_document", size));
  }
  auto const built = built_tree_of(size);
  expect(copy_every_level(built->made) == built->made.elements.size(), name_of("tree_copy", size));
}

void register_readers(Size const& size) {
  auto const given = [&size]() -> Sample const& { return sample(size); };
  auto const bytes = [](Sample const& is) { return is.document.size(); };
  register_work(
      name_of("tree_from_stream", size), given,
      [](Sample const& is) { return tree_from_stream(is.document); }, bytes);
  register_work(
      name_of("tree_from_dom", size), given,
      [](Sample const& is) { return tree_from_dom(is.document); }, bytes);
}

void register_others(Size const& size) {
  auto const bytes = [](auto const& is) { return is.document.size(); };
  register_work(
      name_of("tree_to_document", size), [&size] { return tree_of(size); },
      [](Given<Elem> const& is) { return tree_to_document(is.made); }, bytes);
  register_work(
      name_of("tree_compare", size), [&size] { return two_trees_of(size); },
      [](Given<TwoTrees> const& is) { return is.made.one == is.made.other; }, bytes);
  register_work(
      name_of("tree_copy", size), [&size] { return built_tree_of(size); },
      [](std::unique_ptr<Given<BuiltTree>> const& is) { return copy_every_level(is->made); },
      [](std::unique_ptr<Given<BuiltTree>> const& is) { return is->document.size(); });
}

}  // namespace

Elem tree_from_stream(std::string_view document) {
  PieceBuffer pieces(document);
  std::istream in(&pieces);
  Orn::SaxParser parser(in);
  Orn::SaxParser::Elem root = parser.root();
  return Elem(root);
}

Elem tree_from_dom(std::string const& document) { return Elem(Orn::DomParser(document).root()); }

std::string tree_to_document(Elem const& tree) {
  Orn::XmlDoc doc;
  doc.add_elem(tree);
  doc.close();
  return doc.byte_array();
}

void check_trees() {
  for (Size const& size : SIZES) {
    if (size.bytes <= LARGEST_CHECKED) check_one(size);
  }
}

void register_trees() {
  for (Size const& size : SIZES) {
    register_readers(size);
    register_others(size);
  }
}

}  // namespace bench

#include <cstdint>
#include <istream>
#include <string>

#include "bench/contenders/TqxmlReaders.h"
#include "bench/contenders/XercesReaders.h"
#include "bench/jobs/GrowthNames.h"
#include "bench/jobs/Jobs.h"
#include "bench/jobs/Trees.h"
#include "bench/orders/Names.h"

namespace bench {
namespace {

using Orn::SaxParser;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Elem = XmlDoc::Elem;

/// Some seven characters.
UString text_of(std::int32_t index) { return UString::from_utf8("text " + std::to_string(index)); }

/// A document of many of something.
struct Many {
  char const* job;
  std::initializer_list<std::int32_t> counts;
  std::string (*write)(std::int32_t count);
  /// What is in it, as all readers tell it but those that show only attributes up to a number.
  void (*tell)(Digest& digest, std::int32_t count, std::int32_t last_attribute);
};

std::string write_namespaces(std::int32_t count) {
  XmlDoc doc(orders);
  for (std::int32_t i = 0; i < count; ++i) doc.add_elem(growth_element(i), text_of(i), true);
  doc.close();
  return doc.byte_array();
}

void tell_leaf(Digest& digest, XmlTag::Id id, std::int32_t index) {
  digest.start(id);
  digest.text(text_of(index));
  digest.end();
}

void tell_namespaces(Digest& digest, std::int32_t count, std::int32_t /*last_attribute*/) {
  digest.start(orders);
  for (std::int32_t i = 0; i < count; ++i) tell_leaf(digest, growth_element(i), i);
  digest.end();
}

std::string write_attributes(std::int32_t count) {
  XmlDoc doc(orders);
  for (std::int32_t i = 0; i < count; ++i) doc.add_attr(growth_attribute(i), text_of(i));
  doc.append_elem_body(text_of(0), true);
  doc.close();
  return doc.byte_array();
}

void tell_attributes(Digest& digest, std::int32_t count, std::int32_t last_attribute) {
  digest.start(orders);
  for (std::int32_t i = 0; i < count && growth_attribute(i) <= last_attribute; ++i) {
    digest.attribute(growth_attribute(i), text_of(i));
  }
  digest.text(text_of(0));
  digest.end();
}

std::string write_children(std::int32_t count) {
  XmlDoc doc(orders);
  for (std::int32_t i = 0; i < count; ++i) doc.add_elem(order, text_of(i), true);
  doc.close();
  return doc.byte_array();
}

void tell_children(Digest& digest, std::int32_t count, std::int32_t /*last_attribute*/) {
  digest.start(orders);
  for (std::int32_t i = 0; i < count; ++i) tell_leaf(digest, order, i);
  digest.end();
}

Many const NAMESPACES{"namespaces", {250, 1000, 4000}, write_namespaces, tell_namespaces};
Many const ATTRIBUTES{"attributes", {2500, 10000}, write_attributes, tell_attributes};
Many const CHILDREN{"children", {25000, 100000}, write_children, tell_children};

struct XercesWhole {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    read_xerces_whole(document, growth_names(), sink);
  }
};

struct XercesStream {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    PieceBuffer pieces(document);
    std::istream in(&pieces);
    read_xerces_stream<LookedUpNames>(in, growth_names(), sink);
  }
};

struct GrowthReader {
  char const* name;
  Read read;
  std::int32_t last_attribute;
};

constexpr std::int32_t ALL = INT32_MAX;

GrowthReader const READERS[] = {
    {"tqxml_read_whole", read_with<TqxmlWhole>(), ALL},
    {"tqxml_read_stream", read_with<TqxmlStream>(), SaxParser::LAST_SHOWN_ATTRIBUTE},
    {"xerces_read_whole", read_with<XercesWhole>(), ALL},
    {"xerces_read_stream", read_with<XercesStream>(), ALL},
};

std::string name_of(Many const& many, char const* contender, std::int32_t count) {
  return std::string(many.job) + "/" + contender + "/" + std::to_string(count);
}

std::uint64_t told(Many const& many, std::int32_t count, std::int32_t last_attribute) {
  Digest digest;
  many.tell(digest, count, last_attribute);
  return digest.value();
}

void check_document(Many const& many, char const* contender, std::int32_t count,
                    std::string const& document) {
  Digest read;
  XercesWhole::read(document, read);
  expect(read.value() == told(many, count, ALL), name_of(many, contender, count));
}

void check_readers(Many const& many) {
  std::int32_t const count = *many.counts.begin();
  std::string const document = many.write(count);
  for (GrowthReader const& reader : READERS) {
    expect(reader.read.digest(document).value() == told(many, count, reader.last_attribute),
           name_of(many, reader.name, count));
  }
}

void check_writer(Many const& many, char const* contender) {
  std::int32_t const count = *many.counts.begin();
  check_document(many, contender, count, many.write(count));
}

struct Trees {
  std::string document;
  Elem one;
  Elem other;
};

Trees trees_of_children(std::int32_t count) {
  std::string document = write_children(count);
  Elem one = tree_from_stream(document);
  Elem other = tree_from_stream(document);
  return {std::move(document), std::move(one), std::move(other)};
}

void check_trees_of_children() {
  std::int32_t const count = *CHILDREN.counts.begin();
  Trees const trees = trees_of_children(count);
  check_document(CHILDREN, "tqxml_tree_to_document", count, tree_to_document(trees.one));
  expect(trees.one == trees.other, name_of(CHILDREN, "tqxml_tree_compare", count));
}

void register_writer(Many const& many, char const* contender) {
  for (std::int32_t const count : many.counts) {
    register_work(
        name_of(many, contender, count), [&many, count] { return many.write(count); },
        [&many, count](std::string const&) { return many.write(count); },
        [](std::string const& document) { return document.size(); });
  }
}

void register_readers(Many const& many) {
  for (GrowthReader const& reader : READERS) {
    for (std::int32_t const count : many.counts) {
      register_work(
          name_of(many, reader.name, count), [&many, count] { return many.write(count); },
          [&reader](std::string const& document) { return reader.read.tally(document).sum(); },
          [](std::string const& document) { return document.size(); });
    }
  }
}

template <class Work>
void register_trees_of_children(char const* contender, Work work) {
  for (std::int32_t const count : CHILDREN.counts) {
    register_work(
        name_of(CHILDREN, contender, count), [count] { return trees_of_children(count); }, work,
        [](Trees const& trees) { return trees.document.size(); });
  }
}

}  // namespace

void check_growth() {
  check_writer(NAMESPACES, "tqxml");
  check_writer(ATTRIBUTES, "tqxml_write");
  check_readers(ATTRIBUTES);
  check_writer(CHILDREN, "tqxml_write");
  check_readers(CHILDREN);
  check_trees_of_children();
}

void register_growth() {
  register_writer(NAMESPACES, "tqxml");
  register_writer(ATTRIBUTES, "tqxml_write");
  register_readers(ATTRIBUTES);
  register_writer(CHILDREN, "tqxml_write");
  register_readers(CHILDREN);
  register_trees_of_children("tqxml_tree_from_stream",
                             [](Trees const& trees) { return tree_from_stream(trees.document); });
  register_trees_of_children("tqxml_tree_to_document",
                             [](Trees const& trees) { return tree_to_document(trees.one); });
  register_trees_of_children("tqxml_tree_compare",
                             [](Trees const& trees) { return trees.one == trees.other; });
}

}  // namespace bench

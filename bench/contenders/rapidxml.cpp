#include <cstring>
#include <iterator>
#include <rapidxml/rapidxml.hpp>
#include <rapidxml/rapidxml_print.hpp>
#include <string>
#include <string_view>

#include "bench/contenders/Contenders.h"
#include "bench/contenders/QualifiedNames.h"
#include "bench/orders/NameIndex.h"

namespace bench {
namespace {

using Document = rapidxml::xml_document<>;
using Node = rapidxml::xml_node<>;
using Attribute = rapidxml::xml_attribute<>;

// The nodes refer to names and values, which stay where they are until the document is printed.

void append_attribute(Document& document, Node& element, char const* name, std::string_view value) {
  element.append_attribute(
      document.allocate_attribute(name, value.data(), std::strlen(name), value.size()));
}

Node& append_element(Document& document, Node& parent, char const* name,
                     std::string_view text = {}) {
  Node* const element = document.allocate_node(rapidxml::node_element, name, text.data(),
                                               std::strlen(name), text.size());
  parent.append_node(element);
  return *element;
}

void append_order(Document& document, Node& root, Order const& record) {
  Node& element = append_element(document, root, ORDER_NAME);
  for (std::size_t i = 0; i < ATTRIBUTE_NAMES.size(); ++i) {
    append_attribute(document, element, ATTRIBUTE_NAMES[i], record.attributes[i].utf8);
  }
  for (std::size_t i = 0; i < FIELD_NAMES.size(); ++i) {
    append_element(document, element, FIELD_NAMES[i], record.fields[i].utf8);
  }
}

void append_declaration(Document& document) {
  Node* const declaration = document.allocate_node(rapidxml::node_declaration);
  append_attribute(document, *declaration, "version", "1.0");
  append_attribute(document, *declaration, "encoding", "UTF-8");
  document.append_node(declaration);
}

std::string write(Orders const& records) {
  Document document;
  append_declaration(document);
  Node& root = append_element(document, document, ROOT_NAME);
  for (NamespaceDeclaration const& each : NAMESPACE_DECLARATIONS) {
    append_attribute(document, root, each.name, each.uri);
  }
  for (Order const& record : records) append_order(document, root, record);
  std::string text;
  rapidxml::print(std::back_inserter(text), document, rapidxml::print_no_indenting);
  return text;
}

template <class Named>
std::string_view name_of(Named const& named) {
  return {named.name(), named.name_size()};
}

template <class Valued>
std::string_view value_of(Valued const& valued) {
  return {valued.value(), valued.value_size()};
}

/// Names are looked up as they stand in the document: RapidXML knows nothing of namespaces. Their
/// declarations are attributes like others to it, which have no number.
struct Whole {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    // Parsing changes the text, and the nodes refer to it.
    std::string text(document);
    Document parsed;
    parsed.parse<FLAGS>(text.data());
    walk(*parsed.first_node(), sink);
  }

 private:
  /// The values of elements are enough for leaves, and come with their lengths. End tags are
  /// checked, as everybody else does.
  static constexpr int FLAGS = rapidxml::parse_no_data_nodes |
                               rapidxml::parse_no_string_terminators |
                               rapidxml::parse_validate_closing_tags;

  template <class Sink>
  static void walk(Node const& element, Sink& sink) {
    sink.start(order_names().find_qualified(name_of(element)));
    walk_attributes(element, sink);
    Node const* child = element.first_node();
    if (child == nullptr) sink.text(value_of(element));
    for (; child != nullptr; child = child->next_sibling()) walk(*child, sink);
    sink.end();
  }

  template <class Sink>
  static void walk_attributes(Node const& element, Sink& sink) {
    for (Attribute const* attribute = element.first_attribute(); attribute != nullptr;
         attribute = attribute->next_attribute()) {
      Orn::XmlTag::Id const id = order_names().find_qualified(name_of(*attribute));
      if (id != Orn::XmlTag::NO_TAG) sink.attribute(id, value_of(*attribute));
    }
  }
};

}  // namespace

void add_rapidxml(Contenders& contenders) {
  contenders.writers.push_back({"rapidxml", write});
  contenders.whole_readers.push_back({"rapidxml", read_with<Whole>()});
}

}  // namespace bench

#include <pugixml.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "bench/contenders/Contenders.h"
#include "bench/contenders/QualifiedNames.h"
#include "bench/orders/NameIndex.h"

namespace bench {
namespace {

class StringWriter : public pugi::xml_writer {
 public:
  void write(void const* data, std::size_t size) override {
    text_.append(static_cast<char const*>(data), size);
  }
  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

void append_order(pugi::xml_node root, Order const& record) {
  pugi::xml_node element = root.append_child(ORDER_NAME);
  for (std::size_t i = 0; i < ATTRIBUTE_NAMES.size(); ++i) {
    element.append_attribute(ATTRIBUTE_NAMES[i]).set_value(record.attributes[i].utf8.c_str());
  }
  for (std::size_t i = 0; i < FIELD_NAMES.size(); ++i) {
    pugi::xml_node field = element.append_child(FIELD_NAMES[i]);
    field.append_child(pugi::node_pcdata).set_value(record.fields[i].utf8.c_str());
  }
}

void append_declaration(pugi::xml_document& document) {
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version").set_value("1.0");
  declaration.append_attribute("encoding").set_value("UTF-8");
}

std::string write(Orders const& records) {
  pugi::xml_document document;
  append_declaration(document);
  pugi::xml_node root = document.append_child(ROOT_NAME);
  for (NamespaceDeclaration const& each : NAMESPACE_DECLARATIONS) {
    root.append_attribute(each.name).set_value(each.uri);
  }
  for (Order const& record : records) append_order(root, record);
  StringWriter writer;
  document.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
  return writer.take();
}

/// Names are looked up as they stand in the document: pugixml knows nothing of namespaces. Their
/// declarations are attributes like others to it, which have no number.
struct Whole {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    pugi::xml_document parsed;
    pugi::xml_parse_result const result = parsed.load_buffer(
        document.data(), document.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!result) throw std::runtime_error(result.description());
    walk(parsed.document_element(), sink);
  }

 private:
  template <class Sink>
  static void walk(pugi::xml_node element, Sink& sink) {
    sink.start(order_names().find_qualified(element.name()));
    walk_attributes(element, sink);
    bool has_children = false;
    for (pugi::xml_node const child : element.children()) {
      if (child.type() != pugi::node_element) continue;
      has_children = true;
      walk(child, sink);
    }
    if (!has_children) sink.text(std::string_view(element.child_value()));
    sink.end();
  }

  template <class Sink>
  static void walk_attributes(pugi::xml_node element, Sink& sink) {
    for (pugi::xml_attribute const attribute : element.attributes()) {
      Orn::XmlTag::Id const id = order_names().find_qualified(attribute.name());
      if (id != Orn::XmlTag::NO_TAG) sink.attribute(id, std::string_view(attribute.value()));
    }
  }
};

}  // namespace

void add_pugixml(Contenders& contenders) {
  contenders.writers.push_back({"pugixml", write});
  contenders.whole_readers.push_back({"pugixml", read_with<Whole>()});
}

}  // namespace bench

#include <tinyxml2.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/contenders/Contenders.h"
#include "bench/contenders/QualifiedNames.h"
#include "bench/orders/NameIndex.h"

namespace bench {
namespace {

/// Without white space between elements.
constexpr bool COMPACT = true;

void print_order(tinyxml2::XMLPrinter& printer, Order const& record) {
  printer.OpenElement(ORDER_NAME, COMPACT);
  for (std::size_t i = 0; i < ATTRIBUTE_NAMES.size(); ++i) {
    printer.PushAttribute(ATTRIBUTE_NAMES[i], record.attributes[i].utf8.c_str());
  }
  for (std::size_t i = 0; i < FIELD_NAMES.size(); ++i) {
    printer.OpenElement(FIELD_NAMES[i], COMPACT);
    printer.PushText(record.fields[i].utf8.c_str());
    printer.CloseElement(COMPACT);
  }
  printer.CloseElement(COMPACT);
}

/// Its printer takes a document without a tree.
std::string write(Orders const& records) {
  tinyxml2::XMLPrinter printer(nullptr, COMPACT);
  printer.PushDeclaration("xml version=\"1.0\" encoding=\"UTF-8\"");
  printer.OpenElement(ROOT_NAME, COMPACT);
  for (NamespaceDeclaration const& each : NAMESPACE_DECLARATIONS) {
    printer.PushAttribute(each.name, each.uri);
  }
  for (Order const& record : records) print_order(printer, record);
  printer.CloseElement(COMPACT);
  // The size counts the terminating zero.
  return {printer.CStr(), static_cast<std::size_t>(printer.CStrSize()) - 1};
}

/// Names are looked up as they stand in the document: TinyXML-2 knows nothing of namespaces. Their
/// declarations are attributes like others to it, which have no number.
struct Whole {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    tinyxml2::XMLDocument parsed;
    if (parsed.Parse(document.data(), document.size()) != tinyxml2::XML_SUCCESS) {
      throw std::runtime_error(parsed.ErrorStr());
    }
    walk(*parsed.RootElement(), sink);
  }

 private:
  template <class Sink>
  static void walk(tinyxml2::XMLElement const& element, Sink& sink) {
    sink.start(order_names().find_qualified(element.Name()));
    walk_attributes(element, sink);
    tinyxml2::XMLElement const* child = element.FirstChildElement();
    if (child == nullptr) sink.text(text_of(element));
    for (; child != nullptr; child = child->NextSiblingElement()) walk(*child, sink);
    sink.end();
  }

  template <class Sink>
  static void walk_attributes(tinyxml2::XMLElement const& element, Sink& sink) {
    for (tinyxml2::XMLAttribute const* attribute = element.FirstAttribute(); attribute != nullptr;
         attribute = attribute->Next()) {
      Orn::XmlTag::Id const id = order_names().find_qualified(attribute->Name());
      if (id != Orn::XmlTag::NO_TAG) sink.attribute(id, std::string_view(attribute->Value()));
    }
  }

  static std::string_view text_of(tinyxml2::XMLElement const& leaf) {
    char const* const text = leaf.GetText();
    return text == nullptr ? std::string_view() : text;
  }
};

}  // namespace

void add_tinyxml2(Contenders& contenders) {
  contenders.writers.push_back({"tinyxml2", write});
  contenders.whole_readers.push_back({"tinyxml2", read_with<Whole>()});
}

}  // namespace bench

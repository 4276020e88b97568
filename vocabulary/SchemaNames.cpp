#include "vocabulary/SchemaNames.h"

namespace vocabulary {

namespace {

// What stands directly in the xs:schema is global.
constexpr std::size_t GLOBAL_DEPTH = 2;

bool is_qualified(std::optional<std::u16string_view> form) {
  return form == std::u16string_view(u"qualified");
}

Name referred_name(std::u16string_view qualified_name, SchemaNames::Prefixes const& prefixes) {
  std::size_t const colon = qualified_name.find(u':');
  std::u16string_view const prefix =
      colon == std::u16string_view::npos ? u"" : qualified_name.substr(0, colon);
  std::u16string_view const local =
      colon == std::u16string_view::npos ? qualified_name : qualified_name.substr(colon + 1);
  return {std::u16string(prefixes(prefix)), std::u16string(local)};
}

}  // namespace

std::optional<SchemaNames::Found> SchemaNames::start_element(NameView const& element,
                                                             Attributes const& attributes,
                                                             Prefixes const& prefixes) {
  ++depth_;
  if (annotation_ != 0 || element.uri != SCHEMA_URI) return std::nullopt;
  if (depth_ == 1) begin(attributes);
  if (element.local == u"annotation") annotation_ = depth_;
  if (element.local != u"element" && element.local != u"attribute") return std::nullopt;
  NameList::Use const use = element.local == u"element" ? NameList::ELEMENT : NameList::ATTRIBUTE;
  if (auto const name = attributes(u"name"))
    return Found{declared_name(*name, use, attributes), use};
  if (auto const ref = attributes(u"ref")) return Found{referred_name(*ref, prefixes), use};
  return std::nullopt;
}

void SchemaNames::end_element() {
  if (annotation_ == depth_) annotation_ = 0;
  --depth_;
}

void SchemaNames::begin(Attributes const& attributes) {
  target_namespace_ = attributes(u"targetNamespace").value_or(u"");
  elements_are_qualified_ = is_qualified(attributes(u"elementFormDefault"));
  attributes_are_qualified_ = is_qualified(attributes(u"attributeFormDefault"));
}

Name SchemaNames::declared_name(std::u16string_view local, NameList::Use use,
                                Attributes const& attributes) const {
  if (auto const own = attributes(u"targetNamespace")) {
    return {std::u16string(*own), std::u16string(local)};
  }
  auto const form = attributes(u"form");
  bool const by_default =
      use == NameList::ELEMENT ? elements_are_qualified_ : attributes_are_qualified_;
  bool const qualified = depth_ == GLOBAL_DEPTH || (form ? is_qualified(form) : by_default);
  return {qualified ? target_namespace_ : std::u16string(), std::u16string(local)};
}

}  // namespace vocabulary

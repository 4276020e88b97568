#include "tqutil/XmlTag.h"

#include "tqutil/Registry.h"
#include "tqutil/UtilCatalogue.h"
#include "tqutil/UtilExceptions.h"

namespace Orn {
namespace {

[[noreturn]] void raise_unknown_name(UString const& ns_uri, UString const& simple_name) {
  raise_util<TagException>(UtilCatalogue::UNKNOWN_TAG_NAME, simple_name, ns_uri);
}

}  // namespace

XmlTag::XmlTag(UString const& ns_uri, UString const& simple_name)
    : XmlTag(NO_TAG, NO_NS, ns_uri, simple_name) {}

XmlTag::XmlTag(Id id, NsId ns_id, UString const& ns_uri, UString const& simple_name)
    : ns_(ns_uri), simple_name_(simple_name), ns_id_(ns_id), id_(id) {}

XmlTag const& XmlTag::lookup(Id id) {
  XmlTag const* const entry = Registry::instance().find(id);
  if (entry == nullptr) {
    raise_util<TagException>(UtilCatalogue::UNKNOWN_TAG_ID, static_cast<std::int32_t>(id));
  }
  return *entry;
}

XmlTag const& XmlTag::lookup(XmlTag& tag) {
  XmlTag const* const entry =
      Registry::instance().find(Registry::bytes_of(tag.ns_), Registry::bytes_of(tag.simple_name_));
  if (entry == nullptr) raise_unknown_name(tag.ns_, tag.simple_name_);
  return *entry;
}

XmlTag const& XmlTag::lookup(std::u16string_view ns_uri, std::u16string_view simple_name) {
  XmlTag const* const entry =
      Registry::instance().find(Registry::bytes_of(ns_uri), Registry::bytes_of(simple_name));
  if (entry == nullptr) {
    raise_unknown_name(UString(ns_uri.data(), ns_uri.size()),
                       UString(simple_name.data(), simple_name.size()));
  }
  return *entry;
}

UString const& XmlTag::ns_URI(NsId ns) {
  UString const* const uri = Registry::instance().find_uri(ns);
  if (uri == nullptr) {
    raise_util<TagException>(UtilCatalogue::UNKNOWN_NAMESPACE_ID, static_cast<std::int32_t>(ns));
  }
  return *uri;
}

UString XmlTag::to_string() const {
  if (ns_.empty()) return simple_name_;
  UString text(u"{");
  text.append(ns_).append(u"}").append(simple_name_);
  return text;
}

}  // namespace Orn

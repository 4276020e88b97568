#include "tqxml/foundation/NavigationErrors.h"

#include "tqxml/foundation/Raise.h"

namespace Orn {
namespace {

UString operation_name(Catalogue::Index operation) {
  return UMessage::sprintf(Catalogue::table(), operation, UMessage::Arg::nil);
}

UString call_of(char16_t const* handle, UString const& operation) {
  UString call(handle);
  call.append(u"::").append(operation).append(u"()");
  return call;
}

UString shown(XmlTag::Id id) { return XmlTag::lookup(id).to_string(); }

}  // namespace

void raise_nil_element(char16_t const* handle, UString const& operation) {
  raise<StateException>(Catalogue::NIL_ELEMENT, call_of(handle, operation));
}

void raise_nil_attribute(char16_t const* handle, UString const& operation) {
  raise<StateException>(Catalogue::NIL_ATTRIBUTE, call_of(handle, operation));
}

void raise_tag_mismatch(Catalogue::Index operation, XmlTag::Id expected, XmlTag::Id actual) {
  raise<StateException>(Catalogue::TAG_MISMATCH, operation_name(operation), shown(expected),
                        shown(actual));
}

void raise_no_children(XmlTag::Id element) {
  raise<StateException>(Catalogue::NO_CHILDREN, operation_name(Catalogue::OPERATION_CHILD),
                        shown(element));
}

void raise_missing_child(XmlTag::Id wanted, XmlTag::Id element) {
  raise<StateException>(Catalogue::MISSING_REQUIRED_CHILD,
                        operation_name(Catalogue::OPERATION_CHILD), shown(wanted), shown(element));
}

void raise_is_empty_mismatch(XmlTag::Id element, bool expected, bool actual) {
  raise<StateException>(Catalogue::IS_EMPTY_MISMATCH,
                        operation_name(Catalogue::OPERATION_CHECK_IS_EMPTY), shown(element),
                        std::int32_t{expected}, std::int32_t{actual});
}

}  // namespace Orn

#include <utility>

#include "tqxml/foundation/NavigationErrors.h"
#include "tqxml/sax/ElemImpl.h"
#include "tqxml/sax/SaxParser.h"

namespace Orn {

void RefCount<SaxParser::ElemImpl>::retain(SaxParser::ElemImpl* record) noexcept {
  SaxParser::ElemImpl::retain(record);
}

void RefCount<SaxParser::ElemImpl>::release(SaxParser::ElemImpl* record) noexcept {
  SaxParser::ElemImpl::release(record);
}

[[gnu::flatten]] SaxParser::Elem::~Elem() = default;

void SaxParser::Elem::check_is_nil(UString const& name) const {
  if (is_nil()) raise_nil_element(u"SaxParser::Elem", name);
}

// What the handle refers to, for the operation of that name.
inline SaxParser::ElemImpl& SaxParser::Elem::record(char16_t const* operation) const {
  if (is_nil()) check_is_nil(UString(operation));
  return *record_.get();
}

XmlTag::Id SaxParser::Elem::tag() const { return record(u"tag").tag(); }

void SaxParser::Elem::match(XmlTag::Id expected) const {
  XmlTag::Id const actual = tag();
  if (actual != expected) raise_tag_mismatch(Catalogue::OPERATION_ELEM_MATCH, expected, actual);
}

SaxParser::Elem SaxParser::Elem::child() const { return Elem(record(u"child").child()); }

SaxParser::Elem SaxParser::Elem::child(XmlTag::Id id) const {
  Elem found(record(u"child").opt_child(id));
  if (found.is_nil()) raise_missing_child(id, tag());
  return found;
}

SaxParser::Elem SaxParser::Elem::opt_child(XmlTag::Id id) const {
  return Elem(record(u"opt_child").opt_child(id));
}

[[gnu::flatten]] SaxParser::Elem SaxParser::Elem::next_child() {
  return Elem(record(u"next_child").next_child());
}

[[gnu::flatten]] SaxParser::Attribute SaxParser::Elem::next_attr() {
  return Attribute(record(u"next_attr").next_attr());
}

[[gnu::flatten]] UString SaxParser::Elem::data() const { return record(u"data").data(); }

bool SaxParser::Elem::is_empty() const { return record(u"is_empty").is_empty(); }

void SaxParser::Elem::check_is_empty(bool expected) const {
  bool const actual = is_empty();
  if (actual != expected) raise_is_empty_mismatch(tag(), expected, actual);
}

}  // namespace Orn

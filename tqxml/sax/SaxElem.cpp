#include <utility>

#include "tqxml/foundation/NavigationErrors.h"
#include "tqxml/sax/ElemImpl.h"
#include "tqxml/sax/SaxParser.h"

namespace Orn {

SaxParser::Elem::Elem() noexcept = default;
SaxParser::Elem::Elem(Ref<ElemImpl> record) noexcept : record_(std::move(record)) {}
SaxParser::Elem::Elem(Elem const& other) noexcept = default;
SaxParser::Elem::Elem(Elem&& other) noexcept = default;
SaxParser::Elem& SaxParser::Elem::operator=(Elem const& other) noexcept = default;
SaxParser::Elem& SaxParser::Elem::operator=(Elem&& other) noexcept = default;
SaxParser::Elem::~Elem() = default;

void SaxParser::Elem::check_is_nil(UString const& name) const {
  if (is_nil()) raise_nil_element(u"SaxParser::Elem", name);
}

XmlTag::Id SaxParser::Elem::tag() const {
  static UString const name(u"tag");
  check_is_nil(name);
  return record_->tag();
}

void SaxParser::Elem::match(XmlTag::Id expected) const {
  XmlTag::Id const actual = tag();
  if (actual != expected) raise_tag_mismatch(Catalogue::OPERATION_ELEM_MATCH, expected, actual);
}

SaxParser::Elem SaxParser::Elem::child() const {
  static UString const name(u"child");
  check_is_nil(name);
  return Elem(record_->child());
}

SaxParser::Elem SaxParser::Elem::child(XmlTag::Id id) const {
  static UString const name(u"child");
  check_is_nil(name);
  Elem found(record_->opt_child(id));
  if (found.is_nil()) raise_missing_child(id, tag());
  return found;
}

SaxParser::Elem SaxParser::Elem::opt_child(XmlTag::Id id) const {
  static UString const name(u"opt_child");
  check_is_nil(name);
  return Elem(record_->opt_child(id));
}

SaxParser::Elem SaxParser::Elem::next_child() {
  static UString const name(u"next_child");
  check_is_nil(name);
  return Elem(record_->next_child());
}

SaxParser::Attribute SaxParser::Elem::next_attr() {
  static UString const name(u"next_attr");
  check_is_nil(name);
  Ref<AttributeImpl> next = record_->next_attr();
  while (next && next->tag() > LAST_SHOWN_ATTRIBUTE) next = record_->next_attr();
  return Attribute(std::move(next));
}

UString SaxParser::Elem::data() const {
  static UString const name(u"data");
  check_is_nil(name);
  return record_->data();
}

bool SaxParser::Elem::is_empty() const {
  static UString const name(u"is_empty");
  check_is_nil(name);
  return record_->is_empty();
}

void SaxParser::Elem::check_is_empty(bool expected) const {
  bool const actual = is_empty();
  if (actual != expected) raise_is_empty_mismatch(tag(), expected, actual);
}

}  // namespace Orn

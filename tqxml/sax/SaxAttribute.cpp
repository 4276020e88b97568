#include <utility>

#include "tqxml/foundation/NavigationErrors.h"
#include "tqxml/sax/AttributeImpl.h"
#include "tqxml/sax/SaxParser.h"

namespace Orn {

void RefCount<SaxParser::AttributeImpl>::retain(SaxParser::AttributeImpl* record) noexcept {
  SaxParser::AttributeImpl::retain(record);
}

void RefCount<SaxParser::AttributeImpl>::release(SaxParser::AttributeImpl* record) noexcept {
  SaxParser::AttributeImpl::release(record);
}

[[gnu::flatten]] SaxParser::Attribute::~Attribute() = default;

void SaxParser::Attribute::check_is_nil(UString const& name) const {
  if (is_nil()) raise_nil_attribute(u"SaxParser::Attribute", name);
}

// What the handle refers to, for the operation of that name.
inline SaxParser::AttributeImpl& SaxParser::Attribute::record(char16_t const* operation) const {
  if (is_nil()) check_is_nil(UString(operation));
  return *record_.get();
}

XmlTag::Id SaxParser::Attribute::tag() const { return record(u"tag").tag(); }

void SaxParser::Attribute::match(XmlTag::Id expected) const {
  XmlTag::Id const actual = tag();
  if (actual != expected) {
    raise_tag_mismatch(Catalogue::OPERATION_ATTRIBUTE_MATCH, expected, actual);
  }
}

[[gnu::flatten]] UString SaxParser::Attribute::data() const { return record(u"data").data(); }

}  // namespace Orn

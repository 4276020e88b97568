#include <utility>

#include "tqxml/foundation/NavigationErrors.h"
#include "tqxml/sax/AttributeImpl.h"
#include "tqxml/sax/SaxParser.h"

namespace Orn {

SaxParser::Attribute::Attribute() noexcept = default;
SaxParser::Attribute::Attribute(Ref<AttributeImpl> record) noexcept : record_(std::move(record)) {}
SaxParser::Attribute::Attribute(Attribute const& other) noexcept = default;
SaxParser::Attribute::Attribute(Attribute&& other) noexcept = default;
SaxParser::Attribute& SaxParser::Attribute::operator=(Attribute const& other) noexcept = default;
SaxParser::Attribute& SaxParser::Attribute::operator=(Attribute&& other) noexcept = default;
SaxParser::Attribute::~Attribute() = default;

void SaxParser::Attribute::check_is_nil(UString const& name) const {
  if (is_nil()) raise_nil_attribute(u"SaxParser::Attribute", name);
}

XmlTag::Id SaxParser::Attribute::tag() const {
  static UString const name(u"tag");
  check_is_nil(name);
  return record_->tag();
}

void SaxParser::Attribute::match(XmlTag::Id expected) const {
  XmlTag::Id const actual = tag();
  if (actual != expected) {
    raise_tag_mismatch(Catalogue::OPERATION_ATTRIBUTE_MATCH, expected, actual);
  }
}

UString SaxParser::Attribute::data() const {
  static UString const name(u"data");
  check_is_nil(name);
  return record_->data();
}

}  // namespace Orn

#include "tqxml/sax/ElemImpl.h"

#include <utility>

#include "tqxml/foundation/Raise.h"
#include "tqxml/sax/ParserImpl.h"

namespace Orn {

void SaxParser::ElemImpl::begin(ParserImpl* parser, XmlTag::Id tag) noexcept {
  parser_ = parser;
  refcnt_ = 1;
  tag_ = tag;
  has_children_ = false;
  open_ = true;
  next_child_used_ = false;
}

// Lets go of what the record still holds, its children apart, and of the record.
void SaxParser::ElemImpl::end_record() noexcept {
  while (last_attribute_ != nullptr) {
    AttributeImpl* const attribute = last_attribute_;
    last_attribute_ = std::exchange(attribute->previous_, nullptr);
    AttributeImpl::release(attribute);
  }
  next_attribute_ = nullptr;
  first_child_ = nullptr;
  last_child_ = nullptr;
  next_sibling_ = nullptr;
  data_.forget();
  pool_->give_back(this);
}

void SaxParser::ElemImpl::release(ElemImpl* record) noexcept {
  if (--record->refcnt_ != 0) return;
  ElemImpl* ending = record;
  while (ending != nullptr) {
    ElemImpl* const next = ending->next_sibling_;
    ElemImpl* to_end = next;
    for (ElemImpl* child = ending->first_child_; child != nullptr;) {
      ElemImpl* const sibling = std::exchange(child->next_sibling_, nullptr);
      if (--child->refcnt_ == 0) {
        child->next_sibling_ = to_end;
        to_end = child;
      }
      child = sibling;
    }
    ending->end_record();
    ending = to_end;
  }
}

void SaxParser::ElemImpl::add_child(Ref<ElemImpl> const& child) noexcept {
  ElemImpl* const added = child.get();
  retain(added);
  (last_child_ == nullptr ? first_child_ : last_child_->next_sibling_) = added;
  last_child_ = added;
  has_children_ = true;
}

void SaxParser::ElemImpl::add_attribute(XmlTag::Id tag, char16_t const* value) {
  AttributeImpl* const added = pool_->take_attribute(tag, value);
  added->previous_ = last_attribute_;
  last_attribute_ = added;
  next_attribute_ = added;
}

void SaxParser::ElemImpl::read_on() {
  if (parser_ == nullptr) raise<StateException>(Catalogue::NOT_VALID_STREAM);
  parser_->next_token();
}

Ref<SaxParser::ElemImpl> SaxParser::ElemImpl::child() {
  if (next_child_used_) raise<StateException>(Catalogue::CHILD_AFTER_NEXT_CHILD);
  while (first_child_ == nullptr && open_) read_on();
  return Ref<ElemImpl>(first_child_);
}

Ref<SaxParser::ElemImpl> SaxParser::ElemImpl::opt_child(XmlTag::Id id) {
  if (next_child_used_) raise<StateException>(Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
  ElemImpl* seen = nullptr;
  while (true) {
    ElemImpl* const candidate = seen == nullptr ? first_child_ : seen->next_sibling_;
    if (candidate != nullptr) {
      if (candidate->tag() == id) return Ref<ElemImpl>(candidate);
      seen = candidate;
    } else if (open_) {
      read_on();
    } else {
      return Ref<ElemImpl>();
    }
  }
}

Ref<SaxParser::ElemImpl> SaxParser::ElemImpl::next_child() {
  next_child_used_ = true;
  while (first_child_ == nullptr && open_) read_on();
  if (first_child_ == nullptr) return Ref<ElemImpl>();
  ElemImpl* const given = first_child_;
  first_child_ = std::exchange(given->next_sibling_, nullptr);
  if (first_child_ == nullptr) last_child_ = nullptr;
  return Ref<ElemImpl>::adopt(given);
}

Ref<SaxParser::AttributeImpl> SaxParser::ElemImpl::next_attr() noexcept {
  AttributeImpl* given = next_attribute_;
  while (given != nullptr && given->tag() > LAST_SHOWN_ATTRIBUTE) given = given->previous_;
  next_attribute_ = given == nullptr ? nullptr : given->previous_;
  return Ref<AttributeImpl>(given);
}

UString SaxParser::ElemImpl::data() {
  while (open_) read_on();
  return data_.text();
}

bool SaxParser::ElemImpl::is_empty() {
  while (true) {
    if (has_children_ || !data_.empty()) return false;
    if (!open_) return true;
    read_on();
  }
}

}  // namespace Orn

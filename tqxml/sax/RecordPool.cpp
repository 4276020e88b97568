#include "tqxml/sax/RecordPool.h"

#include <utility>

#include "tqxml/sax/AttributeImpl.h"
#include "tqxml/sax/ElemImpl.h"

namespace Orn {

SaxParser::ElemImpl* SaxParser::RecordPool::take_elem(ParserImpl* parser, XmlTag::Id tag) {
  ElemImpl* const record = take_from(elems_);
  record->begin(parser, tag);
  return record;
}

SaxParser::AttributeImpl* SaxParser::RecordPool::take_attribute(XmlTag::Id tag,
                                                                char16_t const* value) {
  AttributeImpl* const taken = take_from(attributes_);
  taken->begin(tag);
  auto record = Ref<AttributeImpl>::adopt(taken);
  record->set_value(value);
  return record.detach();
}

void SaxParser::RecordPool::give_back(ElemImpl* record) noexcept { give_back_to(elems_, record); }

void SaxParser::RecordPool::give_back(AttributeImpl* record) noexcept {
  give_back_to(attributes_, record);
}

void SaxParser::RecordPool::close() noexcept {
  close(elems_);
  close(attributes_);
}

template <class Record>
Record* SaxParser::RecordPool::take_from(Waiting<Record>& waiting) {
  Record* record = waiting.first;
  if (record == nullptr) {
    record = new Record(this);
  } else {
    waiting.first = std::exchange(record->next_waiting(), nullptr);
    ++waiting.free_places;
  }
  retain(this);
  return record;
}

template <class Record>
void SaxParser::RecordPool::give_back_to(Waiting<Record>& waiting, Record* record) noexcept {
  if (waiting.free_places == 0) {
    delete record;
  } else {
    --waiting.free_places;
    record->next_waiting() = std::exchange(waiting.first, record);
  }
  release(this);
}

template <class Record>
void SaxParser::RecordPool::close(Waiting<Record>& waiting) noexcept {
  waiting.free_places = 0;
  while (waiting.first != nullptr) {
    Record* const record = waiting.first;
    waiting.first = record->next_waiting();
    delete record;
  }
}

}  // namespace Orn

#include "tqxml/sax/ParserImpl.h"

#include <string>
#include <utility>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>

#include "tqxml/foundation/Raise.h"
#include "tqxml/foundation/XercesMemory.h"
#include "tqxml/foundation/XercesText.h"

namespace Orn {

namespace {

constexpr std::size_t USUAL_DEPTH = 16;

// In the words of the reader that has a message with a place in it.
UString with_place(LimitCrossed const& crossed) {
  UString text = UString::from_utf8("line: " + std::to_string(crossed.line) +
                                    ", column: " + std::to_string(crossed.column) + ", msg: ");
  return text.append(crossed.text);
}

}  // namespace

SaxParser::ParserImpl::ParserImpl(std::istream* in, xercesc::MemoryManager* memory,
                                  LimitGuard* guard)
    : SAXParser(nullptr, memory, nullptr), guard_(guard), input_(in, guard) {
  setDoNamespaces(true);
  setValidationScheme(Val_Never);
  setLoadExternalDTD(false);
  installAdvDocHandler(this);
  setErrorHandler(&unused_handler_);
  // Otherwise the scanner waits for the stream while it still has an event in hand.
  setLowWaterMark(0);
  open_elements_.reserve(USUAL_DEPTH);
}

SaxParser::ParserImpl::~ParserImpl() {
  // The scanner, which knows where it is, goes next.
  if (guard_ != nullptr) guard_->end();
  for (Ref<ElemImpl> const& element : open_elements_) element->forget_parser();
  records_->close();
}

Ref<SaxParser::ElemImpl> SaxParser::ParserImpl::root() {
  while (!root_) next_token();
  return std::exchange(root_, Ref<ElemImpl>());
}

void SaxParser::ParserImpl::next_token() {
  if (over_) raise<StateException>(Catalogue::NOT_VALID_STREAM);
  over_ = true;
  try {
    if (!with_xerces_memory([this] { return scan_step(); })) {
      raise<StateException>(Catalogue::NOT_VALID_STREAM);
    }
  } catch (xercesc::XMLException const& e) {
    if (complaint_.text.empty()) complaint_.text = to_ustring(e.getMessage());
    raise<StateException>(Catalogue::NOT_VALID_STREAM);
  } catch (LimitCrossed const& crossed) {
    complaint_ = {crossed.text, crossed.line, crossed.column};
    raise<StateException>(Catalogue::PARSER_ERROR, with_place(crossed));
  }
  over_ = false;
}

bool SaxParser::ParserImpl::scan_step() {
  if (started_) return parseNext(token_);
  started_ = true;
  return parseFirst(input_, token_);
}

[[gnu::flatten]] void SaxParser::ParserImpl::startElement(
    xercesc::XMLElementDecl const& decl, unsigned int uri_id, Text prefix,
    xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes, XMLSize_t attribute_count,
    bool is_empty, bool is_root) {
  XmlTag::Id const tag = tags_.of_element(decl, uri_id, getScanner());
  auto element = Ref<ElemImpl>::adopt(records_->take_elem(this, tag));
  add_attributes(*element.get(), attributes, attribute_count);
  ElemImpl* const parent = open_elements_.empty() ? nullptr : open_elements_.back().get();
  open_elements_.push_back(std::move(element));
  if (is_root) root_ = open_elements_.back();
  // Below an element that nobody can get at any more nothing need be kept.
  if (parent != nullptr && parent->is_reachable()) parent->add_child(open_elements_.back());
  if (is_empty) endElement(decl, uri_id, is_root, prefix);
}

void SaxParser::ParserImpl::add_attributes(ElemImpl& element,
                                           xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes,
                                           XMLSize_t count) {
  // The vector is reused and may still hold attributes of earlier elements behind its count.
  for (XMLSize_t i = 0; i < count; ++i) {
    xercesc::XMLAttr const& attribute = *attributes.elementAt(i);
    XmlTag::Id const tag = tags_.of_attribute(attribute, getScanner());
    if (tag != XmlTag::NO_TAG) element.add_attribute(tag, attribute.getValue());
  }
}

[[gnu::flatten]] void SaxParser::ParserImpl::endElement(xercesc::XMLElementDecl const& /*decl*/,
                                                        unsigned int /*uri_id*/, bool /*is_root*/,
                                                        Text /*prefix*/) {
  end_current();
}

void SaxParser::ParserImpl::end_current() noexcept {
  open_elements_.back()->end();
  open_elements_.pop_back();
}

[[gnu::flatten]] void SaxParser::ParserImpl::docCharacters(Text text, XMLSize_t length,
                                                           bool /*cdata_section*/) {
  if (open_elements_.empty()) return;
  ElemImpl& element = *open_elements_.back().get();
  if (element.is_reachable()) element.append_text(text, length);
}

void SaxParser::ParserImpl::error(unsigned int /*code*/, Text /*domain*/, ErrTypes type, Text text,
                                  Text /*system_id*/, Text /*public_id*/, XMLFileLoc line,
                                  XMLFileLoc column) {
  if (type == ErrType_Warning) return;
  if (complaint_.text.empty()) {
    complaint_ = {to_ustring(text), line, column};
  }
  // A fatal error needs no exception: the scanner then ends the step without success.
  if (type == ErrType_Error) raise<StateException>(Catalogue::PARSER_ERROR, to_ustring(text));
}

}  // namespace Orn

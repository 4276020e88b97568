#include "tqxml/foundation/LimitGuard.h"

#include <algorithm>
#include <utility>
#include <xercesc/util/XMLString.hpp>

#include "tqxml/foundation/UsualEncodings.h"
#include "tqxml/foundation/XercesText.h"

namespace Orn {

namespace {

constexpr char ADVICE[] =
    "; refuse the document, or read it again with another limit if you trust its source";

// Before anything is delivered of a document or an external entity, the parser makes the decoder of
// the encoding that is declared, with a table of 64 KiB. It is no markup, and if it were refused,
// the parser would lose a part of it.
constexpr std::uint64_t DECODING_MEMORY = 131'072;

std::uint64_t length_of(XMLCh const* text) { return xercesc::XMLString::stringLen(text); }

}  // namespace

void LimitGuard::begin(xercesc::Locator const* place) noexcept {
  place_ = place;
  settle();
  expect_decoder();
}

std::size_t LimitGuard::bytes_to_read(std::size_t wanted) const noexcept {
  std::uint64_t const left = limits_.bytes - bytes_;
  return left < wanted ? static_cast<std::size_t>(left) + 1 : wanted;
}

void LimitGuard::bytes(std::uint64_t count) {
  bytes_ += count;
  check(bytes_, limits_.bytes, "bytes", "bytes");
}

bool LimitGuard::opens_input(bool has_stream) const noexcept {
  if (place_ == nullptr) return open_inputs_ == 0;
  return !delivering_ && (has_stream || opens_external_);
}

void LimitGuard::input_opened() noexcept {
  ++open_inputs_;
  if (std::exchange(opens_external_, false)) expect_decoder();
}

void LimitGuard::expect_decoder() noexcept { settled_memory_ += DECODING_MEMORY; }

// Nodes are put into blocks that hold many: one is counted when it is full.
void LimitGuard::check_memory(std::size_t more) {
  if (copying_) deliver(std::exchange(copied_, more / sizeof(char16_t)));
  std::uint64_t const needed = memory_ + more;
  if (place_ == nullptr || delivering_ || copying_ || needed <= settled_memory_) return;
  check(needed - settled_memory_, limits_.markup_memory, "markup_memory",
        "bytes of memory for a piece of markup");
}

void LimitGuard::encoding(XMLCh const* name) const {
  if (!limits_.refuse_unusual_encodings || is_usual_encoding(view(name))) return;
  cross("refuse_unusual_encodings", "the declared encoding is not among the usual ones");
}

void LimitGuard::doctype(bool has_external_subset) {
  if (limits_.refuse_doctype) cross("refuse_doctype", "there is a DOCTYPE");
  if (limits_.refuse_external && has_external_subset) {
    cross("refuse_external", "the DTD has an external subset");
  }
}

void LimitGuard::external_entity() {
  if (limits_.refuse_external) cross("refuse_external", "a reference to an external entity");
  opens_external_ = true;
}

void LimitGuard::entity_declared(std::uint64_t length) noexcept {
  longest_entity_ = std::max(longest_entity_, length);
}

// Only of a reference in content the parser tells what it refers to, and after it has opened that;
// any other may be to the longest.
void LimitGuard::entity() {
  if (place_ == nullptr) return;
  check(open_inputs_, limits_.entity_depth, "entity_depth", "levels of entities");
  deliver(0);
  reference_cost_ = ReadLimits::REFERENCE_COST + longest_entity_;
}

void LimitGuard::entity_in_content(std::uint64_t length) noexcept {
  reference_cost_ = ReadLimits::REFERENCE_COST + length;
}

void LimitGuard::start_element(xercesc::XMLElementDecl const& decl,
                               xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes,
                               std::size_t count, unsigned int xmlns_uri_id) {
  check(levels_.size() + 1, limits_.depth, "depth", "levels of elements");
  std::uint64_t const length = length_of(decl.getFullName());
  name(decl.getFullName(), length);
  // With "<" and ">" it is at least that long.
  deliver(length + 2);
  check(count, limits_.attributes, "attributes", "attributes on an element");
  levels_.push_back({0, 0});
  // The vector may hold attributes of earlier elements behind its count.
  for (std::size_t i = 0; i < count; ++i) {
    xercesc::XMLAttr const& found = *attributes.elementAt(i);
    attribute(found);
    if (is_namespace_declaration(found, xmlns_uri_id)) declaration(found);
  }
}

void LimitGuard::attribute(xercesc::XMLAttr const& attribute) {
  std::uint64_t const name_length = length_of(attribute.getQName());
  name(attribute.getQName(), name_length);
  std::uint64_t const value_length = length_of(attribute.getValue());
  check(value_length, limits_.attribute_value, "attribute_value",
        "characters in an attribute value");
  deliver(name_length + value_length + (attribute.getSpecified() ? 0 : ReadLimits::DEFAULT_COST));
}

void LimitGuard::declaration(xercesc::XMLAttr const& attribute) {
  ++levels_.back().namespaces;
  check(++namespaces_, limits_.namespaces, "namespaces", "namespace declarations in force");
  count_name(view(attribute.getValue()));
}

void LimitGuard::end_element() {
  deliver(0);
  namespaces_ -= levels_.back().namespaces;
  levels_.pop_back();
}

void LimitGuard::text(std::uint64_t length) {
  deliver(length);
  // There may be white space outside of the root.
  if (levels_.empty()) return;
  levels_.back().text += length;
  check(levels_.back().text, limits_.text, "text", "characters of text in an element");
}

void LimitGuard::comment(XMLCh const* text) {
  std::uint64_t const length = length_of(text);
  check(length, limits_.text, "text", "characters in a comment");
  deliver(length);
}

void LimitGuard::instruction(XMLCh const* target, XMLCh const* text) {
  std::uint64_t const length = length_of(text);
  name_length(length_of(target));
  check(length, limits_.text, "text", "characters in a processing instruction");
  deliver(length_of(target) + length);
}

void LimitGuard::name(XMLCh const* qualified_name, std::uint64_t length) {
  name_length(length);
  count_name({qualified_name, static_cast<std::size_t>(length)});
}

void LimitGuard::count_name(std::u16string_view name) {
  if (limits_.names == ReadLimits::NONE || names_.find(name) != names_.end()) return;
  check(names_.size() + 1, limits_.names, "names", "different names");
  names_.emplace(name);
}

void LimitGuard::name_length(std::uint64_t length) const {
  check(length, limits_.name, "name", "characters in a name");
}

void LimitGuard::deliver(std::uint64_t characters) {
  delivered_ += std::exchange(reference_cost_, 0) + characters;
  if (limits_.amplification == ReadLimits::NONE || delivered_ <= limits_.amplification_floor) {
    return;
  }
  std::uint64_t const factor = std::max<std::uint64_t>(limits_.amplification, 1);
  // Whether it is more than the product, which might overflow; above a floor it is not 0.
  if ((delivered_ - 1) / factor >= bytes_) {
    cross("amplification",
          "more than " + std::to_string(factor) + " characters for each byte that was read");
  }
}

void LimitGuard::check(std::uint64_t amount, std::uint64_t limit, char const* limit_name,
                       char const* what) const {
  if (amount > limit) {
    cross(limit_name, std::string("more than ") + std::to_string(limit) + " " + what);
  }
}

void LimitGuard::cross(char const* limit_name, std::string const& complaint) const {
  UString text =
      UString::from_utf8("ReadLimits::" + std::string(limit_name) + ": " + complaint + ADVICE);
  if (place_ == nullptr) throw LimitCrossed{std::move(text), 1, 1};
  throw LimitCrossed{std::move(text), place_->getLineNumber(), place_->getColumnNumber()};
}

}  // namespace Orn

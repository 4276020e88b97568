#include "vocabulary/NameParser.h"

#include <utility>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "tqxml/foundation/XercesText.h"
#include "vocabulary/ByteSource.h"
#include "vocabulary/Failure.h"

namespace vocabulary {

namespace {

// Documents of a vocabulary are as large as they are, but need no more than this.
Orn::ReadLimits limits(SourceOptions const& options) {
  Orn::ReadLimits limits;
  if (options.is_trusted) return limits;
  limits.amplification = 100;
  limits.amplification_floor = 8U << 20U;
  limits.entity_depth = 40;
  limits.depth = 1024;
  limits.names = 100'000;
  limits.name = 65'536;
  limits.markup_memory = 64U << 20U;
  return limits;
}

/// The scanner no longer knows where it is.
struct End {
  Orn::LimitGuard& guard;
  ~End() { guard.end(); }
};

}  // namespace

std::string at(std::string const& file, std::uint64_t line, std::uint64_t column) {
  return file + ":" + std::to_string(line) + ":" + std::to_string(column) + ": ";
}

xercesc::InputSource* NothingElse::resolveEntity(xercesc::XMLResourceIdentifier* /*resource*/) {
  static XMLByte const nothing = 0;
  return new xercesc::MemBufInputSource(&nothing, 0, "nothing");
}

NameParser::NameParser(std::string file, SourceOptions const& options, NameList& names)
    : ParserGuard(limits(options)),
      GuardedParser(*this, nullptr, &memory, nullptr),
      file_(std::move(file)),
      schemas_are_documents_(options.schemas_are_documents),
      names_(names) {
  // Without handlers there would be no calls of the functions below.
  setDocumentHandler(&handler_);
  setErrorHandler(&handler_);
  setDoNamespaces(true);
  setLoadExternalDTD(false);
  setXMLEntityResolver(&nothing_else_);
  setDisableDefaultEntityResolution(true);
}

void NameParser::read(std::istream& in) {
  ByteSource const source(in, guard);
  End const end{guard};
  xercesc::SAXParser::parse(source);
}

void NameParser::startElement(xercesc::XMLElementDecl const& decl, unsigned int uri_id,
                              XMLCh const* prefix, Attributes const& attributes, XMLSize_t count,
                              bool is_empty, bool is_root) {
  GuardedParser::startElement(decl, uri_id, prefix, attributes, count, is_empty, is_root);
  ++depth_;
  NameView const name{uri(uri_id), Orn::view(decl.getBaseName())};
  if (is_root && !schemas_are_documents_ && name.uri == SCHEMA_URI && name.local == u"schema") {
    schema_.emplace();
  }
  for (XMLSize_t i = 0; i < count; ++i) note_declaration(*attributes.elementAt(i));
  if (schema_) {
    read_schema(name, attributes, count);
  } else {
    read_document(name, attributes, count);
  }
  if (is_empty) endElement(decl, uri_id, is_root, prefix);
}

void NameParser::endElement(xercesc::XMLElementDecl const& decl, unsigned int uri_id, bool is_root,
                            XMLCh const* prefix) {
  GuardedParser::endElement(decl, uri_id, is_root, prefix);
  leave_element();
}

void NameParser::error(unsigned int /*code*/, XMLCh const* /*domain*/, ErrTypes type,
                       XMLCh const* text, XMLCh const* /*system_id*/, XMLCh const* /*public_id*/,
                       XMLFileLoc line, XMLFileLoc column) {
  if (type == ErrType_Warning) return;
  throw Failure(at(file_, line, column) + to_utf8(Orn::view(text)));
}

void NameParser::read_document(NameView const& element, Attributes const& attributes,
                               XMLSize_t count) {
  add(element, NameList::ELEMENT);
  for (XMLSize_t i = 0; i < count; ++i) {
    xercesc::XMLAttr const& attribute = *attributes.elementAt(i);
    if (is_declaration(attribute)) continue;
    add({uri(attribute.getURIId()), Orn::view(attribute.getName())}, NameList::ATTRIBUTE);
  }
}

void NameParser::read_schema(NameView const& element, Attributes const& attributes,
                             XMLSize_t count) {
  auto const value_of = [&](std::u16string_view local) -> std::optional<std::u16string_view> {
    for (XMLSize_t i = 0; i < count; ++i) {
      xercesc::XMLAttr const& attribute = *attributes.elementAt(i);
      if (uri(attribute.getURIId()).empty() && Orn::view(attribute.getName()) == local) {
        return Orn::view(attribute.getValue());
      }
    }
    return std::nullopt;
  };
  auto const found = schema_->start_element(
      element, value_of, [this](std::u16string_view prefix) { return uri_of_prefix(prefix); });
  if (!found) return;
  std::u16string const& local = found->name.local;
  if (!xercesc::XMLChar1_0::isValidNCName(local.data(), local.size())) {
    fail_here("'" + to_utf8(local) + "' is no name of an element or attribute");
  }
  add(found->name, found->use);
}

void NameParser::leave_element() {
  if (schema_) schema_->end_element();
  while (!prefixes_.empty() && prefixes_.back().depth == depth_) prefixes_.pop_back();
  --depth_;
}

void NameParser::note_declaration(xercesc::XMLAttr const& attribute) {
  if (!is_declaration(attribute)) return;
  bool const is_default = Orn::view(attribute.getQName()) == u"xmlns";
  std::u16string_view const prefix = is_default ? u"" : Orn::view(attribute.getName());
  std::u16string_view const value = Orn::view(attribute.getValue());
  if (!is_default) names_.add_prefix(value, prefix);
  if (schema_) prefixes_.push_back({depth_, std::u16string(prefix), std::u16string(value)});
}

void NameParser::add(NameView const& name, NameList::Use use) {
  names_.add(name, use, file_, static_cast<std::size_t>(line()));
}

std::uint64_t NameParser::line() const { return getScanner().getLocator()->getLineNumber(); }

std::u16string_view NameParser::uri(unsigned int id) const {
  return Orn::view(getScanner().getURIText(id));
}

std::u16string_view NameParser::uri_of_prefix(std::u16string_view prefix) const {
  if (prefix == u"xml") return xercesc::XMLUni::fgXMLURIName;
  for (auto i = prefixes_.rbegin(); i != prefixes_.rend(); ++i) {
    if (i->prefix == prefix) return i->uri;
  }
  if (prefix.empty()) return {};
  fail_here("there is no namespace for the prefix '" + to_utf8(prefix) + "'");
}

bool NameParser::is_declaration(xercesc::XMLAttr const& attribute) const {
  return Orn::is_namespace_declaration(attribute, getScanner().getXMLNSNamespaceId());
}

void NameParser::fail_here(std::string const& complaint) const {
  throw Failure(at(file_, line(), 1) + complaint);
}

}  // namespace vocabulary

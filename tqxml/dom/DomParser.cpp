#include "tqxml/dom/DomParser.h"

#include <typeinfo>
#include <utility>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include "tqxml/dom/LimitedParser.h"
#include "tqxml/dom/TagCache.h"
#include "tqxml/foundation/ParserMemory.h"
#include "tqxml/foundation/Raise.h"
#include "tqxml/foundation/XercesMemory.h"
#include "tqxml/foundation/XercesStart.h"
#include "tqxml/foundation/XercesText.h"
#include "tqxml/writer/XmlDoc.h"

namespace Orn {

namespace {

bool const g_initialized_ok = start_xerces();

constexpr char SYSTEM_ID[] = "some-fake-system-id???";

// Raises our exception for the one that is being handled.
[[noreturn]] void raise_parse_failure() {
  try {
    throw;
  } catch (xercesc::XMLException const& e) {
    raise<RuntimeException>(Catalogue::XERCES_XML_EXCEPTION, static_cast<std::int32_t>(e.getCode()),
                            static_cast<std::int32_t>(e.getSrcLine()), to_ustring(e.getMessage()));
  } catch (xercesc::DOMException const& e) {
    raise<RuntimeException>(Catalogue::XERCES_DOM_EXCEPTION, static_cast<std::int32_t>(e.code),
                            to_ustring(e.getMessage()));
  } catch (xercesc::SAXParseException const& e) {
    raise<RuntimeException>(Catalogue::XERCES_SAX_PARSE_EXCEPTION,
                            static_cast<long>(e.getLineNumber()),
                            static_cast<long>(e.getColumnNumber()), to_ustring(e.getMessage()));
  } catch (LimitCrossed const& crossed) {
    raise<RuntimeException>(Catalogue::XERCES_SAX_PARSE_EXCEPTION, static_cast<long>(crossed.line),
                            static_cast<long>(crossed.column), crossed.text);
  } catch (...) {
    raise<RuntimeException>(Catalogue::UNRECOGNIZED_XERCES_EXCEPTION);
  }
}

}  // namespace

DomParser::DomParser() : DomParser(std::string()) {}

DomParser::DomParser(std::string const& text) : DomParser(std::string(text)) {}

DomParser::DomParser(std::string&& text) : xml_doc_text(std::move(text)) {
  check_xerces_started(g_initialized_ok);
  parser = new_parser(nullptr);
}

DomParser::DomParser(std::string const& text, ReadLimits const& limits)
    : DomParser(std::string(text), limits) {}

DomParser::DomParser(std::string&& text, ReadLimits const& limits) : xml_doc_text(std::move(text)) {
  check_xerces_started(g_initialized_ok);
  parser = new_parser(&limits);
}

DomParser::DomParser(XmlDoc const& doc) : DomParser(doc.byte_array()) {}

// The document goes before the handler that its parser knows.
DomParser::~DomParser() { parser.reset(); }

DomParser& DomParser::operator=(DomParser const& other) {
  set_xml_doc_text(other.xml_doc_text);
  return *this;
}

bool DomParser::is_parsed() const { return parser != nullptr && parser->getDocument() != nullptr; }

void DomParser::set_xml_doc_text(std::string const& text) {
  std::string new_text(text);
  if (!xml_doc_text.empty() && is_parsed()) {
    parser = new_parser(limits());
    error_handler.reset();
  }
  xml_doc_text.swap(new_text);
}

std::unique_ptr<xercesc::XercesDOMParser> DomParser::new_parser(ReadLimits const* limits) {
  using Parser = std::unique_ptr<xercesc::XercesDOMParser>;
  return with_xerces_memory([limits] {
    if (limits != nullptr) return Parser(new LimitedParser(*limits));
    return Parser(new ParserWithMemory<xercesc::XercesDOMParser>(nullptr));
  });
}

DomParser::LimitedParser* DomParser::limited_parser() const {
  // Asked for each text: comparing the types costs a fraction of a dynamic_cast.
  xercesc::XercesDOMParser* const held = parser.get();
  bool const is_limited = held != nullptr && typeid(*held) == typeid(LimitedParser);
  return is_limited ? static_cast<LimitedParser*>(held) : nullptr;
}

ReadLimits const* DomParser::limits() const {
  LimitedParser const* const limited = limited_parser();
  return limited == nullptr ? nullptr : &limited->limits();
}

DomParser::Elem DomParser::root() {
  if (!is_parsed()) with_xerces_memory([this] { parse(); });
  return Elem(parser->getDocument()->getDocumentElement(), tags.get());
}

void DomParser::parse() {
  if (parser == nullptr) parser = new_parser(nullptr);
  if (LimitedParser const* limited = limited_parser(); limited != nullptr && limited->is_used()) {
    parser = new_parser(&limited->limits());
  }
  tags = std::make_unique<TagCache>();
  xercesc::MemBufInputSource source(reinterpret_cast<XMLByte const*>(xml_doc_text.data()),
                                    xml_doc_text.size(), SYSTEM_ID, false,
                                    xercesc::XMLPlatformUtils::fgMemoryManager);
  // The text stays where it is, so the parser needs no copy of it.
  source.setCopyBufToStream(false);
  parser->setDoNamespaces(true);
  parser->setValidationScheme(xercesc::XercesDOMParser::Val_Never);
  // Its fatalError throws what it is given, and the rest of it does nothing.
  auto handler = std::make_unique<xercesc::HandlerBase>();
  parser->setErrorHandler(handler.get());
  error_handler = std::move(handler);
  try {
    parse_from(source);
  } catch (...) {
    // A parser that failed before it had a document would refuse every other one. One with limits
    // stays until there is another with them.
    if (!is_parsed() && limited_parser() == nullptr) parser.reset();
    throw;
  }
}

void DomParser::parse_from(xercesc::MemBufInputSource const& source) {
  try {
    if (LimitedParser* const limited = limited_parser(); limited != nullptr) {
      limited->parse_whole(source, xml_doc_text.size());
    } else {
      parser->parse(source);
    }
  } catch (...) {
    // While the parser is there, whose memory the exception may be in.
    raise_parse_failure();
  }
}

}  // namespace Orn

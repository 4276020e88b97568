#ifndef TESTS_DOM_XERCESREFERENCE_H
#define TESTS_DOM_XERCESREFERENCE_H

#include <string>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>

namespace tests {

/// The parser under the reader, used directly and with the reader's settings: where the reader
/// promises to hand on what the parser says, tests ask the parser.
class XercesReference {
 public:
  explicit XercesReference(std::string const& xml) : xml_(xml) {
    parser_.setDoNamespaces(true);
    parser_.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser_.setErrorHandler(&handler_);
  }

  /// Parses, and throws what Xerces throws.
  xercesc::DOMElement* root() {
    parser_.parse(xercesc::MemBufInputSource(reinterpret_cast<XMLByte const*>(xml_.data()),
                                             xml_.size(), "some-fake-system-id???"));
    return parser_.getDocument()->getDocumentElement();
  }

 private:
  std::string xml_;
  xercesc::HandlerBase handler_;
  xercesc::XercesDOMParser parser_;
};

}  // namespace tests

#endif

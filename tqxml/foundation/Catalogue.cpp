#include "tqxml/foundation/Catalogue.h"

namespace Orn {

char const** Catalogue::table() noexcept {
  static char const* messages[COUNT + 1] = {
      "tqxml 33",
      "ZEMKA0672E Unable to initialize Xerces-c.",
      "ZEMKA0673E Xerces XMLException: code: %d, line: %d, msg: %d.",
      "ZEMKA0674E Xerces DOMException: code: %d, msg: %s.",
      "ZEMKA0675E Xerces SAXParseException: line: %ld, column: %ld, msg: %s.",
      "ZEMKA0676E Unrecognized exception from Xerces while parsing XML.",
      "ZEMKA0677E Internal Error: %s: Element '%s' is-empty mismatch; expected %d, got %d.",
      "ZEMKA0678E Internal Error: %s: Missing required child '%s' under '%s'.",
      "ZEMKA0679E Internal Error: %s: Tag Mismatch, expected '%s' got '%s'.",
      "ZEMKA0680E Internal Error: %s: nil element.",
      "ZEMKA0681E Internal Error: %s: Element '%s' has no children.",
      "ZEMKA0682E Elem::check_is_empty()",
      "ZEMKA0683E Elem::check_is_nil()",
      "ZEMKA0684E Elem::child()",
      "ZEMKA0685E Elem::match()",
      "ZEMKA0686E Attribute::match()",
      "ZEMKA0687E Internal Error: %s: nil attribute.",
      "ZEMKA0688E Document had already been closed.",
      "ZEMKA0689E Document is in unrecognized state.",
      "ZEMKA0690E There are one or more active pushed elements.",
      "ZEMKA0691E Document is not in DOC_CLOSE_PENDING state.",
      "ZEMKA0692E Document must have open element(s) to add an attribute.",
      "ZEMKA0693E CDATA text contains termination string, '%s' for arg: '%s' with value: '%s'",
      "ZEMKA0694E Document must have open element(s) to add an element text body.",
      "ZEMKA0695E Popped element doesn't match active element.",
      "ZEMKA0696E Document state disallows adding a start tag.",
      "ZEMKA0697E XmlDoc::close() hasn't been called.",
      "ZEMKA0698E Namespace cannot be added after partial output.",
      "ZEMKA0699E Document must be started in order to get output.",
      "ZEMKA0700E Bad read on XML input stream",
      "ZEMKA0701E Not valid XML stream",
      "ZEMKA0702E SaxParser::Elem::opt_child() illegally called after call to next_child",
      "ZEMKA0703E SaxParser::Elem::child() illegally called after call to next_child",
      "ZEMKA0704E %s",
  };
  return messages;
}

}  // namespace Orn

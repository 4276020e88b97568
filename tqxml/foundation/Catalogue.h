#ifndef TQXML_FOUNDATION_CATALOGUE_H
#define TQXML_FOUNDATION_CATALOGUE_H

#include "tqxml/foundation/Export.h"

namespace Orn {

/// The messages of the library. `table()` goes with UMessage; entry 0 is the header "tqxml 33", and
/// entry i, from 1 to COUNT, the message whose number is 671 + i.
///
///     catch (STPException const& e) {
///       if (e.message().catalogue() == Catalogue::table() &&
///           e.message().index() == Catalogue::XERCES_SAX_PARSE_EXCEPTION)
///         std::cerr << "line " << e.message().arg(1).text() << '\n';
///     }
class TQXML_API Catalogue {
 public:
  /// The index of each message. The comment gives its arguments.
  enum Index {
    UNABLE_TO_INITIALIZE_XERCES = 1,
    XERCES_XML_EXCEPTION = 2,        ///< code, line in the parser's own source, text
    XERCES_DOM_EXCEPTION = 3,        ///< code, text
    XERCES_SAX_PARSE_EXCEPTION = 4,  ///< line, column, text
    UNRECOGNIZED_XERCES_EXCEPTION = 5,
    IS_EMPTY_MISMATCH = 6,       ///< operation, tag, expected, actual
    MISSING_REQUIRED_CHILD = 7,  ///< operation, wanted tag, tag of the element
    TAG_MISMATCH = 8,            ///< operation, expected tag, actual tag
    NIL_ELEMENT = 9,             ///< operation
    NO_CHILDREN = 10,            ///< operation, tag of the element
    OPERATION_CHECK_IS_EMPTY = 11,
    OPERATION_CHECK_IS_NIL = 12,  ///< used by no operation
    OPERATION_CHILD = 13,
    OPERATION_ELEM_MATCH = 14,
    OPERATION_ATTRIBUTE_MATCH = 15,
    NIL_ATTRIBUTE = 16,  ///< operation
    ALREADY_CLOSED = 17,
    UNRECOGNIZED_STATE = 18,
    ACTIVE_PUSHED_ELEMENTS = 19,
    NOT_CLOSE_PENDING = 20,
    NO_OPEN_ELEMENT_FOR_ATTRIBUTE = 21,
    CDATA_TERMINATOR_IN_TEXT = 22,  ///< "]]>", the text, the text
    NO_OPEN_ELEMENT_FOR_BODY = 23,
    POPPED_ELEMENT_MISMATCH = 24,
    START_TAG_DISALLOWED = 25,
    CLOSE_NOT_CALLED = 26,
    NAMESPACE_AFTER_OUTPUT = 27,
    NOT_STARTED = 28,
    BAD_READ = 29,
    NOT_VALID_STREAM = 30,
    OPT_CHILD_AFTER_NEXT_CHILD = 31,
    CHILD_AFTER_NEXT_CHILD = 32,
    PARSER_ERROR = 33,  ///< the parser's text, or that of a limit
  };

  /// The number of messages.
  static constexpr int COUNT = 33;

  /// The table itself: COUNT + 1 zero-terminated strings, for the life of the process.
  static char const** table() noexcept;
};

}  // namespace Orn

#endif

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
  /// The index of each message, and its arguments.
  enum Index {
    UNABLE_TO_INITIALIZE_XERCES = 1,     ///< no arguments
    XERCES_XML_EXCEPTION = 2,            ///< code, line in the parser's own source, text
    XERCES_DOM_EXCEPTION = 3,            ///< code, text
    XERCES_SAX_PARSE_EXCEPTION = 4,      ///< line, column, text
    UNRECOGNIZED_XERCES_EXCEPTION = 5,   ///< no arguments
    IS_EMPTY_MISMATCH = 6,               ///< operation, tag, expected, actual
    MISSING_REQUIRED_CHILD = 7,          ///< operation, wanted tag, tag of the element
    TAG_MISMATCH = 8,                    ///< operation, expected tag, actual tag
    NIL_ELEMENT = 9,                     ///< operation
    NO_CHILDREN = 10,                    ///< operation, tag of the element
    OPERATION_CHECK_IS_EMPTY = 11,       ///< no arguments; an operation, for other messages
    OPERATION_CHECK_IS_NIL = 12,         ///< no arguments; used by no operation
    OPERATION_CHILD = 13,                ///< no arguments; an operation, for other messages
    OPERATION_ELEM_MATCH = 14,           ///< no arguments; an operation, for other messages
    OPERATION_ATTRIBUTE_MATCH = 15,      ///< no arguments; an operation, for other messages
    NIL_ATTRIBUTE = 16,                  ///< operation
    ALREADY_CLOSED = 17,                 ///< no arguments
    UNRECOGNIZED_STATE = 18,             ///< no arguments
    ACTIVE_PUSHED_ELEMENTS = 19,         ///< no arguments
    NOT_CLOSE_PENDING = 20,              ///< no arguments
    NO_OPEN_ELEMENT_FOR_ATTRIBUTE = 21,  ///< no arguments
    CDATA_TERMINATOR_IN_TEXT = 22,       ///< "]]>", the text, the text
    NO_OPEN_ELEMENT_FOR_BODY = 23,       ///< no arguments
    POPPED_ELEMENT_MISMATCH = 24,        ///< no arguments
    START_TAG_DISALLOWED = 25,           ///< no arguments
    CLOSE_NOT_CALLED = 26,               ///< no arguments
    NAMESPACE_AFTER_OUTPUT = 27,         ///< no arguments
    NOT_STARTED = 28,                    ///< no arguments
    BAD_READ = 29,                       ///< no arguments
    NOT_VALID_STREAM = 30,               ///< no arguments
    OPT_CHILD_AFTER_NEXT_CHILD = 31,     ///< no arguments
    CHILD_AFTER_NEXT_CHILD = 32,         ///< no arguments
    PARSER_ERROR = 33,                   ///< the parser's text, or that of a limit
  };

  /// The number of messages.
  static constexpr int COUNT = 33;

  /// The table itself: COUNT + 1 zero-terminated strings, for the life of the process.
  static char const** table() noexcept;
};

}  // namespace Orn

#endif

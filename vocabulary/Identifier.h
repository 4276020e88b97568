#ifndef VOCABULARY_IDENTIFIER_H
#define VOCABULARY_IDENTIFIER_H

#include <string>
#include <string_view>

namespace vocabulary {

/// Letters, digits and underscores, not beginning with a digit.
bool is_identifier(std::string_view text);
bool is_keyword(std::string_view identifier);
/// Whether C++ keeps the identifier for the implementation wherever it stands.
bool is_reserved(std::string_view identifier);
/// Whether a header of the system, the compiler or a source file as the guide has it may have taken
/// the identifier: macros, and what stands beside the constants.
bool may_be_taken(std::string_view identifier);

/// Of a name in a document: letters and digits of ASCII as they are, `u` and its number for any
/// other letter, and one underscore for whatever else there is between them. Neither begins nor
/// ends with an underscore.
std::string identifier_like(std::u16string_view name);

}  // namespace vocabulary

#endif

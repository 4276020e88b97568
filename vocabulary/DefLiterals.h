#ifndef VOCABULARY_DEFLITERALS_H
#define VOCABULARY_DEFLITERALS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vocabulary {

/// The value of a number as it stands in a vocabulary file; nothing for what is none, or needs more
/// than 32 bits.
std::optional<std::int32_t> number_of(std::string_view text, bool is_negative);

/// The text of a literal, `u"..."` or, behind another one, `"..."`. Raises std::invalid_argument,
/// which says what is wrong with it.
std::u16string text_of(std::string_view literal);

/// The literal of a text: ASCII as it is, or by its number where that is needed.
std::string literal_of(std::u16string_view text);

}  // namespace vocabulary

#endif

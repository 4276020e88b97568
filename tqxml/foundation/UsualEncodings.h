#ifndef TQXML_FOUNDATION_USUALENCODINGS_H
#define TQXML_FOUNDATION_USUALENCODINGS_H

#include <string_view>

namespace Orn {

/// Whether `name`, as a document declares it, begins as one of those that ReadLimits names; so does
/// the empty one, for no declaration.
bool is_usual_encoding(std::u16string_view name) noexcept;

}  // namespace Orn

#endif

#ifndef BENCH_ORDERS_VIEWS_H
#define BENCH_ORDERS_VIEWS_H

#include <string_view>

#include "tqutil/UString.h"

namespace bench {

/// The code units of a text as the standard library calls them; good until the text is changed.
inline std::u16string_view utf16_view(Orn::UString const& text) {
  return {reinterpret_cast<char16_t const*>(text.data()), text.length()};
}

}  // namespace bench

#endif

#ifndef TQXML_SAX_RECORDTEXT_H
#define TQXML_SAX_RECORDTEXT_H

#include <cstddef>

#include "tqutil/UString.h"

namespace Orn {

/// The text of a record, whose memory serves the next record if it is not much.
class RecordText {
 public:
  UString const& text() const noexcept { return text_; }
  void append(char16_t const* text, std::size_t length) { text_.append(text, length); }
  void forget() noexcept {
    if (text_.capacity() > MOST_KEPT) {
      text_ = UString();
    } else {
      text_.clear();
    }
  }

 private:
  static constexpr unsigned int MOST_KEPT = 256;

  UString text_;
};

}  // namespace Orn

#endif

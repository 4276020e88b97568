#ifndef TQXML_SAX_RECORDTEXT_H
#define TQXML_SAX_RECORDTEXT_H

#include <cstddef>

#include "tqutil/UString.h"
#include "tqxml/foundation/TextBuffer.h"

namespace Orn {

/// The text of a record, whose memory serves the next record if it is not much.
class RecordText {
 public:
  bool empty() const noexcept { return text_.empty(); }
  UString text() const { return text_.text(); }
  void append(char16_t const* text, std::size_t length) { text_.append(text, length); }
  void forget() noexcept {
    if (text_.capacity() > MOST_KEPT) {
      text_ = TextBuffer();
    } else {
      text_.cut(0);
    }
  }

 private:
  /// In code units.
  static constexpr std::size_t MOST_KEPT = 512;

  TextBuffer text_;
};

}  // namespace Orn

#endif

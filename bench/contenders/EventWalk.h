#ifndef BENCH_CONTENDERS_EVENTWALK_H
#define BENCH_CONTENDERS_EVENTWALK_H

#include <string>
#include <string_view>

#include "tqutil/XmlTag.h"

namespace bench {

/// Tells a sink what a parser reports as events. Of the characters, which come in pieces, it makes
/// one text for each leaf.
template <class Sink, class Char>
class EventWalk {
 public:
  using View = std::basic_string_view<Char>;

  explicit EventWalk(Sink& sink) : sink_(sink) {}

  void start(Orn::XmlTag::Id id) {
    sink_.start(id);
    text_.clear();
    is_leaf_ = true;
  }
  void attribute(Orn::XmlTag::Id id, View value) { sink_.attribute(id, value); }
  void characters(View part) { text_ += part; }
  void end() {
    if (is_leaf_) sink_.text(View(text_));
    sink_.end();
    is_leaf_ = false;
  }

 private:
  Sink& sink_;
  std::basic_string<Char> text_;
  /// No child has come yet in the element that was begun last.
  bool is_leaf_ = false;
};

}  // namespace bench

#endif

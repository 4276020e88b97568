#ifndef BENCH_CONTENDERS_WALK_H
#define BENCH_CONTENDERS_WALK_H

#include <cstdint>
#include <string>
#include <string_view>

#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"

namespace bench {

// What a reader tells while it walks, for each element in document order: `start(id)`, then
// `attribute(id, value)` for each attribute in whatever order, then its child elements, then
// `text(...)` with all of its text if it has no child elements, then `end()`. White space between
// elements there is none. Texts come in the reader's own encoding.

/// The sums that are timed: they use what is read without costing much themselves.
class Tally {
 public:
  void start(Orn::XmlTag::Id id) { add(id, 0); }
  void attribute(Orn::XmlTag::Id id, std::string_view value) { add(id, value.size()); }
  void attribute(Orn::XmlTag::Id id, std::u16string_view value) { add(id, value.size()); }
  void attribute(Orn::XmlTag::Id id, Orn::UString const& value) { add(id, value.length()); }
  void text(std::string_view text) { add(0, text.size()); }
  void text(std::u16string_view text) { add(0, text.size()); }
  void text(Orn::UString const& text) { add(0, text.length()); }
  void end() {}

  std::uint64_t sum() const { return sum_; }

 private:
  void add(std::int32_t id, std::size_t length) { sum_ += static_cast<std::uint64_t>(id) + length; }

  std::uint64_t sum_ = 0;
};

/// A hash over everything in order, except that the attributes of an element may come in any: the
/// readers differ in that.
class Digest {
 public:
  void start(Orn::XmlTag::Id id);
  void attribute(Orn::XmlTag::Id id, std::string_view value);
  void attribute(Orn::XmlTag::Id id, std::u16string_view value);
  void attribute(Orn::XmlTag::Id id, Orn::UString const& value);
  void text(std::string_view text);
  void text(std::u16string_view text);
  void text(Orn::UString const& text);
  void end();

  /// Everything told so far; equal for readers that told the same.
  std::uint64_t value() const { return value_; }

 private:
  void mix(std::uint64_t more);

  std::uint64_t value_ = 0;
  /// The attributes of the last start tag, in no order.
  std::uint64_t attributes_ = 0;
};

}  // namespace bench

#endif

#ifndef FUZZ_INPUT_H
#define FUZZ_INPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tqutil/UString.h"

namespace fuzz {

/// The bytes of an input, taken from the front as decisions. Where there are none left every
/// decision is 0.
class Input {
 public:
  explicit Input(std::string_view bytes) : rest_(bytes) {}
  Input(std::uint8_t const* data, std::size_t size)
      : rest_(reinterpret_cast<char const*>(data), size) {}

  bool at_end() const { return rest_.empty(); }

  std::uint8_t byte() {
    if (rest_.empty()) return 0;
    auto const taken = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return taken;
  }
  /// Less than `limit`, which is at most 256.
  std::size_t below(std::size_t limit) { return byte() % limit; }
  bool flag() { return byte() % 2 != 0; }
  template <class T>
  T const& one_of(std::vector<T> const& choices) {
    return choices[below(choices.size())];
  }

  std::string_view bytes(std::size_t most) {
    std::string_view const taken = rest_.substr(0, most);
    rest_.remove_prefix(taken.size());
    return taken;
  }
  std::string_view rest() { return bytes(rest_.size()); }
  /// Up to the next `end`, which is left out, or all.
  std::string_view line(char end) {
    std::string_view const taken = bytes(std::min(rest_.find(end), rest_.size()));
    byte();
    return taken;
  }
  /// At most that many code units of any kind, two bytes each.
  Orn::UString units(std::size_t most) {
    Orn::UString text;
    for (; most > 0 && !at_end(); --most) {
      unsigned int const high = byte();
      text.append(static_cast<Orn::UString::unit_type>(high << 8U | byte()));
    }
    return text;
  }

 private:
  std::string_view rest_;
};

}  // namespace fuzz

#endif

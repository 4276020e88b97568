#ifndef VOCABULARY_FREENUMBERS_H
#define VOCABULARY_FREENUMBERS_H

#include <cstdint>
#include <optional>
#include <set>

namespace vocabulary {

/// Gives numbers that are not in use, in ascending order.
class FreeNumbers {
 public:
  /// From `first` on, or behind the greatest of the file.
  explicit FreeNumbers(std::optional<std::int32_t> first)
      : next_(first.value_or(1)), is_fixed_(first.has_value()) {}

  void use_in_file(std::int32_t number);
  void use_beside(std::int32_t number) { used_.insert(number); }

  /// Raises Failure when there are none left.
  std::int32_t take();

 private:
  std::int64_t next_;
  bool is_fixed_;
  std::set<std::int64_t> used_{0};
};

}  // namespace vocabulary

#endif

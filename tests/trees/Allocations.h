#ifndef TESTS_TREES_ALLOCATIONS_H
#define TESTS_TREES_ALLOCATIONS_H

#include <cstddef>

namespace tests {

/// What this program takes by the global operator new. Failures also befall realloc, by which the
/// text of a document grows, unless a sanitizer has it.
class Allocations {
 public:
  /// Blocks that have been taken so far, and those that have not been given back.
  static long taken() { return taken_; }
  static long live() { return live_; }

  /// Lets the allocation that comes after `n` further ones fail, once.
  static void fail_after(long n) { until_failure_ = n; }
  /// Lets none fail. Returns whether one has.
  static bool stop_failing();

  static bool fails_now();
  static void* allocate(std::size_t size);
  static void release(void* block) noexcept;

 private:
  static constexpr long NEVER = -1;

  static long taken_;
  static long live_;
  static long until_failure_;
};

}  // namespace tests

#endif

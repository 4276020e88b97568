#ifndef TESTS_TQUTIL_MEMORY_HEAP_H
#define TESTS_TQUTIL_MEMORY_HEAP_H

#include <atomic>
#include <cstddef>
#include <functional>

namespace tests {

/// What this program takes from one allocator: blocks so far, blocks still there, and how many more
/// may be taken until one is refused.
class Heap {
 public:
  /// Blocks of the global operator new.
  static Heap cpp;
  /// Blocks of ICU. They are counted from the start of the program on.
  static Heap icu;

  void* allocate(std::size_t size) noexcept;
  void* reallocate(void* block, std::size_t size) noexcept;
  void release(void* block) noexcept;

  long taken() const noexcept { return taken_; }
  long live() const noexcept { return live_; }

  /// Refuses the allocation that comes after `n` further ones, once.
  void refuse_after(long n) noexcept { until_refusal_ = n; }
  /// Refuses none. Returns whether one has been refused since `refuse_after`.
  bool stop_refusing() noexcept { return until_refusal_.exchange(NEVER) == NEVER; }

 private:
  static constexpr long NEVER = -1;

  bool refuses() noexcept;

  std::atomic<long> taken_ = 0;
  std::atomic<long> live_ = 0;
  std::atomic<long> until_refusal_ = NEVER;
};

/// Runs `call` again and again, each time with a later allocation of C++ refused, until none is.
/// Gives the number of refusals. `after_refusal` is called after each.
long refuse_each_allocation(std::function<void()> const& call,
                            std::function<void()> const& after_refusal);

}  // namespace tests

#endif

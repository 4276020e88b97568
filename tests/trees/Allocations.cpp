#include "tests/trees/Allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace tests {

long Allocations::taken_ = 0;
long Allocations::live_ = 0;
long Allocations::until_failure_ = NEVER;

bool Allocations::stop_failing() {
  bool const failed = until_failure_ == NEVER;
  until_failure_ = NEVER;
  return failed;
}

bool Allocations::fails_now() {
  bool const fails = until_failure_ == 0;
  if (until_failure_ != NEVER) --until_failure_;
  return fails;
}

void* Allocations::allocate(std::size_t size) {
  void* const block = fails_now() ? nullptr : std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  ++taken_;
  ++live_;
  return block;
}

void Allocations::release(void* block) noexcept {
  if (block == nullptr) return;
  --live_;
  std::free(block);
}

}  // namespace tests

void* operator new(std::size_t size) { return tests::Allocations::allocate(size); }
void operator delete(void* block) noexcept { tests::Allocations::release(block); }
void operator delete(void* block, std::size_t) noexcept { tests::Allocations::release(block); }

#ifndef __SANITIZE_ADDRESS__
// NOLINTNEXTLINE(bugprone-reserved-identifier): the C library's name for its own.
extern "C" void* __libc_realloc(void* block, std::size_t size);

extern "C" void* realloc(void* block, std::size_t size) {
  return tests::Allocations::fails_now() ? nullptr : __libc_realloc(block, size);
}
#endif

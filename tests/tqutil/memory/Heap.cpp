#include "tests/tqutil/memory/Heap.h"

#include <gtest/gtest.h>
#include <unicode/uclean.h>

#include <cstdlib>
#include <new>

namespace tests {

Heap Heap::cpp;
Heap Heap::icu;

bool Heap::refuses() noexcept {
  long left = until_refusal_;
  if (left == NEVER) return false;
  until_refusal_ = left == 0 ? NEVER : left - 1;
  return left == 0;
}

void* Heap::allocate(std::size_t size) noexcept {
  if (refuses()) return nullptr;
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block != nullptr) {
    ++taken_;
    ++live_;
  }
  return block;
}

void* Heap::reallocate(void* block, std::size_t size) noexcept {
  if (block == nullptr) return allocate(size);
  if (refuses()) return nullptr;
  ++taken_;
  return std::realloc(block, size == 0 ? 1 : size);
}

void Heap::release(void* block) noexcept {
  if (block != nullptr) --live_;
  std::free(block);
}

long refuse_each_allocation(std::function<void()> const& call,
                            std::function<void()> const& after_refusal) {
  for (long refusals = 0;; ++refusals) {
    bool raised = false;
    Heap::cpp.refuse_after(refusals);
    try {
      call();
    } catch (std::bad_alloc const&) {
      raised = true;
    }
    bool const refused = Heap::cpp.stop_refusing();
    EXPECT_EQ(raised, refused) << "at allocation " << refusals;
    if (!refused || raised != refused) return refusals;
    after_refusal();
  }
}

namespace {

void* icu_allocate(void const*, std::size_t size) { return Heap::icu.allocate(size); }

void* icu_reallocate(void const*, void* block, std::size_t size) {
  return Heap::icu.reallocate(block, size);
}

void icu_release(void const*, void* block) { Heap::icu.release(block); }

// ICU allows this only before anything else is done with it.
UErrorCode set_icu_functions() {
  UErrorCode status = U_ZERO_ERROR;
  u_setMemoryFunctions(nullptr, icu_allocate, icu_reallocate, icu_release, &status);
  return status;
}

UErrorCode const icu_status = set_icu_functions();

TEST(Heap, CountsWhatIcuAndCppTake) {
  ASSERT_TRUE(U_SUCCESS(icu_status));
  long const live = Heap::cpp.live();
  // Calls, since a compiler may leave out expressions with new that come to nothing.
  void* const one = ::operator new(1);
  void* const many = ::operator new[](100);
  EXPECT_EQ(Heap::cpp.live(), live + 2);
  ::operator delete(one);
  ::operator delete[](many);
  EXPECT_EQ(Heap::cpp.live(), live);
}

void* allocate_or_throw(std::size_t size) {
  void* const block = Heap::cpp.allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace
}  // namespace tests

using tests::Heap;

void* operator new(std::size_t size) { return tests::allocate_or_throw(size); }
void* operator new[](std::size_t size) { return tests::allocate_or_throw(size); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
  return Heap::cpp.allocate(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
  return Heap::cpp.allocate(size);
}
void operator delete(void* block) noexcept { Heap::cpp.release(block); }
void operator delete[](void* block) noexcept { Heap::cpp.release(block); }
void operator delete(void* block, std::size_t) noexcept { Heap::cpp.release(block); }
void operator delete[](void* block, std::size_t) noexcept { Heap::cpp.release(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { Heap::cpp.release(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { Heap::cpp.release(block); }

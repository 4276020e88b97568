#ifndef TESTS_TREES_SMALLSTACK_H
#define TESTS_TREES_SMALLSTACK_H

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <functional>

namespace tests {

#if defined(__SANITIZE_ADDRESS__)
#define TESTS_ARE_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TESTS_ARE_SANITIZED
#endif
#endif

#ifdef TESTS_ARE_SANITIZED
// The sanitizer's own functions take more stack than there would be, and a lot of time.
inline constexpr std::size_t SMALL_STACK = std::size_t{1024} * 1024;
inline constexpr int DEEP = 100000;
#else
inline constexpr std::size_t SMALL_STACK = std::size_t{64} * 1024;
inline constexpr int DEEP = 1000000;
#endif

/// Runs `call`, which must not raise anything, in a thread with a small stack.
inline void on_a_small_stack(std::function<void()> call) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, SMALL_STACK), 0);
  pthread_t thread{};
  auto const run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &call), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  pthread_attr_destroy(&attributes);
}

}  // namespace tests

#endif

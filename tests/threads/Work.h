#ifndef TESTS_THREADS_WORK_H
#define TESTS_THREADS_WORK_H

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace tests {

/// Uses everything that the library has, with objects of its own: writes a document that depends on
/// `seed`, reads it with both readers, makes trees of it and compares them, is refused this and
/// that. Gives all that it has seen, which is the same whenever `seed` is.
std::string work(unsigned int seed);

/// Runs `call` for each number below `count`, all at once, each in a thread of its own.
template <class Call>
void in_threads(int count, Call call) {
  std::atomic<int> not_ready = count;
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) {
    threads.emplace_back([&not_ready, &call, i] {
      --not_ready;
      while (not_ready > 0) std::this_thread::yield();
      call(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace tests

#endif

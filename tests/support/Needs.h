#ifndef TESTS_SUPPORT_NEEDS_H
#define TESTS_SUPPORT_NEEDS_H

#include <malloc.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <system_error>

namespace tests {

/// What a run needed.
struct Needs {
  bool succeeded;
  /// Processor time.
  double seconds;
  /// The most memory that was resident at a time.
  double peak_mib;
};

/// Runs `call` in a process of its own, whose peak is not that of anything else but for what is
/// resident here. It succeeds by giving true.
inline Needs needs_of(std::function<bool()> const& call) {
  // Otherwise the child would use what is free here, and need less than it does.
  malloc_trim(0);
  pid_t const child = fork();
  if (child == -1) throw std::system_error(errno, std::generic_category(), "fork");
  if (child == 0) {
    bool succeeded = false;
    try {
      succeeded = call();
    } catch (...) {
    }
    _exit(succeeded ? 0 : 1);
  }
  int status = 0;
  rusage usage{};
  if (wait4(child, &status, 0, &usage) == -1) {
    throw std::system_error(errno, std::generic_category(), "wait4");
  }
  auto const seconds = [](timeval const& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return {WIFEXITED(status) && WEXITSTATUS(status) == 0,
          seconds(usage.ru_utime) + seconds(usage.ru_stime),
          static_cast<double>(usage.ru_maxrss) / 1024};
}

}  // namespace tests

#endif

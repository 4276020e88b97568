#ifndef TESTS_CONFORMANCE_CHILD_H
#define TESTS_CONFORMANCE_CHILD_H

#include <chrono>
#include <functional>
#include <string>

namespace tests {

struct ChildOutcome {
  enum End {
    WELL,        ///< The child has done its work.
    AT_A_LIMIT,  ///< It has been stopped, since it took too much memory or time.
    BADLY,       ///< It has crashed, hung, or, where leaks are looked for, leaked.
  };
  End end;
  /// What the work has given, or how it ended.
  std::string text;
};

struct ChildLimits {
  /// Of the processor.
  std::chrono::milliseconds time;
  long bytes;
};

/// Does the work in a child process, which may take no more than that, and has nothing to read on
/// its standard input.
ChildOutcome in_child(std::function<std::string()> const& work, ChildLimits const& limits);

}  // namespace tests

#endif

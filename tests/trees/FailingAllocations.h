#ifndef TESTS_TREES_FAILINGALLOCATIONS_H
#define TESTS_TREES_FAILINGALLOCATIONS_H

#include <gtest/gtest.h>

#include <functional>
#include <new>

#include "tests/trees/Allocations.h"

namespace tests {

/// Calls `attempt` again and again, each time with a later allocation failing in the call that it
/// is given to make, until none fails. Returns how often one failed.
inline int fail_each_allocation(
    std::function<void(std::function<bool(std::function<void()> const&)> const&)> const& attempt) {
  bool failed = true;
  int failures = -1;
  while (failed) {
    ++failures;
    long const live = Allocations::live();
    attempt([&](std::function<void()> const& call) {
      bool raised = false;
      Allocations::fail_after(failures);
      try {
        call();
      } catch (std::bad_alloc const&) {
        raised = true;
      }
      failed = Allocations::stop_failing();
      EXPECT_EQ(raised, failed) << "at allocation " << failures;
      return raised;
    });
    EXPECT_EQ(Allocations::live(), live) << "after a failure of allocation " << failures;
    if (testing::Test::HasFailure()) break;
  }
  return failures;
}

}  // namespace tests

#endif

#ifndef TESTS_CONFORMANCE_CATCHALL_H
#define TESTS_CONFORMANCE_CATCHALL_H

namespace tests {

/// Enters a tag that stands for every name that is not in the registry.
void enter_catch_all();

}  // namespace tests

#endif

#ifndef TESTS_CONFORMANCE_SURROUNDINGS_H
#define TESTS_CONFORMANCE_SURROUNDINGS_H

namespace tests {

/// From now on documents read nothing from the network, so that all is the same everywhere
/// whether there is one or not.
void leave_the_network();

}  // namespace tests

#endif

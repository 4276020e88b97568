#ifndef TESTS_CONFORMANCE_COLLECTIONS_H
#define TESTS_CONFORMANCE_COLLECTIONS_H

#include <filesystem>

#include "tests/conformance/Record.h"

namespace tests {

// Each of these has both readers read all documents of a collection, whose files are in `folder`,
// and gives what they did. Documents find the files that they name where they expect them, and
// nothing on the network. `recorded` is what they did before. To be called once in a process, since
// names stay in the registry.

/// The sample of the W3C's conformance test suite, with a catch-all vocabulary.
Record read_sample(std::filesystem::path const& folder, Record const& recorded);

/// Documents of ten real vocabularies, with only the names of each, and on their way back; those
/// with an external DTD also without it, since it is hardly ever there.
Record read_real_documents(std::filesystem::path const& folder, Record const& recorded);

/// Documents made to do harm, each in a process that has only so much memory and time.
Record read_attacks(std::filesystem::path const& folder, Record const& recorded);

}  // namespace tests

#endif

#ifndef DEMO_TYPETREE_H
#define DEMO_TYPETREE_H

#include <string>
#include <vector>

#include "FileType.h"

namespace demo {

/// What came of a file type on its way through a tree.
struct TreeJourney {
  FileType before;
  FileType after;
};

/// Takes the first file type of a catalogue that has nothing to escape in an attribute (trees write
/// attributes as they have read them), makes a tree of it with each reader, checks that the two are
/// equal, adds a pattern to one, writes that into a new catalogue and reads it back. No type, no
/// journey: the list is empty then. Raises std::runtime_error when the trees differ.
std::vector<TreeJourney> send_through_a_tree(std::string const& catalogue,
                                             std::vector<FileType> const& types);

}  // namespace demo

#endif

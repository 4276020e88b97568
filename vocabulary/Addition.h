#ifndef VOCABULARY_ADDITION_H
#define VOCABULARY_ADDITION_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "vocabulary/DefFile.h"
#include "vocabulary/Names.h"

namespace vocabulary {

/// Lines for a vocabulary file.
struct Addition {
  /// What goes behind the text of the file.
  std::string text;
  std::size_t namespaces = 0;
  std::size_t names = 0;
};

/// Lines for those names that neither the file nor the ones beside it have, with new numbers and
/// constants. Those with a namespace come first; otherwise they are in the order of the list. New
/// numbers are greater than all that the file has; with `first` they are the free ones from there
/// on. Either way none is in use beside. Raises Failure when there are no numbers left.
Addition addition_to(DefFile const& file, std::vector<DefFile> const& beside, NameList const& names,
                     std::optional<std::int32_t> first);

}  // namespace vocabulary

#endif

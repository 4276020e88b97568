#ifndef VOCABULARY_DEFFILE_H
#define VOCABULARY_DEFFILE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "vocabulary/Names.h"

namespace vocabulary {

/// A line of a vocabulary file, or more lines if it takes them.
struct DefEntry {
  enum Kind { NAMESPACE, TAG, CATCH_ALL };
  Kind kind = TAG;
  Place place;
  std::int32_t number = 0;
  std::string constant;
  /// TAG, CATCH_ALL: the constant of its namespace, empty for TQ_NO_NS.
  std::string ns;
  /// NAMESPACE: its URI; TAG, CATCH_ALL: the local name.
  std::u16string text;
};

struct Complaint {
  Place place;
  std::string text;
};

/// A vocabulary file as it stands.
struct DefFile {
  std::string file;
  std::string text;
  std::vector<DefEntry> entries;
  /// What could not be read as an entry.
  std::vector<Complaint> complaints;

  /// The namespace of the entry; null when the file has none with that constant.
  std::u16string const* uri_of(DefEntry const& entry) const;
};

DefFile parse_def(std::string const& file, std::string text);
/// Raises Failure when it cannot be read.
DefFile read_def(std::string const& file);

}  // namespace vocabulary

#endif

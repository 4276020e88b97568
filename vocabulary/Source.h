#ifndef VOCABULARY_SOURCE_H
#define VOCABULARY_SOURCE_H

#include <istream>
#include <string>

#include "vocabulary/Names.h"

namespace vocabulary {

struct SourceOptions {
  /// Whether a schema is read as any other document, rather than for the names that it declares.
  bool schemas_are_documents = false;
  /// Whether a document may be as deep and expand as much as it likes.
  bool is_trusted = false;
};

/// Adds the names that an XML document uses, or that an XML Schema declares. Nothing is opened but
/// the file itself, whatever it refers to. Raises Failure, which names the place, when it cannot be
/// read or is malformed; `names` then has part of them.
void read_source(std::string const& file, SourceOptions const& options, NameList& names);
/// The same of a stream; `file` is for messages.
void read_source(std::istream& in, std::string const& file, SourceOptions const& options,
                 NameList& names);

}  // namespace vocabulary

#endif

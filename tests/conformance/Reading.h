#ifndef TESTS_CONFORMANCE_READING_H
#define TESTS_CONFORMANCE_READING_H

#include <string>

#include "tests/support/DocumentNames.h"
#include "tqxml/foundation/ReadLimits.h"

namespace tests {

/// What came of reading a document to its end.
struct Reading {
  /// Why the document was refused, with the place; empty when it was accepted.
  std::string complaint;
  /// What was read, as a TreeText; empty when the document was refused.
  std::u16string tree;

  bool accepted() const { return complaint.empty(); }
};

/// The readers of the library, used as any program would.
Reading read_by_dom_parser(std::string const& xml);
Reading read_by_sax_parser(std::string const& xml);
/// And within limits.
Reading read_by_dom_parser(std::string const& xml, Orn::ReadLimits const& limits);
Reading read_by_sax_parser(std::string const& xml, Orn::ReadLimits const& limits);

/// The same as the parser under them sees it, with the settings of the reader and the way that it
/// gives things: attributes from the last to the first, text without what a reader leaves out.
/// Names are entered into the registry, where there is a place for them.
Reading read_by_xerces_dom(std::string const& xml, DocumentNames* names);
Reading read_by_xerces_sax(std::string const& xml, DocumentNames* names);

}  // namespace tests

#endif

#ifndef TESTS_CONFORMANCE_ROUNDTRIP_H
#define TESTS_CONFORMANCE_ROUNDTRIP_H

#include <map>
#include <string>

#include "tests/support/DocumentNames.h"
#include "tqutil/XmlTag.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {

/// For each name of a document one with the same local name in a namespace of ours, since the
/// writer writes no name without a namespace and no namespace whose URI needs escaping so that a
/// reader would take it.
class Twins {
 public:
  explicit Twins(DocumentNames& names) : names_(names) {}
  Orn::XmlTag::Id of(Orn::XmlTag::Id tag);

 private:
  DocumentNames& names_;
  std::map<Orn::XmlTag::Id, Orn::XmlTag::Id> twins_;
  std::map<std::u16string, int> namespaces_;
};

/// Takes a document that the reader accepts to a tree, to a document and to a tree again. Gives
/// what is wrong with it, nothing if nothing is.
///
/// Trees are written with the twins of their names. So a round trip shows that everything that a
/// tree holds survives, but for the URIs of the namespaces, the order of attributes, which each
/// reader turns around in its own way, and the difference between the two line ends in text, which
/// no document can express unescaped. Characters that only XML 1.1 has are to be refused.
std::string fault_of_dom_round_trip(std::string const& xml, Twins& twins);
std::string fault_of_sax_round_trip(std::string const& xml, Twins& twins);

}  // namespace tests

#endif

#ifndef TESTS_WRITER_DOCUMENTS_H
#define TESTS_WRITER_DOCUMENTS_H

#include "tests/support/TestTags.h"
#include "tests/support/XmlDocTestAccess.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {

/// `rest` behind the XML declaration that documents begin with.
inline Orn::UString declared(Orn::UString const& rest) {
  return Orn::UString(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>").append(rest);
}

/// What `doc` has written and not handed out yet.
inline Orn::UString out(Orn::XmlDoc const& doc) { return Orn::XmlDocTestAccess::out(doc); }

inline Orn::UString closed_text(Orn::XmlDoc& doc) {
  doc.close();
  return doc.str();
}

/// A document whose root, `u_r`, is open, with its start tag complete.
inline Orn::XmlDoc with_open_root() {
  Orn::XmlDoc doc(testtags::u_r);
  doc.append_elem_body(Orn::UString(), false);
  return doc;
}

/// The same with its declarations handed out, so that no namespace can be added any more.
inline Orn::XmlDoc after_partial_output() {
  Orn::XmlDoc doc(testtags::u_r);
  doc.inc_str();
  return doc;
}

}  // namespace tests

#endif

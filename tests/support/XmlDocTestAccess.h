#ifndef TESTS_SUPPORT_XMLDOCTESTACCESS_H
#define TESTS_SUPPORT_XMLDOCTESTACCESS_H

#include "tqxml/writer/XmlDoc.h"

namespace Orn {

/// Lets tests look at what a document holds before it is closed, and drive its state machine.
class XmlDocTestAccess {
 public:
  static std::uint32_t state(XmlDoc const& doc) { return doc.state; }
  static void set_state(XmlDoc& doc, std::uint32_t state) { doc.state = state; }
  static void next_state(XmlDoc& doc) { doc.next_state(); }

  static UString const& out(XmlDoc const& doc) { return doc.out; }
  static std::deque<XmlTag::Id> const& tags(XmlDoc const& doc) { return doc.tags; }
  static bool start_tag_open(XmlDoc const& doc) { return doc.start_tag_open; }
  static bool after_start_tag(XmlDoc const& doc) { return doc.after_start_tag; }
  static std::uint32_t ns_counter(XmlDoc const& doc) { return doc.ns_counter; }
  static std::uint32_t ns_insert_pos(XmlDoc const& doc) { return doc.ns_insert_pos; }
  static XmlTag::Id root_tag(XmlDoc const& doc) { return doc.root_tag; }
  static std::map<UString, std::set<UString>> const& ns_decls(XmlDoc const& doc) {
    return doc.ns_decls;
  }
};

}  // namespace Orn

#endif

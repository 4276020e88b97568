#ifndef TESTS_SUPPORT_XMLDOCTESTACCESS_H
#define TESTS_SUPPORT_XMLDOCTESTACCESS_H

#include <map>
#include <set>
#include <vector>

#include "tqxml/writer/XmlDoc.h"

namespace Orn {

/// Lets tests look at what a document holds before it is closed, and drive its state machine.
class XmlDocTestAccess {
 public:
  static std::uint32_t state(XmlDoc const& doc) { return doc.state; }
  static void set_state(XmlDoc& doc, std::uint32_t state) { doc.state = state; }
  static void next_state(XmlDoc& doc) { doc.next_state(); }

  static UString out(XmlDoc const& doc) { return doc.out.text(); }
  static std::size_t spare_room(XmlDoc const& doc) { return doc.out.spare_room(); }
  static std::vector<XmlTag::Id> tags(XmlDoc const& doc) {
    std::vector<XmlTag::Id> tags;
    for (std::size_t i = 0; i < doc.tags.size(); ++i) tags.push_back(doc.tags[i]);
    return tags;
  }
  static bool start_tag_open(XmlDoc const& doc) { return doc.start_tag_open; }
  static bool after_start_tag(XmlDoc const& doc) { return doc.after_start_tag; }
  static std::uint32_t ns_counter(XmlDoc const& doc) { return doc.ns_counter; }
  static std::uint32_t ns_insert_pos(XmlDoc const& doc) { return doc.ns_insert_pos; }
  static XmlTag::Id root_tag(XmlDoc const& doc) { return doc.root_tag; }
  static std::map<UString, std::set<UString>> ns_decls(XmlDoc const& doc) {
    std::map<UString, std::set<UString>> table;
    doc.ns_decls.visit([&](auto const& decl) { table[*decl.uri].insert(decl.prefix); });
    return table;
  }
};

}  // namespace Orn

#endif

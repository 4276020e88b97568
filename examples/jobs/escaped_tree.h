#ifndef JOBS_ESCAPED_TREE_H
#define JOBS_ESCAPED_TREE_H

#include "tqxml/dom/DomParser.h"
#include "tqxml/writer/XmlDoc.h"

//! [attributes]
// Gives a tree the attributes of an element that was read. A reader has resolved the references in
// a value, and a tree writes it as it is, so it is escaped on the way.
inline void copy_attributes(Orn::DomParser::Elem const& from, Orn::XmlDoc::Elem& to) {
  Orn::DomParser::Elem source = from.restarted();
  for (auto attr = source.next_attr(); !attr.is_nil(); attr = source.next_attr()) {
    to.add_attr(attr.tag(), Orn::XmlDoc::escape_attr(attr.data()));
  }
}
//! [attributes]

//! [tree]
// The tree of an element that was read, safe to be written. Where there are child elements, text
// beside them is dropped, as XmlDoc::Elem does.
inline Orn::XmlDoc::Elem escaped_tree(Orn::DomParser::Elem const& from) {
  Orn::XmlDoc::Elem tree(from.tag());
  copy_attributes(from, tree);
  Orn::DomParser::Elem source = from.restarted();
  for (auto child = source.next_child(); !child.is_nil(); child = source.next_child()) {
    tree.add_elem(escaped_tree(child));
  }
  if (tree.empty()) tree.add_body(from.data(), true);
  return tree;
}
//! [tree]

#endif

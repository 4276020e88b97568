#include "tqxml/foundation/Raise.h"
#include "tqxml/writer/Decimal.h"
#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/XmlDoc.h"

// The namespace table, qualified names, and the declarations on the root element. Those are written
// behind the root's name, late, when all of them are known.

namespace Orn {

void XmlDoc::add_ns(XmlTag::NsId ns, UString const& prefix) {
  // The prefix is recorded first, and stays recorded.
  ns_decls.add(XmlTag::ns_URI(ns), prefix);
  if (root_tag != XmlTag::NO_TAG && ns_insert_pos == 0) {
    raise<StateException>(Catalogue::NAMESPACE_AFTER_OUTPUT);
  }
}

void XmlDoc::add_ns(XmlTag::NsId ns) {
  if (!ns_decls.contains(XmlTag::ns_URI(ns))) add_ns(ns, next_prefix());
}

UString XmlDoc::next_prefix() {
  ++ns_counter;
  UString prefix(u"N");
  return prefix.append(decimal(ns_counter));
}

// The prefix to write for a tag; empty for a name without one. A namespace that has none gets one
// made up, unless its elements may declare it themselves.
UString const& XmlDoc::ns_prefix(XmlTag const& tag, bool default_ns) {
  static UString const NO_PREFIX;
  UString const* prefix = ns_decls.prefix_of(tag);
  if (prefix == nullptr && !default_ns) {
    add_ns(tag.ns_id(), next_prefix());
    prefix = ns_decls.prefix_of(tag);
  }
  return prefix == nullptr ? NO_PREFIX : *prefix;
}

XmlDoc::QualifiedName XmlDoc::qualify(XmlTag::Id tag, bool default_ns) {
  XmlTag const& entry = XmlTag::lookup(tag);
  return {entry, ns_prefix(entry, default_ns)};
}

void XmlDoc::add_qualified(QualifiedName const& name) {
  UString const& simple_name = name.tag.simple_name();
  auto* to = out.room_for(std::size_t{name.prefix.length()} + 1 + simple_name.length());
  if (!name.prefix.empty()) {
    to = MarkupBuffer::put(to, name.prefix.data(), name.prefix.length());
    *to++ = markup::NAMESPACE_SEPARATOR.front();
  }
  out.end_at(MarkupBuffer::put(to, simple_name.data(), simple_name.length()));
}

void XmlDoc::add_tag(QualifiedName const& name) {
  add_qualified(name);
  if (name.prefix.empty()) add_ns_attr(out, name.tag.ns(), name.prefix);
}

void XmlDoc::insert_ns_decls() {
  // A fragment rendered before there was a root may have left the place of a root of its own.
  bool const has_root = state >= DOC_ROOT_OPEN && root_tag != XmlTag::NO_TAG;
  if (!has_root || ns_insert_pos == 0) return;
  MarkupBuffer declarations;
  for (auto const& [uri, prefix] : ns_decls.declarations()) add_ns_attr(declarations, *uri, prefix);
  out.insert(ns_insert_pos, declarations);
  ns_insert_pos = 0;
}

void XmlDoc::add_ns_attr(MarkupBuffer& dest, UString const& uri, UString const& prefix) {
  dest.append(markup::XMLNS);
  if (!prefix.empty()) {
    dest.append(markup::NAMESPACE_SEPARATOR);
    dest.append(prefix);
  }
  dest.append(markup::VALUE_BEGIN);
  dest.append(uri);
  dest.append(markup::VALUE_END);
}

}  // namespace Orn

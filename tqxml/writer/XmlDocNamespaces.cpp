#include <string>

#include "tqxml/foundation/Raise.h"
#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/XmlDoc.h"

// The namespace table, qualified names, and the declarations on the root element. Those are written
// behind the root's name, late, when all of them are known.

namespace Orn {

void XmlDoc::add_ns(XmlTag::NsId ns, UString const& prefix) {
  UString const& uri = XmlTag::ns_URI(ns);
  // The prefix is recorded first, and stays recorded.
  if (auto const place = ns_decls.find(uri); place != ns_decls.end()) {
    place->second.insert(prefix);
  } else {
    ns_decls.emplace(uri, std::set<UString>{prefix});
  }
  if (root_tag != XmlTag::NO_TAG && ns_insert_pos == 0) {
    raise<StateException>(Catalogue::NAMESPACE_AFTER_OUTPUT);
  }
}

void XmlDoc::add_ns(XmlTag::NsId ns) {
  if (ns_decls.find(XmlTag::ns_URI(ns)) == ns_decls.end()) add_ns(ns, next_prefix());
}

UString XmlDoc::next_prefix() {
  ++ns_counter;
  UString prefix(u"N");
  return prefix.append(UString::from_utf8(std::to_string(ns_counter)));
}

// The prefix to write for a tag; empty for a name without one. A namespace that has none gets one
// made up, unless its elements may declare it themselves.
UString const& XmlDoc::ns_prefix(XmlTag const& tag, bool default_ns) {
  static UString const NO_PREFIX;
  auto place = ns_decls.find(tag.ns());
  if (place == ns_decls.end()) {
    if (default_ns) return NO_PREFIX;
    add_ns(tag.ns_id(), next_prefix());
    place = ns_decls.find(tag.ns());
  }
  return *place->second.begin();
}

XmlDoc::QualifiedName XmlDoc::qualify(XmlTag::Id tag, bool default_ns) {
  XmlTag const& entry = XmlTag::lookup(tag);
  return {entry, ns_prefix(entry, default_ns)};
}

void XmlDoc::add_qualified(QualifiedName const& name) {
  if (!name.prefix.empty()) out.append(name.prefix).append(markup::NAMESPACE_SEPARATOR);
  out.append(name.tag.simple_name());
}

void XmlDoc::add_tag(QualifiedName const& name) {
  add_qualified(name);
  if (name.prefix.empty()) add_ns_attr(out, name.tag.ns(), name.prefix);
}

void XmlDoc::insert_ns_decls() {
  // A fragment rendered before there was a root may have left the place of a root of its own.
  bool const has_root = state >= DOC_ROOT_OPEN && root_tag != XmlTag::NO_TAG;
  if (!has_root || ns_insert_pos == 0) return;
  UString declarations;
  for (auto const& [uri, prefixes] : ns_decls) {
    for (UString const& prefix : prefixes) add_ns_attr(declarations, uri, prefix);
  }
  out.insert(ns_insert_pos, declarations);
  ns_insert_pos = 0;
}

void XmlDoc::add_ns_attr(UString& dest, UString const& uri, UString const& prefix) {
  dest.append(markup::XMLNS);
  if (!prefix.empty()) dest.append(markup::NAMESPACE_SEPARATOR).append(prefix);
  dest.append(markup::VALUE_BEGIN).append(uri).append(markup::VALUE_END);
}

}  // namespace Orn

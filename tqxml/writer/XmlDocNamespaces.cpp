#include <utility>

#include "tqxml/foundation/Raise.h"
#include "tqxml/writer/Decimal.h"
#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/XmlDoc.h"

// The namespace table, qualified names, and the declarations on the root element. Those are written
// behind the root's name, late, when all of them are known.

namespace Orn {
namespace {

UString const no_prefix;

std::size_t ns_attr_length(UString const& uri, UString const& prefix) {
  std::size_t const name =
      prefix.empty() ? 0 : markup::NAMESPACE_SEPARATOR.size() + std::size_t{prefix.length()};
  return markup::XMLNS.size() + name + markup::VALUE_BEGIN.size() + uri.length() +
         markup::VALUE_END.size();
}

void put_ns_attr(TextBuffer::Pen& pen, UString const& uri, UString const& prefix) {
  pen.put(markup::XMLNS);
  if (!prefix.empty()) pen.put(markup::NAMESPACE_SEPARATOR).put(prefix);
  pen.put(markup::VALUE_BEGIN).put(uri).put(markup::VALUE_END);
}

}  // namespace

void XmlDoc::add_ns(XmlTag::NsId ns, UString const& prefix) { declare(XmlTag::ns_URI(ns), prefix); }

// The prefix is recorded first, and stays recorded.
UString const& XmlDoc::declare(UString const& uri, UString prefix) {
  UString const& declared = ns_decls.add(uri, std::move(prefix));
  if (root_tag != XmlTag::NO_TAG && ns_insert_pos == 0) {
    raise<StateException>(Catalogue::NAMESPACE_AFTER_OUTPUT);
  }
  return declared;
}

void XmlDoc::add_ns(XmlTag::NsId ns) {
  UString const& uri = XmlTag::ns_URI(ns);
  if (!ns_decls.contains(uri)) declare(uri, next_prefix());
}

UString XmlDoc::next_prefix() {
  ++ns_counter;
  return decimal(ns_counter, u"N");
}

// The prefix for a tag whose namespace has none: made up, or, where elements may declare the
// namespace themselves, empty.
UString const& XmlDoc::new_ns_prefix(XmlTag const& tag, bool default_ns) {
  if (default_ns) return no_prefix;
  return declare(tag.ns(), next_prefix());
}

// A name that stands without a prefix declares its namespace there and then.
void XmlDoc::add_own_declaration(QualifiedName name) {
  TextBuffer::Pen pen = out.pen_for(ns_attr_length(name.tag.ns(), name.prefix));
  put_ns_attr(pen, name.tag.ns(), name.prefix);
  out.end_at(pen);
}

void XmlDoc::insert_ns_decls() {
  // A fragment rendered before there was a root may have left the place of a root of its own.
  bool const has_root = state >= DOC_ROOT_OPEN && root_tag != XmlTag::NO_TAG;
  if (!has_root || ns_insert_pos == 0) return;
  std::size_t length = 0;
  ns_decls.visit([&](auto const& decl) { length += ns_attr_length(*decl.uri, decl.prefix); });
  out.insert(ns_insert_pos, length, [this](TextBuffer::Pen pen) {
    ns_decls.visit([&](auto const& decl) { put_ns_attr(pen, *decl.uri, decl.prefix); });
  });
  ns_insert_pos = 0;
}

}  // namespace Orn

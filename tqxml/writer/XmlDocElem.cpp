#include "tqxml/writer/XmlDocElem.h"

#include <memory>
#include <utility>

#include "tqxml/writer/Decimal.h"
#include "tqxml/writer/ElemChild.h"
#include "tqxml/writer/Escape.h"

// The tree itself. Comparing is in ElemComparison.cpp; how trees come from readers and become
// markup is in ElemFromReader.cpp and XmlDocTrees.cpp.

namespace Orn {

void XmlDoc::Elem::Child::release(Child* child) noexcept {
  if (--child->refs_ != 0) return;
  Child* ending = child;
  while (ending != nullptr) {
    Child* const current = ending;
    ending = current->next_;
    if (Elem* const elem = current->elem(); elem != nullptr) {
      for (Ref<Child>& listed : elem->children) {
        Child* const below = listed.detach();
        if (--below->refs_ != 0) continue;
        below->next_ = ending;
        ending = below;
      }
    }
    delete current;
  }
}

XmlDoc::Elem::Elem(XmlTag::Id tag) : tag(tag) {}
XmlDoc::Elem::Elem(Elem const& other) = default;
XmlDoc::Elem::Elem(Elem&& other) noexcept = default;
XmlDoc::Elem::~Elem() = default;

XmlDoc::Elem& XmlDoc::Elem::operator=(Elem const& other) {
  if (this != &other) *this = Elem(other);
  return *this;
}

XmlDoc::Elem& XmlDoc::Elem::operator=(Elem&& other) noexcept {
  // The old children are let go last: `other` may be among them.
  Elem taken(std::move(other));
  tag = taken.tag;
  attrs.swap(taken.attrs);
  children.swap(taken.children);
  return *this;
}

void XmlDoc::Elem::add_attr(XmlTag::Id id, UString const& value) {
  attrs.push_back(attr_t{id, value});
}

void XmlDoc::Elem::add_attr(XmlTag::Id id, long value) { add_attr(id, decimal(value)); }

void XmlDoc::Elem::add_body(UString const& text, bool escape) {
  take_text(escape ? XmlDoc::escape(text) : UString(text));
}

// As add_body with escaping, for a text that nobody else needs.
void XmlDoc::Elem::take_unescaped(UString&& text) {
  take_text(needs_escape(text) ? XmlDoc::escape(text) : std::move(text));
}

void XmlDoc::Elem::take_text(UString&& text) {
  if (text.empty()) return;
  children.push_back(Ref<Child>::adopt(new Child(std::move(text))));
}

XmlDoc::Elem& XmlDoc::Elem::add_elem(Elem const& e) { return take_elem(Elem(e)); }

XmlDoc::Elem& XmlDoc::Elem::take_elem(Elem&& e) {
  children.push_back(Ref<Child>::adopt(new Child(std::move(e))));
  return *children.back()->elem();
}

XmlDoc::Elem& XmlDoc::Elem::add_elem(XmlTag::Id tag, UString const& body, bool escape) {
  Elem child(tag);
  child.add_body(body, escape);
  return take_elem(std::move(child));
}

}  // namespace Orn

#include <vector>

#include "tqxml/writer/ElemChild.h"
#include "tqxml/writer/XmlDocElem.h"

// Element trees as markup. All of it is written by the operations that callers use by hand.

namespace Orn {
namespace {

constexpr std::size_t USUAL_DEPTH = 8;

}  // namespace

XmlDoc::XmlDoc(Elem const& e) : XmlDoc() {
  add_elem(e, false);
  close();
}

void XmlDoc::add_elem(Elem const& e, bool default_ns) {
  // The elements between the root of the tree and what is being written, with the next child of
  // each: a list, since the depth is up to the tree.
  struct Step {
    Elem const* elem;
    std::size_t next_child;
  };
  std::vector<Step> path;
  path.reserve(USUAL_DEPTH);
  Elem const* current = &e;
  while (true) {
    if (current != nullptr) {
      if (begin_tree(*current, default_ns)) path.push_back(Step{current, 0});
      current = nullptr;
    } else if (path.empty()) {
      return;
    } else if (Step& step = path.back(); step.next_child == step.elem->children.size()) {
      pop_elem(step.elem->tag);
      path.pop_back();
    } else {
      Elem::Child const& child = *step.elem->children[step.next_child++].get();
      current = child.elem();
      if (current == nullptr) append_elem_body(*child.text(), false);
    }
  }
}

// Writes an element of a tree up to its children. A leaf is written whole, and the result is false.
bool XmlDoc::begin_tree(Elem const& e, bool default_ns) {
  if (e.attrs.empty() && e.children.empty()) {
    add_elem(e.tag, default_ns);
    return false;
  }
  if (UString const* const text = e.only_text();
      text != nullptr && !text->empty() && state == DOC_ROOT_OPEN && !default_ns) {
    add_elem(e.tag, *text, false);
    return false;
  }
  push_elem(e.tag, default_ns);
  for (Elem::attr_t const& attr : e.attrs) add_attr(attr.id, attr.value);
  return true;
}

// Null where there is more than a text, or none.
UString const* XmlDoc::Elem::only_text() const noexcept {
  return attrs.empty() && children.size() == 1 ? children.front()->text() : nullptr;
}

UString XmlDoc::str(Elem const& e) {
  if (state == DOC_INITIAL) start_doc(XmlTag::NO_TAG);
  std::uint32_t const state_before = state;
  std::size_t const length_before = out.length();
  add_elem(e, true);
  UString fragment = out.text(length_before);
  out.cut(length_before);
  state = state_before;
  return fragment;
}

UString XmlDoc::Elem::str() const {
  XmlDoc doc(XmlTag::NO_TAG);
  doc.inc_str();
  doc.add_elem(*this, false);
  doc.close();
  return doc.str();
}

UString XmlDoc::Elem::content() const {
  UString markup;
  for (Ref<Child> const& child : children) {
    if (Elem const* const elem = child->elem(); elem != nullptr) {
      markup.append(elem->str());
    } else {
      markup.append(*child->text());
    }
  }
  return markup;
}

}  // namespace Orn

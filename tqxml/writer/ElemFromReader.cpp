#include <utility>
#include <vector>

#include "tqxml/writer/ElemChild.h"
#include "tqxml/writer/XmlDocElem.h"

namespace Orn {

/// Makes a tree of a parsed element, as a friend of the tree. The readers differ only in the handle
/// that is walked. The way down to the current element is kept in a list, since its length is up to
/// the document.
template <class Handle>
class TreeBuilder {
 public:
  void build(Handle const& source, XmlDoc::Elem& tree) {
    Handle child = enter(source, tree);
    while (!path_.empty()) {
      if (child.is_nil()) {
        path_.pop_back();
      } else {
        XmlDoc::Elem& child_tree = path_.back().tree->take_elem(XmlDoc::Elem(child.tag()));
        child = enter(std::move(child), child_tree);
        if (!child.is_nil()) continue;
      }
      if (!path_.empty()) child = path_.back().source.next_child();
    }
  }

 private:
  struct Step {
    Handle source;
    XmlDoc::Elem* tree;
  };

  // Takes the attributes of an element and, if it has no child elements, its text. Gives its first
  // child, which is asked for before any attribute; the element is then on the way down.
  Handle enter(Handle source, XmlDoc::Elem& tree) {
    Handle first_child = source.next_child();
    for (auto attr = source.next_attr(); !attr.is_nil(); attr = source.next_attr()) {
      tree.attrs.push_back(XmlDoc::Elem::attr_t{attr.tag(), attr.data()});
    }
    if (!first_child.is_nil()) {
      path_.push_back(Step{std::move(source), &tree});
    } else if (!source.is_empty()) {
      tree.take_unescaped(source.data());
    }
    return first_child;
  }

  std::vector<Step> path_;
};

XmlDoc::Elem::Elem(DomParser::Elem const& source) : tag(source.tag()) {
  TreeBuilder<DomParser::Elem>().build(source.restarted(), *this);
}

XmlDoc::Elem::Elem(SaxParser::Elem& source) : tag(source.tag()) {
  TreeBuilder<SaxParser::Elem>().build(source, *this);
}

}  // namespace Orn

#ifndef TESTS_WRITER_PLAINTREE_H
#define TESTS_WRITER_PLAINTREE_H

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "tqxml/writer/XmlDoc.h"

namespace tests {

/// The plainest tree that can hold what an element tree holds: a node is a text or an element.
struct PlainTree {
  using Ptr = std::shared_ptr<PlainTree const>;

  bool is_text = false;
  Orn::UString text;
  Orn::XmlTag::Id tag = Orn::XmlTag::NO_TAG;
  std::vector<std::pair<Orn::XmlTag::Id, Orn::UString>> attrs;
  std::vector<Ptr> children;

  bool is_elem_of(Orn::XmlTag::Id wanted) const { return !is_text && tag == wanted; }
};

/// Whether `a == b`, in the words of the rule and at its price.
inline bool plainly_equal(PlainTree const& a, PlainTree const& b) {
  if (a.is_text || b.is_text) return a.is_text && b.is_text && a.text == b.text;
  if (a.tag != b.tag) return false;
  if (a.attrs.size() != b.attrs.size()) return false;
  if (a.children.size() != b.children.size()) return false;
  if (a.attrs != b.attrs) return false;
  if (a.children.empty()) return true;
  Orn::XmlTag::Id const first = a.children[0]->tag;
  auto const is_of_first = [&](PlainTree::Ptr const& child) { return child->is_elem_of(first); };
  auto const equal = [](PlainTree::Ptr const& x, PlainTree::Ptr const& y) {
    return plainly_equal(*x, *y);
  };
  if (std::all_of(a.children.begin(), a.children.end(), is_of_first) &&
      std::all_of(b.children.begin(), b.children.end(), is_of_first)) {
    return std::all_of(a.children.begin(), a.children.end(), [&](PlainTree::Ptr const& x) {
      return std::any_of(b.children.begin(), b.children.end(),
                         [&](PlainTree::Ptr const& y) { return equal(x, y); });
    });
  }
  return std::equal(a.children.begin(), a.children.end(), b.children.begin(), equal);
}

/// What a caller without trees would write.
template <class Writer>
void write_by_hand(Writer& doc, PlainTree const& tree, bool default_ns) {
  if (tree.attrs.empty() && tree.children.empty()) {
    doc.add_elem(tree.tag, default_ns);
    return;
  }
  Orn::XmlTag::Id const pushed = doc.push_elem(tree.tag, default_ns);
  for (auto const& [id, value] : tree.attrs) doc.add_attr(id, value);
  for (PlainTree::Ptr const& child : tree.children) {
    if (child->is_text) {
      doc.append_elem_body(child->text, false);
    } else {
      write_by_hand(doc, *child, default_ns);
    }
  }
  doc.pop_elem(pushed);
}

/// Makes element trees of plain ones. Children of a node that occurs in several places become
/// children that are shared between these places, also of different trees.
class TreeMaker {
 public:
  Orn::XmlDoc::Elem const& tree(PlainTree::Ptr const& node) {
    auto const place = made_.find(node);
    if (place != made_.end()) return place->second;
    Orn::XmlDoc::Elem made(node->tag);
    for (auto const& [id, value] : node->attrs) made.add_attr(id, value);
    for (PlainTree::Ptr const& child : node->children) {
      if (child->is_text) {
        made.add_body(child->text, false);
      } else {
        made.add_elem(tree(child));
      }
    }
    return made_.emplace(node, std::move(made)).first->second;
  }

 private:
  std::map<PlainTree::Ptr, Orn::XmlDoc::Elem> made_;
};

/// What random trees are made of. The less there is, the more of them are equal.
struct TreeAlphabet {
  std::vector<Orn::XmlTag::Id> tags;
  std::vector<Orn::XmlTag::Id> names;
  std::vector<Orn::UString> values;
  std::vector<Orn::UString> texts;
};

class RandomPlainTrees {
 public:
  RandomPlainTrees(TreeAlphabet alphabet, unsigned int seed)
      : alphabet_(std::move(alphabet)), random_(seed) {}

  /// An element with at most `levels` levels below it, which may occur elsewhere too.
  PlainTree::Ptr elem(std::size_t levels) { return elem(levels, one_of(alphabet_.tags)); }

  /// A tree that is `tree`, or nearly so, or so but for the order of children.
  PlainTree::Ptr variant(PlainTree::Ptr const& tree) {
    if (tree->is_text || one_in(4)) return tree;
    PlainTree changed = *tree;
    if (!changed.children.empty() && !one_in(4)) {
      change_children(changed);
    } else if (one_in(2)) {
      change_attributes(changed);
    }
    return std::make_shared<PlainTree>(changed);
  }

  bool one_in(std::size_t n) { return random_() % n == 0; }

 private:
  PlainTree::Ptr elem(std::size_t levels, Orn::XmlTag::Id tag) {
    std::vector<PlainTree::Ptr>& known = known_[{levels, tag}];
    if (!known.empty() && one_in(3)) return one_of(known);
    PlainTree made;
    made.tag = tag;
    if (one_in(2)) change_attributes(made);
    if (levels > 0) add_children(made, levels - 1);
    known.push_back(std::make_shared<PlainTree>(made));
    return known.back();
  }

  PlainTree::Ptr text() {
    PlainTree made;
    made.is_text = true;
    made.text = one_of(alphabet_.texts);
    return std::make_shared<PlainTree>(made);
  }

  void add_children(PlainTree& parent, std::size_t levels) {
    bool const homogeneous = !one_in(3);
    Orn::XmlTag::Id const tag = one_of(alphabet_.tags);
    for (std::size_t left = random_() % 4; left > 0; --left) {
      if (homogeneous) {
        parent.children.push_back(elem(levels, tag));
      } else {
        parent.children.push_back(one_in(2) ? text() : elem(levels));
      }
    }
  }

  void change_children(PlainTree& parent) {
    PlainTree::Ptr& child = one_of(parent.children);
    switch (random_() % 5) {
      case 0:
        std::shuffle(parent.children.begin(), parent.children.end(), random_);
        break;
      case 1:
        child = one_of(parent.children);
        break;
      case 2:
        parent.children.push_back(child);
        break;
      default:
        child = variant(child);
        break;
    }
  }

  void change_attributes(PlainTree& elem) {
    if (elem.attrs.size() > 1 && one_in(2)) {
      std::reverse(elem.attrs.begin(), elem.attrs.end());
    } else if (elem.attrs.size() > 1) {
      elem.attrs.pop_back();
    } else {
      elem.attrs.emplace_back(one_of(alphabet_.names), one_of(alphabet_.values));
    }
  }

  template <class T>
  T& one_of(std::vector<T>& all) {
    return all[random_() % all.size()];
  }

  TreeAlphabet alphabet_;
  std::mt19937 random_;
  std::map<std::pair<std::size_t, Orn::XmlTag::Id>, std::vector<PlainTree::Ptr>> known_;
};

}  // namespace tests

#endif

#include <algorithm>
#include <deque>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/Input.h"
#include "fuzz/Target.h"
#include "tests/support/TestTags.h"
#include "tests/writer/PlainTree.h"
#include "tests/writer/WriterCalls.h"
#include "tqxml/writer/XmlDoc.h"

// Builds element trees, which share children, are copied, assigned and dropped, and does the same
// with plain ones. Now and then, and at the end, compares them by pairs, and renders them.

namespace fuzz {
namespace {

using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using tests::PlainTree;
using tests::WriterModel;
using Elem = XmlDoc::Elem;

// The plain rule takes the product of two trees, and a shared child counts wherever it is listed.
constexpr std::size_t MOST_NODES = 80;
constexpr std::size_t MOST_ROOTS = 12;
constexpr std::size_t MOST_COMPARISONS = 64;

std::size_t nodes_of(PlainTree const& tree) {
  std::size_t nodes = 1;
  for (PlainTree::Ptr const& child : tree.children) nodes += nodes_of(*child);
  return nodes;
}

bool is_inside(PlainTree const* inner, PlainTree const& outer) {
  return std::any_of(outer.children.begin(), outer.children.end(), [&](auto const& child) {
    return child.get() == inner || is_inside(inner, *child);
  });
}

/// A tree of its own.
struct Root {
  Elem elem;
  std::shared_ptr<PlainTree> plain;
};

/// A child that some tree lists, or listed: the plain one tells whether there is still the other.
struct Child {
  Elem* elem;
  std::weak_ptr<PlainTree> plain;
};

/// An element that is there, as both.
struct Both {
  Elem* elem;
  std::shared_ptr<PlainTree> plain;
};

template <class Call>
tests::Answer answer_of(Call call) {
  try {
    return {call(), ""};
  } catch (Orn::STPException const& e) {
    return {UString(), tests::class_of(e) + " " + tests::message_of(e)};
  } catch (WriterModel::Refusal const& refusal) {
    return {UString(), tests::class_for(refusal.message) + " " + refusal.message};
  }
}

UString plain_markup(PlainTree const& tree) {
  WriterModel model;
  model.start_doc(XmlTag::NO_TAG);
  model.inc_str();
  write_by_hand(model, tree, false);
  model.close();
  return model.str();
}

UString plain_content(PlainTree const& tree) {
  UString text;
  for (PlainTree::Ptr const& child : tree.children) {
    text.append(child->is_text ? child->text : plain_markup(*child));
  }
  return text;
}

UString plain_document(PlainTree const& tree, bool default_ns, bool indented) {
  WriterModel model;
  if (indented) model.set_indented_format();
  model.start_doc(testtags::u_r);
  write_by_hand(model, tree, default_ns);
  model.close();
  return model.str();
}

UString document(Elem const& tree, bool default_ns, bool indented) {
  XmlDoc doc;
  if (indented) doc.set_indented_format();
  doc.start_doc(testtags::u_r);
  doc.add_elem(tree, default_ns);
  doc.close();
  return doc.str();
}

class Trees {
 public:
  explicit Trees(Input input) : input_(input) { add_root(Elem(testtags::u_a), new_plain()); }

  void run() {
    while (!input_.at_end()) step();
    std::vector<Both> all;
    for (Root& root : roots_) all.push_back({&root.elem, root.plain});
    for (Both const& a : all) {
      render(a);
      for (Both const& b : all) compare(a, b);
    }
  }

 private:
  static std::shared_ptr<PlainTree> new_plain(XmlTag::Id tag = testtags::u_a) {
    auto plain = std::make_shared<PlainTree>();
    plain->tag = tag;
    return plain;
  }

  void step() {
    switch (input_.below(16)) {
      case 0:
      case 1:
        return new_root();
      case 2:
      case 3:
        return add_attribute(any());
      case 4:
        return add_text(any());
      case 5:
      case 6:
      case 7:
        return add_tree();
      case 8:
        return add_element(any());
      case 9:
        return copy(any());
      case 10:
        return assign();
      case 11:
        return move_root();
      case 12:
        return drop_root();
      case 13:
        return compare();
      case 14:
        return render(any());
      default:
        return rearrange(any());
    }
  }

  /// A root, or a child that some tree still lists.
  Both any() {
    std::size_t const choice = input_.byte();
    if (choice % 2 != 0 && !children_.empty()) {
      auto const place =
          children_.begin() + static_cast<std::ptrdiff_t>(choice / 2 % children_.size());
      if (auto plain = place->plain.lock()) return {place->elem, plain};
      children_.erase(place);
    }
    Root& root = roots_[choice / 2 % roots_.size()];
    return {&root.elem, root.plain};
  }

  XmlTag::Id tag() {
    // Few names, so that there are many equal trees.
    static std::vector<XmlTag::Id> const tags = {
        testtags::u_a, testtags::u_b, testtags::u_a, testtags::v_a,
        testtags::a,   testtags::u_b, testtags::u_a, testtags::unregistered};
    return input_.one_of(tags);
  }

  UString text() {
    static std::vector<UString> const texts = {
        u"1", u"2", u"", u"<", u"&&&", u"]]>", u"\u00e9", u"t",
    };
    std::size_t const choice = input_.byte();
    return choice < 224 ? texts[choice % texts.size()] : input_.units(choice - 224);
  }

  void add_root(Elem elem, std::shared_ptr<PlainTree> plain) {
    if (roots_.size() == MOST_ROOTS) drop_root();
    roots_.push_back({std::move(elem), std::move(plain)});
  }

  void new_root() {
    XmlTag::Id const id = tag();
    add_root(Elem(id), new_plain(id));
  }

  void add_attribute(Both const& to) {
    XmlTag::Id const id = tag();
    if (input_.flag()) {
      long const number = input_.byte() - 128;
      to.elem->add_attr(id, number);
      to.plain->attrs.emplace_back(id, UString::from_utf8(std::to_string(number)));
    } else {
      UString const value = text();
      to.elem->add_attr(id, value);
      to.plain->attrs.emplace_back(id, value);
    }
  }

  static std::shared_ptr<PlainTree> plain_text(UString const& text, bool escape) {
    auto plain = std::make_shared<PlainTree>();
    plain->is_text = true;
    plain->text =
        escape ? tests::to_ustring(tests::in_three_passes(tests::to_u16(text))) : UString(text);
    return plain;
  }

  void add_text(Both const& to) {
    UString const added = text();
    bool const escape = input_.flag();
    if (!has_room(*to.plain, 1)) return;
    to.elem->add_body(added, escape);
    if (!added.empty()) to.plain->children.push_back(plain_text(added, escape));
  }

  void add_element(Both const& to) {
    XmlTag::Id const id = tag();
    UString const added = text();
    bool const escape = input_.flag();
    if (!has_room(*to.plain, 2)) return;
    auto plain = new_plain(id);
    if (!added.empty()) plain->children.push_back(plain_text(added, escape));
    to.plain->children.push_back(plain);
    children_.push_back({&to.elem->add_elem(id, added, escape), plain});
  }

  void add_tree() {
    Both const to = any();
    Both const tree = any();
    // What is inside of a tree must not get that tree inside of it.
    if (is_inside(to.plain.get(), *tree.plain)) return;
    if (!has_room(*to.plain, nodes_of(*tree.plain))) return;
    auto const plain = std::make_shared<PlainTree>(*tree.plain);
    Elem& added = to.elem->add_elem(*tree.elem);
    to.plain->children.push_back(plain);
    children_.push_back({&added, plain});
  }

  void copy(Both const& of) {
    if (roots_.size() == MOST_ROOTS) return;
    add_root(Elem(*of.elem), std::make_shared<PlainTree>(*of.plain));
  }

  void assign() {
    Both const to = any();
    Both const from = any();
    if (is_inside(to.plain.get(), *from.plain)) return;
    if (!has_room(*to.plain, nodes_of(*from.plain))) return;
    *to.elem = *from.elem;
    *to.plain = PlainTree(*from.plain);
  }

  void move_root() {
    Root& from = roots_[input_.below(roots_.size())];
    Root& to = roots_[input_.below(roots_.size())];
    if (&from == &to) return;
    to.elem = std::move(from.elem);
    *to.plain = *from.plain;
    // What is moved from keeps its tag alone.
    *from.plain = *new_plain(from.plain->tag);
  }

  void drop_root() {
    if (roots_.size() == 1) return;
    roots_.erase(roots_.begin() + static_cast<std::ptrdiff_t>(input_.below(roots_.size())));
  }

  static std::shared_ptr<PlainTree> clone(PlainTree const& tree) {
    auto plain = std::make_shared<PlainTree>(tree);
    for (PlainTree::Ptr& child : plain->children) child = clone(*child);
    return plain;
  }

  /// Adds a tree that shares nothing, with the same children in another order, or nearly.
  void rearrange(Both const& tree) {
    if (roots_.size() == MOST_ROOTS) return;
    auto plain = clone(*tree.plain);
    if (!plain->children.empty()) {
      auto const middle = static_cast<std::ptrdiff_t>(input_.below(plain->children.size()));
      std::rotate(plain->children.begin(), plain->children.begin() + middle, plain->children.end());
      if (input_.flag()) plain->children.back() = clone(*plain->children.front());
    }
    if (nodes_of(*plain) <= MOST_NODES) add_root(tests::TreeMaker().tree(plain), plain);
  }

  /// Whether all roots stay small enough when an element in some of them gets that much.
  bool has_room(PlainTree const& to, std::size_t nodes) const {
    return std::all_of(roots_.begin(), roots_.end(), [&](Root const& root) {
      std::size_t const listed = times_listed(&to, *root.plain);
      return nodes_of(*root.plain) + listed * nodes <= MOST_NODES;
    });
  }
  static std::size_t times_listed(PlainTree const* wanted, PlainTree const& in) {
    std::size_t times = &in == wanted ? 1 : 0;
    for (PlainTree::Ptr const& child : in.children) times += times_listed(wanted, *child);
    return times;
  }

  void compare() {
    Both const a = any();
    Both const b = any();
    compare(a, b);
  }
  void compare(Both const& a, Both const& b) {
    if (comparisons_++ > MOST_COMPARISONS) return;
    bool const expected = plainly_equal(*a.plain, *b.plain);
    check((*a.elem == *b.elem) == expected, "equal and not equal");
    check((*a.elem != *b.elem) != expected, "equal and unequal");
  }

  void render(Both const& tree) {
    check(tree.elem->empty() == tree.plain->children.empty(), "empty and not empty");
    same([&] { return tree.elem->str(); }, [&] { return plain_markup(*tree.plain); });
    same([&] { return tree.elem->content(); }, [&] { return plain_content(*tree.plain); });
    bool const default_ns = input_.flag();
    bool const indented = input_.flag();
    same([&] { return document(*tree.elem, default_ns, indented); },
         [&] { return plain_document(*tree.plain, default_ns, indented); });
  }

  template <class Found, class Expected>
  static void same(Found found, Expected expected) {
    tests::Answer const wanted = answer_of(expected);
    tests::Answer const actual = answer_of(found);
    if (actual == wanted) return;
    std::ostringstream text;
    text << actual << "\nnot " << wanted;
    fail(text.str());
  }

  Input input_;
  // A deque, so that roots stay where they are.
  std::deque<Root> roots_;
  std::vector<Child> children_;
  std::size_t comparisons_ = 0;
};

}  // namespace
}  // namespace fuzz

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  fuzz::Trees(fuzz::Input(data, size)).run();
  return 0;
}

#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/Confinement.h"
#include "fuzz/Documents.h"
#include "fuzz/Target.h"
#include "tests/support/TestTags.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/writer/XmlDoc.h"

// Parses a document, moves around in it with handles on whatever was met, and then walks all of it,
// asking each element and attribute everything. What is left of a document that could not be parsed
// is walked as well. Some parsers have limits.

namespace fuzz {
namespace {

using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::StateException;
using Orn::UString;
using Orn::XmlTag;
using Elem = DomParser::Elem;
using Attribute = DomParser::Attribute;

bool is(Orn::STPException const& e, Catalogue::Index index) {
  return e.message().catalogue() == Catalogue::table() && e.message().index() == index;
}

/// Whether `call` raises that.
template <class Call>
bool raises(Catalogue::Index index, Call call) {
  try {
    call();
  } catch (StateException const& e) {
    check(is(e, index), "another message was raised");
    return true;
  }
  return false;
}

/// None for a name that is not registered.
template <class Handle>
std::optional<XmlTag::Id> tag_of(Handle const& handle) {
  try {
    return handle.tag();
  } catch (Orn::TagException const&) {
    return std::nullopt;
  }
}

template <class Handle>
void check_tag(Handle const& handle, Catalogue::Index nil) {
  auto const tag = tag_of(handle);
  check(tag_of(Handle(handle)) == tag, "a copy has another tag");
  check(!raises(nil, [&] { handle.check_is_nil(u"tag"); }), "a handle is nil and is not");
  if (!tag) return;
  check(!raises(Catalogue::TAG_MISMATCH, [&] { handle.match(*tag); }), "match of the own tag");
  XmlTag::Id const other = *tag == testtags::a ? testtags::b : testtags::a;
  check(raises(Catalogue::TAG_MISMATCH, [&] { handle.match(other); }), "match of another tag");
}

void check_nil(Elem& nil) {
  check(raises(Catalogue::NIL_ELEMENT, [&] { nil.next_child(); }), "nil has children");
  check(raises(Catalogue::NIL_ELEMENT, [&] { nil.next_attr(); }), "nil has attributes");
  check(raises(Catalogue::NIL_ELEMENT, [&] { nil.data(); }), "nil has a text");
  check(raises(Catalogue::NIL_ELEMENT, [&] { nil.tag(); }), "nil has a tag");
}

class Walk {
 public:
  void element(Elem elem) {
    check_tag(elem, Catalogue::NIL_ELEMENT);
    std::vector<Elem> const children = remaining_children(elem);
    check_children(elem, children);
    check_text(elem, !children.empty());
    attributes(elem);
    for (Elem const& child : children) element(child);
  }

 private:
  // An element is looked for among its siblings, so that asking for all of them takes the square of
  // their number.
  static constexpr std::size_t MOST_LOOKED_FOR = 12;

  static std::vector<Elem> remaining_children(Elem& elem) {
    std::vector<Elem> children;
    for (Elem child = elem.next_child(); !child.is_nil(); child = elem.next_child()) {
      children.push_back(child);
    }
    return children;
  }

  static void check_children(Elem& elem, std::vector<Elem> const& children) {
    Elem again = elem.next_child();
    check(again.is_nil() == children.empty(), "the iteration does not start over");
    check(remaining_children(elem).size() + (again.is_nil() ? 0 : 1) == children.size(),
          "another number of children the second time");
    if (children.empty()) {
      check_has_none(elem);
      check_nil(again);
      return;
    }
    check(elem.child().data() == children.front().data(), "child() is not the first");
    for (std::size_t i = 0; i < std::min(children.size(), MOST_LOOKED_FOR); ++i) {
      check_found(elem, children, i);
    }
  }

  static void check_has_none(Elem const& elem) {
    try {
      check(raises(Catalogue::NO_CHILDREN, [&] { elem.child(); }), "there is a child and is not");
    } catch (Orn::TagException const&) {
      check(!tag_of(elem), "the tag is known and is not");
    }
    check(elem.opt_child(testtags::a).is_nil(), "there is a child and is not");
  }

  static void check_found(Elem const& elem, std::vector<Elem> const& children, std::size_t i) {
    auto const tag = tag_of(children[i]);
    if (!tag) return;
    auto const first = std::find_if(children.begin(), children.end(),
                                    [&](Elem const& child) { return tag_of(child) == tag; });
    check(elem.child(*tag).data() == first->data(), "child(tag) is not the first with it");
    check(elem.opt_child(*tag).tag() == *tag, "opt_child(tag) has another tag");
  }

  static void check_text(Elem const& elem, bool has_children) {
    UString const text = elem.data();
    bool const is_empty = elem.is_empty();
    check(!is_empty || (text.empty() && !has_children), "empty and not empty");
    elem.check_is_empty(is_empty);
    try {
      check(raises(Catalogue::IS_EMPTY_MISMATCH, [&] { elem.check_is_empty(!is_empty); }),
            "empty and not empty");
    } catch (Orn::TagException const&) {
      check(!tag_of(elem), "the tag is known and is not");
    }
  }

  static void attributes(Elem& elem) {
    Elem copy(elem);
    for (Attribute attribute = elem.next_attr(); !attribute.is_nil();
         attribute = elem.next_attr()) {
      check_tag(attribute, Catalogue::NIL_ATTRIBUTE);
      check(copy.next_attr().data() == attribute.data(), "a copy iterates differently");
    }
    check(elem.next_attr().is_nil() && copy.next_attr().is_nil(), "attributes start over");
  }
};

/// Uses handles, as they are steered, in no order.
class Navigation {
 public:
  Navigation(Elem const& root, Input& steering) : steering_(steering), root_(root) {}

  void run() {
    elems_.push_back(root_);
    while (!steering_.at_end()) {
      try {
        step();
      } catch (StateException const&) {
        // What the document does not have.
      } catch (Orn::TagException const&) {
        // A name that is not registered.
      }
    }
  }

 private:
  void step() {
    Elem& elem = pick(elems_);
    switch (steering_.below(14)) {
      case 0:
        return keep(elem.child());
      case 1:
        return keep(elem.child(wanted()));
      case 2:
        return keep(elem.opt_child(wanted()));
      case 3:
      case 4:
      case 5:
        return keep(elem.next_child());
      case 6:
      case 7:
        attributes_.push_back(elem.next_attr());
        return;
      case 8:
        use(elem);
        return;
      case 9:
        if (!attributes_.empty()) use(pick(attributes_));
        return;
      case 10:
        return keep(elem.restarted());
      case 11:
        elem = elems_[steering_.below(elems_.size())];
        return;
      case 12:
        // Of an attribute in the middle of an iteration; a tree takes them all the same.
        static_cast<void>(Orn::XmlDoc::Elem(elem));
        return;
      default:
        elems_.push_back(root_);
    }
  }

  void use(Elem const& elem) {
    elem.data();
    elem.check_is_empty(steering_.flag());
    elem.match(wanted());
  }
  void use(Attribute const& attribute) {
    attribute.data();
    attribute.match(wanted());
  }

  XmlTag::Id wanted() {
    static std::vector<XmlTag::Id> const tags = {
        testtags::a,   testtags::b,   testtags::r,   testtags::x,   testtags::u_a,
        testtags::v_a, testtags::w_e, testtags::u_b, testtags::v_d, testtags::unregistered};
    return steering_.one_of(tags);
  }

  template <class Handle>
  Handle& pick(std::vector<Handle>& handles) {
    return handles[steering_.below(std::min<std::size_t>(handles.size(), 256))];
  }
  void keep(Elem elem) { elems_.push_back(std::move(elem)); }

  Input& steering_;
  Elem root_;
  std::vector<Elem> elems_;
  std::vector<Attribute> attributes_;
};

/// Nil when there is nothing, not even of a document that is malformed.
Elem root_of(DomParser& parser) {
  try {
    return parser.root();
  } catch (RuntimeException const&) {
    if (Confinement::is_exhausted()) return {};
  }
  try {
    return parser.root();
  } catch (RuntimeException const&) {
    return {};
  }
}

void set_text(DomParser& parser, std::string const& text, Input& steering) {
  switch (steering.below(4)) {
    case 0:
      parser.set_xml_doc_text(text);
      break;
    case 1:
      parser = DomParser(text);
      break;
    default:
      // What it holds already is given up.
      parser.set_xml_doc_text("<r><a/></r>");
      root_of(parser);
      parser.set_xml_doc_text(text);
  }
}

void run(SteeredDocument input) {
  auto const limits = next_limits(input.steering);
  bool const at_once = input.steering.flag();
  std::string const first = at_once ? input.document : std::string();
  auto const parser =
      limits ? std::make_unique<DomParser>(first, *limits) : std::make_unique<DomParser>(first);
  if (!at_once) set_text(*parser, input.document, input.steering);
  Elem root = root_of(*parser);
  if (root.is_nil()) return check_nil(root);
  Navigation(root, input.steering).run();
  Walk().element(root);
}

}  // namespace
}  // namespace fuzz

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  fuzz::Confinement const confinement;
  try {
    fuzz::run({data, size});
  } catch (std::bad_alloc const&) {
    fuzz::check(fuzz::Confinement::is_exhausted(), "memory ran out");
  }
  return 0;
}

#include <map>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/Confinement.h"
#include "fuzz/Documents.h"
#include "fuzz/Target.h"
#include "tests/sax/Source.h"
#include "tests/support/TestTags.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/sax/SaxParser.h"
#include "tqxml/writer/XmlDoc.h"

// Reads a document in order first, and then calls operations in any order on handles, dropping
// handles and parsers on the way. Of a well-formed document each answer must be the one that the
// orderly reading leads to expect. Otherwise, and where the stream was made to break, any of the
// failures that the reader has may come at any call. Some parsers have limits, which change nothing
// of what is within them.

namespace fuzz {
namespace {

using Orn::Catalogue;
using Orn::SaxParser;
using Orn::StateException;
using Orn::UString;
using Orn::XmlTag;
using tests::Source;
using Elem = SaxParser::Elem;
using Tree = Orn::XmlDoc::Elem;

/// An element, as the orderly reading found it.
struct Node {
  struct Attribute {
    XmlTag::Id tag;
    UString value;

    bool operator==(Attribute const& other) const {
      return tag == other.tag && value == other.value;
    }
  };

  XmlTag::Id tag = XmlTag::NO_TAG;
  /// In the order in which they are given.
  std::vector<Attribute> attributes;
  std::vector<Node> children;
  UString text;

  bool is_empty() const { return children.empty() && text.empty(); }

  bool operator==(Node const& other) const {
    return tag == other.tag && attributes == other.attributes && children == other.children &&
           text == other.text;
  }
};

Node read_in_order(Elem elem) {
  Node node;
  node.tag = elem.tag();
  for (auto attribute = elem.next_attr(); !attribute.is_nil(); attribute = elem.next_attr()) {
    node.attributes.push_back({attribute.tag(), attribute.data()});
  }
  for (Elem child = elem.next_child(); !child.is_nil(); child = elem.next_child()) {
    node.children.push_back(read_in_order(std::move(child)));
  }
  node.text = elem.data();
  check(elem.is_empty() == node.is_empty(), "empty and not empty");
  return node;
}

/// Whether that is what goes beyond a limit.
bool is_crossing(StateException const& e) {
  return e.message().index() == Catalogue::PARSER_ERROR &&
         e.message().arg(1).text().find(u"ReadLimits::", 0) != UString::npos;
}

/// Calls `reading`; false when the reader failed as it may on malformed input and broken streams.
template <class Reading>
bool could(Reading reading) {
  try {
    reading();
    return true;
  } catch (StateException const& e) {
    check(e.message().index() == Catalogue::NOT_VALID_STREAM || is_crossing(e),
          "another message was raised");
  } catch (Orn::RuntimeException const& e) {
    check(e.message().index() == Catalogue::BAD_READ, "another message was raised");
  } catch (Orn::TagException const&) {
    // A name that is not registered.
  } catch (tests::SourceBroke const&) {
    // What the stream threw.
  }
  return false;
}

using Limits = std::optional<Orn::ReadLimits>;

SaxParser new_parser(Limits const& limits) { return limits ? SaxParser(*limits) : SaxParser(); }

/// None for what cannot be read to its end.
std::optional<Node> read_in_order(std::string const& document, Limits const& limits) {
  Source source(document);
  SaxParser parser = new_parser(limits);
  Node node;
  bool const read = could([&] { node = read_in_order(parser.initialize(&source)); });
  return read ? std::optional<Node>(std::move(node)) : std::nullopt;
}

class Navigation {
 public:
  /// `expected` is null where anything may be answered.
  Navigation(std::string const& document, Limits const& limits, Node const* expected,
             Input& steering)
      : document_(document), limits_(limits), expected_(expected), steering_(steering) {}

  void run() {
    begin_anew();
    while (!steering_.at_end() && reading_ < MOST_READINGS) {
      if (elems_.empty()) take_root();
      // Without a root there is nothing to be called.
      if (elems_.empty()) begin_anew();
      if (!elems_.empty()) step(steering_.below(elems_.size() < 256 ? elems_.size() : 256));
    }
    while (!elems_.empty() && steering_.flag()) drop(steering_.below(2) * (elems_.size() - 1));
  }

 private:
  /// Making a parser takes longer than anything else.
  static constexpr std::size_t MOST_READINGS = 4;

  /// A handle on an element, whose node is null where anything may be answered.
  struct Handle {
    Elem elem;
    Node const* node;
    /// The parser that read it, of which there may be another by now.
    std::size_t reading;
  };
  /// What has been taken of an element of the present reading.
  struct Taken {
    bool next_child_used = false;
    std::size_t children = 0;
    std::size_t attributes = 0;
  };

  bool knows(Handle const& handle) const { return handle.node != nullptr && alive(handle); }
  bool alive(Handle const& handle) const {
    return parser_ != nullptr && handle.reading == reading_;
  }

  // The handles of the reading before stay: nothing more can be read by them.
  void begin_anew() {
    bool const breaks = expected_ == nullptr && steering_.flag();
    auto source = std::make_unique<Source>(document_);
    if (breaks) {
      std::size_t const position = steering_.byte() * (document_.size() + 1) / 256;
      source->break_at(position);
      if (steering_.flag()) source->exceptions(std::ios_base::badbit);
    }
    if (parser_ == nullptr) parser_ = std::make_unique<SaxParser>(new_parser(limits_));
    ++reading_;
    taken_.clear();
    Elem root;
    bool const read = could([&] { root = parser_->initialize(source.get()); });
    check(read || expected_ == nullptr, "a well-formed document fails");
    check(read != root.is_nil() && parser_->root().is_nil() == !read, "there is a root and is not");
    source_ = std::move(source);
    if (read) keep(std::move(root), expected_);
  }

  void take_root() {
    if (parser_ == nullptr) return begin_anew();
    // Whether it is held by one parser or shared by two makes no difference.
    SaxParser const copy(*parser_);
    *parser_ = SaxParser();
    *parser_ = copy;
    Elem root = parser_->root();
    if (!root.is_nil()) keep(std::move(root), expected_);
  }

  void keep(Elem elem, Node const* node) {
    if (node != nullptr) check(elem.tag() == node->tag, "it has another tag");
    elems_.push_back({std::move(elem), node, reading_});
  }

  void drop(std::size_t i) {
    std::swap(elems_[i], elems_.back());
    elems_.pop_back();
  }

  void step(std::size_t i) {
    Handle handle = elems_[i];
    // As a handle of a loop, which is the only one on its element.
    if (steering_.below(4) == 0) drop(i);
    switch (steering_.below(16)) {
      case 0:
        return child(handle);
      case 1:
        return opt_child(handle);
      case 2:
      case 3:
      case 4:
      case 5:
        return next_child(handle);
      case 6:
      case 7:
        return next_attr(handle);
      case 8:
        return data(handle);
      case 9:
        return is_empty(handle);
      case 10:
        return tree(handle);
      case 11:
        return use_attributes();
      case 12:
        return take_root();
      case 13:
        if (steering_.below(4) == 0) parser_.reset();
        return;
      case 14:
        if (steering_.below(4) == 0) begin_anew();
        return;
      default:
        if (!elems_.empty()) drop(steering_.below(elems_.size() < 256 ? elems_.size() : 256));
    }
  }

  /// Calls what may read. False when it failed, which it may do unless the answer is known.
  template <class Reading>
  bool read(Handle const& handle, Reading reading) {
    bool const succeeded = could(reading);
    check(succeeded || !knows(handle), "a well-formed document fails");
    return succeeded;
  }

  template <class Call>
  static bool refused(Catalogue::Index index, Call call) {
    try {
      call();
    } catch (StateException const& e) {
      if (e.message().index() == index) return true;
      throw;
    }
    return false;
  }

  void found(Handle const& handle, Elem elem, Node const* node) {
    if (knows(handle)) check(elem.is_nil() == (node == nullptr), "a child is missing, or there");
    if (!elem.is_nil()) {
      elems_.push_back({std::move(elem), knows(handle) ? node : nullptr, handle.reading});
      if (knows(handle)) check(elems_.back().elem.tag() == node->tag, "it has another tag");
    }
  }

  Node const* next_of(Handle const& handle) {
    std::size_t const i = taken_[handle.node].children;
    return i < handle.node->children.size() ? &handle.node->children[i] : nullptr;
  }

  void child(Handle const& handle) {
    read(handle, [&] {
      Elem child;
      bool const is_refused =
          refused(Catalogue::CHILD_AFTER_NEXT_CHILD, [&] { child = handle.elem.child(); });
      if (knows(handle)) {
        check(is_refused == taken_[handle.node].next_child_used, "child after next_child");
      }
      if (!is_refused) found(handle, child, knows(handle) ? next_of(handle) : nullptr);
    });
  }

  void opt_child(Handle const& handle) {
    static std::vector<XmlTag::Id> const tags = {testtags::a,   testtags::b,   testtags::x,
                                                 testtags::u_a, testtags::v_a, testtags::w_e,
                                                 testtags::u_b, testtags::v_d};
    XmlTag::Id const wanted = steering_.one_of(tags);
    bool const required = steering_.flag();
    read(handle, [&] {
      Elem child;
      bool missing = false;
      bool const is_refused = refused(Catalogue::OPT_CHILD_AFTER_NEXT_CHILD, [&] {
        missing = refused(Catalogue::MISSING_REQUIRED_CHILD, [&] {
          child = required ? handle.elem.child(wanted) : handle.elem.opt_child(wanted);
        });
      });
      if (knows(handle)) {
        check(is_refused == taken_[handle.node].next_child_used, "opt_child after next_child");
      }
      if (is_refused) return;
      check(missing == (required && child.is_nil()), "a required child is missing, or there");
      Node const* expected = nullptr;
      if (knows(handle)) {
        for (Node const& node : handle.node->children) {
          if (expected == nullptr && node.tag == wanted) expected = &node;
        }
      }
      found(handle, child, expected);
    });
  }

  void next_child(Handle& handle) {
    Node const* next = nullptr;
    if (knows(handle)) {
      next = next_of(handle);
      Taken& taken = taken_[handle.node];
      taken.next_child_used = true;
      if (next != nullptr) ++taken.children;
    }
    read(handle, [&] { found(handle, handle.elem.next_child(), next); });
  }

  void next_attr(Handle& handle) {
    SaxParser::Attribute attribute = handle.elem.next_attr();
    if (knows(handle)) {
      std::size_t& taken = taken_[handle.node].attributes;
      auto const& expected = handle.node->attributes;
      check(attribute.is_nil() == (taken == expected.size()), "an attribute is missing, or there");
      if (attribute.is_nil()) return;
      check(attribute.tag() == expected[taken].tag, "an attribute has another tag");
      check(attribute.data() == expected[taken].value, "an attribute has another value");
      ++taken;
    }
    attributes_.push_back(std::move(attribute));
  }

  void data(Handle const& handle) {
    read(handle, [&] {
      UString const text = handle.elem.data();
      if (knows(handle)) check(text == handle.node->text, "another text");
    });
  }

  void is_empty(Handle const& handle) {
    read(handle, [&] {
      bool const is_empty = handle.elem.is_empty();
      if (knows(handle)) check(is_empty == handle.node->is_empty(), "empty and not empty");
      handle.elem.check_is_empty(is_empty);
    });
  }

  void tree(Handle& handle) {
    read(handle, [&] {
      Tree const tree(handle.elem);
      if (knows(handle)) check(tree == remaining(*handle.node), "another tree");
    });
  }

  /// The tree of what has not been taken of an element, which is taken by that.
  Tree remaining(Node const& node) {
    Taken& taken = taken_[&node];
    Tree tree(node.tag);
    while (taken.attributes < node.attributes.size()) {
      Node::Attribute const& attribute = node.attributes[taken.attributes++];
      tree.add_attr(attribute.tag, attribute.value);
    }
    taken.next_child_used = true;
    if (taken.children == node.children.size()) tree.add_body(node.text, true);
    while (taken.children < node.children.size()) {
      tree.add_elem(remaining(node.children[taken.children++]));
    }
    return tree;
  }

  void use_attributes() {
    if (attributes_.empty()) return;
    std::size_t const i = steering_.below(attributes_.size() < 256 ? attributes_.size() : 256);
    SaxParser::Attribute const attribute = attributes_[i];
    if (steering_.flag()) attributes_.erase(attributes_.begin() + static_cast<std::ptrdiff_t>(i));
    check(refused(Catalogue::NIL_ATTRIBUTE, [&] { attribute.data(); }) == attribute.is_nil(),
          "a nil attribute has a value, or another has none");
    if (!attribute.is_nil()) attribute.match(attribute.tag());
  }

  std::string const& document_;
  Limits const& limits_;
  Node const* const expected_;
  Input& steering_;
  std::unique_ptr<Source> source_;
  std::unique_ptr<SaxParser> parser_;
  std::vector<Handle> elems_;
  std::vector<SaxParser::Attribute> attributes_;
  std::map<Node const*, Taken> taken_;
  std::size_t reading_ = 0;
};

void run(SteeredDocument input) {
  Limits const limits = next_limits(input.steering);
  std::optional<Node> const expected = read_in_order(input.document, limits);
  if (limits && expected) {
    check(read_in_order(input.document, std::nullopt) == expected, "limits change what is read");
  }
  // A part of the well-formed documents is read as if it were not, from streams that break.
  bool const is_known = expected && input.steering.below(4) != 0;
  Navigation(input.document, limits, is_known ? &*expected : nullptr, input.steering).run();
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

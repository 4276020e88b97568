#include <gtest/gtest.h>

#include <map>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/agreement/RandomDocument.h"
#include "tests/support/Raises.h"
#include "tests/support/RandomTries.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/sax/SaxParser.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::SaxParser;
using Orn::StateException;
using Elem = SaxParser::Elem;

/// Calls operations at random on handles of a document, of which several may be on one element, and
/// compares each answer with what is in the document and what has been taken of it before.
class RandomNavigation {
 public:
  explicit RandomNavigation(unsigned int seed)
      : engine_(seed), document_(seed), in_(document_.xml()), parser_(in_) {
    take_root();
  }

  void call_one() {
    if (handles_.empty()) take_root();
    Handle& handle = handles_[below(handles_.size())];
    switch (below(12)) {
      case 0:
        return child(handle);
      case 1:
        return opt_child(handle);
      case 2:
      case 3:
      case 4:
        return next_child(handle);
      case 5:
      case 6:
        return next_attr(handle);
      case 7:
        // Reads a great deal, so that little else would be tried if it came often.
        if (below(5) == 0) {
          EXPECT_EQ(handle.elem.data(), handle.node->data(Reader::STREAMING));
        }
        return;
      case 8:
        EXPECT_EQ(handle.elem.is_empty(), handle.node->is_empty(Reader::STREAMING));
        return;
      case 9:
        return take_root();
      case 10:
        handle = handles_[below(handles_.size())];
        return;
      default:
        handle = handles_.back();
        handles_.pop_back();
    }
  }

  std::string const& xml() const { return document_.xml(); }

 private:
  struct Handle {
    Elem elem;
    Node const* node;
  };

  /// What has been taken of an element.
  struct Taken {
    bool next_child_used = false;
    std::size_t children = 0;
    std::size_t attributes = 0;
  };

  std::size_t below(std::size_t limit) { return engine_() % limit; }

  void take_root() {
    // Whether it is held by one parser or shared by two makes no difference.
    SaxParser const copy(parser_);
    parser_ = SaxParser();
    parser_ = copy;
    add(parser_.root(), &document_.root());
  }

  /// A handle on what should be that element; nil for null.
  void add(Elem elem, Node const* node) {
    ASSERT_EQ(elem.is_nil(), node == nullptr);
    if (node == nullptr) return;
    EXPECT_EQ(elem.tag(), node->tag);
    handles_.push_back({std::move(elem), node});
  }

  static Node const* at(std::vector<Node const*> const& nodes, std::size_t i) {
    return i < nodes.size() ? nodes[i] : nullptr;
  }

  void child(Handle const& handle) {
    if (taken_[handle.node].next_child_used) {
      EXPECT_RAISES(handle.elem.child(), StateException, Catalogue::CHILD_AFTER_NEXT_CHILD);
    } else {
      add(handle.elem.child(), at(handle.node->children(Reader::STREAMING), 0));
    }
  }

  void opt_child(Handle const& handle) {
    auto const children = handle.node->children(Reader::STREAMING);
    Node const* wanted = children.empty() ? nullptr : children[below(children.size())];
    Orn::XmlTag::Id const tag = wanted == nullptr ? tag::a : wanted->tag;
    if (taken_[handle.node].next_child_used) {
      EXPECT_RAISES(handle.elem.opt_child(tag), StateException,
                    Catalogue::OPT_CHILD_AFTER_NEXT_CHILD);
      return;
    }
    for (Node const* node : children) {
      if (node->tag != tag) continue;
      wanted = node;
      break;
    }
    add(handle.elem.opt_child(tag), wanted);
  }

  void next_child(Handle& handle) {
    Taken& taken = taken_[handle.node];
    taken.next_child_used = true;
    Node const* const next = at(handle.node->children(Reader::STREAMING), taken.children);
    if (next != nullptr) ++taken.children;
    if (below(4) == 0) {
      // As in a loop that needs the element no more.
      handle.elem = handle.elem.next_child();
      ASSERT_EQ(handle.elem.is_nil(), next == nullptr);
      handle.node = next;
      if (next == nullptr) {
        handle = handles_.back();
        handles_.pop_back();
      }
    } else {
      add(handle.elem.next_child(), next);
    }
  }

  void next_attr(Handle& handle) {
    Attributes const& attributes = handle.node->attributes;
    SaxParser::Attribute const attribute = handle.elem.next_attr();
    std::size_t& taken = taken_[handle.node].attributes;
    ASSERT_EQ(attribute.is_nil(), taken == attributes.size());
    if (attribute.is_nil()) return;
    ++taken;
    auto const& [tag, value] = attributes[attributes.size() - taken];
    EXPECT_EQ(attribute.tag(), tag);
    EXPECT_EQ(attribute.data(), value);
  }

  std::mt19937 engine_;
  RandomDocument document_;
  std::istringstream in_;
  SaxParser parser_;
  std::vector<Handle> handles_;
  std::map<Node const*, Taken> taken_;
};

TEST(TheStreamingReader, AnswersRandomCallsFromTheDocument) {
  for (unsigned int seed = 0; seed < random_tries(2000); ++seed) {
    RandomNavigation navigation(seed);
    for (int calls = 0; calls < 200; ++calls) {
      ASSERT_NO_THROW(navigation.call_one()) << "seed " << seed << '\n' << navigation.xml();
      ASSERT_FALSE(HasFailure()) << "seed " << seed << ", call " << calls << '\n'
                                 << navigation.xml();
    }
  }
}

}  // namespace
}  // namespace tests

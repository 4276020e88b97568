#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

#include "tests/support/TestTags.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::DomParser;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;

struct Node {
  XmlTag::Id tag;
  std::map<XmlTag::Id, UString> attributes;
  /// Stands before the children.
  UString text;
  std::vector<Node> children;
};

/// How a tree is put into words.
struct Style {
  bool indented;
  bool chosen_prefixes;
  /// Whether the namespace `ns_v` is declared by each element that is in it.
  bool v_is_default;
};

std::vector<Style> styles() {
  std::vector<Style> all;
  for (bool indented : {false, true}) {
    for (bool chosen : {false, true}) {
      for (bool v_is_default : {false, true}) all.push_back({indented, chosen, v_is_default});
    }
  }
  return all;
}

std::ostream& operator<<(std::ostream& stream, Style const& style) {
  return stream << "indented " << style.indented << ", chosen prefixes " << style.chosen_prefixes
                << ", v is default " << style.v_is_default;
}

class RandomTrees {
 public:
  explicit RandomTrees(unsigned int seed) : random_(seed) {}

  /// The root of a document has a namespace, for it always has a prefix.
  Node root() {
    Node root = node(4);
    root.tag = u_r;
    return root;
  }

 private:
  Node node(int levels) {
    Node result{one_of(tags_), {}, {}, {}};
    for (std::size_t left = up_to(3); left > 0; --left) {
      result.attributes[one_of(attributes_)] = text();
    }
    result.text = text();
    for (std::size_t left = levels > 0 ? up_to(4) : 0; left > 0; --left) {
      result.children.push_back(node(levels - 1));
    }
    return result;
  }

  UString text() {
    UString text;
    for (std::size_t left = up_to(6); left > 0; --left) text.append(one_of(pieces_));
    return text;
  }

  std::size_t up_to(std::size_t limit) { return random_() % (limit + 1); }
  template <class T>
  T const& one_of(std::vector<T> const& all) {
    return all[random_() % all.size()];
  }

  std::mt19937 random_;
  std::vector<XmlTag::Id> const tags_{u_r, u_a, u_b, u_z, v_a, v_b, v_d, w_a, w_e, a, b, x};
  /// None without a namespace and none in ns_v, which need not have a prefix.
  std::vector<XmlTag::Id> const attributes_{u_a, u_b, u_c, w_a, w_e};
  std::vector<UString> const pieces_{
      u"a",      u" ",    u"\n",           u"\t",        u"&",     u"<",    u"]]>",
      u"]]",     u">",    u"\"",           u"'",         u"&amp;", u"&&&&", u"\u00e9",
      u"\u20ac", u"text", u"\u2028\u0085", u"\U0001F600"};
};

/// Writes a tree by all the different calls that come to the same.
class TreeWriter {
 public:
  TreeWriter(Style const& style, unsigned int seed) : style_(style), random_(seed) {
    if (style.indented) doc_.set_indented_format();
    if (style.chosen_prefixes) {
      doc_.add_ns(ns_u, u"us");
      doc_.add_ns(ns_w, u"M");
      doc_.add_ns(ns_w, u"L");
    }
  }

  XmlDoc document(Node const& root) {
    if (random_() % 2 == 0) doc_.start_doc(XmlTag::NO_TAG);
    if (random_() % 2 == 0) doc_.add_comment(u"before the root");
    write(root);
    doc_.close();
    return doc_;
  }

 private:
  void write(Node const& node) {
    bool const bare = node.attributes.empty() && node.children.empty() && !declares_itself(node);
    if (bare && random_() % 2 == 0) {
      write_leaf(node);
    } else {
      write_with_start_tag(node);
    }
  }

  void write_leaf(Node const& node) {
    if (node.text.find(u"]]>", 0) == UString::npos && random_() % 2 == 0) {
      doc_.add_elem_CDATA(node.tag, node.text);
    } else {
      doc_.add_elem(node.tag, node.text, true);
    }
  }

  void write_with_start_tag(Node const& node) {
    doc_.push_elem(node.tag, declares_itself(node));
    for (auto const& [name, value] : node.attributes) {
      doc_.add_attr(name, XmlDoc::escape_attr(value));
    }
    doc_.append_elem_body(node.text, true);
    for (Node const& child : node.children) {
      write_something_that_does_not_count();
      write(child);
    }
    doc_.pop_elem(node.tag);
  }

  void write_something_that_does_not_count() {
    if (random_() % 8 == 0) doc_.add_comment(u"<&>");
    if (random_() % 8 == 0) doc_.add_processing_instruction(u"target <&>");
  }

  bool declares_itself(Node const& node) const {
    UString const& uri = XmlTag::lookup(node.tag).ns();
    return uri.empty() || (style_.v_is_default && uri == XmlTag::ns_URI(ns_v));
  }

  Style style_;
  std::mt19937 random_;
  XmlDoc doc_;
};

std::map<XmlTag::Id, UString> attributes_of(DomParser::Elem elem) {
  std::map<XmlTag::Id, UString> attributes;
  for (auto attr = elem.next_attr(); !attr.is_nil(); attr = elem.next_attr()) {
    attributes[attr.tag()] = attr.data();
  }
  return attributes;
}

/// Behind the text of an element with children, data() has their start tags and the indentation.
bool has_text(DomParser::Elem const& elem, Node const& node) {
  UString const data = elem.data();
  return node.children.empty() ? data == node.text
                               : data.substr(0, node.text.length()) == node.text;
}

/// The first place where the element differs from the node; empty when there is none.
std::string difference(DomParser::Elem elem, Node const& node) {
  if (elem.is_nil()) return "missing";
  std::string const tag = XmlTag::lookup(node.tag).to_string().to_utf8();
  if (elem.tag() != node.tag) return "not a " + tag;
  if (attributes_of(elem) != node.attributes) return tag + " has other attributes";
  if (!has_text(elem, node)) return tag + " has the text \"" + elem.data().to_utf8() + '"';
  for (Node const& child : node.children) {
    std::string const found = difference(elem.next_child(), child);
    if (!found.empty()) return std::string(tag).append(": ").append(found);
  }
  return elem.next_child().is_nil() ? "" : tag + " has more children";
}

TEST(RandomDocuments, AreReadBackAsTheTreeThatWasWritten) {
  for (unsigned int seed = 1; seed <= 150; ++seed) {
    Node const tree = RandomTrees(seed).root();
    for (Style const& style : styles()) {
      XmlDoc const doc = TreeWriter(style, seed).document(tree);
      DomParser of_bytes(doc.byte_array());
      ASSERT_EQ(difference(of_bytes.root(), tree), "") << "seed " << seed << ", " << style;
      DomParser of_document(doc);
      ASSERT_EQ(difference(of_document.root(), tree), "") << "seed " << seed << ", " << style;
    }
  }
}

TEST(ADocument, TakenPiecemealIsReadBackWhole) {
  XmlDoc doc;
  doc.push_elem(u_r);
  doc.add_ns(ns_v);
  std::string bytes = doc.inc_str().to_utf8();
  for (int i = 0; i < 1000; ++i) {
    doc.add_elem(v_a, u"\U0001F600 & \u00e9", true);
    bytes += doc.inc_str().to_utf8();
  }
  doc.close();
  bytes += doc.byte_array();

  DomParser parser(bytes);
  Node const leaf{v_a, {}, u"\U0001F600 & \u00e9", {}};
  EXPECT_EQ(difference(parser.root(), {u_r, {}, {}, std::vector<Node>(1000, leaf)}), "");
}

TEST(ADocument, IsReadBackHoweverDeepItIs) {
  constexpr int depth = 3000;
  XmlDoc doc(u_r);
  for (int i = 0; i < depth; ++i) doc.push_elem(u_a);
  doc.append_elem_body(u"deep", true);
  for (int i = 0; i < depth; ++i) doc.pop_elem(u_a);
  doc.close();

  DomParser parser(doc);
  DomParser::Elem elem = parser.root();
  for (int i = 0; i < depth; ++i) elem = elem.child(u_a);
  EXPECT_EQ(elem.data(), u"deep");
}

TEST(Numbers, AreReadBackInDecimal) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, -2147483647L);
  doc.close();
  DomParser parser(doc);
  EXPECT_EQ(attributes_of(parser.root()), (std::map<XmlTag::Id, UString>{{u_a, u"-2147483647"}}));
}

TEST(NamespaceDeclarations, AreNotReadBackAsAttributes) {
  XmlDoc doc(u_r);
  doc.add_ns(ns_w, u"w");
  doc.add_elem(v_a, true);
  doc.close();
  DomParser parser(doc);
  EXPECT_TRUE(parser.root().next_attr().is_nil());
  EXPECT_TRUE(parser.root().child().next_attr().is_nil());
}

TEST(ATagWithoutANamespace, CanBeWrittenWithAPrefixButNotRead) {
  XmlDoc doc(u_r);
  doc.add_elem(a);
  doc.close();
  DomParser parser(doc);
  EXPECT_THROW(parser.root(), Orn::RuntimeException);
}

TEST(ALeafWithoutText, IsReadBackEmptyHoweverItWasWritten) {
  XmlDoc doc(u_r);
  doc.add_elem(u_a);
  doc.add_elem(u_a, UString(), true);
  doc.push_elem(u_a);
  doc.pop_elem(u_a);
  doc.close();
  DomParser parser(doc);
  DomParser::Elem root = parser.root();
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(root.next_child().is_empty());
}

}  // namespace
}  // namespace tests

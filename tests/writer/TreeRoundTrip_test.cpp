#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tests/dom/DomReader.h"
#include "tests/sax/SaxReader.h"
#include "tests/support/TestTags.h"
#include "tests/support/Trees.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Elem = XmlDoc::Elem;

struct Name {
  XmlTag::Id tag;
  char const* in_document;
};

std::vector<Name> const ELEMENT_NAMES{{u_r, "u:r"}, {u_a, "u:a"}, {u_b, "u:b"},
                                      {v_a, "v:a"}, {v_r, "v:r"}, {w_e, "w:e"}};
std::vector<Name> const ATTRIBUTE_NAMES{
    {u_a, "u:a"}, {v_a, "v:a"}, {u_c, "also_u:c"}, {w_a, "w:a"}};

/// A piece of text as it is and as a document may have it.
struct Piece {
  char16_t const* text;
  char const* in_document;
};

std::vector<Piece> const PIECES{
    {u"t", "t"},
    {u" ", " "},
    {u"&", "&amp;"},
    {u"<", "&lt;"},
    {u">", "&gt;"},
    {u"\"", "&quot;"},
    {u"'", "&apos;"},
    {u"]]>", "]]&gt;"},
    {u"\u00e9", "\xc3\xa9"},
    {u"\U0001F600", "&#x1F600;"},
};
std::vector<Piece> const PIECES_OF_TEXT{{u"\n\t", "\n\t"},
                                        {u"<&>\"]]", "<![CDATA[<&>\"]]]]>"},
                                        {u"", "<!-- <&> -->"},
                                        {u"", "<?target <&>?>"}};
std::vector<Piece> const PIECES_OF_VALUES{{u"\n", "&#10;"}, {u"\t", "&#9;"}, {u" ", "\n"}};
std::vector<Piece> const PIECES_BESIDE_ELEMENTS{
    {u"", ""}, {u"", "\n  "}, {u"", "lost"}, {u"", "<!-- lost -->"}, {u"", "<![CDATA[lost]]>"}};

/// A random document, and the tree that is to be made of it with attributes in document order.
class RandomDocument {
 public:
  explicit RandomDocument(unsigned int seed) : random_(seed) {}

  std::string const& xml() const { return xml_; }

  Elem root() {
    return elem(3,
                " xmlns:u='urn:test:u' xmlns:also_u='urn:test:u' xmlns:v='urn:test:v'"
                " xmlns:w='urn:test:w'");
  }

 private:
  Elem elem(int levels, char const* declarations = "") {
    Name const& name = one_of(ELEMENT_NAMES);
    Elem tree(name.tag);
    xml_.append("<").append(name.in_document).append(declarations);
    add_attributes(tree);
    xml_.append(">");
    if (levels > 0 && random_() % 4 != 0) {
      for (std::size_t left = random_() % 4; left > 0; --left) {
        append_pieces({&PIECES_BESIDE_ELEMENTS});
        tree.add_elem(elem(levels - 1));
        append_pieces({&PIECES_BESIDE_ELEMENTS});
      }
    } else {
      tree.add_body(append_pieces({&PIECES, &PIECES_OF_TEXT}), true);
    }
    xml_.append("</").append(name.in_document).append(">");
    return tree;
  }

  void add_attributes(Elem& tree) {
    std::vector<Name> names(ATTRIBUTE_NAMES);
    std::shuffle(names.begin(), names.end(), random_);
    names.erase(names.begin() + static_cast<std::ptrdiff_t>(random_() % names.size()), names.end());
    for (Name const& name : names) {
      xml_.append(" ").append(name.in_document).append("=\"");
      tree.add_attr(name.tag, append_pieces({&PIECES, &PIECES_OF_VALUES}));
      xml_.append("\"");
    }
  }

  UString append_pieces(std::vector<std::vector<Piece> const*> const& choices) {
    UString text;
    for (std::size_t left = random_() % 5; left > 0; --left) {
      Piece const& piece = one_of(*one_of(choices));
      text.append(piece.text);
      xml_.append(piece.in_document);
    }
    return text;
  }

  template <class T>
  T const& one_of(std::vector<T> const& all) {
    return all[random_() % all.size()];
  }

  std::mt19937 random_;
  std::string xml_;
};

template <class Reader>
Elem tree_of(std::string const& xml) {
  Reader reader(xml);
  typename Reader::Elem root = reader.root();
  return Elem(root);
}

std::string document_of(Elem const& tree) {
  return XmlDoc(with_escaped_attributes(tree)).byte_array();
}

template <class Reader>
class TreeRoundTrip : public testing::Test {};

using Readers = testing::Types<DomReader, SaxReader>;
TYPED_TEST_SUITE(TreeRoundTrip, Readers);

TYPED_TEST(TreeRoundTrip, OfARandomDocumentKeepsAllButTheOrderOfAttributes) {
  for (unsigned int seed = 1; seed <= 300; ++seed) {
    RandomDocument document(seed);
    Elem const expected = with_sorted_attributes(document.root());
    Elem const tree = tree_of<TypeParam>(document.xml());
    ASSERT_EQ(with_sorted_attributes(tree), expected) << "seed " << seed << ": " << document.xml();
    ASSERT_EQ(expected, with_sorted_attributes(tree)) << "seed " << seed;
    Elem const again = tree_of<TypeParam>(document_of(tree));
    ASSERT_EQ(with_sorted_attributes(again), expected) << "seed " << seed << ": " << document.xml();
    ASSERT_EQ(expected, with_sorted_attributes(again)) << "seed " << seed;
  }
}

TYPED_TEST(TreeRoundTrip, TurnsCarriageReturnsInTextIntoLineFeeds) {
  Elem const tree = tree_of<TypeParam>("<r xmlns='urn:test:u'>x&#13;y&#13;&#10;z</r>");
  EXPECT_EQ(outline(tree), u"{urn:test:u}r[\"x\ry\r\nz\"]");
  EXPECT_EQ(outline(tree_of<TypeParam>(document_of(tree))), u"{urn:test:u}r[\"x\ny\nz\"]");
}

TYPED_TEST(TreeRoundTrip, OfATreeAndItsDocumentIsTheSameTree) {
  Elem tree(u_r);
  tree.add_attr(v_a, u"1 < 2 & \"3\"\n");
  tree.add_elem(u_a, u"&&&& <]]>", true);
  tree.add_elem(v_b, u" ", true);
  tree.add_elem(Elem(u_a));
  Elem& nested = tree.add_elem(Elem(w_e));
  nested.add_attr(w_a, -7L);
  nested.add_elem(v_a, u"\U0001F600", true);
  EXPECT_EQ(tree_of<TypeParam>(document_of(tree)), tree);
}

TYPED_TEST(TreeRoundTrip, ThroughAFragmentIsTheSameTreeToo) {
  Elem tree(v_a);
  tree.add_elem(v_b, u"<t>", true);
  tree.add_elem(u_a, u"u", true);
  XmlDoc doc(u_r);
  doc.append_elem_body(UString(), false);
  doc.append_elem_body(doc.str(tree), false);
  doc.append_elem_body(tree.str(), false);
  doc.add_elem(tree, true);
  doc.close();
  TypeParam reader(doc.byte_array());
  typename TypeParam::Elem root = reader.root();
  for (int i = 0; i < 3; ++i) {
    typename TypeParam::Elem child = root.next_child();
    EXPECT_EQ(Elem(child), tree);
  }
}

TEST(TreeRoundTripOfTheStreamingReader, TurnsTheAttributesAroundEachTime) {
  for (unsigned int seed = 1; seed <= 100; ++seed) {
    RandomDocument document(seed);
    Elem const in_document_order = document.root();
    Elem const tree = tree_of<SaxReader>(document.xml());
    ASSERT_EQ(tree, with_reversed_attributes(in_document_order)) << document.xml();
    ASSERT_EQ(tree_of<SaxReader>(document_of(tree)), in_document_order) << document.xml();
  }
}

TEST(TreeRoundTripOfBothReaders, GivesTheSameTreesButForTheOrderOfAttributes) {
  for (unsigned int seed = 1; seed <= 100; ++seed) {
    RandomDocument document(seed);
    document.root();
    Elem const dom = tree_of<DomReader>(document.xml());
    Elem const sax = tree_of<SaxReader>(document.xml());
    ASSERT_EQ(with_sorted_attributes(dom), with_sorted_attributes(sax)) << document.xml();
    ASSERT_EQ(with_sorted_attributes(sax), with_sorted_attributes(dom)) << document.xml();
  }
}

}  // namespace
}  // namespace tests

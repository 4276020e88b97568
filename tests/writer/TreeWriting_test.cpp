#include <memory>
#include <utility>
#include <vector>

#include "tests/support/Trees.h"
#include "tests/writer/Documents.h"
#include "tests/writer/PlainTree.h"
#include "tests/writer/Snapshot.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::Catalogue;
using Orn::StateException;
using Orn::TagException;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Access = Orn::XmlDocTestAccess;
using Elem = XmlDoc::Elem;

Elem elem(XmlTag::Id tag, std::vector<Elem> const& children = {}) {
  Elem result(tag);
  for (Elem const& child : children) result.add_elem(child);
  return result;
}

Elem with_attr(XmlTag::Id tag, XmlTag::Id name, UString const& value) {
  Elem result(tag);
  result.add_attr(name, value);
  return result;
}

Elem with_text(XmlTag::Id tag, UString const& text) {
  Elem result(tag);
  result.add_body(text, false);
  return result;
}

TEST(AddTree, WithoutAttributesAndChildrenIsSelfClosed) {
  XmlDoc doc = with_open_root();
  doc.add_elem(elem(u_a), false);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a/>"));
  EXPECT_FALSE(Access::after_start_tag(doc));
}

TEST(AddTree, WithAttributesAndWithoutChildrenHasBothTags) {
  XmlDoc doc = with_open_root();
  doc.add_elem(with_attr(u_a, u_b, u"v"), false);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a N1:b=\"v\"></N1:a>"));
}

TEST(AddTree, WritesAttributesInTheirOrderAndVerbatim) {
  Elem tree = with_attr(u_a, u_c, u"<&amp;'");
  tree.add_attr(u_b, -42L);
  tree.add_attr(u_c, u"");
  XmlDoc doc = with_open_root();
  doc.add_elem(tree, false);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a N1:c=\"<&amp;'\" N1:b=\"-42\" N1:c=\"\"></N1:a>"));
}

TEST(AddTree, WritesTextsVerbatim) {
  Elem tree(u_a);
  tree.add_body(u"<&>]]>", true);
  tree.add_body(u"<raw attr='&e;'/>", false);
  tree.add_body(u"&&&&", true);
  XmlDoc doc = with_open_root();
  doc.add_elem(tree, false);
  EXPECT_EQ(out(doc),
            declared(u"<N1:r><N1:a>&lt;&amp;>]]&gt;<raw attr='&e;'/><![CDATA[&&&&]]></N1:a>"));
}

TEST(AddTree, WritesTextsAndElementsInTheirOrder) {
  Elem tree(u_a);
  tree.add_body(u"1", true);
  tree.add_elem(u_b, u"2", true).add_elem(Elem(u_c));
  tree.add_body(u"3", true);
  tree.add_body(u"4", true);
  tree.add_elem(Elem(u_b));
  XmlDoc doc = with_open_root();
  doc.add_elem(tree, false);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a>1<N1:b>2<N1:c/></N1:b>34<N1:b/></N1:a>"));
}

TEST(AddTree, WritesSharedChildrenEachTime) {
  Elem const shared = elem(u_a, {with_text(u_b, u"t")});
  XmlDoc doc = with_open_root();
  doc.add_elem(elem(u_c, {shared, shared}), false);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:c><N1:a><N1:b>t</N1:b></N1:a>"
                               u"<N1:a><N1:b>t</N1:b></N1:a></N1:c>"));
}

TEST(AddTree, CompletesAnOpenStartTag) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, u"v");
  doc.add_elem(elem(u_a), false);
  EXPECT_EQ(out(doc), declared(u"<N1:r N1:a=\"v\"><N1:a/>"));
  EXPECT_REFUSED(doc, doc.add_attr(u_a, u"v"), Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
}

TEST(AddTree, MayBeDoneAgainAndBetweenOtherCalls) {
  XmlDoc doc(u_r);
  Elem const tree = elem(u_a, {with_text(u_b, u"t")});
  doc.add_elem(tree, false);
  doc.append_elem_body(u" between ", true);
  doc.add_elem(tree, false);
  doc.add_elem(u_c);
  EXPECT_EQ(closed_text(doc),
            declared(u"<N1:r xmlns:N1=\"urn:test:u\"><N1:a><N1:b>t</N1:b></N1:a> between "
                     u"<N1:a><N1:b>t</N1:b></N1:a><N1:c/></N1:r>"));
}

TEST(AddTree, WithoutDefaultNamespaceGivesEveryNewNamespaceAPrefix) {
  XmlDoc doc = with_open_root();
  doc.add_elem(elem(v_a, {elem(v_b), elem(w_a, {elem(u_a)})}), false);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N2:a><N2:b/><N3:a><N1:a/></N3:a></N2:a>"));
}

TEST(AddTree, TakesDefaultNsForFalse) {
  XmlDoc doc = with_open_root();
  XmlDoc same(doc);
  doc.add_elem(elem(v_a, {elem(w_a)}));
  same.add_elem(elem(v_a, {elem(w_a)}), false);
  EXPECT_EQ(snapshot(doc), snapshot(same));
}

TEST(AddTree, WithDefaultNamespaceLetsEachElementOfANewNamespaceDeclareIt) {
  XmlDoc doc = with_open_root();
  doc.add_elem(elem(v_a, {elem(v_b), with_text(w_a, u"t"), elem(u_a)}), true);
  EXPECT_EQ(out(doc), declared(u"<N1:r><a xmlns=\"urn:test:v\"><b xmlns=\"urn:test:v\"/>"
                               u"<a xmlns=\"urn:test:w\">t</a><N1:a/></a>"));
  EXPECT_EQ(Access::ns_decls(doc).size(), 1U);
}

TEST(AddTree, WithDefaultNamespaceStillGivesAttributesAPrefix) {
  XmlDoc doc = with_open_root();
  doc.add_elem(elem(v_a, {with_attr(v_b, v_d, u"v"), elem(v_b)}), true);
  // From the attribute on the namespace has a prefix, also in end tags.
  EXPECT_EQ(out(doc), declared(u"<N1:r><a xmlns=\"urn:test:v\"><b xmlns=\"urn:test:v\" N2:d=\"v\">"
                               u"</N2:b><N2:b/></N2:a>"));
}

TEST(AddTree, AsTheRootStartsTheDocumentAndHasAPrefixWhateverDefaultNsSays) {
  for (bool default_ns : {false, true}) {
    for (Elem const& tree : {elem(u_r), with_attr(u_r, u_a, u"v"), with_text(u_r, u"t")}) {
      XmlDoc doc;
      doc.add_elem(tree, default_ns);
      EXPECT_EQ(Access::state(doc), 3U);
      EXPECT_EQ(out(doc).find(declared(u"<N1:r"), 0), 0U) << out(doc);
      EXPECT_EQ(Access::root_tag(doc), u_r);
    }
  }
}

TEST(AddTree, AsTheRootGivesOnlyItsDescendantsTheCallersDefaultNs) {
  Elem const tree = elem(u_r, {elem(v_a), elem(u_a)});
  XmlDoc with_default;
  with_default.add_elem(tree, true);
  EXPECT_EQ(closed_text(with_default), declared(u"<N1:r xmlns:N1=\"urn:test:u\">"
                                                u"<a xmlns=\"urn:test:v\"/><N1:a/></N1:r>"));
  XmlDoc without;
  without.add_elem(tree, false);
  EXPECT_EQ(
      closed_text(without),
      declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:N2=\"urn:test:v\"><N2:a/><N1:a/></N1:r>"));
}

TEST(AddTree, AsTheRootComesBehindWhatADocumentBeganWith) {
  XmlDoc doc;
  doc.add_comment(u"c");
  doc.add_elem(elem(u_r), false);
  EXPECT_EQ(closed_text(doc), u"<!-- c --><N1:r xmlns:N1=\"urn:test:u\"/>");
}

TEST(AddTree, IsIndentedInAnIndentedDocument) {
  XmlDoc doc;
  doc.set_indented_format();
  doc.push_elem(u_r);
  doc.add_elem(elem(u_a, {with_text(u_b, u"t"), elem(u_c), with_attr(u_b, u_a, u"v")}), false);
  EXPECT_EQ(closed_text(doc),
            declared(u"\n<N1:r xmlns:N1=\"urn:test:u\">\n  <N1:a>\n    <N1:b>t</N1:b>"
                     u"\n    <N1:c/>\n    <N1:b N1:a=\"v\"></N1:b>\n  </N1:a>\n"
                     u"</N1:r>\n"));
}

TEST(AddTree, OnceTheRootIsClosedIsRefused) {
  XmlDoc doc;
  doc.add_elem(u_r);
  for (Elem const& tree : {elem(u_a), with_attr(u_a, u_b, u"v"), with_text(u_a, u"t")}) {
    EXPECT_REFUSED(doc, doc.add_elem(tree, false), Catalogue::START_TAG_DISALLOWED);
  }
  doc.close();
  for (Elem const& tree : {elem(u_a), with_attr(u_a, u_b, u"v"), with_text(u_a, u"t")}) {
    EXPECT_REFUSED(doc, doc.add_elem(tree, true), Catalogue::START_TAG_DISALLOWED);
  }
}

TEST(AddTree, KeepsWhatItWroteUpToANamespaceThatComesTooLate) {
  XmlDoc doc = after_partial_output();
  Elem const tree = elem(u_a, {with_text(u_b, u"t"), elem(v_a), elem(u_c)});
  EXPECT_RAISES(doc.add_elem(tree, false), StateException, Catalogue::NAMESPACE_AFTER_OUTPUT);
  EXPECT_EQ(out(doc), u"<N1:a><N1:b>t</N1:b>");
  EXPECT_EQ(Access::tags(doc), (std::vector<XmlTag::Id>{u_r, u_a}));
  EXPECT_EQ(Access::state(doc), 2U);
}

TEST(AddTree, WithDefaultNamespaceTakesNewNamespacesAlsoAfterPartialOutput) {
  XmlDoc doc = after_partial_output();
  doc.add_elem(elem(u_a, {elem(v_a), with_text(w_a, u"t")}), true);
  EXPECT_EQ(out(doc), u"<N1:a><a xmlns=\"urn:test:v\"/><a xmlns=\"urn:test:w\">t</a></N1:a>");
  EXPECT_RAISES(doc.add_elem(with_attr(v_a, v_b, u"v"), true), StateException,
                Catalogue::NAMESPACE_AFTER_OUTPUT);
  EXPECT_EQ(out(doc),
            u"<N1:a><a xmlns=\"urn:test:v\"/><a xmlns=\"urn:test:w\">t</a></N1:a>"
            u"<a xmlns=\"urn:test:v\"");
}

TEST(AddTree, KeepsWhatItWroteUpToAnUnknownTag) {
  struct {
    Elem tree;
    char16_t const* written;
  } const cases[] = {
      {elem(unregistered), u"<N1:r>"},
      {elem(u_a, {elem(u_b), elem(unregistered), elem(u_c)}), u"<N1:r><N1:a><N1:b/>"},
      {elem(u_a, {with_attr(u_b, unregistered, u"v")}), u"<N1:r><N1:a><N1:b"},
  };
  for (auto const& [tree, written] : cases) {
    XmlDoc doc = with_open_root();
    EXPECT_THROW(doc.add_elem(tree, false), TagException);
    EXPECT_EQ(out(doc), declared(written));
  }
  XmlDoc doc;
  EXPECT_UNKNOWN_TAG(doc, doc.add_elem(with_text(unregistered, u"t"), false), unregistered);
}

TEST(AddTree, LeavesADocumentThatGoesOnAfterAFailure) {
  XmlDoc doc = with_open_root();
  EXPECT_THROW(doc.add_elem(elem(u_a, {elem(unregistered)}), false), TagException);
  doc.pop_elem(u_a);
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:N1=\"urn:test:u\"><N1:a></N1:a></N1:r>"));
}

/// One in each state that takes a tree, indented and not.
std::vector<XmlDoc> documents() {
  std::vector<XmlDoc> plain{XmlDoc(), XmlDoc(XmlTag::NO_TAG), XmlDoc(u_r), with_open_root(),
                            after_partial_output()};
  plain.back().push_elem(v_a, true);
  std::vector<XmlDoc> all(plain);
  for (XmlDoc doc : plain) {
    doc.set_indented_format();
    all.push_back(doc);
  }
  return all;
}

/// Whether the call could write all.
template <class Call>
bool succeeds(Call call) {
  try {
    call();
  } catch (StateException const&) {
    return false;
  }
  return true;
}

TEST(AddTree, LeavesADocumentAsTheSameCallsByHand) {
  TreeAlphabet const alphabet{
      {u_r, u_a, v_a, v_b, w_e}, {u_a, u_b, w_a}, {u"1", u""}, {u"t", u"&lt;", u" "}};
  int successes = 0;
  int failures = 0;
  for (unsigned int seed = 1; seed <= 200; ++seed) {
    PlainTree::Ptr const plain = RandomPlainTrees(alphabet, seed).elem(4);
    TreeMaker maker;
    Elem const& tree = maker.tree(plain);
    for (bool default_ns : {false, true}) {
      for (XmlDoc const& doc : documents()) {
        XmlDoc by_hand(doc);
        XmlDoc by_tree(doc);
        bool const succeeded = succeeds([&] { write_by_hand(by_hand, *plain, default_ns); });
        EXPECT_EQ(succeeds([&] { by_tree.add_elem(tree, default_ns); }), succeeded);
        ASSERT_EQ(snapshot(by_tree), snapshot(by_hand)) << "seed " << seed;
        ++(succeeded ? successes : failures);
      }
    }
  }
  EXPECT_GT(successes, 2000);
  EXPECT_GT(failures, 100);
}

TEST(ADocumentOfATree, IsClosedAndHasTheTreeAsItsRoot) {
  Elem const tree = elem(u_r, {with_text(v_a, u"t"), elem(u_a)});
  XmlDoc const doc(tree);
  EXPECT_EQ(Access::state(doc), 4U);
  EXPECT_EQ(doc.str(), declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:N2=\"urn:test:v\">"
                                u"<N2:a>t</N2:a><N1:a/></N1:r>"));
  EXPECT_EQ(doc.byte_array(), doc.str().to_utf8());
}

TEST(ADocumentOfATree, WithoutContentIsSelfClosed) {
  EXPECT_EQ(XmlDoc(elem(u_r)).str(), declared(u"<N1:r xmlns:N1=\"urn:test:u\"/>"));
  EXPECT_EQ(XmlDoc(with_attr(u_r, u_a, u"v")).str(),
            declared(u"<N1:r xmlns:N1=\"urn:test:u\" N1:a=\"v\"></N1:r>"));
}

TEST(ADocumentOfATree, IsTheSameAsTheOneThatTheTreeIsAddedTo) {
  Elem const tree = elem(u_r, {elem(v_a, {with_attr(w_a, v_b, u"v")}), with_text(u_a, u"t")});
  XmlDoc by_hand;
  by_hand.add_elem(tree, false);
  by_hand.close();
  XmlDoc const doc(tree);
  EXPECT_EQ(snapshot(doc), snapshot(by_hand));
}

TEST(ADocumentOfATree, IsNotIndented) {
  XmlDoc doc(elem(u_r, {elem(u_a)}));
  EXPECT_EQ(doc.str().find(u"\n", 0), UString::npos);
}

TEST(ADocumentOfATree, PassesOnTheRegistrysException) {
  EXPECT_THROW(XmlDoc{elem(unregistered)}, TagException);
  EXPECT_THROW(XmlDoc(elem(u_r, {elem(u_a), elem(unregistered)})), TagException);
  EXPECT_THROW(XmlDoc(with_attr(u_r, unregistered, u"v")), TagException);
}

}  // namespace
}  // namespace tests

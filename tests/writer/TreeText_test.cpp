#include <functional>
#include <utility>
#include <vector>

#include "tests/support/Trees.h"
#include "tests/writer/Documents.h"
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

/// A `u_a` with an attribute, a text and a child in another namespace.
Elem sample() {
  Elem tree(u_a);
  tree.add_attr(u_b, u"v");
  tree.add_body(u"<t>", true);
  tree.add_elem(Elem(v_a));
  return tree;
}

TEST(ElemStr, IsTheElementAsTheRootOfADocumentWithoutItsDeclaration) {
  EXPECT_EQ(sample().str(),
            u"<N1:a xmlns:N1=\"urn:test:u\" xmlns:N2=\"urn:test:v\" N1:b=\"v\">"
            u"&lt;t><N2:a/></N1:a>");
  EXPECT_EQ(Elem(u_a).str(), u"<N1:a xmlns:N1=\"urn:test:u\"/>");
}

TEST(ElemStr, IsWhatADocumentOfTheTreeHoldsBehindItsDeclaration) {
  EXPECT_EQ(XmlDoc(sample()).str(), declared(sample().str()));
}

TEST(ElemStr, MayBeAskedForAgain) {
  Elem const tree = sample();
  EXPECT_EQ(tree.str(), tree.str());
  EXPECT_EQ(tree, sample());
}

TEST(ElemStr, PassesOnTheRegistrysExceptionAndLeavesTheTree) {
  Elem tree = sample();
  tree.add_elem(Elem(unregistered));
  Elem const copy(tree);
  EXPECT_THROW(tree.str(), TagException);
  EXPECT_EQ(tree, copy);
}

TEST(ElemContent, OfAnElementWithoutChildrenIsEmpty) {
  Elem tree(u_a);
  tree.add_attr(u_b, u"v");
  EXPECT_EQ(tree.content(), u"");
}

TEST(ElemContent, IsTheTextsAsTheyAreAndTheElementsAsTheirStr) {
  Elem tree(u_a);
  tree.add_body(u"x", true);
  Elem const& child = tree.add_elem(sample());
  EXPECT_EQ(tree.content(), UString(u"x").append(child.str()));
  tree.add_body(u"<&>", false);
  tree.add_body(u"<&>", true);
  tree.add_elem(Elem(v_a));
  EXPECT_EQ(
      tree.content(),
      UString(u"x").append(child.str()).append(u"<&>&lt;&amp;><N1:a xmlns:N1=\"urn:test:v\"/>"));
}

TEST(ElemContent, DoesNotNeedARegisteredTagOfTheElementItself) {
  Elem tree(unregistered);
  tree.add_body(u"x", true);
  EXPECT_EQ(tree.content(), u"x");
}

TEST(ElemContent, PassesOnTheRegistrysException) {
  Elem tree(u_a);
  tree.add_body(u"x", true);
  tree.add_elem(Elem(unregistered));
  EXPECT_THROW(tree.content(), TagException);
}

TEST(DocStr, IsTheMarkupThatAddElemWouldWriteAndDoesNotStay) {
  XmlDoc doc = with_open_root();
  doc.add_elem(u_c);
  UString const before = out(doc);
  UString const fragment = doc.str(sample());
  EXPECT_EQ(fragment, u"<N1:a N1:b=\"v\">&lt;t><a xmlns=\"urn:test:v\"/></N1:a>");
  EXPECT_EQ(out(doc), before);
  doc.add_elem(sample(), true);
  EXPECT_EQ(out(doc), UString(before).append(fragment));
}

TEST(DocStr, UsesThePrefixesAndTheDepthAndTheIndentationOfTheDocument) {
  XmlDoc doc;
  doc.add_ns(ns_v, u"v");
  doc.set_indented_format();
  doc.push_elem(u_r);
  doc.push_elem(u_c);
  doc.append_elem_body(UString(), false);
  EXPECT_EQ(doc.str(sample()), u"\n    <N1:a N1:b=\"v\">&lt;t>\n      <v:a/>\n    </N1:a>");
}

TEST(DocStr, LeavesTheDocumentAsItWasWhereNothingIsNewToIt) {
  XmlDoc doc = with_open_root();
  doc.add_elem(u_c);
  EXPECT_TRUE(leaves_alone(doc, [&] {
    for (int i = 0; i < 3; ++i) EXPECT_EQ(doc.str(Elem(u_a)), u"<N1:a/>");
  }));
}

TEST(DocStr, LeavesBehindWhetherTheLastMarkupWasAStartTag) {
  XmlDoc doc;
  doc.set_indented_format();
  doc.push_elem(u_r);
  doc.append_elem_body(UString(), false);
  doc.str(Elem(u_a));
  EXPECT_FALSE(Access::after_start_tag(doc));
  EXPECT_EQ(closed_text(doc), declared(u"\n<N1:r xmlns:N1=\"urn:test:u\">\n</N1:r>\n"));
}

TEST(DocStr, LeavesBehindPrefixesThatAttributesNeeded) {
  XmlDoc doc = with_open_root();
  Elem tree(v_a);
  tree.add_attr(v_b, u"v");
  EXPECT_EQ(doc.str(tree), u"<a xmlns=\"urn:test:v\" N2:b=\"v\"></N2:a>");
  EXPECT_EQ(doc.str(tree), u"<N2:a N2:b=\"v\"></N2:a>");
  EXPECT_EQ(closed_text(doc),
            declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:N2=\"urn:test:v\"></N1:r>"));
}

TEST(DocStr, TakesTheBracketOfAnOpenStartTagAway) {
  XmlDoc doc(u_r);
  doc.push_elem(u_a);
  EXPECT_EQ(doc.str(Elem(u_b)), u"><N1:b/>");
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a"));
  EXPECT_FALSE(Access::start_tag_open(doc));
  EXPECT_REFUSED(doc, doc.add_attr(u_b, u"v"), Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
  doc.pop_elem(u_a);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a</N1:a>"));
}

TEST(DocStr, OnANewDocumentLeavesItStartedWithItsDeclarationAlone) {
  XmlDoc doc;
  EXPECT_EQ(doc.str(sample()), u"<N1:a N1:b=\"v\">&lt;t><a xmlns=\"urn:test:v\"/></N1:a>");
  EXPECT_EQ(out(doc), declared(u""));
  EXPECT_EQ(Access::state(doc), 1U);
  EXPECT_TRUE(Access::tags(doc).empty());
}

TEST(DocStr, OnANewDocumentLeavesWhatItDidForARootOfItsOwn) {
  XmlDoc doc;
  doc.str(Elem(u_a));
  EXPECT_EQ(Access::root_tag(doc), u_a);
  EXPECT_EQ(Access::ns_insert_pos(doc), out(doc).length() + UString(u"<N1:a").length());
  EXPECT_EQ(Access::ns_counter(doc), 1U);
  EXPECT_EQ(Access::ns_decls(doc).size(), 1U);
}

TEST(DocStr, OnAStartedDocumentIsOfARootOfItsOwnToo) {
  XmlDoc doc;
  doc.add_comment(u"c");
  for (int i = 0; i < 2; ++i) EXPECT_EQ(doc.str(Elem(u_a)), u"<N1:a/>");
  EXPECT_EQ(out(doc), u"<!-- c -->");
  EXPECT_EQ(Access::state(doc), 1U);
}

TEST(DocStr, OnAStartedDocumentIsIndentedAsARoot) {
  XmlDoc doc;
  doc.set_indented_format();
  Elem tree(u_r);
  tree.add_elem(Elem(u_a));
  EXPECT_EQ(doc.str(tree), u"\n<N1:r>\n  <N1:a/>\n</N1:r>\n");
}

TEST(DocStr, BeforeTheRootLeavesADocumentThatCanBeWrittenAsUsual) {
  XmlDoc doc;
  doc.str(Elem(v_a));
  doc.push_elem(u_r);
  doc.add_elem(v_b);
  EXPECT_EQ(closed_text(doc), declared(u"<N2:r xmlns:N2=\"urn:test:u\" xmlns:N1=\"urn:test:v\">"
                                       u"<N1:b/></N2:r>"));
}

TEST(DocStr, OnceTheRootIsClosedIsRefused) {
  XmlDoc doc;
  doc.add_elem(u_r);
  EXPECT_REFUSED(doc, doc.str(Elem(u_a)), Catalogue::START_TAG_DISALLOWED);
  EXPECT_REFUSED(doc, doc.str(sample()), Catalogue::START_TAG_DISALLOWED);
  doc.close();
  EXPECT_REFUSED(doc, doc.str(Elem(u_a)), Catalogue::START_TAG_DISALLOWED);
  EXPECT_REFUSED(doc, doc.str(sample()), Catalogue::START_TAG_DISALLOWED);
}

TEST(DocStr, IsToBeHadAfterPartialOutputAlsoOfANewNamespace) {
  XmlDoc doc = after_partial_output();
  doc.add_elem(u_a);
  EXPECT_TRUE(
      leaves_alone(doc, [&] { EXPECT_EQ(doc.str(Elem(v_a)), u"<a xmlns=\"urn:test:v\"/>"); }));
}

TEST(DocStr, KeepsWhatWasWrittenBeforeAFailureInTheDocument) {
  Elem with_unknown_tag(u_a);
  with_unknown_tag.add_body(u"t", true);
  with_unknown_tag.add_elem(Elem(unregistered));
  XmlDoc doc = with_open_root();
  EXPECT_THROW(doc.str(with_unknown_tag), TagException);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a>t"));
  EXPECT_EQ(Access::tags(doc), (std::vector<XmlTag::Id>{u_r, u_a}));

  XmlDoc late = after_partial_output();
  Elem with_new_namespace(u_a);
  with_new_namespace.add_attr(v_a, u"v");
  EXPECT_RAISES(late.str(with_new_namespace), StateException, Catalogue::NAMESPACE_AFTER_OUTPUT);
  EXPECT_EQ(out(late), u"<N1:a");
}

TEST(DocStr, DoesNotPutTheStateBackAfterAFailure) {
  Elem tree(u_a);
  tree.add_elem(Elem(unregistered));
  XmlDoc doc;
  EXPECT_THROW(doc.str(tree), TagException);
  EXPECT_EQ(out(doc), declared(u"<N1:a"));
  EXPECT_EQ(Access::state(doc), 2U);
}

}  // namespace
}  // namespace tests

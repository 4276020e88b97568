#include <gtest/gtest.h>

#include "tests/writer/Documents.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;

XmlDoc indented() {
  XmlDoc doc;
  doc.set_indented_format();
  return doc;
}

XmlDoc indented_with_root() {
  XmlDoc doc = indented();
  doc.push_elem(u_r);
  return doc;
}

TEST(Indentation, PutsEachElementOnALineOfItsOwnTwoBlanksDeeperALevel) {
  XmlDoc doc = indented_with_root();
  doc.push_elem(u_a);
  doc.push_elem(u_b);
  doc.add_elem(u_c);
  doc.pop_elem(u_b);
  doc.pop_elem(u_a);
  doc.pop_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"\n<N1:r>"
                               u"\n  <N1:a>"
                               u"\n    <N1:b>"
                               u"\n      <N1:c/>"
                               u"\n    </N1:b>"
                               u"\n  </N1:a>"
                               u"\n</N1:r>\n"));
}

TEST(Indentation, KeepsTextOnTheLineOfItsTags) {
  XmlDoc doc = indented_with_root();
  doc.add_elem(u_b, u"x", true);
  doc.add_elem(u_c);
  EXPECT_EQ(closed_text(doc), declared(u"\n<N1:r xmlns:N1=\"urn:test:u\">"
                                       u"\n  <N1:b>x</N1:b>"
                                       u"\n  <N1:c/>"
                                       u"\n</N1:r>\n"));
}

TEST(Indentation, KeepsTheEndTagOfAnElementWithoutContentOnItsLine) {
  XmlDoc doc = indented_with_root();
  doc.push_elem(u_a);
  doc.pop_elem(u_a);
  EXPECT_EQ(out(doc), declared(u"\n<N1:r>\n  <N1:a></N1:a>"));
}

TEST(Indentation, KeepsTheEndTagBehindTextOnItsLine) {
  XmlDoc doc = indented_with_root();
  doc.add_attr(u_a, u"v");
  doc.append_elem_body(u"t", true);
  doc.pop_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"\n<N1:r N1:a=\"v\">t</N1:r>\n"));
}

TEST(Indentation, BreaksTheLineBetweenTextAndTheTagsOfChildren) {
  XmlDoc doc = indented_with_root();
  doc.append_elem_body(u"1", true);
  doc.add_elem(u_a, u"2", true);
  doc.append_elem_body(u"3", true);
  doc.pop_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"\n<N1:r>1\n  <N1:a>2</N1:a>3\n</N1:r>\n"));
}

TEST(Indentation, KeepsCdataOnTheLineOfItsTags) {
  XmlDoc doc = indented_with_root();
  doc.add_elem_CDATA(u_a, u"<");
  doc.pop_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"\n<N1:r>\n  <N1:a><![CDATA[<]]></N1:a>\n</N1:r>\n"));
}

TEST(Indentation, PutsCommentsAndInstructionsBelowTheRootOnLinesOfTheirOwn) {
  XmlDoc doc = indented_with_root();
  doc.add_comment(u"c");
  doc.add_processing_instruction(u"p");
  doc.push_elem(u_a);
  doc.add_comment(u"d");
  EXPECT_EQ(out(doc), declared(u"\n<N1:r>\n  <!-- c -->\n  <?p?>\n  <N1:a>\n    <!-- d -->"));
}

TEST(Indentation, KeepsAnEndTagBehindACommentOrInstructionOnItsLine) {
  XmlDoc doc = indented_with_root();
  doc.push_elem(u_a);
  doc.add_elem(u_b);
  doc.add_comment(u"c");
  doc.pop_elem(u_a);
  doc.add_processing_instruction(u"p");
  doc.pop_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"\n<N1:r>\n  <N1:a>\n    <N1:b/>\n    <!-- c --></N1:a>"
                               u"\n  <?p?></N1:r>\n"));
}

TEST(Indentation, KeepsWhatStandsBeforeTheRootOnTheFirstLine) {
  XmlDoc doc = indented();
  doc.start_doc(XmlTag::NO_TAG);
  doc.add_comment(u"c");
  doc.add_processing_instruction(u"p");
  doc.add_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"<!-- c --><?p?>\n<N1:r/>"));
}

TEST(Indentation, OfADocumentBegunByACommentStartsTheRootOnASecondLine) {
  XmlDoc doc = indented();
  doc.add_comment(u"c");
  doc.push_elem(u_r);
  EXPECT_EQ(out(doc), u"<!-- c -->\n<N1:r");
}

TEST(Indentation, EndsADocumentWithALineFeedWhenItsRootHasAnEndTag) {
  XmlDoc doc = indented_with_root();
  EXPECT_EQ(closed_text(doc), declared(u"\n<N1:r xmlns:N1=\"urn:test:u\"></N1:r>\n"));
}

TEST(Indentation, EndsADocumentWithoutALineFeedWhenItsRootIsOneTag) {
  XmlDoc doc = indented();
  doc.add_elem(u_r);
  EXPECT_EQ(closed_text(doc), declared(u"\n<N1:r xmlns:N1=\"urn:test:u\"/>"));
}

TEST(Indentation, OfARootThatHoldsOnlyTextAddsNoBlanks) {
  XmlDoc doc = indented();
  doc.add_elem(u_r, u"t", true);
  EXPECT_EQ(out(doc), declared(u"\n<N1:r>t</N1:r>\n"));
}

TEST(Indentation, AffectsOnlyWhatIsWrittenAfterwards) {
  XmlDoc doc(u_r);
  doc.push_elem(u_a);
  doc.add_elem(u_b);
  doc.set_indented_format();
  doc.add_elem(u_c);
  doc.pop_elem(u_a);
  doc.pop_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a><N1:b/>\n    <N1:c/>\n  </N1:a>\n</N1:r>\n"));
}

TEST(Indentation, AskedForTwiceStaysOn) {
  XmlDoc doc = indented_with_root();
  doc.set_indented_format();
  doc.add_elem(u_a);
  EXPECT_EQ(out(doc), declared(u"\n<N1:r>\n  <N1:a/>"));
}

TEST(Indentation, IsNotDisturbedByTakingTheTextPiecemeal) {
  XmlDoc doc = indented_with_root();
  UString pieces = doc.inc_str();
  doc.push_elem(u_a);
  pieces.append(doc.inc_str());
  doc.pop_elem(u_a);
  pieces.append(doc.inc_str());
  pieces.append(closed_text(doc));
  EXPECT_EQ(pieces, declared(u"\n<N1:r xmlns:N1=\"urn:test:u\">\n  <N1:a></N1:a>\n</N1:r>\n"));
}

TEST(Indentation, OfARefusedCallWritesNothing) {
  XmlDoc doc = indented_with_root();
  doc.add_elem(u_a);
  UString const before = out(doc);
  EXPECT_ANY_THROW(doc.push_elem(unregistered));
  EXPECT_ANY_THROW(doc.add_elem(XmlTag::NO_TAG));
  EXPECT_ANY_THROW(doc.pop_elem(u_a));
  EXPECT_EQ(out(doc), before);
}

}  // namespace
}  // namespace tests

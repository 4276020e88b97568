#include "tests/writer/Documents.h"
#include "tests/writer/Snapshot.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::Catalogue;
using Orn::IllegalArgException;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Access = Orn::XmlDocTestAccess;

TEST(AddElemCdata, WritesTheTextVerbatimInOneSection) {
  XmlDoc doc = with_open_root();
  doc.add_elem_CDATA(u_a, u"<&>\"]] ]>");
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a><![CDATA[<&>\"]] ]>]]></N1:a>"));
  EXPECT_FALSE(Access::after_start_tag(doc));
}

TEST(AddElemCdata, OfTheEmptyTextWritesAnEmptySection) {
  XmlDoc doc = with_open_root();
  doc.add_elem_CDATA(u_a, UString());
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a><![CDATA[]]></N1:a>"));
}

TEST(AddElemCdata, OnANewDocumentIsTheWholeRoot) {
  XmlDoc doc;
  doc.add_elem_CDATA(u_a, u"t");
  EXPECT_EQ(closed_text(doc), declared(u"<N1:a xmlns:N1=\"urn:test:u\"><![CDATA[t]]></N1:a>"));
}

TEST(AddElemCdata, NeverUsesTheDefaultNamespace) {
  XmlDoc doc = with_open_root();
  doc.add_elem_CDATA(v_a, u"t");
  EXPECT_EQ(out(doc), declared(u"<N1:r><N2:a><![CDATA[t]]></N2:a>"));
}

TEST(AddElemCdata, TakesATextThatEndsLikeTheTerminatorsBeginning) {
  XmlDoc doc = with_open_root();
  doc.add_elem_CDATA(u_a, u"]]");
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a><![CDATA[]]]]></N1:a>"));
}

TEST(AddElemCdata, WithATerminatorInTheTextIsRefusedAndWritesNothing) {
  for (char16_t const* text : {u"]]>", u"a]]>b", u"a]]]>", u"]]>]]>"}) {
    XmlDoc doc(u_r);
    EXPECT_TRUE(leaves_alone(doc, [&] {
      EXPECT_RAISES(doc.add_elem_CDATA(u_a, text), IllegalArgException,
                    Catalogue::CDATA_TERMINATOR_IN_TEXT, u"]]>", text, text);
    }));
  }
}

TEST(AddElemCdata, LooksForATerminatorBeforeTheStateAndTheTag) {
  XmlDoc doc;
  doc.add_elem(u_r);
  for (XmlTag::Id tag : {u_a, XmlTag::NO_TAG, unregistered}) {
    EXPECT_RAISES(doc.add_elem_CDATA(tag, u"]]>"), IllegalArgException,
                  Catalogue::CDATA_TERMINATOR_IN_TEXT, u"]]>", u"]]>", u"]]>");
    EXPECT_REFUSED(doc, doc.add_elem_CDATA(tag, u"t"), Catalogue::START_TAG_DISALLOWED);
  }
}

TEST(AddComment, PutsOneBlankInsideEachDelimiter) {
  XmlDoc doc = with_open_root();
  doc.add_comment(u"c");
  EXPECT_EQ(out(doc), declared(u"<N1:r><!-- c -->"));
}

TEST(AddComment, IsVerbatim) {
  XmlDoc doc = with_open_root();
  doc.add_comment(u"<&--");
  doc.add_comment(UString());
  EXPECT_EQ(out(doc), declared(u"<N1:r><!-- <&-- --><!--  -->"));
}

TEST(AddComment, CompletesAnOpenStartTagAndLeavesNoneOpen) {
  XmlDoc doc(u_r);
  doc.add_comment(u"c");
  EXPECT_EQ(out(doc), declared(u"<N1:r><!-- c -->"));
  EXPECT_FALSE(Access::start_tag_open(doc));
}

TEST(AddComment, CountsAsAStartTag) {
  XmlDoc doc = with_open_root();
  doc.add_elem(u_a);
  doc.add_comment(u"c");
  EXPECT_TRUE(Access::after_start_tag(doc));
}

TEST(AddComment, OnANewDocumentLeavesOutTheDeclaration) {
  XmlDoc doc;
  doc.add_comment(u"c");
  doc.push_elem(u_r);
  EXPECT_EQ(closed_text(doc), u"<!-- c --><N1:r xmlns:N1=\"urn:test:u\"></N1:r>");
}

TEST(AddComment, OnANewDocumentMakesALaterStartDocLeaveOutTheDeclarationToo) {
  XmlDoc doc;
  doc.add_comment(u"c");
  doc.start_doc(XmlTag::NO_TAG);
  EXPECT_EQ(out(doc), u"<!-- c -->");
}

TEST(AddComment, AfterTheRootHasBeenClosedIsRefused) {
  XmlDoc doc;
  doc.add_elem(u_r);
  EXPECT_REFUSED(doc, doc.add_comment(u"c"), Catalogue::START_TAG_DISALLOWED);
  doc.close();
  EXPECT_REFUSED(doc, doc.add_comment(u"c"), Catalogue::START_TAG_DISALLOWED);
}

TEST(AddProcessingInstruction, WritesItsTextVerbatimBetweenQuestionMarks) {
  XmlDoc doc = with_open_root();
  doc.add_processing_instruction(u"target a=\"<&>\"");
  doc.add_processing_instruction(UString());
  EXPECT_EQ(out(doc), declared(u"<N1:r><?target a=\"<&>\"?><?"
                               u"?>"));
}

TEST(AddProcessingInstruction, CompletesAnOpenStartTagAndCountsAsOne) {
  XmlDoc doc(u_r);
  doc.add_elem(u_a);
  doc.push_elem(u_b);
  doc.add_processing_instruction(u"p");
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a/><N1:b><?p?>"));
  EXPECT_FALSE(Access::start_tag_open(doc));
  EXPECT_TRUE(Access::after_start_tag(doc));
}

TEST(AddProcessingInstruction, OnANewDocumentLeavesOutTheDeclaration) {
  XmlDoc doc;
  doc.add_processing_instruction(u"p");
  doc.add_elem(u_r);
  EXPECT_EQ(out(doc), u"<?p?><N1:r/>");
}

TEST(AddXmlDecl, NamesTheEncodingItIsGiven) {
  XmlDoc doc;
  doc.add_xml_decl(u"x\"<");
  EXPECT_EQ(out(doc), u"<?xml version=\"1.0\" encoding=\"x\"<\"?>");
  EXPECT_EQ(Access::state(doc), 1U);
}

TEST(AddXmlDecl, IsWrittenWhereverTheDocumentStands) {
  XmlDoc doc(u_r);
  doc.add_xml_decl(u"UTF-8");
  EXPECT_EQ(out(doc), declared(declared(u"").insert(0, u"<N1:r>")));
}

TEST(AddXmlDecl, OnANewDocumentTakesThePlaceOfTheDeclaration) {
  XmlDoc doc;
  doc.add_xml_decl(u"UTF-16");
  doc.add_elem(u_r);
  EXPECT_EQ(out(doc), u"<?xml version=\"1.0\" encoding=\"UTF-16\"?><N1:r/>");
}

TEST(AddXmlDecl, DoesNotChangeTheEncodingOfTheBytes) {
  XmlDoc doc;
  doc.add_xml_decl(u"ISO-8859-1");
  doc.add_elem(u_r, u"\u00e9", true);
  doc.close();
  EXPECT_NE(doc.byte_array().find("\xc3\xa9"), std::string::npos);
}

}  // namespace
}  // namespace tests

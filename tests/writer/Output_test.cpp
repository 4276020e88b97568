#include "tests/writer/Documents.h"
#include "tests/writer/Snapshot.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::Catalogue;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Access = Orn::XmlDocTestAccess;

UString const DECLARED_ROOT = declared(u"<N1:r xmlns:N1=\"urn:test:u\">");

TEST(Str, GivesTheTextAsOftenAsItIsAskedFor) {
  XmlDoc doc(u_r);
  doc.close();
  UString const first = doc.str();
  EXPECT_EQ(doc.str(), first);
  EXPECT_EQ(first, UString(DECLARED_ROOT).append(u"</N1:r>"));
}

TEST(Str, BeforeCloseIsRefused) {
  XmlDoc doc;
  doc.add_elem(u_r);
  EXPECT_REFUSED(doc, doc.str(), Catalogue::CLOSE_NOT_CALLED);
  EXPECT_REFUSED(doc, doc.byte_array(), Catalogue::CLOSE_NOT_CALLED);
}

XmlDoc closed_with_text(UString const& text) {
  XmlDoc doc;
  doc.add_ns(ns_u, UString());
  doc.add_elem(u_r, text, false);
  doc.close();
  return doc;
}

std::string bytes_around(std::string const& text) {
  std::string const root = R"(<r xmlns="urn:test:u" xmlns="urn:test:u">)";
  return R"(<?xml version="1.0" encoding="UTF-8"?>)" + root + text + "</r>";
}

TEST(ByteArray, IsTheTextInUtf8WithoutAByteOrderMark) {
  XmlDoc const doc = closed_with_text(u"a\u00e9\u20ac\U0001F600\uFEFF");
  EXPECT_EQ(doc.byte_array(), bytes_around("a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\xef\xbb\xbf"));
}

TEST(ByteArray, HoldsTheLastCharacterOfEachLength) {
  XmlDoc const doc = closed_with_text(u"\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010FFFF");
  EXPECT_EQ(doc.byte_array(),
            bytes_around("\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf\xf0\x90\x80\x80"
                         "\xf4\x8f\xbf\xbf"));
}

TEST(ByteArray, ReplacesEachLoneSurrogate) {
  char16_t const units[] = {u'a', 0xD83D, u'b', 0xDE00, 0xDE00, 0xD83D};
  XmlDoc const doc = closed_with_text(UString(units, 6));
  EXPECT_EQ(doc.byte_array(), bytes_around("a\xef\xbf\xbd"
                                           "b\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"));
}

TEST(ByteArray, EndsAtTheFirstZero) {
  XmlDoc const doc = closed_with_text(UString(u"a\0b\0", 4));
  std::string const whole = bytes_around("a");
  EXPECT_EQ(doc.byte_array(), whole.substr(0, whole.size() - 4));
  EXPECT_EQ(doc.str().length(), whole.size() + 3);
}

TEST(ByteArray, LeavesTheTextAlone) {
  XmlDoc doc = closed_with_text(u"t");
  EXPECT_TRUE(leaves_alone(doc, [&] { EXPECT_EQ(doc.byte_array(), doc.byte_array()); }));
}

TEST(IncStr, OfANewDocumentIsRefused) {
  XmlDoc doc;
  EXPECT_REFUSED(doc, doc.inc_str(), Catalogue::NOT_STARTED);
}

TEST(IncStr, GivesWhatHasBeenWrittenSinceTheLastTime) {
  XmlDoc doc(u_r);
  EXPECT_EQ(doc.inc_str(), DECLARED_ROOT);
  doc.add_elem(u_a);
  EXPECT_EQ(doc.inc_str(), u"<N1:a/>");
  EXPECT_EQ(doc.inc_str(), u"");
  doc.append_elem_body(u"t", true);
  EXPECT_EQ(closed_text(doc), u"t</N1:r>");
}

TEST(IncStr, CompletesAnOpenStartTag) {
  XmlDoc doc(u_r);
  doc.inc_str();
  doc.push_elem(u_a);
  EXPECT_EQ(doc.inc_str(), u"<N1:a>");
  EXPECT_REFUSED(doc, doc.add_attr(u_a, u"v"), Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
}

TEST(IncStr, PutsTheDeclarationsCollectedSoFarOnTheRoot) {
  XmlDoc doc(u_r);
  doc.add_attr(v_a, u"v");
  doc.add_elem(w_a);
  EXPECT_EQ(doc.inc_str(), declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:N2=\"urn:test:v\""
                                    u" xmlns:N3=\"urn:test:w\" N2:a=\"v\"><N3:a/>"));
  EXPECT_EQ(Access::ns_insert_pos(doc), 0U);
}

TEST(IncStr, BeforeTheRootLeavesTheDeclarationsForLater) {
  XmlDoc doc(XmlTag::NO_TAG);
  doc.add_ns(ns_v, u"v");
  EXPECT_EQ(doc.inc_str(), declared(u""));
  doc.push_elem(u_r);
  doc.add_ns(ns_w, u"w");
  EXPECT_EQ(doc.inc_str(),
            u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:v=\"urn:test:v\" xmlns:w=\"urn:test:w\">");
}

TEST(IncStr, OnceTheRootHasBeenClosedWritesTheDeclarationsThatCloseWouldHaveWritten) {
  XmlDoc doc;
  doc.add_elem(u_r);
  EXPECT_EQ(doc.inc_str(), declared(u"<N1:r xmlns:N1=\"urn:test:u\"/>"));
  EXPECT_EQ(Access::state(doc), 3U);
  EXPECT_EQ(closed_text(doc), u"");
}

TEST(IncStr, OfAClosedDocumentTakesTheRest) {
  XmlDoc doc(u_r);
  doc.inc_str();
  doc.close();
  EXPECT_EQ(doc.inc_str(), u"</N1:r>");
  EXPECT_EQ(doc.str(), u"");
  EXPECT_EQ(doc.byte_array(), "");
  EXPECT_EQ(doc.inc_str(), u"");
}

TEST(IncStr, OfAClosedDocumentWithoutMarkupIsEmpty) {
  XmlDoc doc;
  doc.close();
  EXPECT_EQ(doc.inc_str(), u"");
}

TEST(IncStr, LeavesTheStateAndTheOpenElementsAsTheyWere) {
  XmlDoc doc(u_r);
  doc.push_elem(u_a);
  doc.append_elem_body(u"t", true);
  Snapshot expected = snapshot(doc);
  expected.out = UString();
  expected.ns_insert_pos = 0;
  doc.inc_str();
  EXPECT_EQ(snapshot(doc), expected);
}

void (*const steps[])(XmlDoc&) = {
    [](XmlDoc& doc) { doc.push_elem(u_r); },
    [](XmlDoc& doc) { doc.add_comment(u"c"); },
    [](XmlDoc& doc) { doc.push_elem(u_a); },
    [](XmlDoc& doc) { doc.append_elem_body(u"a&b", true); },
    [](XmlDoc& doc) { doc.add_elem(u_b, u"t", true); },
    [](XmlDoc& doc) { doc.add_elem_CDATA(u_c, u"<"); },
    [](XmlDoc& doc) { doc.push_elem(v_a, true); },
    [](XmlDoc& doc) { doc.pop_elem(v_a); },
    [](XmlDoc& doc) { doc.pop_elem(u_a); },
    [](XmlDoc& doc) { doc.pop_elem(u_r); },
    [](XmlDoc& doc) { doc.close(); },
};

/// Written in steps, behind each of which the text is taken when its bit is set.
UString in_pieces(unsigned int taken, bool indented) {
  XmlDoc doc;
  if (indented) doc.set_indented_format();
  UString pieces;
  unsigned int bit = 1;
  for (auto step : steps) {
    step(doc);
    if ((taken & bit) != 0) pieces.append(doc.inc_str());
    bit <<= 1;
  }
  return pieces.append(doc.str());
}

TEST(IncStr, InPiecesOfAnySizeMakesUpTheSameDocument) {
  for (bool indented : {false, true}) {
    UString const whole = in_pieces(0, indented);
    for (unsigned int taken = 1; taken < 1U << std::size(steps); ++taken) {
      ASSERT_EQ(in_pieces(taken, indented), whole) << "taken: " << taken;
    }
  }
}

}  // namespace
}  // namespace tests

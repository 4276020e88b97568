#include "tests/writer/Documents.h"
#include "tests/writer/Snapshot.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::Catalogue;
using Orn::StateException;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Access = Orn::XmlDocTestAccess;

using Table = std::map<UString, std::set<UString>>;

constexpr XmlTag::NsId unregistered_ns{9999};

TEST(Prefixes, AreMadeUpInTheOrderOfFirstUseAndDeclaredInTheOrderOfUris) {
  XmlDoc doc(v_r);
  doc.add_elem(v_d);
  doc.add_elem(u_c);
  EXPECT_EQ(
      closed_text(doc),
      declared(u"<N1:r xmlns:N2=\"urn:test:u\" xmlns:N1=\"urn:test:v\"><N1:d/><N2:c/></N1:r>"));
}

TEST(Prefixes, OfRootAndChildrenAreAllDeclaredOnTheRoot) {
  XmlDoc doc(u_r);
  doc.add_elem(u_c);
  doc.add_elem(v_d);
  EXPECT_EQ(
      closed_text(doc),
      declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:N2=\"urn:test:v\"><N1:c/><N2:d/></N1:r>"));
}

TEST(Prefixes, OfTheRootAreMadeUpWhateverDefaultNsSays) {
  XmlDoc pushed;
  pushed.push_elem(u_r, true);
  EXPECT_EQ(out(pushed), declared(u"<N1:r"));
  XmlDoc added;
  added.add_elem(u_r, true);
  EXPECT_EQ(out(added), declared(u"<N1:r/>"));
}

TEST(Prefixes, OfATagWithoutANamespaceAreDeclaredWithTheEmptyUri) {
  XmlDoc doc(u_r);
  doc.add_attr(x, u"v");
  doc.add_elem(a);
  EXPECT_EQ(closed_text(doc),
            declared(u"<N1:r xmlns:N2=\"\" xmlns:N1=\"urn:test:u\" N2:x=\"v\"><N2:a/></N1:r>"));
}

TEST(Prefixes, BelongToTheUriWhicheverNumberItHas) {
  XmlDoc doc(u_r);
  doc.add_elem(u_z);
  doc.add_ns(ns_u_again);
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:N1=\"urn:test:u\"><N1:z/></N1:r>"));
}

TEST(Declarations, HoldTheUriVerbatim) {
  XmlDoc doc(amp_a);
  EXPECT_EQ(closed_text(doc), declared(u"<N1:a xmlns:N1=\"urn:test:a&b\"></N1:a>"));
}

TEST(Declarations, StandBeforeTheRootsAttributes) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, u"v");
  doc.add_attr(v_a, u"w");
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:N2=\"urn:test:v\""
                                       u" N1:a=\"v\" N2:a=\"w\"></N1:r>"));
}

TEST(Declarations, AreNeverWrittenWithoutARoot) {
  XmlDoc doc;
  doc.add_ns(ns_u, u"u");
  doc.add_comment(u"c");
  EXPECT_EQ(doc.inc_str(), u"<!-- c -->");
  XmlDoc unused;
  unused.add_ns(ns_u);
  EXPECT_EQ(closed_text(unused), u"");
}

TEST(DefaultNs, WritesAnElementOfANewNamespaceWithADeclarationOfItsOwn) {
  XmlDoc doc = with_open_root();
  doc.push_elem(v_a, true);
  EXPECT_EQ(out(doc), declared(u"<N1:r><a xmlns=\"urn:test:v\""));
  EXPECT_EQ(Access::ns_decls(doc), (Table{{u"urn:test:u", {u"N1"}}}));
  doc.pop_elem(v_a);
  EXPECT_EQ(out(doc), declared(u"<N1:r><a xmlns=\"urn:test:v\"></a>"));
}

TEST(DefaultNs, LeavesTheStartTagOpenBehindTheDeclaration) {
  XmlDoc doc = with_open_root();
  doc.push_elem(v_a, true);
  doc.add_attr(u_a, u"v");
  EXPECT_EQ(out(doc), declared(u"<N1:r><a xmlns=\"urn:test:v\" N1:a=\"v\""));
}

TEST(DefaultNs, IsDeclaredAgainByChildren) {
  XmlDoc doc = with_open_root();
  doc.push_elem(v_a, true);
  doc.push_elem(v_b, true);
  doc.pop_elem(v_b);
  doc.add_elem(v_d, true);
  EXPECT_EQ(out(doc), declared(u"<N1:r><a xmlns=\"urn:test:v\"><b xmlns=\"urn:test:v\"></b>"
                               u"<d xmlns=\"urn:test:v\"/>"));
}

TEST(DefaultNs, OfATagWithoutANamespaceUndeclaresTheDefault) {
  XmlDoc doc = with_open_root();
  doc.add_elem(a, true);
  EXPECT_EQ(out(doc), declared(u"<N1:r><a xmlns=\"\"/>"));
}

TEST(DefaultNs, MakesNoDifferenceForANamespaceThatHasAPrefix) {
  XmlDoc doc = with_open_root();
  doc.add_elem(u_a, true);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a/>"));
}

TEST(DefaultNs, ElementsEndWithAPrefixThatTheirNamespaceGotInside) {
  XmlDoc doc = with_open_root();
  doc.push_elem(v_a, true);
  doc.add_elem(v_b);
  doc.pop_elem(v_a);
  EXPECT_EQ(out(doc), declared(u"<N1:r><a xmlns=\"urn:test:v\"><N2:b/></N2:a>"));
}

TEST(AddNs, BeforeTheRootChoosesItsPrefix) {
  XmlDoc doc;
  doc.add_ns(ns_u, u"x");
  doc.push_elem(u_r);
  EXPECT_EQ(Access::ns_counter(doc), 0U);
  EXPECT_EQ(closed_text(doc), declared(u"<x:r xmlns:x=\"urn:test:u\"></x:r>"));
}

TEST(AddNs, WritesNothingAndLeavesTheStateAsItIs) {
  XmlDoc doc;
  doc.add_ns(ns_u, u"x");
  doc.add_ns(ns_v);
  Snapshot expected;
  expected.ns_decls = {{u"urn:test:u", {u"x"}}, {u"urn:test:v", {u"N1"}}};
  expected.ns_counter = 1;
  EXPECT_EQ(snapshot(doc), expected);
}

TEST(AddNs, OfANamespaceThatNothingUsesIsDeclaredAllTheSame) {
  XmlDoc doc(u_r);
  doc.add_ns(ns_w, u"w");
  EXPECT_EQ(closed_text(doc),
            declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:w=\"urn:test:w\"></N1:r>"));
}

TEST(AddNs, WithTwoPrefixesDeclaresBothAndNamesUseTheFirstInOrder) {
  XmlDoc doc;
  doc.add_ns(ns_u, u"y");
  doc.add_ns(ns_u, u"x");
  doc.add_ns(ns_u, u"y");
  doc.push_elem(u_r);
  EXPECT_EQ(closed_text(doc),
            declared(u"<x:r xmlns:x=\"urn:test:u\" xmlns:y=\"urn:test:u\"></x:r>"));
}

TEST(AddNs, OrdersPrefixesByCodeUnits) {
  XmlDoc doc;
  doc.add_ns(ns_u, u"N2");
  doc.add_ns(ns_u, u"N10");
  doc.add_ns(ns_v, u"\uff21");
  doc.add_ns(ns_v, u"\U00010400");
  doc.push_elem(u_r);
  doc.push_elem(v_a);
  EXPECT_EQ(out(doc), declared(u"<N10:r><\U00010400:a"));
}

TEST(AddNs, WithASmallerPrefixChangesTheEndTagOfAnOpenElement) {
  XmlDoc doc(u_r);
  doc.add_ns(ns_u, u"A");
  doc.pop_elem(u_r);
  EXPECT_EQ(closed_text(doc),
            declared(u"<N1:r xmlns:A=\"urn:test:u\" xmlns:N1=\"urn:test:u\"></A:r>"));
}

TEST(AddNs, WithALargerPrefixLeavesNamesAsTheyWere) {
  XmlDoc doc(u_r);
  doc.add_ns(ns_u, u"x");
  doc.add_elem(u_a);
  doc.pop_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a/></N1:r>"));
}

TEST(AddNs, WithTheEmptyPrefixDeclaresTheDefaultOnTheRootAndOnEachElement) {
  XmlDoc doc(u_r);
  doc.add_ns(ns_v, UString());
  doc.push_elem(v_a);
  doc.pop_elem(v_a);
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns=\"urn:test:v\">"
                                       u"<a xmlns=\"urn:test:v\"></a></N1:r>"));
}

TEST(AddNs, WithTheEmptyPrefixForTheRootsNamespaceDeclaresItTwiceOnTheRoot) {
  XmlDoc doc;
  doc.add_ns(ns_u, UString());
  doc.push_elem(u_r);
  EXPECT_EQ(closed_text(doc), declared(u"<r xmlns=\"urn:test:u\" xmlns=\"urn:test:u\"></r>"));
}

TEST(AddNs, WithTheEmptyPrefixMakesAttributesIllFormed) {
  XmlDoc doc(u_r);
  doc.add_ns(ns_v, UString());
  doc.add_attr(v_a, u"v");
  EXPECT_EQ(out(doc), declared(u"<N1:r a xmlns=\"urn:test:v\"=\"v\""));
}

TEST(AddNs, WithoutAPrefixMakesOneUp) {
  XmlDoc doc;
  doc.add_ns(ns_w);
  doc.push_elem(u_r);
  doc.add_elem(w_a);
  EXPECT_EQ(out(doc), declared(u"<N2:r><N1:a/>"));
}

TEST(AddNs, WithoutAPrefixForANamespaceThatHasOneDoesNothing) {
  XmlDoc doc(u_r);
  EXPECT_TRUE(leaves_alone(doc, [&] { doc.add_ns(ns_u); }));
}

TEST(AddNs, MayTakeAPrefixThatIsMadeUpAgainLater) {
  XmlDoc doc;
  doc.add_ns(ns_v, u"N1");
  doc.push_elem(u_r);
  EXPECT_EQ(closed_text(doc),
            declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:N1=\"urn:test:v\"></N1:r>"));
}

TEST(AddNs, OfAnUnknownNamespaceIsRefusedAndRecordsNothing) {
  for (XmlDoc doc : {XmlDoc(), XmlDoc(u_r), after_partial_output()}) {
    EXPECT_TRUE(leaves_alone(doc, [&] {
      EXPECT_THROW(doc.add_ns(unregistered_ns), Orn::TagException);
      EXPECT_THROW(doc.add_ns(unregistered_ns, u"p"), Orn::TagException);
    }));
  }
}

TEST(AddNs, OfNoNamespaceDeclaresTheEmptyUri) {
  XmlDoc doc(u_r);
  doc.add_ns(XmlTag::NO_NS, u"p");
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:p=\"\" xmlns:N1=\"urn:test:u\"></N1:r>"));
}

TEST(AddNs, OnAClosedDocumentWithoutARootIsOnlyRecorded) {
  XmlDoc doc;
  doc.close();
  doc.add_ns(ns_u, u"x");
  doc.add_ns(ns_v);
  EXPECT_EQ(Access::ns_decls(doc), (Table{{u"urn:test:u", {u"x"}}, {u"urn:test:v", {u"N1"}}}));
  EXPECT_EQ(doc.str(), u"");
}

TEST(AddNs, BetweenTheRootsEndAndCloseStillSucceeds) {
  XmlDoc doc;
  doc.add_elem(u_r);
  doc.add_ns(ns_v, u"v");
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:v=\"urn:test:v\"/>"));
}

/// A call that is too late, and what it leaves in the table all the same.
struct LateCall {
  char const* name;
  void (*perform)(XmlDoc&);
  UString uri;
  UString prefix;
  std::uint32_t counter;
};

LateCall const late_calls[] = {
    {"push_elem", [](XmlDoc& doc) { doc.push_elem(v_a); }, u"urn:test:v", u"N2", 2},
    {"add_elem", [](XmlDoc& doc) { doc.add_elem(v_a); }, u"urn:test:v", u"N2", 2},
    {"add_elem, text", [](XmlDoc& doc) { doc.add_elem(v_a, u"t", true); }, u"urn:test:v", u"N2", 2},
    {"add_elem, empty", [](XmlDoc& doc) { doc.add_elem(v_a, u"", true); }, u"urn:test:v", u"N2", 2},
    {"add_elem_CDATA", [](XmlDoc& doc) { doc.add_elem_CDATA(v_a, u"t"); }, u"urn:test:v", u"N2", 2},
    {"add_attr", [](XmlDoc& doc) { doc.add_attr(v_a, u"v"); }, u"urn:test:v", u"N2", 2},
    {"add_attr, number", [](XmlDoc& doc) { doc.add_attr(v_a, 1L); }, u"urn:test:v", u"N2", 2},
    {"push_elem, no ns", [](XmlDoc& doc) { doc.push_elem(a); }, u"", u"N2", 2},
    {"add_ns", [](XmlDoc& doc) { doc.add_ns(ns_v); }, u"urn:test:v", u"N2", 2},
    {"add_ns, prefix", [](XmlDoc& doc) { doc.add_ns(ns_v, u"v"); }, u"urn:test:v", u"v", 1},
    {"add_ns, second prefix", [](XmlDoc& doc) { doc.add_ns(ns_u, u"u"); }, u"urn:test:u", u"u", 1},
    {"add_ns, same prefix", [](XmlDoc& doc) { doc.add_ns(ns_u, u"N1"); }, u"urn:test:u", u"N1", 1},
};

TEST(AfterPartialOutput, ANewNamespaceIsRefusedAndOnlyItsPrefixIsRecorded) {
  for (LateCall const& late : late_calls) {
    XmlDoc doc = after_partial_output();
    doc.push_elem(u_a);
    Snapshot expected = snapshot(doc);
    expected.ns_decls[late.uri].insert(late.prefix);
    expected.ns_counter = late.counter;

    EXPECT_TRUE(raises([&] { late.perform(doc); }, typeid(StateException),
                       Catalogue::NAMESPACE_AFTER_OUTPUT))
        << late.name;

    EXPECT_EQ(snapshot(doc), expected) << late.name;
  }
}

TEST(AfterPartialOutput, TheRefusedCallSucceedsTheSecondTimeWithAPrefixThatIsNotDeclared) {
  XmlDoc doc = after_partial_output();
  EXPECT_THROW(doc.push_elem(v_a), StateException);
  doc.push_elem(v_a);
  doc.add_attr(v_b, 1L);
  doc.pop_elem(v_a);
  EXPECT_EQ(closed_text(doc), u"<N2:a N2:b=\"1\"></N2:a></N1:r>");
}

TEST(AfterPartialOutput, KnownNamespacesRemainPossible) {
  XmlDoc doc = after_partial_output();
  doc.add_ns(ns_u);
  doc.push_elem(u_a);
  doc.add_attr(u_b, u"v");
  EXPECT_EQ(out(doc), u"<N1:a N1:b=\"v\"");
}

TEST(AfterPartialOutput, ElementsThatDeclareTheirOwnNamespaceRemainPossible) {
  XmlDoc doc = after_partial_output();
  doc.add_elem(v_a, true);
  EXPECT_EQ(closed_text(doc), u"<a xmlns=\"urn:test:v\"/></N1:r>");
}

TEST(AfterPartialOutput, AnUnknownTagIsReportedAsUnknown) {
  XmlDoc doc = after_partial_output();
  EXPECT_UNKNOWN_TAG(doc, doc.push_elem(unregistered), unregistered);
}

TEST(AfterPartialOutput, ASmallerPrefixThatCameTooLateChangesTheEndTagAllTheSame) {
  XmlDoc doc = after_partial_output();
  EXPECT_THROW(doc.add_ns(ns_u, u"A"), StateException);
  EXPECT_EQ(closed_text(doc), u"</A:r>");
}

TEST(AfterClose, ANewNamespaceIsRefusedButAKnownOneIsNot) {
  XmlDoc doc(u_r);
  doc.close();
  EXPECT_TRUE(leaves_alone(doc, [&] { doc.add_ns(ns_u); }));
  EXPECT_TRUE(
      raises([&] { doc.add_ns(ns_v); }, typeid(StateException), Catalogue::NAMESPACE_AFTER_OUTPUT));
  EXPECT_TRUE(raises([&] { doc.add_ns(ns_w, u"w"); }, typeid(StateException),
                     Catalogue::NAMESPACE_AFTER_OUTPUT));
}

TEST(AfterTheRoot, AStartTagIsRefusedBeforeItsNamespaceIsLookedAt) {
  XmlDoc doc;
  doc.add_elem(u_r);
  doc.inc_str();
  EXPECT_REFUSED(doc, doc.push_elem(v_a), Catalogue::START_TAG_DISALLOWED);
  EXPECT_REFUSED(doc, doc.add_elem(v_a), Catalogue::START_TAG_DISALLOWED);
  EXPECT_REFUSED(doc, doc.add_attr(v_a, u"v"), Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
}

}  // namespace
}  // namespace tests

#include <array>
#include <vector>

#include "tests/writer/Documents.h"
#include "tests/writer/Snapshot.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::Catalogue;
using Orn::IllegalArgException;
using Orn::StateException;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Access = Orn::XmlDocTestAccess;

enum State : std::uint32_t { INITIAL, STARTED, ROOT_OPEN, CLOSE_PENDING, CLOSED };

XmlDoc with_open_start_tag() { return XmlDoc(u_r); }

XmlDoc with_closed_root() {
  XmlDoc doc;
  doc.add_elem(u_r);
  return doc;
}

XmlDoc closed() {
  XmlDoc doc = with_closed_root();
  doc.close();
  return doc;
}

struct Situation {
  char const* name;
  XmlDoc doc;
};

std::vector<Situation> situations() {
  return {{"initial", XmlDoc()},
          {"started", XmlDoc(XmlTag::NO_TAG)},
          {"root's start tag open", with_open_start_tag()},
          {"root open, with content", with_open_root()},
          {"close pending", with_closed_root()},
          {"closed", closed()}};
}

/// What a call is to do to a document: move it to a state, nothing, or be refused.
struct Outcome {
  enum Kind { MOVES, NOTHING, REFUSED, UNKNOWN_TAG, BAD_ARGUMENT } kind;
  int number = 0;
};

constexpr Outcome nothing{Outcome::NOTHING};
constexpr Outcome unknown{Outcome::UNKNOWN_TAG};
constexpr Outcome bad_text{Outcome::BAD_ARGUMENT};
constexpr Outcome to(State state) { return {Outcome::MOVES, static_cast<int>(state)}; }
constexpr Outcome refused(Catalogue::Index index) { return {Outcome::REFUSED, index}; }

constexpr Outcome no_tag_now = refused(Catalogue::START_TAG_DISALLOWED);
constexpr Outcome no_attr = refused(Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
constexpr Outcome no_text = refused(Catalogue::NO_OPEN_ELEMENT_FOR_BODY);
constexpr Outcome mismatch = refused(Catalogue::POPPED_ELEMENT_MISMATCH);
constexpr Outcome not_closed = refused(Catalogue::CLOSE_NOT_CALLED);
constexpr Outcome not_pending = refused(Catalogue::NOT_CLOSE_PENDING);
constexpr Outcome not_started = refused(Catalogue::NOT_STARTED);

/// One outcome for each of situations().
using Outcomes = std::array<Outcome, 6>;

constexpr Outcomes always(Outcome outcome) {
  return {outcome, outcome, outcome, outcome, outcome, outcome};
}

/// The outcomes of a call that is refused once the root has been closed.
constexpr Outcomes until_closed(Outcome before_root, Outcome in_root) {
  return {before_root, before_root, in_root, in_root, no_tag_now, no_tag_now};
}

constexpr Outcomes opens = until_closed(to(ROOT_OPEN), to(ROOT_OPEN));
constexpr Outcomes adds_leaf = until_closed(to(CLOSE_PENDING), to(ROOT_OPEN));
constexpr Outcomes adds_markup = until_closed(to(STARTED), to(ROOT_OPEN));
constexpr Outcomes never_known = until_closed(unknown, unknown);
constexpr Outcomes pops = {mismatch,          mismatch, to(CLOSE_PENDING),
                           to(CLOSE_PENDING), mismatch, mismatch};
constexpr Outcomes needs_close = {not_closed, not_closed, not_closed,
                                  not_closed, not_closed, nothing};

constexpr Outcomes in_start_tag(Outcome outcome) {
  return {no_attr, no_attr, outcome, no_attr, no_attr, no_attr};
}

constexpr XmlTag::Id NO_TAG = XmlTag::NO_TAG;

struct Row {
  char const* call;
  void (*perform)(XmlDoc&);
  Outcomes outcomes;
  /// The tag that an exception is to name.
  XmlTag::Id tag = NO_TAG;
};

Row const rows[] = {
    {"start_doc(NO_TAG)",
     [](XmlDoc& doc) { doc.start_doc(NO_TAG); },
     {to(STARTED), nothing, nothing, nothing, nothing, nothing}},
    {"start_doc(root)",
     [](XmlDoc& doc) { doc.start_doc(u_r); },
     {to(ROOT_OPEN), to(ROOT_OPEN), nothing, nothing, nothing, nothing}},
    {"start_doc(unregistered)",
     [](XmlDoc& doc) { doc.start_doc(unregistered); },
     {unknown, unknown, nothing, nothing, nothing, nothing},
     unregistered},
    {"push_elem", [](XmlDoc& doc) { doc.push_elem(u_a); }, opens},
    {"push_elem, default_ns", [](XmlDoc& doc) { doc.push_elem(v_a, true); }, opens},
    {"push_elem(NO_TAG)",
     [](XmlDoc& doc) { doc.push_elem(NO_TAG); },
     {to(STARTED), nothing, unknown, unknown, no_tag_now, no_tag_now}},
    {"push_elem(unregistered)", [](XmlDoc& doc) { doc.push_elem(unregistered); }, never_known,
     unregistered},
    {"add_elem", [](XmlDoc& doc) { doc.add_elem(u_a); }, adds_leaf},
    {"add_elem, default_ns", [](XmlDoc& doc) { doc.add_elem(v_a, true); }, adds_leaf},
    {"add_elem(NO_TAG)", [](XmlDoc& doc) { doc.add_elem(NO_TAG); }, never_known},
    {"add_elem(unregistered)", [](XmlDoc& doc) { doc.add_elem(unregistered, true); }, never_known,
     unregistered},
    {"add_elem with text", [](XmlDoc& doc) { doc.add_elem(u_a, u"t", true); }, adds_leaf},
    {"add_elem with empty text", [](XmlDoc& doc) { doc.add_elem(u_a, u"", true); }, adds_leaf},
    {"add_elem(NO_TAG) with text", [](XmlDoc& doc) { doc.add_elem(NO_TAG, u"t", true); },
     never_known},
    {"add_elem(NO_TAG) with empty text", [](XmlDoc& doc) { doc.add_elem(NO_TAG, u"", false); },
     never_known},
    {"add_elem(unregistered) with text",
     [](XmlDoc& doc) { doc.add_elem(unregistered, u"t", true); }, never_known, unregistered},
    {"add_elem_CDATA", [](XmlDoc& doc) { doc.add_elem_CDATA(u_a, u"t"); }, adds_leaf},
    {"add_elem_CDATA(NO_TAG)", [](XmlDoc& doc) { doc.add_elem_CDATA(NO_TAG, u"t"); }, never_known},
    {"add_elem_CDATA(unregistered)", [](XmlDoc& doc) { doc.add_elem_CDATA(unregistered, u""); },
     never_known, unregistered},
    {"add_elem_CDATA of ]]>", [](XmlDoc& doc) { doc.add_elem_CDATA(u_a, u"]]>"); },
     always(bad_text)},
    {"add_elem_CDATA(unregistered) of ]]>",
     [](XmlDoc& doc) { doc.add_elem_CDATA(unregistered, u"]]>"); }, always(bad_text)},
    {"add_attr", [](XmlDoc& doc) { doc.add_attr(u_a, u"v"); }, in_start_tag(to(ROOT_OPEN))},
    {"add_attr of a number", [](XmlDoc& doc) { doc.add_attr(u_a, 1L); },
     in_start_tag(to(ROOT_OPEN))},
    {"add_attr(NO_TAG)", [](XmlDoc& doc) { doc.add_attr(NO_TAG, u"v"); }, in_start_tag(unknown)},
    {"add_attr(unregistered)", [](XmlDoc& doc) { doc.add_attr(unregistered, 1L); },
     in_start_tag(unknown), unregistered},
    {"append_elem_body",
     [](XmlDoc& doc) { doc.append_elem_body(u"t", true); },
     {no_text, no_text, to(ROOT_OPEN), to(ROOT_OPEN), no_text, no_text}},
    {"append_elem_body, empty",
     [](XmlDoc& doc) { doc.append_elem_body(u"", false); },
     {no_text, no_text, to(ROOT_OPEN), nothing, no_text, no_text}},
    {"pop_elem(NO_TAG)", [](XmlDoc& doc) { doc.pop_elem(NO_TAG); }, pops},
    {"pop_elem(root)", [](XmlDoc& doc) { doc.pop_elem(u_r); }, pops},
    {"pop_elem(another tag)", [](XmlDoc& doc) { doc.pop_elem(u_a); }, always(mismatch)},
    {"pop_elem(unregistered)", [](XmlDoc& doc) { doc.pop_elem(unregistered); }, always(mismatch)},
    {"add_comment", [](XmlDoc& doc) { doc.add_comment(u"c"); }, adds_markup},
    {"add_processing_instruction", [](XmlDoc& doc) { doc.add_processing_instruction(u"p"); },
     adds_markup},
    {"add_xml_decl", [](XmlDoc& doc) { doc.add_xml_decl(u"UTF-8"); }, adds_markup},
    {"set_indented_format", [](XmlDoc& doc) { doc.set_indented_format(); }, always(nothing)},
    {"close",
     [](XmlDoc& doc) { doc.close(); },
     {to(CLOSED), not_pending, to(CLOSED), to(CLOSED), to(CLOSED), not_pending}},
    {"str", [](XmlDoc& doc) { doc.str(); }, needs_close},
    {"byte_array", [](XmlDoc& doc) { doc.byte_array(); }, needs_close},
    {"inc_str",
     [](XmlDoc& doc) { doc.inc_str(); },
     {not_started, to(STARTED), to(ROOT_OPEN), to(ROOT_OPEN), to(CLOSE_PENDING), to(CLOSED)}},
};

testing::AssertionResult moves(XmlDoc& doc, Row const& row, int state) {
  Snapshot const before = snapshot(doc);
  row.perform(doc);
  if (static_cast<int>(Access::state(doc)) != state) {
    return testing::AssertionFailure() << "goes to state " << Access::state(doc);
  }
  if (snapshot(doc) == before) return testing::AssertionFailure() << "does nothing";
  return testing::AssertionSuccess();
}

testing::AssertionResult refuses_the_terminator(XmlDoc& doc, std::function<void()> const& call) {
  testing::AssertionResult raised = testing::AssertionSuccess();
  testing::AssertionResult const left = leaves_alone(doc, [&] {
    raised = raises(call, typeid(IllegalArgException), Catalogue::CDATA_TERMINATOR_IN_TEXT,
                    {u"]]>", u"]]>", u"]]>"});
  });
  return raised ? left : raised;
}

testing::AssertionResult has_outcome(XmlDoc& doc, Row const& row, Outcome const& outcome) {
  auto const call = [&] { row.perform(doc); };
  switch (outcome.kind) {
    case Outcome::MOVES:
      return moves(doc, row, outcome.number);
    case Outcome::NOTHING:
      return leaves_alone(doc, call);
    case Outcome::REFUSED:
      return refuses(doc, call, outcome.number);
    case Outcome::UNKNOWN_TAG:
      return does_not_know(doc, call, row.tag);
    case Outcome::BAD_ARGUMENT:
      return refuses_the_terminator(doc, call);
  }
  return testing::AssertionFailure() << "no such outcome";
}

TEST(EveryCall, InEveryStateMovesTheDocumentOrIsRefusedAndChangesNothing) {
  for (Row const& row : rows) {
    std::size_t column = 0;
    for (Situation& situation : situations()) {
      EXPECT_TRUE(has_outcome(situation.doc, row, row.outcomes[column++]))
          << row.call << ", " << situation.name;
    }
  }
}

TEST(EveryCall, OnAClosedDocumentWithoutMarkupIsRefusedAsOnAnyClosedOne) {
  for (Row const& row : rows) {
    if (row.call == std::string("inc_str")) continue;
    XmlDoc doc;
    doc.close();
    EXPECT_TRUE(has_outcome(doc, row, row.outcomes[5])) << row.call;
  }
}

TEST(EveryCall, InAnUnrecognizedStateIsRefusedWhereverTheStateMatters) {
  XmlDoc doc;
  Access::set_state(doc, 5);
  EXPECT_REFUSED(doc, doc.push_elem(u_r), Catalogue::START_TAG_DISALLOWED);
  EXPECT_REFUSED(doc, doc.add_elem(u_r), Catalogue::START_TAG_DISALLOWED);
  EXPECT_REFUSED(doc, doc.add_comment(u"c"), Catalogue::START_TAG_DISALLOWED);
  EXPECT_REFUSED(doc, doc.close(), Catalogue::NOT_CLOSE_PENDING);
  EXPECT_REFUSED(doc, doc.str(), Catalogue::CLOSE_NOT_CALLED);
  EXPECT_REFUSED(doc, doc.byte_array(), Catalogue::CLOSE_NOT_CALLED);
}

TEST(NextState, LeadsFromInitialToClosedInFourSteps) {
  XmlDoc doc;
  for (std::uint32_t state : {STARTED, ROOT_OPEN, CLOSE_PENDING, CLOSED}) {
    Access::next_state(doc);
    EXPECT_EQ(Access::state(doc), state);
  }
}

TEST(NextState, OfAClosedDocumentIsRefused) {
  XmlDoc doc;
  doc.close();
  EXPECT_REFUSED(doc, Access::next_state(doc), Catalogue::ALREADY_CLOSED);
}

TEST(NextState, OfAnUnrecognizedStateIsRefused) {
  for (std::uint32_t state : {5U, 6U, 0x80000000U, 0xFFFFFFFFU}) {
    XmlDoc doc;
    Access::set_state(doc, state);
    EXPECT_REFUSED(doc, Access::next_state(doc), Catalogue::UNRECOGNIZED_STATE);
  }
}

TEST(ANewDocument, HoldsNothing) { EXPECT_EQ(snapshot(XmlDoc()), Snapshot()); }

TEST(ANewDocument, WithARootIsOneWhoseRootHasBeenStarted) {
  XmlDoc started;
  started.start_doc(u_r);
  EXPECT_EQ(snapshot(XmlDoc(u_r)), snapshot(started));
  EXPECT_EQ(out(started), declared(u"<N1:r"));
}

TEST(ANewDocument, WithNoTagHasItsDeclarationOnly) {
  XmlDoc const doc(XmlTag::NO_TAG);
  EXPECT_EQ(out(doc), declared(u""));
  EXPECT_EQ(Access::state(doc), STARTED);
}

TEST(ANewDocument, WithAnUnknownTagCannotBeMade) {
  EXPECT_THROW(XmlDoc doc(unregistered), Orn::TagException);
}

TEST(StartDoc, MakesRoomForTwoThousandAndFortyEightUnits) {
  XmlDoc const doc(XmlTag::NO_TAG);
  EXPECT_GE(out(doc).length() + Access::spare_room(doc), 2048U);
}

TEST(StartDoc, LeavesTheRootForLaterAndThenTakesIt) {
  XmlDoc doc;
  doc.start_doc(XmlTag::NO_TAG);
  doc.start_doc(u_r);
  EXPECT_EQ(out(doc), declared(u"<N1:r"));
  EXPECT_EQ(Access::root_tag(doc), u_r);
}

TEST(PushElem, OfNoTagWritesTheDeclarationAndReturnsNoTag) {
  XmlDoc doc;
  EXPECT_EQ(doc.push_elem(XmlTag::NO_TAG), XmlTag::NO_TAG);
  EXPECT_EQ(snapshot(doc), snapshot(XmlDoc(XmlTag::NO_TAG)));
}

TEST(Close, OfAnUnusedDocumentMakesAnEmptyText) {
  XmlDoc doc;
  EXPECT_EQ(closed_text(doc), u"");
  EXPECT_EQ(doc.byte_array(), "");
}

TEST(Close, ClosesTheRootWhenOnlyTheRootIsOpen) {
  XmlDoc doc(u_r);
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:N1=\"urn:test:u\"></N1:r>"));
  EXPECT_TRUE(Access::tags(doc).empty());
}

TEST(Close, ASecondTimeIsRefused) {
  XmlDoc doc(u_r);
  doc.close();
  EXPECT_REFUSED(doc, doc.close(), Catalogue::NOT_CLOSE_PENDING);
}

TEST(Close, OfADocumentWithoutARootIsRefused) {
  XmlDoc doc;
  doc.add_comment(u"c");
  EXPECT_REFUSED(doc, doc.close(), Catalogue::NOT_CLOSE_PENDING);
}

TEST(Close, WithAnElementOpenInsideTheRootIsRefusedAndWritesNothing) {
  XmlDoc doc(u_r);
  doc.push_elem(u_a);
  EXPECT_REFUSED(doc, doc.close(), Catalogue::ACTIVE_PUSHED_ELEMENTS);
}

TEST(Close, WithTheRootsTagOpenInsideTheRootWritesOneEndTagAndIsRefused) {
  XmlDoc doc(u_r);
  doc.push_elem(u_r);
  XmlDoc popped = doc;
  popped.pop_elem(u_r);

  EXPECT_TRUE(raises([&] { doc.close(); }, typeid(StateException), Catalogue::NOT_CLOSE_PENDING));

  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:r></N1:r>"));
  EXPECT_EQ(snapshot(doc), snapshot(popped));
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:N1=\"urn:test:u\"><N1:r></N1:r></N1:r>"));
}

TEST(Close, FindsTheRootByItsTagEvenWhenAnotherTagIsBetween) {
  XmlDoc doc(u_r);
  doc.push_elem(u_a);
  doc.push_elem(u_r);
  EXPECT_TRUE(raises([&] { doc.close(); }, typeid(StateException), Catalogue::NOT_CLOSE_PENDING));
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a><N1:r></N1:r>"));
}

}  // namespace
}  // namespace tests

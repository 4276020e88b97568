#include <type_traits>
#include <utility>

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

using Tags = std::vector<XmlTag::Id>;

template <class Second>
using Pushed = decltype(std::declval<XmlDoc&>().push_elem(XmlTag::Id(), std::declval<Second>()));
template <class Second, class = void>
constexpr bool IS_TAKEN = false;
template <class Second>
constexpr bool IS_TAKEN<Second, std::void_t<Pushed<Second>>> = true;

// A text is none of what it takes, though it would be as good as true.
static_assert(IS_TAKEN<bool>);
static_assert(!IS_TAKEN<char const*>);
static_assert(!IS_TAKEN<char16_t const*>);

TEST(PushElem, LeavesTheStartTagOpenAndReturnsItsTag) {
  XmlDoc doc;
  EXPECT_EQ(doc.push_elem(u_r), u_r);
  EXPECT_EQ(out(doc), declared(u"<N1:r"));
  EXPECT_TRUE(Access::start_tag_open(doc));
  EXPECT_TRUE(Access::after_start_tag(doc));
}

TEST(PushElem, CompletesTheStartTagAroundIt) {
  XmlDoc doc(u_r);
  doc.push_elem(u_a);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a"));
  EXPECT_EQ(Access::tags(doc), (Tags{u_r, u_a}));
}

TEST(PushElem, BelowTheRootReturnsItsTag) {
  XmlDoc doc(u_r);
  EXPECT_EQ(doc.push_elem(u_a), u_a);
  EXPECT_EQ(doc.push_elem(v_a, true), v_a);
}

TEST(PushElem, OfAnUnknownTagLeavesTheStartTagAroundItOpen) {
  XmlDoc doc(u_r);
  EXPECT_UNKNOWN_TAG(doc, doc.push_elem(unregistered), unregistered);
  doc.add_attr(u_a, u"v");
  EXPECT_EQ(out(doc), declared(u"<N1:r N1:a=\"v\""));
}

TEST(PushElem, GrowsTheTextByTwoThousandAndFortyEightUnitsWhenFewerThanAHundredAreSpare) {
  XmlDoc doc = with_open_root();
  doc.append_elem_body(std::basic_string<unsigned short>(Access::spare_room(doc) - 99, 'x'), false);
  ASSERT_EQ(Access::spare_room(doc), 99U);
  std::size_t const length = out(doc).length();

  doc.push_elem(u_a);

  std::size_t const written = out(doc).length() - length;
  EXPECT_GE(Access::spare_room(doc) + written, 99U + 2048U);
}

TEST(PopElem, WritesTheEndTagOfTheInnermostElement) {
  XmlDoc doc(u_r);
  doc.push_elem(u_a);
  doc.pop_elem(u_a);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a></N1:a>"));
  EXPECT_EQ(Access::tags(doc), Tags{u_r});
  EXPECT_FALSE(Access::after_start_tag(doc));
}

TEST(PopElem, NeverClosesAnElementWithoutContentInItsStartTag) {
  XmlDoc doc(u_r);
  doc.pop_elem(u_r);
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:N1=\"urn:test:u\"></N1:r>"));
}

TEST(PopElem, OfNoTagClosesWhateverIsInnermost) {
  XmlDoc doc(u_r);
  doc.push_elem(v_a);
  doc.pop_elem(XmlTag::NO_TAG);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N2:a></N2:a>"));
}

TEST(PopElem, WithATagThatIsNotOnTopIsRefusedAndWritesNothing) {
  XmlDoc doc(u_r);
  doc.push_elem(u_a);
  for (XmlTag::Id tag : {u_r, u_b, v_a, unregistered}) {
    EXPECT_REFUSED(doc, doc.pop_elem(tag), Catalogue::POPPED_ELEMENT_MISMATCH);
  }
}

TEST(AddElem, IsCompleteWhenItReturns) {
  XmlDoc doc = with_open_root();
  doc.add_elem(u_a);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a/>"));
  EXPECT_EQ(Access::tags(doc), Tags{u_r});
  EXPECT_FALSE(Access::after_start_tag(doc));
  EXPECT_REFUSED(doc, doc.add_attr(u_a, u"v"), Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
}

TEST(AddElem, OnANewDocumentIsTheWholeRoot) {
  XmlDoc doc;
  doc.add_elem(u_a);
  EXPECT_EQ(out(doc), declared(u"<N1:a/>"));
  EXPECT_EQ(Access::root_tag(doc), u_a);
  EXPECT_EQ(closed_text(doc), declared(u"<N1:a xmlns:N1=\"urn:test:u\"/>"));
}

TEST(AddElem, WithTextWritesStartTagTextAndEndTag) {
  XmlDoc doc = with_open_root();
  doc.add_elem(u_a, u"x<y", true);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a>x&lt;y</N1:a>"));
}

TEST(AddElem, WithTextThatIsNotToBeEscapedWritesItAsItIs) {
  XmlDoc doc = with_open_root();
  doc.add_elem(u_a, u"<b/>&amp;", false);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a><b/>&amp;</N1:a>"));
}

TEST(AddElem, WithTheEmptyTextWritesTheElementClosedInItsStartTag) {
  for (bool do_escape : {false, true}) {
    XmlDoc doc = with_open_root();
    doc.add_elem(u_a, UString(), do_escape);
    EXPECT_EQ(out(doc), declared(u"<N1:r><N1:a/>"));
  }
}

TEST(AddElem, WithTextOnANewDocumentIsTheWholeRoot) {
  XmlDoc doc;
  doc.add_elem(u_a, u"t", true);
  EXPECT_EQ(closed_text(doc), declared(u"<N1:a xmlns:N1=\"urn:test:u\">t</N1:a>"));
}

TEST(AddElem, WithTextNeverUsesTheDefaultNamespace) {
  XmlDoc doc = with_open_root();
  doc.add_elem(v_a, u"t", true);
  doc.add_elem(w_a, UString(), true);
  EXPECT_EQ(out(doc), declared(u"<N1:r><N2:a>t</N2:a><N3:a/>"));
}

template <class Text, class = void>
struct CanAddElemWith : std::false_type {};
template <class Text>
struct CanAddElemWith<
    Text, std::void_t<decltype(std::declval<XmlDoc>().add_elem(u_a, std::declval<Text>()))>>
    : std::true_type {};

TEST(AddElem, WithTextButWithoutSayingWhetherToEscapeDoesNotCompile) {
  EXPECT_TRUE(CanAddElemWith<bool>::value);
  EXPECT_FALSE(CanAddElemWith<char16_t const*>::value);
  EXPECT_FALSE(CanAddElemWith<char const*>::value);
  EXPECT_FALSE(CanAddElemWith<UString>::value);
}

TEST(AppendElemBody, CompletesTheStartTagAndConcatenates) {
  XmlDoc doc(u_r);
  doc.append_elem_body(u"a<", true);
  doc.append_elem_body(u"b<", false);
  doc.append_elem_body(UString(), true);
  EXPECT_EQ(out(doc), declared(u"<N1:r>a&lt;b<"));
}

TEST(AppendElemBody, OfTheEmptyTextCompletesTheStartTag) {
  XmlDoc doc(u_r);
  doc.append_elem_body(UString(), true);
  EXPECT_EQ(out(doc), declared(u"<N1:r>"));
}

TEST(AppendElemBody, MayStandBetweenAndBehindChildren) {
  XmlDoc doc(u_r);
  doc.append_elem_body(u"1", true);
  doc.add_elem(u_a);
  doc.append_elem_body(u"2", true);
  doc.add_elem(u_b, u"3", true);
  doc.append_elem_body(u"4", true);
  doc.pop_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"<N1:r>1<N1:a/>2<N1:b>3</N1:b>4</N1:r>"));
}

TEST(AppendElemBody, DoesNotChangeWhatTheLastMarkupWas) {
  XmlDoc doc(u_r);
  doc.append_elem_body(u"t", true);
  EXPECT_TRUE(Access::after_start_tag(doc));
  doc.add_elem(u_a);
  doc.append_elem_body(u"t", true);
  EXPECT_FALSE(Access::after_start_tag(doc));
}

TEST(AppendElemBody, EscapesEachTextOnItsOwn) {
  XmlDoc doc = with_open_root();
  doc.append_elem_body(u"]]", true);
  doc.append_elem_body(u">", true);
  EXPECT_EQ(out(doc), declared(u"<N1:r>]]>"));
}

TEST(ADocument, IsWrittenFromTheRootInwards) {
  XmlDoc doc;
  doc.push_elem(u_r);
  doc.add_attr(u_a, u"v");
  doc.add_elem(u_c, u"t", true);
  doc.pop_elem(u_r);
  EXPECT_EQ(closed_text(doc),
            declared(u"<N1:r xmlns:N1=\"urn:test:u\" N1:a=\"v\"><N1:c>t</N1:c></N1:r>"));
}

TEST(ADocument, MayNestElementsDeeply) {
  constexpr int depth = 20000;
  XmlDoc doc(u_r);
  for (int i = 0; i < depth; ++i) doc.push_elem(u_a);
  for (int i = 0; i < depth; ++i) doc.pop_elem(u_a);
  UString expected = declared(u"<N1:r xmlns:N1=\"urn:test:u\">");
  for (int i = 0; i < depth; ++i) expected.append(u"<N1:a>");
  for (int i = 0; i < depth; ++i) expected.append(u"</N1:a>");
  EXPECT_EQ(closed_text(doc), expected.append(u"</N1:r>"));
}

}  // namespace
}  // namespace tests

#include <cstdint>
#include <limits>
#include <locale>
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

template <class Target, class Value>
using Added = decltype(std::declval<Target&>().add_attr(XmlTag::Id(), std::declval<Value>()));
template <class Target, class Value, class = void>
constexpr bool TAKES = false;
template <class Target, class Value>
constexpr bool TAKES<Target, Value, std::void_t<Added<Target, Value>>> = true;

template <class Target>
void expect_whole_numbers_only() {
  EXPECT_TRUE((TAKES<Target, long>));
  EXPECT_TRUE((TAKES<Target, int>));
  EXPECT_TRUE((TAKES<Target, unsigned short>));
  EXPECT_TRUE((TAKES<Target, std::int64_t>));
  EXPECT_TRUE((TAKES<Target, char16_t const*>));
  EXPECT_FALSE((TAKES<Target, float>));
  EXPECT_FALSE((TAKES<Target, double>));
  EXPECT_FALSE((TAKES<Target, long double>));
}

TEST(AddAttr, DoesNotCompileWithAFraction) {
  expect_whole_numbers_only<XmlDoc>();
  expect_whole_numbers_only<XmlDoc::Elem>();
}

TEST(AddAttr, WritesTheValueBetweenQuotationMarks) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, u"v");
  EXPECT_EQ(out(doc), declared(u"<N1:r N1:a=\"v\""));
}

TEST(AddAttr, LeavesTheStartTagOpenForTheNext) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, u"1");
  doc.add_attr(u_b, u"2");
  EXPECT_TRUE(Access::start_tag_open(doc));
  EXPECT_EQ(out(doc), declared(u"<N1:r N1:a=\"1\" N1:b=\"2\""));
}

TEST(AddAttr, QualifiesItsNameAsAnElementsName) {
  XmlDoc doc(u_r);
  doc.add_attr(v_a, u"v");
  doc.push_elem(u_a);
  doc.add_attr(v_b, u"w");
  EXPECT_EQ(out(doc), declared(u"<N1:r N2:a=\"v\"><N1:a N2:b=\"w\""));
}

TEST(AddAttr, WritesTheValueVerbatim) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, u"\"<&>'\t\n]]>\u00e9");
  EXPECT_EQ(out(doc), declared(u"<N1:r N1:a=\"\"<&>'\t\n]]>\u00e9\""));
}

TEST(AddAttr, WritesAnEmptyValue) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, UString());
  EXPECT_EQ(out(doc), declared(u"<N1:r N1:a=\"\""));
}

TEST(AddAttr, DoesNotMindANameGivenTwice) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, u"1");
  doc.add_attr(u_a, u"2");
  EXPECT_EQ(out(doc), declared(u"<N1:r N1:a=\"1\" N1:a=\"2\""));
}

TEST(AddAttr, StandsBehindTheDeclarationsOnTheRoot) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, u"v");
  EXPECT_EQ(closed_text(doc), declared(u"<N1:r xmlns:N1=\"urn:test:u\" N1:a=\"v\"></N1:r>"));
}

TEST(AddAttr, OnceTheStartTagIsCompleteIsRefused) {
  void (*const completing[])(XmlDoc&) = {
      [](XmlDoc& doc) { doc.append_elem_body(u"t", true); },
      [](XmlDoc& doc) { doc.append_elem_body(UString(), true); },
      [](XmlDoc& doc) { doc.add_elem(u_b); },
      [](XmlDoc& doc) { doc.add_elem(u_b, u"t", true); },
      [](XmlDoc& doc) { doc.add_elem_CDATA(u_b, u"t"); },
      [](XmlDoc& doc) { doc.add_comment(u"c"); },
      [](XmlDoc& doc) { doc.add_processing_instruction(u"p"); },
      [](XmlDoc& doc) { doc.add_xml_decl(u"UTF-8"); },
      [](XmlDoc& doc) { doc.inc_str(); },
      [](XmlDoc& doc) { doc.pop_elem(u_a); },
  };
  for (auto complete : completing) {
    XmlDoc doc(u_r);
    doc.push_elem(u_a);
    complete(doc);
    EXPECT_REFUSED(doc, doc.add_attr(u_a, u"v"), Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
    EXPECT_REFUSED(doc, doc.add_attr(u_a, 1L), Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
  }
}

TEST(AddAttr, IsRefusedBeforeItsNameIsLookedAt) {
  XmlDoc doc = with_open_root();
  for (XmlTag::Id name : {XmlTag::NO_TAG, unregistered}) {
    EXPECT_REFUSED(doc, doc.add_attr(name, u"v"), Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE);
  }
}

TEST(AddAttr, WithAnUnknownNameLeavesTheStartTagOpenForAnother) {
  XmlDoc doc(u_r);
  for (XmlTag::Id name : {XmlTag::NO_TAG, unregistered}) {
    EXPECT_UNKNOWN_TAG(doc, doc.add_attr(name, u"v"), name);
    EXPECT_UNKNOWN_TAG(doc, doc.add_attr(name, 1L), name);
  }
  doc.add_attr(u_a, u"v");
  EXPECT_EQ(out(doc), declared(u"<N1:r N1:a=\"v\""));
}

UString attribute_of(long value) {
  XmlDoc doc(u_r);
  doc.add_attr(u_a, value);
  return out(doc);
}

TEST(AddAttr, OfANumberWritesItInDecimal) {
  using Limits = std::numeric_limits<long>;
  for (long value : {0L, 7L, -42L, 1234567L, 2147483647L, Limits::min(), Limits::max()}) {
    UString const digits = UString::from_utf8(std::to_string(value));
    EXPECT_EQ(attribute_of(value), declared(UString(u"<N1:r N1:a=\"").append(digits).append(u"\"")))
        << value;
  }
}

TEST(AddAttr, OfMinusFortyTwoWritesThreeCharacters) {
  EXPECT_EQ(attribute_of(-42L), declared(u"<N1:r N1:a=\"-42\""));
}

struct GroupingDigits : std::numpunct<char> {
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

class WithGroupingLocale {
 public:
  WithGroupingLocale()
      : before_(std::locale::global(std::locale(std::locale(), new GroupingDigits))) {}
  ~WithGroupingLocale() { std::locale::global(before_); }

 private:
  std::locale before_;
};

TEST(AddAttr, OfANumberIsTheSameWhereTheLocaleGroupsDigits) {
  WithGroupingLocale const locale;
  EXPECT_EQ(attribute_of(-1234567L), declared(u"<N1:r N1:a=\"-1234567\""));
}

}  // namespace
}  // namespace tests

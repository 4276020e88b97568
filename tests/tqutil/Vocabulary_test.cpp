#include "tqutil/Vocabulary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "tests/support/TestTags.h"
#include "tests/tqutil/Parcels.h"
#include "tqutil/XmlTag.h"

namespace parcels {
static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
#include "tests/tqutil/Parcels.def"
#include "tqutil/vocabulary/end.h"
};
static Orn::Vocabulary const vocabulary("parcels", entries);
}  // namespace parcels

namespace {

using Orn::UString;
using Orn::Vocabulary;
using Orn::VocabularyEntry;
using Orn::XmlTag;
using testing::AllOf;
using testing::HasSubstr;

XmlTag const& found_while_loading = XmlTag::lookup(parcels::sparse);

VocabularyEntry ns(std::int32_t number, char const* name) {
  return {VocabularyEntry::NAMESPACE, number, name, 0, u"urn:late"};
}

VocabularyEntry tag(std::int32_t number, char const* name, std::int32_t ns_number,
                    char16_t const* local_name) {
  return {VocabularyEntry::TAG, number, name, ns_number, local_name};
}

VocabularyEntry catch_all(std::int32_t number, char const* name, char16_t const* local_name) {
  return {VocabularyEntry::CATCH_ALL, number, name, 0, local_name};
}

void enter(std::vector<VocabularyEntry> const& late) {
  Vocabulary("late", late.data(), late.size());
}

TEST(Vocabulary, MakesConstantsOfItsLines) {
  static_assert(parcels::minus_one == XmlTag::Id{-1});
  static_assert(parcels::ns_same == XmlTag::NsId{-7});
  static_assert(parcels::most == XmlTag::Id{INT32_MAX});
}

TEST(Vocabulary, MakesATableOfItsLines) {
  ASSERT_EQ(std::size(parcels::entries), 13U);
  VocabularyEntry const& last_ns = parcels::entries[2];
  EXPECT_EQ(last_ns.kind, VocabularyEntry::NAMESPACE);
  EXPECT_EQ(last_ns.number, INT32_MAX);
  EXPECT_STREQ(last_ns.name, "ns_most");
  EXPECT_EQ(UString(last_ns.text), u"urn:parcels:caf\u00e9");
  VocabularyEntry const& first_tag = parcels::entries[3];
  EXPECT_EQ(first_tag.kind, VocabularyEntry::TAG);
  EXPECT_EQ(first_tag.number, INT32_MIN);
  EXPECT_STREQ(first_tag.name, "least");
  EXPECT_EQ(first_tag.ns, INT32_MIN);
  EXPECT_EQ(UString(first_tag.text), u"least");
}

TEST(Vocabulary, MayBeUsedWhileTheProgramIsLoaded) {
  EXPECT_EQ(&found_while_loading, &XmlTag::lookup(parcels::sparse));
}

TEST(Vocabulary, StandsBesideOthers) {
  EXPECT_EQ(XmlTag::lookup(testtags::a).simple_name(), u"a");
  EXPECT_EQ(XmlTag::lookup(parcels::upper_a).simple_name(), u"A");
  EXPECT_EQ(XmlTag::lookup(u"urn:test:u", u"a").id(), testtags::u_a);
  EXPECT_EQ(XmlTag::lookup(u"urn:parcels", u"a").id(), parcels::uri_a);
}

TEST(Vocabulary, MayHaveTwoNamespacesWithOneUri) {
  XmlTag const& least = XmlTag::lookup(u"urn:parcels", u"least");
  XmlTag const& in_16_bits = XmlTag::lookup(u"urn:parcels", u"in_16_bits");
  EXPECT_EQ(least.ns_id(), parcels::ns_least);
  EXPECT_EQ(in_16_bits.ns_id(), parcels::ns_same);
  EXPECT_EQ(least.ns(), in_16_bits.ns());
}

TEST(Vocabulary, MayHaveTagsInANamespaceOfAnother) {
  enter({tag(30001, "late_tag", testtags::ns_u, u"late_tag")});
  XmlTag const& entered = XmlTag::lookup(u"urn:test:u", u"late_tag");
  EXPECT_EQ(entered.id(), 30001);
  EXPECT_EQ(entered.ns_id(), testtags::ns_u);
}

TEST(Vocabulary, MayBeEmpty) { EXPECT_NO_THROW(Vocabulary("empty", nullptr, 0)); }

/// Numbered texts that stay where they are.
class Texts {
 public:
  char16_t const* make(std::string const& stem, std::int32_t number) {
    std::string const text = stem + std::to_string(number);
    return texts_.emplace_back(text.begin(), text.end()).c_str();
  }

 private:
  std::deque<std::u16string> texts_;
};

TEST(Vocabulary, EnteredLaterMovesNoEntryOfAnother) {
  XmlTag const& early = XmlTag::lookup(testtags::u_a);
  UString const& early_uri = XmlTag::ns_URI(testtags::ns_u);
  Texts texts;
  std::vector<VocabularyEntry> many;
  for (std::int32_t i = 0; i < 20000; ++i) {
    many.push_back(ns(100000 + i, "ns_many"));
    many.push_back(tag(100000 + i * 7, "many", 100000 + i, texts.make("many_", i)));
  }
  enter(many);
  EXPECT_EQ(&XmlTag::lookup(testtags::u_a), &early);
  EXPECT_EQ(&XmlTag::lookup(u"urn:test:u", u"a"), &early);
  EXPECT_EQ(&XmlTag::ns_URI(testtags::ns_u), &early_uri);
  EXPECT_EQ(early.to_string(), u"{urn:test:u}a");
  for (VocabularyEntry const& line : many) {
    if (line.kind != VocabularyEntry::TAG) continue;
    XmlTag const& entered = XmlTag::lookup(static_cast<XmlTag::Id>(line.number));
    ASSERT_EQ(entered.simple_name(), line.text);
    ASSERT_EQ(&XmlTag::lookup(u"urn:late", line.text), &entered);
  }
}

TEST(Vocabulary, MayHaveOneLocalNameInManyNamespaces) {
  Texts texts;
  std::vector<VocabularyEntry> many;
  for (std::int32_t i = 0; i < 1000; ++i) {
    many.push_back(
        {VocabularyEntry::NAMESPACE, 50000 + i, "ns_many", 0, texts.make("urn:many:", i)});
    many.push_back(tag(50000 + i, "shared", 50000 + i, u"shared"));
  }
  enter(many);
  for (VocabularyEntry const& line : many) {
    if (line.kind != VocabularyEntry::NAMESPACE) continue;
    ASSERT_EQ(XmlTag::lookup(line.text, u"shared").id(), line.number);
  }
}

#define EXPECT_STOPS(late, first, second) \
  EXPECT_DEATH(enter late, AllOf(HasSubstr("'" first "'"), HasSubstr("'" second "'")))

TEST(VocabularyDeathTest, ATagNumberUsedTwiceStopsTheProgram) {
  EXPECT_STOPS(({tag(31001, "here", 0, u"here"), tag(31001, "there", 0, u"there")}), "here",
               "there");
  EXPECT_STOPS(({tag(-31001, "here", 0, u"here"), tag(-31001, "there", 0, u"there")}), "here",
               "there");
}

TEST(VocabularyDeathTest, ATagNumberOfAnotherVocabularyStopsTheProgram) {
  EXPECT_STOPS(({tag(testtags::last_shown, "here", 0, u"here")}), "here", "last_shown");
  EXPECT_STOPS(({tag(parcels::most, "here", 0, u"here")}), "here", "most");
  EXPECT_STOPS(({tag(parcels::minus_one, "here", 0, u"here")}), "here", "minus_one");
}

TEST(VocabularyDeathTest, ANameUsedTwiceStopsTheProgram) {
  EXPECT_STOPS(({tag(31001, "here", 0, u"same"), tag(31002, "there", 0, u"same")}), "here",
               "there");
  EXPECT_STOPS(({ns(31001, "ns_late"), tag(31001, "here", 31001, u"same"),
                 tag(31002, "there", 31001, u"same")}),
               "here", "there");
}

TEST(VocabularyDeathTest, ANameOfAnotherVocabularyStopsTheProgram) {
  EXPECT_STOPS(({tag(31001, "here", 0, u"last_shown")}), "here", "last_shown");
  EXPECT_STOPS(({tag(31001, "here", testtags::ns_u, u"a")}), "here", "u_a");
}

TEST(VocabularyDeathTest, ANameUsedTwiceInNamespacesWithOneUriStopsTheProgram) {
  EXPECT_STOPS(({ns(31001, "ns_one"), ns(31002, "ns_two"), tag(31001, "here", 31001, u"same"),
                 tag(31002, "there", 31002, u"same")}),
               "here", "there");
}

TEST(VocabularyDeathTest, ANamespaceNumberUsedTwiceStopsTheProgram) {
  EXPECT_STOPS(({ns(31001, "here"), ns(31001, "there")}), "here", "there");
  EXPECT_STOPS(({ns(testtags::ns_u, "here")}), "here", "ns_u");
}

TEST(VocabularyDeathTest, ASecondCatchAllStopsTheProgram) {
  EXPECT_STOPS(({catch_all(31001, "here", u"here"), catch_all(31002, "there", u"there")}), "here",
               "there");
}

TEST(VocabularyDeathTest, ACatchAllWithTheNumberOrNameOfATagStopsTheProgram) {
  EXPECT_STOPS(({catch_all(testtags::a, "here", u"here")}), "here", "a");
  EXPECT_STOPS(({catch_all(31001, "here", u"last_shown")}), "here", "last_shown");
}

TEST(VocabularyDeathTest, TheNumber0StopsTheProgram) {
  EXPECT_DEATH(enter({tag(0, "here", 0, u"here")}), HasSubstr("'here'"));
  EXPECT_DEATH(enter({ns(0, "here")}), HasSubstr("'here'"));
  EXPECT_DEATH(enter({catch_all(0, "here", u"here")}), HasSubstr("'here'"));
}

TEST(VocabularyDeathTest, ANamespaceThatIsNotThereStopsTheProgram) {
  EXPECT_DEATH(enter({tag(31001, "here", 31999, u"here")}),
               AllOf(HasSubstr("'here'"), HasSubstr("31999")));
}

TEST(VocabularyDeathTest, ATagWithoutANameStopsTheProgram) {
  EXPECT_DEATH(enter({tag(31001, "here", 0, u"")}), HasSubstr("'here'"));
  EXPECT_DEATH(enter({tag(31001, "here", 0, nullptr)}), HasSubstr("'here'"));
}

}  // namespace

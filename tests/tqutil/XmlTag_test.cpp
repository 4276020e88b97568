#include "tqutil/XmlTag.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/support/TestTags.h"
#include "tests/tqutil/Parcels.h"
#include "tqutil/UtilExceptions.h"

namespace {

using Orn::TagException;
using Orn::UString;
using Orn::XmlTag;

struct Expected {
  XmlTag::Id id;
  XmlTag::NsId ns_id;
  std::u16string_view uri;
  std::u16string_view name;
};

std::vector<Expected> some_tags() {
  using namespace testtags;
  return {
      {a, XmlTag::NO_NS, u"", u"a"},
      {u_a, ns_u, u"urn:test:u", u"a"},
      {v_a, ns_v, u"urn:test:v", u"a"},
      {v_d, ns_v, u"urn:test:v", u"d"},
      {w_e, ns_w, u"urn:test:w", u"e"},
      {last_shown, XmlTag::NO_NS, u"", u"last_shown"},
      {first_hidden, XmlTag::NO_NS, u"", u"first_hidden"},
      {parcels::least, parcels::ns_least, u"urn:parcels", u"least"},
      {parcels::minus_one, XmlTag::NO_NS, u"", u"minus_one"},
      {parcels::in_16_bits, parcels::ns_same, u"urn:parcels", u"in_16_bits"},
      {parcels::before_2_to_16, parcels::ns_same, u"urn:parcels", u"before_2_to_16"},
      {parcels::at_2_to_16, parcels::ns_same, u"urn:parcels", u"at_2_to_16"},
      {parcels::sparse, parcels::ns_most, u"urn:parcels:caf\u00e9", u"sparse"},
      {parcels::most, parcels::ns_most, u"urn:parcels:caf\u00e9", u"\u20ac\U0001F600"},
      {parcels::uri_a, parcels::ns_least, u"urn:parcels", u"a"},
      {parcels::upper_a, XmlTag::NO_NS, u"", u"A"},
      {parcels::long_name, XmlTag::NO_NS, u"",
       u"a_name_that_is_much_longer_than_the_names_that_are_used_in_documents_as_a_rule"},
  };
}

UString text_of(std::u16string_view units) { return UString(units.data(), units.size()); }

XmlTag const& by_temporary_tag(std::u16string_view uri, std::u16string_view name) {
  XmlTag wanted(text_of(uri), text_of(name));
  return XmlTag::lookup(wanted);
}

TEST(XmlTag, IsFoundByItsNumber) {
  for (Expected const& expected : some_tags()) {
    XmlTag const& tag = XmlTag::lookup(expected.id);
    EXPECT_EQ(tag.id(), expected.id);
    EXPECT_EQ(tag.ns_id(), expected.ns_id);
    EXPECT_EQ(tag.ns(), text_of(expected.uri));
    EXPECT_EQ(tag.simple_name(), text_of(expected.name));
  }
}

TEST(XmlTag, IsTheSameEntryWhicheverWayItIsFound) {
  for (Expected const& expected : some_tags()) {
    XmlTag const* const tag = &XmlTag::lookup(expected.id);
    EXPECT_EQ(&XmlTag::lookup(expected.id), tag);
    EXPECT_EQ(&by_temporary_tag(expected.uri, expected.name), tag) << tag->to_string();
    EXPECT_EQ(&XmlTag::lookup(expected.uri, expected.name), tag) << tag->to_string();
  }
}

TEST(XmlTag, IsNotFoundByANumberThatNoVocabularyUses) {
  for (std::int32_t const number : {0, -2, 9999, 19999, 32768, 65534, 65537, 16777215, 16777217,
                                    INT32_MIN + 1, INT32_MAX - 1}) {
    EXPECT_THROW(XmlTag::lookup(static_cast<XmlTag::Id>(number)), TagException) << number;
  }
}

TEST(XmlTag, IsNotFoundByANameThatNoVocabularyHas) {
  std::pair<std::u16string_view, std::u16string_view> const names[] = {
      {u"", u""},
      {u"", u"unregistered"},
      {{}, {}},
      {u"urn:test:u", u""},
      {u"urn:test:u", u"d"},  // only in another namespace
      {u"urn:test:unknown", u"a"},
      {u"urn:test:", u"ua"},  // the halves of another name divided elsewhere
      {u"urn:test:ua", u""},
      {u"", u"urn:test:ua"},
      {u"a", u"urn:test:u"},  // and exchanged
      {u"urn:test:u", u"A"},
      {u"URN:TEST:U", u"a"},
      {u"urn:test:u ", u"a"},
      {u"", {u"a\0", 2}},
      {u"", u"last_show"},
      {u"", u"last_shown_"},
  };
  for (auto const& [uri, name] : names) {
    EXPECT_THROW(by_temporary_tag(uri, name), TagException) << text_of(uri) << ' ' << text_of(name);
    EXPECT_THROW(XmlTag::lookup(uri, name), TagException) << text_of(uri) << ' ' << text_of(name);
  }
}

TEST(XmlTag, IsFoundByPartOfALongerText) {
  std::u16string_view const text = u"<urn:test:u|a>";
  EXPECT_EQ(&XmlTag::lookup(text.substr(1, 10), text.substr(12, 1)),
            &XmlTag::lookup(testtags::u_a));
}

TEST(XmlTag, MadeToBeLookedUpHasItsNamesAndNoNumbers) {
  XmlTag const wanted(u"urn:test:u", u"a");
  EXPECT_EQ(wanted.id(), XmlTag::NO_TAG);
  EXPECT_EQ(wanted.ns_id(), XmlTag::NO_NS);
  EXPECT_EQ(wanted.ns(), u"urn:test:u");
  EXPECT_EQ(wanted.simple_name(), u"a");
}

TEST(XmlTag, LookedUpIsLeftAsItWas) {
  XmlTag wanted(u"urn:test:u", u"a");
  XmlTag const& found = XmlTag::lookup(wanted);
  EXPECT_NE(&found, &wanted);
  EXPECT_EQ(found.id(), testtags::u_a);
  EXPECT_EQ(wanted.id(), XmlTag::NO_TAG);
}

TEST(XmlTag, CopiedIsAValueOfItsOwn) {
  XmlTag const copy = XmlTag::lookup(testtags::u_a);
  EXPECT_EQ(copy.id(), testtags::u_a);
  EXPECT_EQ(copy.ns_id(), testtags::ns_u);
  EXPECT_EQ(copy.to_string(), u"{urn:test:u}a");
}

TEST(XmlTag, PrintsItsNamespaceInBracesWhenItHasOne) {
  EXPECT_EQ(XmlTag::lookup(testtags::a).to_string(), u"a");
  EXPECT_EQ(XmlTag::lookup(testtags::v_d).to_string(), u"{urn:test:v}d");
  EXPECT_EQ(XmlTag::lookup(parcels::most).to_string(), u"{urn:parcels:caf\u00e9}\u20ac\U0001F600");
  EXPECT_EQ(XmlTag(u"urn:x", u"temporary").to_string(), u"{urn:x}temporary");
  EXPECT_EQ(XmlTag(UString(), u"temporary").to_string(), u"temporary");
}

TEST(XmlTag, NumbersAreIntegersOf32BitsAndZeroIsNone) {
  static_assert(std::is_same_v<std::underlying_type_t<XmlTag::Id>, std::int32_t>);
  static_assert(std::is_same_v<std::underlying_type_t<XmlTag::NsId>, std::int32_t>);
  EXPECT_EQ(XmlTag::NO_TAG, 0);
  EXPECT_EQ(XmlTag::NO_NS, 0);
}

TEST(NsUri, OfANamespaceIsItsUri) {
  EXPECT_EQ(XmlTag::ns_URI(testtags::ns_u), u"urn:test:u");
  EXPECT_EQ(XmlTag::ns_URI(testtags::ns_w), u"urn:test:w");
  EXPECT_EQ(XmlTag::ns_URI(parcels::ns_least), u"urn:parcels");
  EXPECT_EQ(XmlTag::ns_URI(parcels::ns_same), u"urn:parcels");
  EXPECT_EQ(XmlTag::ns_URI(parcels::ns_most), u"urn:parcels:caf\u00e9");
}

TEST(NsUri, OfNoNamespaceIsEmpty) { EXPECT_EQ(XmlTag::ns_URI(XmlTag::NO_NS), u""); }

TEST(NsUri, OfANumberThatNoVocabularyUsesIsRefused) {
  for (std::int32_t const number : {-1, -8, 9999, 65536, INT32_MIN + 1, INT32_MAX - 1}) {
    EXPECT_THROW(XmlTag::ns_URI(static_cast<XmlTag::NsId>(number)), TagException) << number;
  }
}

TEST(NsUri, IsTheSameObjectEachTime) {
  EXPECT_EQ(&XmlTag::ns_URI(testtags::ns_u), &XmlTag::ns_URI(testtags::ns_u));
}

// Answers all questions about the known tags and one about an unknown tag of each kind.
int right_answers(std::vector<Expected> const& tags, std::vector<XmlTag const*> const& entries) {
  int right = 0;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    right += &XmlTag::lookup(tags[i].id) == entries[i];
    right += &by_temporary_tag(tags[i].uri, tags[i].name) == entries[i];
    right += &XmlTag::lookup(tags[i].uri, tags[i].name) == entries[i];
    right += XmlTag::ns_URI(tags[i].ns_id) == entries[i]->ns();
  }
  try {
    XmlTag::lookup(testtags::unregistered);
  } catch (TagException const&) {
    ++right;
  }
  return right;
}

TEST(XmlTag, IsFoundFromSeveralThreadsAtOnce) {
  constexpr int ROUNDS = 500;
  std::vector<Expected> const tags = some_tags();
  std::vector<XmlTag const*> entries;
  for (Expected const& tag : tags) entries.push_back(&XmlTag::lookup(tag.id));
  std::atomic<bool> go = false;
  std::vector<int> right(8);
  std::vector<std::thread> threads;
  for (int& count : right) {
    threads.emplace_back([&] {
      while (!go) std::this_thread::yield();
      for (int i = 0; i < ROUNDS; ++i) count += right_answers(tags, entries);
    });
  }
  go = true;
  for (std::thread& thread : threads) thread.join();
  int const all = ROUNDS * (static_cast<int>(tags.size()) * 4 + 1);
  EXPECT_EQ(right, std::vector<int>(8, all));
}

}  // namespace

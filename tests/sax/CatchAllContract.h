#ifndef TESTS_SAX_CATCHALLCONTRACT_H
#define TESTS_SAX_CATCHALLCONTRACT_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/ReaderTest.h"
#include "tqutil/Vocabulary.h"

namespace tests {

/// The number of the catch-all tag that programs have that include this. It changes what is found
/// in the whole process.
constexpr Orn::XmlTag::Id catch_all{1130};
/// A name of its own with the local name that the catch-all tag has in another namespace.
constexpr Orn::XmlTag::Id own_all{1131};

inline Orn::VocabularyEntry const catch_all_entries[] = {
    {Orn::VocabularyEntry::NAMESPACE, 9001, "ns_all", 0, u"urn:catch:all"},
    {Orn::VocabularyEntry::CATCH_ALL, catch_all, "catch_all", 9001, u"all"},
    {Orn::VocabularyEntry::NAMESPACE, 9002, "ns_own", 0, u"urn:catch:own"},
    {Orn::VocabularyEntry::TAG, own_all, "own_all", 9002, u"all"},
};
inline Orn::Vocabulary const catch_all_vocabulary("catch_all", catch_all_entries);

/// Names that are not registered, and resemble those that are.
template <class Reader>
class CatchAllContract : public ReaderTest<Reader> {
 protected:
  /// The prefixes of the document, and the tag of each name with them.
  struct Name {
    char const* text;
    Orn::XmlTag::Id tag;
  };

  static constexpr Name names[] = {
      {"a", tag::a},
      {"k", catch_all},
      {"u:a", tag::u_a},
      {"u:k", catch_all},
      {"all", catch_all},
      {"o:all", catch_all},
      {"u:all", catch_all},
      {"u:d", catch_all},
      {"v:d", tag::v_d},
      {"v:c", catch_all},
      {"u:c", tag::u_c},
      {"w:a", tag::w_a},
      {"w:b", catch_all},
      {"l", catch_all},
      {"m", catch_all},
      {"b", tag::b},
      {"unknown:a", catch_all},
      {"unknown:r", catch_all},
      {"r", tag::r},
      {"v:r", tag::v_r},
      {"last_shown", tag::last_shown},
      {"last_shows", catch_all},
      {"last_showm", catch_all},
      {"aa", catch_all},
      {"bb", catch_all},
      {"ab", catch_all},
      {"ba", catch_all},
  };

  static std::string root_start() {
    return "<r xmlns:u='urn:test:u' xmlns:v='urn:test:v' xmlns:w='urn:test:w' "
           "xmlns:o='urn:catch:all' xmlns:unknown='urn:unknown'>";
  }

  /// Each pair of names next to each other, so that each may take the place of each.
  template <class Visit>
  static void for_each_pair(Visit visit) {
    for (Name const& first : names) {
      for (Name const& second : names) visit(first), visit(second), visit(first);
    }
  }
};

TYPED_TEST_SUITE_P(CatchAllContract);

TYPED_TEST_P(CatchAllContract, StandsForTheElementsThatAreNotRegisteredAndNoOthers) {
  std::string xml = this->root_start();
  Tags expected;
  this->for_each_pair([&](auto const& name) {
    xml += "<" + std::string(name.text) + "/>";
    expected.push_back(name.tag);
  });
  auto root = this->root_of(xml + "</r>");
  EXPECT_EQ(remaining_children(root), expected);
}

TYPED_TEST_P(CatchAllContract, StandsForTheAttributesThatAreNotRegisteredAndNoOthers) {
  std::string xml = this->root_start();
  Tags expected, found;
  this->for_each_pair([&](auto const& name) {
    xml += "<x " + std::string(name.text) + "='v'/>";
    expected.push_back(name.tag);
  });
  auto root = this->root_of(xml + "</r>");
  for (auto child = root.next_child(); !child.is_nil(); child = root.next_child()) {
    for (auto const& [tag, value] : remaining_attributes(child)) found.push_back(tag);
  }
  EXPECT_EQ(found, expected);
}

TYPED_TEST_P(CatchAllContract, StandsForHoweverManyNames) {
  std::string xml = "<r>";
  for (int i = 0; i < 500; ++i) {
    std::string const name = "unknown" + std::to_string(i % 250);
    xml += "<" + name + " " + name + "='v'/><a b='v'/>";
  }
  auto root = this->root_of(xml + "</r>");
  for (int i = 0; i < 500; ++i) {
    auto unknown = root.next_child();
    ASSERT_EQ(unknown.tag(), catch_all);
    ASSERT_EQ(unknown.next_attr().tag(), catch_all);
    auto known = root.next_child();
    ASSERT_EQ(known.tag(), tag::a);
    ASSERT_EQ(known.next_attr().tag(), tag::b);
  }
  EXPECT_TRUE(root.next_child().is_nil());
}

TYPED_TEST_P(CatchAllContract, DoesNotStandForANameThatDiffersFromItsOwnByTheNamespaceAlone) {
  std::string xml = "<r xmlns:p='urn:catch:own'>";
  for (char first = 'a'; first <= 'z'; ++first) {
    for (char last = 'a'; last <= 'z'; ++last) {
      xml += std::string("<x p:") + first + last + "='v'/><x p:all='v'/>";
    }
  }
  auto root = this->root_of(xml + "</r>");
  for (int i = 0; i < 26 * 26; ++i) {
    auto unknown = root.next_child();
    ASSERT_EQ(unknown.next_attr().tag(), catch_all) << i;
    auto known = root.next_child();
    ASSERT_EQ(known.next_attr().tag(), own_all) << i;
  }
}

REGISTER_TYPED_TEST_SUITE_P(CatchAllContract, StandsForTheElementsThatAreNotRegisteredAndNoOthers,
                            StandsForTheAttributesThatAreNotRegisteredAndNoOthers,
                            StandsForHoweverManyNames,
                            DoesNotStandForANameThatDiffersFromItsOwnByTheNamespaceAlone);

}  // namespace tests

#endif

#ifndef TESTS_SAX_MANYNAMESCONTRACT_H
#define TESTS_SAX_MANYNAMESCONTRACT_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/sax/ManyNames.h"
#include "tests/support/ReaderTest.h"

namespace tests {

/// Names in the order of a document: their namespace and their number.
using ManyNamesInOrder = std::vector<std::pair<std::size_t, std::size_t>>;

/// What a reader that remembers names must not mix up.
template <class Reader>
class ManyNamesContract : public ReaderTest<Reader> {
 protected:
  void expect_elements(ManyNamesInOrder const& names) {
    std::string xml = manynames::root_start();
    Tags expected;
    for (auto const& [ns, number] : names) {
      xml += "<" + manynames::name(ns, number) + "/>";
      expected.push_back(manynames::tag(ns, number));
    }
    auto root = this->root_of(xml + "</r>");
    ASSERT_EQ(remaining_children(root), expected);
  }

  /// Each attribute on an element of its own.
  void expect_attributes(ManyNamesInOrder const& names) {
    std::string xml = manynames::root_start();
    for (auto const& [ns, number] : names) xml += "<a " + manynames::name(ns, number) + "='v'/>";
    auto root = this->root_of(xml + "</r>");
    for (auto const& [ns, number] : names) {
      auto child = root.next_child();
      ASSERT_EQ(remaining_attributes(child),
                (Attributes{{manynames::tag(ns, number), Orn::UString(u"v")}}));
    }
  }

  void expect_both(ManyNamesInOrder const& names) {
    expect_elements(names);
    expect_attributes(names);
  }
};

TYPED_TEST_SUITE_P(ManyNamesContract);

TYPED_TEST_P(ManyNamesContract, NamesAreToldApartHoweverManyThereAre) {
  ManyNamesInOrder names;
  for (int round = 0; round < 3; ++round) {
    for (std::size_t ns = 0; ns < manynames::NAMESPACES; ++ns) {
      for (std::size_t i = 0; i < manynames::NAMES; ++i) names.emplace_back(ns, i);
    }
  }
  this->expect_both(names);
}

TYPED_TEST_P(ManyNamesContract, EqualLocalNamesOfSeveralNamespacesAreToldApartInTurn) {
  ManyNamesInOrder names;
  for (std::size_t i = 0; i < manynames::NAMES; ++i) {
    for (int round = 0; round < 3; ++round) {
      for (std::size_t ns = 0; ns < manynames::NAMESPACES; ++ns) names.emplace_back(ns, i);
    }
  }
  this->expect_both(names);
}

TYPED_TEST_P(ManyNamesContract, NamesAreToldApartInAnyOrder) {
  std::mt19937 random(1);
  ManyNamesInOrder names;
  for (int i = 0; i < 5000; ++i) {
    names.emplace_back(random() % manynames::NAMESPACES, random() % manynames::NAMES);
  }
  this->expect_both(names);
}

TYPED_TEST_P(ManyNamesContract, AttributesOfOneElementAreToldApart) {
  std::string attributes;
  Attributes expected;
  for (std::size_t i = 0; i < manynames::NAMES; ++i) {
    for (std::size_t ns = 0; ns < manynames::NAMESPACES; ++ns) {
      attributes += " " + manynames::name(ns, i) + "='" + std::to_string(i) + "'";
      expected.emplace_back(manynames::tag(ns, i), Orn::UString::from_utf8(std::to_string(i)));
    }
  }
  auto root =
      this->root_of(manynames::root_start() + "<a" + attributes + "/><b" + attributes + "/></r>");
  std::sort(expected.begin(), expected.end());
  for (int i = 0; i < 2; ++i) {
    auto child = root.next_child();
    Attributes found = remaining_attributes(child);
    std::sort(found.begin(), found.end());
    ASSERT_EQ(found, expected);
  }
}

TYPED_TEST_P(ManyNamesContract, APrefixMeansWhatTheInnermostDeclarationSays) {
  std::string xml = "<r>";
  Tags expected;
  for (std::size_t i = 0; i < manynames::NAMES; ++i) {
    for (auto const& [uri, ns] :
         {std::pair("urn:many:names:a", 1), std::pair("urn:many:names:b", 2),
          std::pair("urn:many:Names:b", 3)}) {
      std::string const number = std::to_string(i);
      xml += "<p:n" + number + " xmlns:p='" + uri + "' p:n" + number + "='v'/>";
      xml += "<n" + number + " xmlns='" + uri + "' n" + number + "='v'/>";
      auto const in_ns = manynames::tag(static_cast<std::size_t>(ns), i);
      expected.insert(expected.end(), {in_ns, in_ns, in_ns, manynames::tag(0, i)});
    }
  }
  auto root = this->root_of(xml + "</r>");
  Tags found;
  for (auto child = root.next_child(); !child.is_nil(); child = root.next_child()) {
    found.push_back(child.tag());
    for (auto const& [tag, value] : remaining_attributes(child)) found.push_back(tag);
  }
  EXPECT_EQ(found, expected);
}

TYPED_TEST_P(ManyNamesContract, DocumentsReadAtTheSameTimeKeepTheirNamesApart) {
  std::vector<typename TypeParam::Elem> roots;
  for (std::size_t ns = 0; ns < manynames::NAMESPACES; ++ns) {
    std::string xml = manynames::root_start();
    for (std::size_t i = 0; i < manynames::NAMES; ++i) xml += "<" + manynames::name(ns, i) + "/>";
    roots.push_back(this->root_of(xml + "</r>"));
  }
  for (std::size_t i = 0; i < manynames::NAMES; ++i) {
    for (std::size_t ns = 0; ns < manynames::NAMESPACES; ++ns) {
      ASSERT_EQ(roots[ns].next_child().tag(), manynames::tag(ns, i));
    }
  }
}

REGISTER_TYPED_TEST_SUITE_P(ManyNamesContract, NamesAreToldApartHoweverManyThereAre,
                            EqualLocalNamesOfSeveralNamespacesAreToldApartInTurn,
                            NamesAreToldApartInAnyOrder, AttributesOfOneElementAreToldApart,
                            APrefixMeansWhatTheInnermostDeclarationSays,
                            DocumentsReadAtTheSameTimeKeepTheirNamesApart);

}  // namespace tests

#endif

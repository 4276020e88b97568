#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/writer/Documents.h"
#include "tqutil/Vocabulary.h"

namespace tests {
namespace {

using Orn::UString;
using Orn::Vocabulary;
using Orn::VocabularyEntry;
using Orn::XmlDoc;
using Orn::XmlTag;
using Access = Orn::XmlDocTestAccess;

constexpr std::size_t NAMESPACES = 12;
constexpr std::int32_t FIRST = 7001;

/// Not in the order of their numbers, some at the beginning of others, and as code units in another
/// order than as code points.
char16_t const* const uris[NAMESPACES] = {
    u"urn:many:m",      u"urn:many:c",  u"urn:many",   u"urn:many:\U00010000",
    u"urn:many:\uFFFD", u"urn:many:cc", u"a",          u"urn:many:aa",
    u"urn:many:z",      u"zz:many",     u"urn:many:Z", u"urn:man"};

/// Each namespace has one tag, with the number of the namespace.
Vocabulary const vocabulary = [] {
  std::vector<VocabularyEntry> entries;
  for (std::size_t i = 0; i < NAMESPACES; ++i) {
    auto const number = static_cast<std::int32_t>(FIRST + i);
    entries.push_back({VocabularyEntry::NAMESPACE, number, "many", 0, uris[i]});
    entries.push_back({VocabularyEntry::TAG, number, "many", number, u"n"});
  }
  return Vocabulary("many namespaces", entries.data(), entries.size());
}();

XmlTag::NsId ns(std::size_t i) { return XmlTag::NsId{static_cast<std::int32_t>(FIRST + i)}; }
XmlTag::Id tag(std::size_t i) { return XmlTag::Id{static_cast<std::int32_t>(FIRST + i)}; }

UString text_of(std::u16string const& units) { return UString(units.data(), units.size()); }

std::u16string model_of(UString const& text) {
  return std::u16string(text.data(), text.data() + text.length());
}

/// URIs and their prefixes, both in code-unit order.
using Table = std::map<std::u16string, std::set<std::u16string>>;

std::u16string declarations(Table const& table) {
  std::u16string text;
  for (auto const& [uri, prefixes] : table) {
    for (std::u16string const& prefix : prefixes) {
      text += u" xmlns:" + prefix + u"=\"" + uri + u"\"";
    }
  }
  return text;
}

std::u16string name(Table const& table, std::size_t i) {
  return *table.at(uris[i]).begin() + u":n";
}

std::u16string leaf(Table const& table, std::size_t i) { return u"<" + name(table, i) + u"/>"; }

/// The whole document. The root's end tag has the prefix that is the smallest in the end.
UString whole(Table const& table, std::size_t root, std::u16string const& children,
              std::u16string const& root_name) {
  return declared(text_of(u"<" + root_name + declarations(table) + u">" + children + u"</" +
                          name(table, root) + u">"));
}

UString whole(Table const& table, std::size_t root, std::u16string const& children) {
  return whole(table, root, children, name(table, root));
}

/// A document and what it should hold.
struct Scene {
  XmlDoc doc;
  Table table;

  void declare(std::size_t i, std::u16string const& prefix) {
    doc.add_ns(ns(i), text_of(prefix));
    table[uris[i]].insert(prefix);
  }
};

std::vector<std::size_t> shuffled(std::size_t count, std::mt19937& random) {
  std::vector<std::size_t> order(NAMESPACES);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::shuffle(order.begin(), order.end(), random);
  order.resize(count);
  return order;
}

std::u16string random_prefix(std::mt19937& random) {
  std::u16string prefix;
  for (std::size_t length = 1 + random() % 10; length > 0; --length) {
    prefix += u"abAB\uFFFD\u00e9"[random() % 6];
  }
  return prefix;
}

std::u16string made_up(std::size_t number) {
  return model_of(UString::from_utf8("N" + std::to_string(number)));
}

TEST(ManyNamespaces, AreDeclaredInTheOrderOfTheirUrisWhateverTheOrderOfTheirUse) {
  std::mt19937 random(1);
  for (std::size_t count = 1; count <= NAMESPACES; ++count) {
    for (int round = 0; round < 50; ++round) {
      std::vector<std::size_t> const order = shuffled(count, random);
      Scene scene;
      std::u16string children;
      for (std::size_t i = 0; i < count; ++i) {
        scene.table[uris[order[i]]] = {made_up(i + 1)};
        if (i == 0) {
          scene.doc.push_elem(tag(order[0]));
        } else {
          scene.doc.add_elem(tag(order[i]));
          children += leaf(scene.table, order[i]);
        }
      }
      ASSERT_EQ(closed_text(scene.doc), whole(scene.table, order[0], children));
    }
  }
}

TEST(ManyNamespaces, WithSeveralPrefixesEachDeclareThemAllAndAreWrittenWithTheSmallest) {
  std::mt19937 random(2);
  for (std::size_t count = 1; count <= NAMESPACES; ++count) {
    for (int round = 0; round < 50; ++round) {
      std::vector<std::size_t> const order = shuffled(count, random);
      Scene scene;
      for (std::size_t n = count + random() % (2 * count); n > 0; --n) {
        scene.declare(order[random() % count], random_prefix(random));
      }
      for (std::size_t const i : order) scene.declare(i, random_prefix(random));
      scene.doc.push_elem(tag(order[0]));
      std::u16string children;
      for (std::size_t const i : order) {
        scene.doc.add_elem(tag(i));
        children += leaf(scene.table, i);
      }
      ASSERT_EQ(closed_text(scene.doc), whole(scene.table, order[0], children));
    }
  }
}

TEST(ManyNamespaces, TakeASmallerPrefixFromTheCallOnThatDeclaresIt) {
  std::mt19937 random(3);
  for (std::size_t count = 1; count <= NAMESPACES; ++count) {
    for (int round = 0; round < 50; ++round) {
      std::vector<std::size_t> const order = shuffled(count, random);
      Scene scene;
      for (std::size_t const i : order) scene.declare(i, u"x" + random_prefix(random));
      scene.doc.push_elem(tag(order[0]));
      std::u16string const root_name = name(scene.table, order[0]);
      std::u16string children;
      for (int n = 0; n < 30; ++n) {
        std::size_t const i = order[random() % count];
        if (random() % 3 == 0) scene.declare(order[random() % count], random_prefix(random));
        // Twice, so that the prefix is known the second time.
        for (int twice = 0; twice < 2; ++twice) {
          scene.doc.push_elem(tag(i));
          children += u"<" + name(scene.table, i);
          scene.doc.add_attr(tag(i), 1L);
          children += u" " + name(scene.table, i) + u"=\"1\"";
          if (random() % 3 == 0) scene.declare(i, random_prefix(random));
          scene.doc.pop_elem(tag(i));
          children += u"></" + name(scene.table, i) + u">";
        }
      }
      ASSERT_EQ(closed_text(scene.doc), whole(scene.table, order[0], children, root_name));
    }
  }
}

TEST(ManyNamespaces, OfACopyAndOfItsOriginalAreDeclaredIndependently) {
  std::mt19937 random(4);
  for (std::size_t count = 1; count <= NAMESPACES; ++count) {
    for (bool const assigned : {false, true}) {
      std::vector<std::size_t> const order = shuffled(NAMESPACES, random);
      Scene scene;
      for (std::size_t i = 0; i < count; ++i) scene.declare(order[i], u"x" + random_prefix(random));
      scene.doc.push_elem(tag(order[0]));
      std::u16string const root_name = name(scene.table, order[0]);
      for (std::size_t i = 0; i < count; ++i) scene.doc.add_elem(tag(order[i]));
      std::u16string children;
      for (std::size_t i = 0; i < count; ++i) children += leaf(scene.table, order[i]);

      Scene other;
      if (assigned) {
        // It has prefixes of its own, which it has used and must forget.
        for (std::size_t i = 0; i < NAMESPACES; ++i) other.doc.add_ns(ns(i), u"A");
        other.doc.push_elem(tag(0));
        for (std::size_t i = 0; i < NAMESPACES; ++i) other.doc.add_elem(tag(i));
        other = scene;
      } else {
        Scene copy(scene);
        other = copy;
      }
      std::u16string more_of_scene = children, more_of_other = children;
      for (int n = 0; n < 20; ++n) {
        std::size_t const i = order[random() % NAMESPACES];
        Scene& changed = n % 2 == 0 ? scene : other;
        changed.declare(i, random_prefix(random));
        for (std::size_t const used : {i, order[0], order[count - 1]}) {
          scene.declare(used, u"y");
          other.declare(used, u"y");
          scene.doc.add_elem(tag(used));
          other.doc.add_elem(tag(used));
          more_of_scene += leaf(scene.table, used);
          more_of_other += leaf(other.table, used);
        }
      }
      ASSERT_EQ(closed_text(scene.doc), whole(scene.table, order[0], more_of_scene, root_name));
      ASSERT_EQ(closed_text(other.doc), whole(other.table, order[0], more_of_other, root_name));
    }
  }
}

TEST(ManyNamespaces, OfACopyOutliveTheOriginal) {
  for (std::size_t count = 1; count <= NAMESPACES; ++count) {
    Scene copy;
    {
      Scene scene;
      for (std::size_t i = 0; i < count; ++i) {
        scene.declare(i, u"a prefix that is not short " + made_up(i));
      }
      scene.doc.push_elem(tag(0));
      for (std::size_t i = 0; i < count; ++i) scene.doc.add_elem(tag(i));
      copy = scene;
    }
    std::u16string children;
    for (int twice = 0; twice < 2; ++twice) {
      for (std::size_t i = 0; i < count; ++i) {
        children += leaf(copy.table, i);
        if (twice == 1) copy.doc.add_elem(tag(i));
      }
    }
    ASSERT_EQ(closed_text(copy.doc), whole(copy.table, 0, children));
  }
}

TEST(OpenElements, EndInTheReverseOfTheirBeginningHoweverDeepTheyAre) {
  for (std::size_t const depth : {1U, 2U, 7U, 8U, 9U, 10U, 16U, 17U, 1000U, 100000U}) {
    XmlDoc doc(testtags::u_r);
    std::u16string content;
    for (std::size_t i = 1; i < depth; ++i) {
      doc.push_elem(i % 3 == 0 ? testtags::u_a : testtags::u_b);
      content += i % 3 == 0 ? u"<N1:a>" : u"<N1:b>";
    }
    for (std::size_t i = depth - 1; i > 0; --i) {
      EXPECT_THROW(doc.pop_elem(i % 3 == 0 ? testtags::u_b : testtags::u_a), Orn::StateException);
      doc.pop_elem(i % 3 == 0 ? testtags::u_a : testtags::u_b);
      content += i % 3 == 0 ? u"</N1:a>" : u"</N1:b>";
    }
    ASSERT_EQ(closed_text(doc),
              declared(text_of(u"<N1:r xmlns:N1=\"urn:test:u\">" + content + u"</N1:r>")))
        << depth;
  }
}

TEST(OpenElements, OfACopyEndIndependentlyOfThoseOfTheOriginal) {
  for (std::size_t depth = 1; depth <= 20; ++depth) {
    XmlDoc doc(testtags::u_r);
    for (std::size_t i = 1; i < depth; ++i) doc.push_elem(testtags::u_a);
    XmlDoc copy(doc);
    XmlDoc assigned;
    for (int i = 0; i < 12; ++i) assigned.push_elem(testtags::v_b);
    assigned = doc;
    copy.push_elem(testtags::u_b);
    copy.push_elem(testtags::u_c);
    for (std::size_t i = 1; i < depth; ++i) assigned.pop_elem(testtags::u_a);
    std::vector<XmlTag::Id> expected(depth, testtags::u_a);
    expected[0] = testtags::u_r;
    EXPECT_EQ(Access::tags(doc), expected);
    EXPECT_EQ(Access::tags(assigned), (std::vector<XmlTag::Id>{testtags::u_r}));
    expected.insert(expected.end(), {testtags::u_b, testtags::u_c});
    EXPECT_EQ(Access::tags(copy), expected);
  }
}

TEST(OpenElements, GoUpAndDownAcrossAnyDepth) {
  std::mt19937 random(5);
  XmlDoc doc(testtags::u_r);
  std::vector<XmlTag::Id> model = {testtags::u_r};
  for (int i = 0; i < 20000; ++i) {
    if (model.size() > 1 && random() % 20 < (model.size() > 9 ? 11U : 9U)) {
      doc.pop_elem(model.back());
      model.pop_back();
    } else {
      model.push_back(random() % 2 == 0 ? testtags::u_a : testtags::v_b);
      doc.push_elem(model.back());
    }
    ASSERT_EQ(Access::tags(doc), model);
  }
}

}  // namespace
}  // namespace tests

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "tqutil/UtilExceptions.h"
#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"

namespace {

using Orn::TagException;
using Orn::UString;
using Orn::Vocabulary;
using Orn::VocabularyEntry;
using Orn::XmlTag;

constexpr std::int32_t FIRST = 43000;

/// Names of URIs and tags that differ at their beginning, in the middle, at their end and in their
/// length alone; some names continue what a URI leaves off.
std::deque<std::u16string> similar(std::u16string const& whole) {
  std::deque<std::u16string> texts;
  for (std::size_t place = 0; place < whole.size(); ++place) {
    std::u16string other = whole;
    other[place] = u'#';
    texts.push_back(other);
  }
  for (std::size_t length = 1; length <= whole.size(); ++length) {
    texts.push_back(whole.substr(0, length));
    if (length != whole.size()) texts.push_back(whole.substr(length));
  }
  return texts;
}

std::deque<std::u16string> const uris = similar(u"urn:similar:namespace:of-names");
std::deque<std::u16string> const names = similar(u"similarNameX");

std::int32_t number_of(std::size_t uri, std::size_t name) {
  return static_cast<std::int32_t>(FIRST + uri * names.size() + name);
}

/// Every other name of every namespace, such that its neighbours have the others.
bool is_registered(std::size_t uri, std::size_t name) { return (uri + name) % 2 == 0; }

Vocabulary const vocabulary = [] {
  std::vector<VocabularyEntry> entries;
  for (std::size_t uri = 0; uri < uris.size(); ++uri) {
    auto const ns = static_cast<std::int32_t>(FIRST + uri);
    entries.push_back({VocabularyEntry::NAMESPACE, ns, "similar", 0, uris[uri].c_str()});
    for (std::size_t name = 0; name < names.size(); ++name) {
      if (!is_registered(uri, name)) continue;
      entries.push_back(
          {VocabularyEntry::TAG, number_of(uri, name), "similar", ns, names[name].c_str()});
    }
  }
  return Vocabulary("similar names", entries.data(), entries.size());
}();

TEST(SimilarNames, AreToldApart) {
  for (std::size_t uri = 0; uri < uris.size(); ++uri) {
    for (std::size_t name = 0; name < names.size(); ++name) {
      XmlTag wanted(UString(uris[uri].data(), uris[uri].size()),
                    UString(names[name].data(), names[name].size()));
      if (is_registered(uri, name)) {
        EXPECT_EQ(XmlTag::lookup(uris[uri], names[name]).id(), number_of(uri, name));
        EXPECT_EQ(XmlTag::lookup(wanted).id(), number_of(uri, name));
      } else {
        EXPECT_THROW(XmlTag::lookup(uris[uri], names[name]), TagException);
        EXPECT_THROW(XmlTag::lookup(wanted), TagException);
      }
    }
  }
}

TEST(SimilarNames, AreNotFoundWithoutTheirNamespace) {
  for (std::u16string const& name : names) {
    EXPECT_THROW(XmlTag::lookup(u"", name), TagException);
  }
}

TEST(SimilarNames, AreNotFoundWhereUriAndNameMeetElsewhere) {
  std::u16string const uri = uris.back(), name = names.back();
  EXPECT_THROW(XmlTag::lookup(uri + name.substr(0, 1), name.substr(1)), TagException);
  EXPECT_THROW(XmlTag::lookup(uri.substr(0, uri.size() - 1), uri.substr(uri.size() - 1) + name),
               TagException);
}

}  // namespace

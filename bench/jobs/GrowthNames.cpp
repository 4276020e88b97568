#include "bench/jobs/GrowthNames.h"

#include <deque>
#include <string>
#include <vector>

#include "bench/orders/Names.h"
#include "tqutil/Vocabulary.h"

namespace bench {
namespace {

using Orn::VocabularyEntry;
using Orn::XmlTag;

// Behind those of the orders. As many attributes as can be are among those that the streaming
// reader shows.
constexpr std::int32_t FIRST_ATTRIBUTE = 12;
constexpr std::int32_t FIRST_ELEMENT = FIRST_ATTRIBUTE + GROWTH_ATTRIBUTES;
constexpr std::int32_t NAMESPACE_OF_ATTRIBUTES = 3;
constexpr std::int32_t FIRST_NAMESPACE = 4;

/// For the life of the process.
char16_t const* numbered(std::u16string const& text, std::int32_t index) {
  static std::deque<std::u16string> texts;
  std::string const digits = std::to_string(index);
  return texts.emplace_back(text + std::u16string(digits.begin(), digits.end())).c_str();
}

std::vector<VocabularyEntry> make_entries() {
  std::vector<VocabularyEntry> entries;
  entries.push_back({VocabularyEntry::NAMESPACE, NAMESPACE_OF_ATTRIBUTES, "attributes", 0,
                     u"urn:example:attributes"});
  for (std::int32_t i = 0; i < GROWTH_ATTRIBUTES; ++i) {
    entries.push_back({VocabularyEntry::TAG, growth_attribute(i), "attribute",
                       NAMESPACE_OF_ATTRIBUTES, numbered(u"attribute", i)});
  }
  for (std::int32_t i = 0; i < GROWTH_NAMESPACES; ++i) {
    std::int32_t const ns = FIRST_NAMESPACE + i;
    entries.push_back(
        {VocabularyEntry::NAMESPACE, ns, "ns", 0, numbered(u"urn:example:namespace:", i)});
    entries.push_back({VocabularyEntry::TAG, growth_element(i), "element", ns, u"element"});
  }
  return entries;
}

std::vector<VocabularyEntry> const entries = make_entries();
Orn::Vocabulary const vocabulary("growth", entries.data(), entries.size());

std::vector<XmlTag::Id> all_names() {
  std::vector<XmlTag::Id> ids{orders, order};
  for (std::int32_t i = 0; i < GROWTH_ATTRIBUTES; ++i) ids.push_back(growth_attribute(i));
  for (std::int32_t i = 0; i < GROWTH_NAMESPACES; ++i) ids.push_back(growth_element(i));
  return ids;
}

}  // namespace

XmlTag::Id growth_attribute(std::int32_t index) { return XmlTag::Id(FIRST_ATTRIBUTE + index); }

XmlTag::Id growth_element(std::int32_t index) { return XmlTag::Id(FIRST_ELEMENT + index); }

NameIndex const& growth_names() {
  static NameIndex const index(all_names());
  return index;
}

}  // namespace bench

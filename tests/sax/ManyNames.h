#ifndef TESTS_SAX_MANYNAMES_H
#define TESTS_SAX_MANYNAMES_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"

namespace tests {

/// Registers the names "n0", "n1" and so on in each of a few namespaces, for programs that include
/// this: more names than readers remember, all of them shown by the streaming reader.
namespace manynames {

constexpr std::size_t NAMES = 150;
/// In the order of the prefixes that documents declare for them: none, p, q and s.
constexpr char16_t const* uris[] = {u"", u"urn:many:names:a", u"urn:many:names:b",
                                    u"urn:many:Names:b"};
constexpr std::size_t NAMESPACES = 4;
constexpr std::int32_t FIRST_TAG = 520, FIRST_NAMESPACE = 8001;

inline Orn::XmlTag::Id tag(std::size_t ns, std::size_t name) {
  return Orn::XmlTag::Id{static_cast<std::int32_t>(FIRST_TAG + ns * NAMES + name)};
}

/// As a document that `root_start` begins writes it.
inline std::string name(std::size_t ns, std::size_t name) {
  constexpr char const* prefixes[] = {"", "p:", "q:", "s:"};
  return prefixes[ns] + ("n" + std::to_string(name));
}

inline std::string root_start() {
  return "<r xmlns:p='urn:many:names:a' xmlns:q='urn:many:names:b' xmlns:s='urn:many:Names:b'>";
}

inline Orn::Vocabulary const vocabulary = [] {
  std::deque<std::u16string> texts;
  std::vector<Orn::VocabularyEntry> entries;
  for (std::size_t ns = 0; ns < NAMESPACES; ++ns) {
    auto const ns_number = ns == 0 ? 0 : static_cast<std::int32_t>(FIRST_NAMESPACE + ns);
    if (ns != 0) {
      entries.push_back({Orn::VocabularyEntry::NAMESPACE, ns_number, "many", 0, uris[ns]});
    }
    for (std::size_t i = 0; i < NAMES; ++i) {
      std::string const ascii = "n" + std::to_string(i);
      std::u16string const& text = texts.emplace_back(ascii.begin(), ascii.end());
      entries.push_back({Orn::VocabularyEntry::TAG, tag(ns, i), "many", ns_number, text.c_str()});
    }
  }
  return Orn::Vocabulary("many names", entries.data(), entries.size());
}();

}  // namespace manynames
}  // namespace tests

#endif

#ifndef TESTS_SUPPORT_DOCUMENTNAMES_H
#define TESTS_SUPPORT_DOCUMENTNAMES_H

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>

#include "tqutil/UString.h"
#include "tqutil/UtilExceptions.h"
#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"

namespace tests {

/// Enters names into the registry as documents bring them. Numbers go from -1 downwards: the
/// streaming reader hides attributes with large ones. There is one of these in a process.
class DocumentNames {
 public:
  Orn::XmlTag::Id number_of(std::u16string_view uri, std::u16string_view name) {
    if (Orn::XmlTag const* const known = find(uri, name)) return known->id();
    int const ns = ns_number_of(uri);
    Orn::VocabularyEntry const entry[] = {
        {Orn::VocabularyEntry::TAG, --last_tag_, "tag", ns, keep(name)}};
    Orn::Vocabulary("names of documents", entry);
    return Orn::XmlTag::Id(last_tag_);
  }

 private:
  /// A catch-all answers for every name, so an answer is looked at.
  static Orn::XmlTag const* find(std::u16string_view uri, std::u16string_view name) {
    try {
      Orn::XmlTag const& tag = Orn::XmlTag::lookup(uri, name);
      bool const is_its_own = tag.ns() == Orn::UString(uri.data(), uri.size()) &&
                              tag.simple_name() == Orn::UString(name.data(), name.size());
      return is_its_own ? &tag : nullptr;
    } catch (Orn::TagException const&) {
      return nullptr;
    }
  }

  int ns_number_of(std::u16string_view uri) {
    auto const [place, is_new] = ns_numbers_.try_emplace(std::u16string(uri), last_ns_ - 1);
    if (is_new) {
      Orn::VocabularyEntry const entry[] = {
          {Orn::VocabularyEntry::NAMESPACE, --last_ns_, "ns", 0, keep(uri)}};
      Orn::Vocabulary("namespaces of documents", entry);
    }
    return place->second;
  }

  char16_t const* keep(std::u16string_view text) { return kept_.emplace_back(text).c_str(); }

  std::int32_t last_tag_ = 0;
  std::int32_t last_ns_ = 0;
  std::map<std::u16string, std::int32_t> ns_numbers_;
  std::deque<std::u16string> kept_;
};

}  // namespace tests

#endif

#ifndef TQUTIL_REGISTRY_H
#define TQUTIL_REGISTRY_H

#include <atomic>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"

namespace Orn {

/// The tags and namespaces of all vocabularies of the process. It is filled by Vocabulary objects
/// while the program is loaded and only read from then on.
class Registry {
 public:
  static Registry& instance() {
    Registry* const made = existing.load(std::memory_order_acquire);
    return made != nullptr ? *made : make();
  }

  /// Enters the namespaces of a vocabulary, then its tags. Stops the program when it contradicts
  /// itself or what has been entered before.
  void add(char const* vocabulary, VocabularyEntry const* entries, std::size_t count);

  /// Null when there is no such entry. The last gives the catch-all tag, if there is one, for a
  /// name that is not there.
  XmlTag const* find(XmlTag::Id id) const noexcept {
    Tag const* const entry = find_entry(id);
    return entry == nullptr ? nullptr : &entry->tag;
  }
  UString const* find_uri(XmlTag::NsId ns) const noexcept;
  XmlTag const* find(std::string_view ns_uri, std::string_view simple_name) const noexcept;

  /// The code units of a text as bytes, the form in which names are hashed and compared whatever
  /// type their units have.
  static std::string_view bytes_of(UString const& text) noexcept;
  static std::string_view bytes_of(std::u16string_view text) noexcept;

 private:
  /// A namespace or a tag and where it comes from, for messages.
  struct Namespace {
    UString uri;
    std::string origin;
  };
  struct Tag {
    XmlTag tag;
    std::string origin;
  };

  /// The two texts belong to the entry that the name leads to.
  struct Name {
    std::string_view ns_uri;
    std::string_view simple_name;
    bool operator==(Name const& other) const noexcept {
      return simple_name == other.simple_name && ns_uri == other.ns_uri;
    }
  };
  struct NameHash {
    std::size_t operator()(Name const& name) const noexcept;
  };

  Registry();
  static Registry& make();
  void add_namespace(std::string const& origin, VocabularyEntry const& entry);
  void add_tag(std::string const& origin, VocabularyEntry const& entry);
  void index_by_number(Tag const& entry);
  Tag const* find_entry(XmlTag::Id id) const noexcept {
    auto const slot = static_cast<std::size_t>(static_cast<std::uint32_t>(id));
    return slot < by_small_number_.size() ? by_small_number_[slot] : find_other(id);
  }
  Tag const* find_other(XmlTag::Id id) const noexcept;

  static std::atomic<Registry*> existing;

  std::unordered_map<std::int32_t, Namespace> namespaces_;
  /// Never moved, since callers hold references to entries.
  std::deque<Tag> tags_;
  /// Entries by their number: the usual small ones in an array, all others beside it.
  std::vector<Tag const*> by_small_number_;
  std::unordered_map<std::int32_t, Tag const*> by_other_number_;
  std::unordered_map<Name, Tag const*, NameHash> by_name_;
  Tag const* catch_all_ = nullptr;
};

}  // namespace Orn

#endif

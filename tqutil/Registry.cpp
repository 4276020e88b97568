#include "tqutil/Registry.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace Orn {
namespace {

// Numbers below this one are looked up in an array, which takes at most half a megabyte.
constexpr std::int32_t SMALL_NUMBERS = 1 << 16;

bool is_small(std::int32_t number) { return number >= 0 && number < SMALL_NUMBERS; }

using Word = std::uint64_t;

Word mixed(Word so_far, Word word) {
  // The golden ratio of 2^64 spreads what differs little over the upper half.
  Word const spread = (so_far ^ word) * 0x9E3779B97F4A7C15U;
  return spread ^ (spread >> 32U);
}

Word mixed(Word so_far, std::string_view text) {
  Word hash = so_far + text.size();
  char const* from = text.data();
  std::size_t left = text.size();
  Word word = 0;
  for (; left >= sizeof word; left -= sizeof word, from += sizeof word) {
    std::memcpy(&word, from, sizeof word);
    hash = mixed(hash, word);
  }
  if (left == 0) return hash;
  word = 0;
  std::memcpy(&word, from, left);
  return mixed(hash, word);
}

// A vocabulary that contradicts another is an error in the program, which must not get as far as
// reading or writing a document.
[[noreturn]] void stop(std::string const& complaint) {
  std::cerr << "tqutil: " << complaint << std::endl;
  std::abort();
}

std::string describe(char const* vocabulary, VocabularyEntry const& entry) {
  std::string const what = entry.kind == VocabularyEntry::NAMESPACE ? "namespace" : "tag";
  return what + " '" + entry.name + "' of vocabulary '" + vocabulary + "'";
}

}  // namespace

std::atomic<Registry*> Registry::existing{nullptr};

Registry& Registry::make() {
  // Never destroyed: other libraries may still look tags up while the process ends.
  static Registry& registry = *new Registry;
  existing.store(&registry, std::memory_order_release);
  return registry;
}

Registry::Registry() { namespaces_[XmlTag::NO_NS] = Namespace{UString(), "no namespace"}; }

void Registry::add(char const* vocabulary, VocabularyEntry const* entries, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (entries[i].kind == VocabularyEntry::NAMESPACE) {
      add_namespace(describe(vocabulary, entries[i]), entries[i]);
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (entries[i].kind != VocabularyEntry::NAMESPACE) {
      add_tag(describe(vocabulary, entries[i]), entries[i]);
    }
  }
}

void Registry::add_namespace(std::string const& origin, VocabularyEntry const& entry) {
  auto const [place, is_new] =
      namespaces_.try_emplace(entry.number, Namespace{UString(entry.text), origin});
  if (!is_new) {
    stop(origin + " has the number " + std::to_string(entry.number) + ", and so has " +
         place->second.origin);
  }
}

void Registry::add_tag(std::string const& origin, VocabularyEntry const& entry) {
  auto const id = static_cast<XmlTag::Id>(entry.number);
  auto const ns = static_cast<XmlTag::NsId>(entry.ns);
  UString const simple_name(entry.text);
  UString const* const uri = find_uri(ns);
  if (id == XmlTag::NO_TAG) stop(origin + " has the number 0, which means no tag");
  if (simple_name.empty()) stop(origin + " has an empty name");
  if (uri == nullptr) {
    stop(origin + " is in the namespace " + std::to_string(entry.ns) + ", which does not exist");
  }
  if (Tag const* const other = find_entry(id); other != nullptr) {
    stop(origin + " has the number " + std::to_string(entry.number) + ", and so has " +
         other->origin);
  }
  Tag const& added = tags_.emplace_back(Tag{XmlTag(id, ns, *uri, simple_name), origin});
  Name const name{bytes_of(added.tag.ns()), bytes_of(added.tag.simple_name())};
  auto const [place, is_new] = by_name_.try_emplace(name, &added);
  if (!is_new) {
    stop(origin + " has the name " + added.tag.to_string().to_utf8() + ", and so has " +
         place->second->origin);
  }
  index_by_number(added);
  if (entry.kind != VocabularyEntry::CATCH_ALL) return;
  if (catch_all_ != nullptr) stop(origin + " is a catch-all, and so is " + catch_all_->origin);
  catch_all_ = &added;
}

void Registry::index_by_number(Tag const& entry) {
  std::int32_t const number = entry.tag.id();
  if (!is_small(number)) {
    by_other_number_[number] = &entry;
    return;
  }
  auto const slot = static_cast<std::size_t>(number);
  if (slot >= by_small_number_.size()) by_small_number_.resize(slot + 1);
  by_small_number_[slot] = &entry;
}

Registry::Tag const* Registry::find_other(XmlTag::Id id) const noexcept {
  auto const place = by_other_number_.find(id);
  return place == by_other_number_.end() ? nullptr : place->second;
}

UString const* Registry::find_uri(XmlTag::NsId ns) const noexcept {
  auto const place = namespaces_.find(ns);
  return place == namespaces_.end() ? nullptr : &place->second.uri;
}

XmlTag const* Registry::find(std::string_view ns_uri, std::string_view simple_name) const noexcept {
  auto const place = by_name_.find(Name{ns_uri, simple_name});
  if (place != by_name_.end()) return &place->second->tag;
  return catch_all_ == nullptr ? nullptr : &catch_all_->tag;
}

std::string_view Registry::bytes_of(UString const& text) noexcept {
  return {reinterpret_cast<char const*>(text.data()), text.length() * sizeof(UString::unit_type)};
}

std::string_view Registry::bytes_of(std::u16string_view text) noexcept {
  return {reinterpret_cast<char const*>(text.data()), text.size() * sizeof(char16_t)};
}

std::size_t Registry::NameHash::operator()(Name const& name) const noexcept {
  return static_cast<std::size_t>(mixed(mixed(0, name.ns_uri), name.simple_name));
}

}  // namespace Orn

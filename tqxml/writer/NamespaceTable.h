#ifndef TQXML_WRITER_NAMESPACETABLE_H
#define TQXML_WRITER_NAMESPACETABLE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>

#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"

namespace Orn {

/// The prefixes that a document declares, any number for each namespace URI. Nothing is ever
/// removed. For the writer alone.
class NamespaceTable {
 public:
  /// The URI is that of the registry.
  struct Declaration {
    UString const* uri = nullptr;
    UString prefix;

    bool operator<(Declaration const& other) const noexcept;
  };

  bool contains(UString const& uri) const { return find(uri) != nullptr; }
  /// The first prefix of the tag's namespace in code-unit order; null when it has none.
  UString const* prefix_of(XmlTag const& tag) const {
    Answer& answer = answers_.for_namespace(tag.ns_id());
    if (answer.prefix == nullptr || answer.ns != tag.ns_id()) {
      answer = {tag.ns_id(), find(tag.ns())};
    }
    return answer.prefix;
  }
  /// Enters a prefix for a URI of the registry, unless it is there. Returns the one in the table.
  UString const& add(UString const& uri, UString prefix);

  /// Visits all declarations by URI and then by prefix, in code-unit order.
  template <class Visit>
  void visit(Visit visit) const {
    for (std::size_t i = 0; i < few_count_; ++i) visit(few_[i]);
    for (Declaration const& declaration : many_) visit(declaration);
  }

 private:
  /// Null for a prefix that has not been asked for, or that there is not.
  struct Answer {
    XmlTag::NsId ns = XmlTag::NO_NS;
    UString const* prefix = nullptr;
  };

  /// What `prefix_of` found, for a few namespaces. Forgotten when a prefix moves or may come before
  /// another of its namespace. The prefixes belong to one table: copies begin without answers.
  class Answers {
   public:
    Answers() noexcept = default;
    Answers(Answers const&) noexcept {}
    Answers& operator=(Answers const&) noexcept {
      forget();
      return *this;
    }
    ~Answers() = default;

    Answer& for_namespace(XmlTag::NsId ns) noexcept {
      return answers_[static_cast<std::uint32_t>(ns) % answers_.size()];
    }
    void forget() noexcept { answers_ = {}; }

   private:
    std::array<Answer, 4> answers_;
  };

  [[gnu::noinline]] UString const* find(UString const& uri) const;
  bool goes_behind_few(Declaration const& added) const;
  UString const& insert(Declaration&& added);
  UString const& insert_among_few(Declaration* place, Declaration&& added);
  void move_few_to_many();

  /// In order. Most documents have no more than these, which take no memory of their own; where
  /// there are more, all are in `many_`.
  std::array<Declaration, 4> few_;
  std::size_t few_count_ = 0;
  std::set<Declaration> many_;
  mutable Answers answers_;
};

}  // namespace Orn

#endif

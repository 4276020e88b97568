#ifndef VOCABULARY_NAMES_H
#define VOCABULARY_NAMES_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace vocabulary {

/// What a reader knows an element or an attribute by.
struct NameView {
  std::u16string_view uri;
  std::u16string_view local;
};

struct Name {
  std::u16string uri;
  std::u16string local;

  operator NameView() const noexcept { return {uri, local}; }
};

struct NameLess {
  using is_transparent = void;
  bool operator()(NameView const& a, NameView const& b) const noexcept {
    return std::tie(a.uri, a.local) < std::tie(b.uri, b.local);
  }
};

/// `{URI}local`, as the library's messages have it, in UTF-8.
std::string to_string(NameView const& name);
std::string to_utf8(std::u16string_view text);

/// A line of a file, counted from 1.
struct Place {
  std::string file;
  std::size_t line = 0;
};

/// The names that documents use, in the order in which they first came up.
class NameList {
 public:
  enum Use { ELEMENT, ATTRIBUTE };

  struct Entry {
    Name name;
    Place first;
    /// Whether the name is used for an attribute, perhaps beside an element.
    bool is_attribute = false;
  };

  void add(NameView const& name, Use use, std::string const& file, std::size_t line);
  /// The first prefix of a namespace is the one that is remembered.
  void add_prefix(std::u16string_view uri, std::u16string_view prefix);

  std::vector<Entry> const& entries() const noexcept { return entries_; }
  /// Empty when the namespace has none.
  std::u16string prefix_of(std::u16string_view uri) const;

 private:
  std::vector<Entry> entries_;
  std::map<Name, std::size_t, NameLess> places_;
  std::map<std::u16string, std::u16string, std::less<>> prefixes_;
};

}  // namespace vocabulary

#endif

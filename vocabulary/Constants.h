#ifndef VOCABULARY_CONSTANTS_H
#define VOCABULARY_CONSTANTS_H

#include <set>
#include <string>
#include <string_view>

namespace vocabulary {

/// Finds the names of constants. What it gives depends on nothing but what it was asked before, and
/// is never given twice.
class Constants {
 public:
  /// The constant is there already.
  void take(std::string const& constant) { taken_.insert(constant); }

  /// `ns_` and a word for the namespace: its prefix, unless that says nothing, or part of its URI.
  std::string of_namespace(std::u16string_view uri, std::u16string_view prefix);
  /// The local name as far as C++ takes it; with the word of its namespace in front when that
  /// constant is there already. `ns_constant` is empty for no namespace, whose word is "plain".
  std::string of_name(std::u16string_view local, std::string const& ns_constant);

 private:
  std::string unique(std::string const& wanted);

  std::set<std::string, std::less<>> taken_;
};

}  // namespace vocabulary

#endif

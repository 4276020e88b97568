#ifndef TESTS_CONFORMANCE_TREETEXT_H
#define TESTS_CONFORMANCE_TREETEXT_H

#include <string>
#include <string_view>

namespace tests {

/// The tree of a document as one text, which is the same for two trees when and only when they are:
/// a line for the start of each element, for each attribute and for each end. Texts have their
/// length in front, so that none looks like a part of the tree.
class TreeText {
 public:
  void start(std::u16string_view uri, std::u16string_view name);
  void attribute(std::u16string_view uri, std::u16string_view name, std::u16string_view value);
  /// The end of the element that was started last and has not ended, and what stood in it.
  void end(std::u16string_view data);

  std::u16string const& text() const { return text_; }

 private:
  void line(char16_t kind, std::u16string_view uri, std::u16string_view name);
  void measured(std::u16string_view text);

  std::u16string text_;
};

/// Eight digits that tell texts apart.
std::string digest_of(std::u16string_view text);

/// The first line in which the texts differ, as each has it.
std::string first_difference(std::u16string const& a, std::u16string const& b);

}  // namespace tests

#endif

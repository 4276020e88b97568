#ifndef VOCABULARY_DEFTOKENS_H
#define VOCABULARY_DEFTOKENS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vocabulary {

/// A piece of a vocabulary file, as the preprocessor would see it.
struct DefToken {
  enum Kind { WORD, NUMBER, STRING, PUNCTUATION, END };
  Kind kind = END;
  /// As it stands in the file; a literal with its quotation marks.
  std::string_view text;
  std::size_t line = 0;

  bool is(std::string_view wanted) const { return text == wanted; }
};

/// The tokens of a file without its comments, with one of kind END behind the last. They refer to
/// `text`. A literal that does not end ends with its line; a comment that does not is a token.
std::vector<DefToken> tokens_of(std::string_view text);

}  // namespace vocabulary

#endif

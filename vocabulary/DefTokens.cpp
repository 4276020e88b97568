#include "vocabulary/DefTokens.h"

#include <algorithm>

namespace vocabulary {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_word(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || is_digit(c) || c == '_';
}
bool is_space(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

class Tokenizer {
 public:
  explicit Tokenizer(std::string_view text) : text_(text) {}

  std::vector<DefToken> all() {
    std::vector<DefToken> tokens;
    do {
      skip_blanks_and_comments();
      tokens.push_back(next());
    } while (tokens.back().kind != DefToken::END);
    return tokens;
  }

 private:
  bool at_end() const { return position_ == text_.size(); }
  char peek(std::size_t ahead = 0) const {
    return position_ + ahead < text_.size() ? text_[position_ + ahead] : '\0';
  }
  bool begins_with(std::string_view wanted) const {
    return text_.compare(position_, wanted.size(), wanted) == 0;
  }

  void advance_to(std::size_t end) {
    end = std::min(end, text_.size());
    std::string_view const passed = text_.substr(position_, end - position_);
    line_ += static_cast<std::size_t>(std::count(passed.begin(), passed.end(), '\n'));
    position_ = end;
  }

  void skip_blanks_and_comments() {
    while (!at_end()) {
      if (is_space(peek())) {
        advance_to(position_ + 1);
      } else if (begins_with("//")) {
        advance_to(text_.find('\n', position_));
      } else if (begins_with("/*")) {
        std::size_t const end = text_.find("*/", position_ + 2);
        if (end == std::string_view::npos) return;
        advance_to(end + 2);
      } else {
        return;
      }
    }
  }

  DefToken next() {
    if (at_end()) return {DefToken::END, "end of the file", line_};
    std::size_t const begin = position_;
    std::size_t const line = line_;
    if (begins_with("/*")) {
      advance_to(text_.size());
      return {DefToken::PUNCTUATION, "/* without an end", line};
    }
    DefToken::Kind const kind = pass_one();
    return {kind, text_.substr(begin, position_ - begin), line};
  }

  DefToken::Kind pass_one() {
    if (is_digit(peek())) {
      // The preprocessor's idea of a number.
      while (is_word(peek()) || (peek() == '\'' && is_word(peek(1)))) advance_to(position_ + 1);
      return DefToken::NUMBER;
    }
    std::size_t const begin = position_;
    while (is_word(peek())) advance_to(position_ + 1);
    if (peek() == '"') {
      pass_literal();
      return DefToken::STRING;
    }
    if (position_ > begin) return DefToken::WORD;
    advance_to(position_ + 1);
    return DefToken::PUNCTUATION;
  }

  void pass_literal() {
    advance_to(position_ + 1);
    while (!at_end() && peek() != '"' && peek() != '\n') {
      advance_to(position_ + (peek() == '\\' && peek(1) != '\n' ? 2 : 1));
    }
    if (peek() == '"') advance_to(position_ + 1);
  }

  std::string_view text_;
  std::size_t position_ = 0;
  std::size_t line_ = 1;
};

}  // namespace

std::vector<DefToken> tokens_of(std::string_view text) { return Tokenizer(text).all(); }

}  // namespace vocabulary

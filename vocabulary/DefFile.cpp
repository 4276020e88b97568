#include "vocabulary/DefFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <utility>

#include "vocabulary/DefLiterals.h"
#include "vocabulary/DefTokens.h"
#include "vocabulary/Failure.h"
#include "vocabulary/Identifier.h"

namespace vocabulary {

namespace {

std::optional<DefEntry::Kind> kind_of(std::string_view macro) {
  if (macro == "TQ_NS") return DefEntry::NAMESPACE;
  if (macro == "TQ_TAG") return DefEntry::TAG;
  if (macro == "TQ_CATCH_ALL") return DefEntry::CATCH_ALL;
  return std::nullopt;
}

class Parser {
 public:
  explicit Parser(DefFile& file) : file_(file), tokens_(tokens_of(file.text)) {}

  void parse() {
    while (token().kind != DefToken::END) {
      std::size_t const first = next_;
      try {
        parse_entry();
      } catch (Complaint const& complaint) {
        file_.complaints.push_back(complaint);
        go_to_next_entry(first);
      }
    }
  }

 private:
  DefToken const& token() const { return tokens_[next_]; }
  DefToken const& take() {
    DefToken const& taken = token();
    if (taken.kind != DefToken::END) ++next_;
    return taken;
  }

  void parse_entry() {
    DefToken const begin = take();
    auto const kind = kind_of(begin.text);
    if (!kind) complain(begin, "TQ_NS, TQ_TAG or TQ_CATCH_ALL");
    DefEntry entry;
    entry.kind = *kind;
    entry.place = {file_.file, begin.line};
    take("(");
    entry.number = take_number();
    take(",");
    entry.constant = take_word("the constant");
    take(",");
    if (*kind != DefEntry::NAMESPACE) {
      entry.ns = take_word("the constant of a namespace");
      if (entry.ns == "TQ_NO_NS") entry.ns.clear();
      take(",");
    }
    entry.text = take_text();
    take(")");
    file_.entries.push_back(std::move(entry));
  }

  void take(std::string_view wanted) {
    DefToken const& taken = take();
    if (!taken.is(wanted)) complain(taken, "'" + std::string(wanted) + "'");
  }

  std::int32_t take_number() {
    bool const is_negative = token().is("-");
    if (is_negative) take();
    DefToken const& taken = take();
    auto const number = number_of(taken.text, is_negative);
    if (!number) complain(taken, "a number of 32 bits");
    return *number;
  }

  std::string take_word(char const* what) {
    DefToken const& taken = take();
    if (taken.kind != DefToken::WORD) complain(taken, what);
    return std::string(taken.text);
  }

  std::u16string take_text() {
    if (token().kind != DefToken::STRING || token().text.substr(0, 2) != "u\"") {
      complain(take(), "a text, u\"...\"");
    }
    std::u16string text;
    while (token().kind == DefToken::STRING &&
           (token().text.front() == '"' || token().text.substr(0, 2) == "u\"")) {
      text += value_of(take());
    }
    return text;
  }

  std::u16string value_of(DefToken const& literal) const {
    try {
      return text_of(literal.text);
    } catch (std::invalid_argument const& e) {
      throw Complaint{{file_.file, literal.line}, std::string(literal.text) + ": " + e.what()};
    }
  }

  [[noreturn]] void complain(DefToken const& found, std::string const& wanted) const {
    std::string const text =
        found.kind == DefToken::END ? "the end of the file" : "'" + std::string(found.text) + "'";
    throw Complaint{{file_.file, found.line}, "expected " + wanted + ", found " + text};
  }

  /// The next that begins behind the token `first`.
  void go_to_next_entry(std::size_t first) {
    next_ = first + 1;
    while (token().kind != DefToken::END && !kind_of(token().text)) ++next_;
  }

  DefFile& file_;
  std::vector<DefToken> tokens_;
  std::size_t next_ = 0;
};

}  // namespace

std::u16string const* DefFile::uri_of(DefEntry const& entry) const {
  static std::u16string const none;
  if (entry.ns.empty()) return &none;
  auto const place = std::find_if(entries.begin(), entries.end(), [&](DefEntry const& other) {
    return other.kind == DefEntry::NAMESPACE && other.constant == entry.ns;
  });
  return place == entries.end() ? nullptr : &place->text;
}

DefFile parse_def(std::string const& file, std::string text) {
  DefFile parsed;
  parsed.file = file;
  parsed.text = std::move(text);
  Parser(parsed).parse();
  return parsed;
}

DefFile read_def(std::string const& file) {
  std::ifstream in(file, std::ios::binary);
  std::string text;
  std::array<char, 65536> piece;
  while (in.read(piece.data(), piece.size()) || in.gcount() > 0) {
    text.append(piece.data(), static_cast<std::size_t>(in.gcount()));
  }
  if (!in.eof()) throw Failure(file + ": " + std::strerror(errno));
  return parse_def(file, std::move(text));
}

}  // namespace vocabulary

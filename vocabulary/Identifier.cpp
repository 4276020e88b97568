#include "vocabulary/Identifier.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace vocabulary {

namespace {

// Up to C++23, with the words that stand for operators.
constexpr std::string_view KEYWORDS[] = {
    "alignas",       "alignof",     "and",
    "and_eq",        "asm",         "auto",
    "bitand",        "bitor",       "bool",
    "break",         "case",        "catch",
    "char",          "char16_t",    "char32_t",
    "char8_t",       "class",       "co_await",
    "co_return",     "co_yield",    "compl",
    "concept",       "const",       "const_cast",
    "consteval",     "constexpr",   "constinit",
    "continue",      "decltype",    "default",
    "delete",        "do",          "double",
    "dynamic_cast",  "else",        "enum",
    "explicit",      "export",      "extern",
    "false",         "float",       "for",
    "friend",        "goto",        "if",
    "inline",        "int",         "long",
    "mutable",       "namespace",   "new",
    "noexcept",      "not",         "not_eq",
    "nullptr",       "operator",    "or",
    "or_eq",         "private",     "protected",
    "public",        "register",    "reinterpret_cast",
    "requires",      "return",      "short",
    "signed",        "sizeof",      "static",
    "static_assert", "static_cast", "struct",
    "switch",        "template",    "this",
    "thread_local",  "throw",       "true",
    "try",           "typedef",     "typeid",
    "typename",      "union",       "unsigned",
    "using",         "virtual",     "void",
    "volatile",      "wchar_t",     "while",
    "xor",           "xor_eq",
};

// Macros with a lower-case letter that compilers, C++ and POSIX have without parentheses behind
// them, and the two objects of a source file with a vocabulary.
constexpr std::string_view TAKEN[] = {
    "alloca",  "assert",   "complex",    "entries",  "errno",     "h_addr",
    "h_errno", "i386",     "linux",      "noreturn", "imaginary", "math_errhandling",
    "major",   "makedev",  "minor",      "offsetof", "setjmp",    "sigsetjmp",
    "stderr",  "stdin",    "stdout",     "unix",     "va_arg",    "va_copy",
    "va_end",  "va_start", "vocabulary",
};
// What their families begin with.
constexpr std::string_view TAKEN_BEGINNINGS[] = {"AF_", "L_",      "M_",  "PF_", "PRI",    "P_",
                                                 "SCN", "s6_addr", "sa_", "si_", "sigev_", "st_"};

bool is_lower(char c) { return c >= 'a' && c <= 'z'; }
bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_alphanumeric(char c) { return is_lower(c) || is_upper(c) || is_digit(c); }

template <std::size_t N>
bool is_among(std::string_view const (&words)[N], std::string_view word) {
  return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

bool is_high_surrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }

// The character at `i`, which is left at its last unit.
char32_t character_at(std::u16string_view text, std::size_t& i) {
  char32_t const unit = text[i];
  if (!is_high_surrogate(text[i]) || i + 1 == text.size()) return unit;
  ++i;
  return 0x10000 + ((unit - 0xD800) << 10U) + (static_cast<char32_t>(text[i]) - 0xDC00);
}

std::string by_number(char32_t character) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "u%04lx", static_cast<unsigned long>(character));
  return text.data();
}

// Words with one underscore between them.
class Words {
 public:
  void add(char c) {
    if (is_apart_ && !text_.empty()) text_ += '_';
    is_apart_ = false;
    text_ += c;
  }
  void add_apart(std::string_view word) {
    end_word();
    for (char const c : word) add(c);
    end_word();
  }
  void end_word() { is_apart_ = true; }
  std::string const& text() const { return text_; }

 private:
  std::string text_;
  bool is_apart_ = false;
};

}  // namespace

bool is_identifier(std::string_view text) {
  return !text.empty() && !is_digit(text.front()) &&
         std::all_of(text.begin(), text.end(),
                     [](char c) { return is_alphanumeric(c) || c == '_'; });
}

bool is_keyword(std::string_view identifier) { return is_among(KEYWORDS, identifier); }

bool is_reserved(std::string_view identifier) {
  bool const begins_like_one =
      identifier.size() > 1 && identifier[0] == '_' && is_upper(identifier[1]);
  return begins_like_one || identifier.find("__") != std::string_view::npos;
}

bool may_be_taken(std::string_view identifier) {
  bool const is_like_a_macro = std::none_of(identifier.begin(), identifier.end(), is_lower);
  return is_like_a_macro || is_among(TAKEN, identifier) ||
         std::any_of(std::begin(TAKEN_BEGINNINGS), std::end(TAKEN_BEGINNINGS),
                     [identifier](std::string_view beginning) {
                       return identifier.substr(0, beginning.size()) == beginning;
                     });
}

std::string identifier_like(std::u16string_view name) {
  Words words;
  for (std::size_t i = 0; i < name.size(); ++i) {
    char32_t const character = character_at(name, i);
    if (character >= 0x80) {
      words.add_apart(by_number(character));
    } else if (is_alphanumeric(static_cast<char>(character))) {
      words.add(static_cast<char>(character));
    } else {
      words.end_word();
    }
  }
  if (words.text().empty()) return "name";
  return is_digit(words.text().front()) ? "n_" + words.text() : words.text();
}

}  // namespace vocabulary

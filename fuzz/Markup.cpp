#include "fuzz/Markup.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

namespace fuzz {
namespace {

char const* const names[] = {"r",   "a",   "b",   "x",   "y",          "u:a",          "u:b",
                             "v:a", "v:d", "w:e", "all", "last_shown", "first_hidden", "u:hidden"};

char const* const attributes[] = {
    " a='1'",
    " b=\"two &amp; &#x41;\"",
    " x=' \t\n '",
    " u:a=''",
    " v:a='&outer;'",
    " xmlns=''",
    " xmlns='urn:test:u'",
    " xmlns:u='urn:test:u'",
    " xmlns:v='urn:test:v'",
    " xmlns:w='urn:test:w'",
    " xmlns:u='urn:test:v'",
    " last_shown='s'",
    " first_hidden='h'",
    " xml:lang='en'",
    " xml:space='preserve'",
};

char const* const contents[] = {
    "text",
    " ",
    "\n",
    "\r\n",
    "&amp;",
    "&lt;",
    "&#65;",
    "&#x1F600;",
    "&#13;",
    "\xC3\xA9",
    "\xF0\x9F\x98\x80",
    "]]",
    "<![CDATA[]]>",
    "<![CDATA[ <&> ]]>",
    "<!-- comment -->",
    "<!---->",
    "<?target data?>",
    "<a/>",
    "<b>inside</b>",
    "<x a='1' b='2'><y/>mixed</x>",
    "&text;",
    "&element;",
    "&outer;",
};

char const* const prologs[] = {
    "<?xml version='1.0'?>",
    "<?xml version='1.1' encoding='UTF-8'?>",
    "<!DOCTYPE r [<!ENTITY text 'a text'><!ENTITY element '<a x=\"1\">inside</a>'>]>",
    "<!DOCTYPE r [<!ATTLIST a x CDATA 'default' y NMTOKENS #IMPLIED>]>",
    "<!DOCTYPE r SYSTEM 'a.dtd'>",
    "<!DOCTYPE r [<!ENTITY outer SYSTEM 'b.ent'><!ENTITY % p '<!ENTITY text \"p\">'>%p;]>",
};

struct Token {
  enum Kind { START, END, EMPTY, OTHER };
  std::size_t begin, end;
  Kind kind;
};

/// Tags, other markup, and what stands between them. Knows no more of XML than that takes, and
/// takes anything for a document.
class Tokens {
 public:
  explicit Tokens(std::string_view document) : document_(document) {
    for (std::size_t at = 0; at < document.size();) {
      Token const token = token_at(at);
      tokens_.push_back(token);
      at = token.end;
    }
  }

  std::vector<Token> const& all() const { return tokens_; }
  /// The places of those that begin an element.
  std::vector<std::size_t> elements() const {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
      if (tokens_[i].kind == Token::START || tokens_[i].kind == Token::EMPTY) found.push_back(i);
    }
    return found;
  }
  /// The last token of the element that token `i` begins.
  std::optional<std::size_t> end_of_element(std::size_t i) const {
    std::size_t depth = 0;
    for (; i < tokens_.size(); ++i) {
      if (tokens_[i].kind == Token::START) ++depth;
      if (tokens_[i].kind == Token::END) --depth;
      if (depth == 0) return i;
    }
    return std::nullopt;
  }

 private:
  Token token_at(std::size_t at) const {
    if (document_[at] != '<') return {at, behind("<", at) - 1, Token::OTHER};
    if (begins(at, "<!--")) return {at, behind("-->", at + 4), Token::OTHER};
    if (begins(at, "<![CDATA[")) return {at, behind("]]>", at), Token::OTHER};
    if (begins(at, "<?")) return {at, behind("?>", at), Token::OTHER};
    if (begins(at, "<!DOCTYPE")) {
      bool const has_subset = document_.find('[', at) < document_.find('>', at);
      return {at, behind(has_subset ? "]>" : ">", at), Token::OTHER};
    }
    std::size_t const end = behind(">", at);
    if (begins(at, "</")) return {at, end, Token::END};
    bool const is_empty = end - at > 2 && document_[end - 2] == '/';
    return {at, end, is_empty ? Token::EMPTY : Token::START};
  }

  bool begins(std::size_t at, std::string_view what) const {
    return document_.compare(at, what.size(), what) == 0;
  }
  /// Behind what is missing is one place more than where it begins at the end.
  std::size_t behind(std::string_view what, std::size_t from) const {
    std::size_t const found = document_.find(what, from);
    std::size_t const end = document_.size() + (what == "<" ? 1 : 0);
    return found == document_.npos ? end : found + what.size();
  }

  std::string_view document_;
  std::vector<Token> tokens_;
};

class Change {
 public:
  Change(std::string document, std::mt19937& random)
      : document_(std::move(document)), tokens_(document_), random_(random) {}

  std::string made() {
    auto const elements = tokens_.elements();
    if (elements.empty()) return "<r>" + std::string(one_of(contents)) + "</r>";
    std::size_t const first = elements[below(elements.size())];
    auto const last = tokens_.end_of_element(first);
    if (!last) return inserted(one_of(contents), end_of(first));
    switch (below(8)) {
      case 0:
        return inserted(element(first, *last), some_place());
      case 1:
        return std::string(document_).erase(begin_of(first), end_of(*last) - begin_of(first));
      case 2:
        return wrapped(first, *last);
      case 3:
        return renamed(first, *last, one_of(names));
      case 4:
        return inserted(one_of(prologs), 0);
      case 5:
        return inserted(one_of(attributes), end_of_name(first));
      default:
        return inserted(one_of(contents), some_place());
    }
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }
  template <class T, std::size_t N>
  T one_of(T const (&choices)[N]) {
    return choices[below(N)];
  }

  std::size_t begin_of(std::size_t token) const { return tokens_.all()[token].begin; }
  std::size_t end_of(std::size_t token) const { return tokens_.all()[token].end; }
  std::size_t end_of_name(std::size_t token) const {
    return std::min(document_.find_first_of(" \t\r\n/>", begin_of(token) + 2), end_of(token));
  }
  std::string element(std::size_t first, std::size_t last) const {
    return document_.substr(begin_of(first), end_of(last) - begin_of(first));
  }
  /// Between two tokens inside of the root.
  std::size_t some_place() {
    std::size_t const root = tokens_.elements().front();
    std::size_t const end = tokens_.end_of_element(root).value_or(tokens_.all().size() - 1);
    return root == end ? end_of(root) : end_of(root + below(end - root));
  }

  std::string inserted(std::string const& what, std::size_t place) const {
    return std::string(document_).insert(std::min(place, document_.size()), what);
  }
  std::string wrapped(std::size_t first, std::size_t last) {
    std::string const name = one_of(names);
    std::string const wrapping = "<" + name + ">" + element(first, last) + "</" + name + ">";
    return std::string(document_).replace(begin_of(first), end_of(last) - begin_of(first),
                                          wrapping);
  }
  std::string renamed(std::size_t first, std::size_t last, std::string const& name) const {
    std::string changed = document_;
    // The end first, which moves nothing that stands before it.
    if (last != first) {
      changed.replace(begin_of(last), end_of(last) - begin_of(last), "</" + name + ">");
    }
    std::size_t const begin = begin_of(first) + 1;
    return changed.replace(begin, std::max(end_of_name(first), begin) - begin, name);
  }

  std::string const document_;
  Tokens const tokens_;
  std::mt19937& random_;
};

}  // namespace

std::string with_changed_markup(std::string document, std::mt19937& random) {
  return Change(std::move(document), random).made();
}

}  // namespace fuzz

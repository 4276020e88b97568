#include "vocabulary/Constants.h"

#include <algorithm>

#include "vocabulary/Identifier.h"

namespace vocabulary {

namespace {

constexpr std::string_view NS = "ns_";
constexpr std::u16string_view XML_URI = u"http://www.w3.org/XML/1998/namespace";

// Parts of a URI that say nothing about the vocabulary.
constexpr std::u16string_view SILENT_PARTS[] = {u"http",  u"https",  u"namespace", u"namespaces",
                                                u"ns",    u"schema", u"schemas",   u"urn",
                                                u"xmlns", u"xsd",    u"www"};

bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }

bool is_letter(char16_t c) {
  unsigned int const lower = c | 0x20U;
  return c >= 0x80 || (lower >= 'a' && lower <= 'z');
}

bool has_letter(std::u16string_view text) {
  return std::any_of(text.begin(), text.end(), is_letter);
}

// As programs make them up: ns1, N2, p3.
bool is_made_up(std::u16string_view prefix) {
  std::size_t const number = prefix.find_first_of(u"0123456789");
  return number <= 2 &&
         std::all_of(prefix.begin() + static_cast<std::ptrdiff_t>(number), prefix.end(), is_digit);
}

// Such as v1.2, which is all digits and punctuation but for its beginning.
bool is_version(std::u16string_view part) {
  return part.size() > 1 && (part[0] == u'v' || part[0] == u'V') && is_digit(part[1]) &&
         !has_letter(part.substr(1));
}

bool is_telling(std::u16string_view part) {
  return has_letter(part) && !is_version(part) &&
         std::find(std::begin(SILENT_PARTS), std::end(SILENT_PARTS), part) ==
             std::end(SILENT_PARTS);
}

// The last part that says something; the whole URI when none does.
std::u16string_view telling_part(std::u16string_view uri) {
  std::u16string_view rest = uri;
  while (!rest.empty()) {
    std::size_t const separator = rest.find_last_of(u"/:#?=&");
    std::size_t const begin = separator == std::u16string_view::npos ? 0 : separator + 1;
    if (is_telling(rest.substr(begin))) return rest.substr(begin);
    rest = rest.substr(0, begin == 0 ? 0 : begin - 1);
  }
  return uri;
}

std::u16string_view word_of(std::u16string_view uri, std::u16string_view prefix) {
  if (uri == XML_URI) return u"xml";
  return prefix.empty() || is_made_up(prefix) ? telling_part(uri) : prefix;
}

// The constant of a namespace without what all of them begin with.
std::u16string word_of_constant(std::string_view constant) {
  if (constant.empty()) return u"plain";
  if (constant.size() > NS.size() && constant.substr(0, NS.size()) == NS) {
    constant.remove_prefix(NS.size());
  }
  return {constant.begin(), constant.end()};
}

std::string usable(std::string const& identifier) {
  return is_keyword(identifier) || may_be_taken(identifier) ? identifier + "_" : identifier;
}

}  // namespace

std::string Constants::of_namespace(std::u16string_view uri, std::u16string_view prefix) {
  return unique(std::string(NS) + identifier_like(word_of(uri, prefix)));
}

std::string Constants::of_name(std::u16string_view local, std::string const& ns_constant) {
  std::string usual = usable(identifier_like(local));
  if (taken_.insert(usual).second) return usual;
  std::u16string with_namespace = word_of_constant(ns_constant);
  with_namespace.append(u"_").append(local);
  return unique(usable(identifier_like(with_namespace)));
}

std::string Constants::unique(std::string const& wanted) {
  std::string constant = wanted;
  for (int i = 2; !taken_.insert(constant).second; ++i) constant = wanted + "_" + std::to_string(i);
  return constant;
}

}  // namespace vocabulary

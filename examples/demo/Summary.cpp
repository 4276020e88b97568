#include "Summary.h"

#include <algorithm>
#include <functional>
#include <map>
#include <ostream>
#include <set>
#include <sstream>

namespace demo {

using Orn::UString;

namespace {

constexpr std::size_t FAMILIES_SHOWN = 4;
constexpr std::size_t TITLES_SHOWN = 4;
constexpr int LINES_SHOWN = 6;

// What a type is one of: image for image/png.
std::string family(FileType const& type) {
  std::string const id = type.id.to_utf8();
  return id.substr(0, id.find('/'));
}

std::multimap<std::size_t, std::string, std::greater<>> families_by_size(
    std::vector<FileType> const& types) {
  std::map<std::string, std::size_t> sizes;
  for (FileType const& type : types) ++sizes[family(type)];
  std::multimap<std::size_t, std::string, std::greater<>> by_size;
  for (auto const& [name, size] : sizes) by_size.emplace(size, name);
  return by_size;
}

void print_largest_families(std::ostream& out, std::vector<FileType> const& types) {
  out << "  largest families   ";
  std::size_t shown = 0;
  for (auto const& [size, name] : families_by_size(types)) {
    if (shown++ == FAMILIES_SHOWN) break;
    out << ' ' << name << ' ' << size;
  }
  out << '\n';
}

std::size_t number_of_languages(std::vector<FileType> const& types) {
  std::set<UString> languages;
  for (FileType const& type : types) {
    for (Title const& title : type.titles) languages.insert(title.language);
  }
  return languages.size();
}

// The first of those types that have most of something.
template <class Amount>
FileType const& most(std::vector<FileType> const& types, Amount amount) {
  return *std::max_element(types.begin(), types.end(), [&](FileType const& a, FileType const& b) {
    return amount(a) < amount(b);
  });
}

void print_patterns(std::ostream& out, FileType const& type) {
  if (type.patterns.empty()) return;
  out << "  most name patterns  " << type.id << '\n' << "                     ";
  for (UString const& pattern : type.patterns) out << ' ' << pattern;
  out << '\n';
}

// Its titles in a few languages, picked from all over the list.
void print_titles(std::ostream& out, FileType const& type) {
  out << "  most languages      " << type.id << '\n';
  std::size_t const step = std::max<std::size_t>(type.titles.size() / TITLES_SHOWN, 1);
  for (std::size_t i = 0; i < type.titles.size() && i < step * TITLES_SHOWN; i += step) {
    Title const& title = type.titles[i];
    out << "                      " << (title.language.empty() ? UString(u"en") : title.language)
        << ": " << title.text << '\n';
  }
}

}  // namespace

Counts count(std::vector<FileType> const& types) {
  Counts counts;
  counts.types = types.size();
  for (FileType const& type : types) {
    counts.patterns += type.patterns.size();
    counts.titles += type.titles.size();
  }
  return counts;
}

std::ostream& operator<<(std::ostream& out, Counts const& counts) {
  return out << counts.types << " file types with " << counts.titles << " titles and "
             << counts.patterns << " name patterns";
}

void print_summary(std::ostream& out, std::vector<FileType> const& types) {
  out << "  " << count(types) << '\n';
  if (types.empty()) return;
  out << "  languages           " << number_of_languages(types) << '\n';
  print_largest_families(out, types);
  print_patterns(out, most(types, [](FileType const& type) { return type.patterns.size(); }));
  print_titles(out, most(types, [](FileType const& type) { return type.titles.size(); }));
}

void print_beginning(std::ostream& out, std::string const& text) {
  std::istringstream lines(text);
  std::string line;
  for (int i = 0; i < LINES_SHOWN && std::getline(lines, line); ++i) out << "  " << line << '\n';
}

}  // namespace demo

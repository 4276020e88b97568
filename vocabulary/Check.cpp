#include "vocabulary/Check.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <xercesc/util/XMLChar.hpp>

#include "tqxml/sax/SaxParser.h"
#include "vocabulary/Identifier.h"

namespace vocabulary {

namespace {

std::string quoted(std::string const& text) { return "'" + text + "'"; }

class Check {
 public:
  explicit Check(DefFile const& file) : complaints_(file.complaints) {}

  void file(DefFile const& file) {
    is_beside_ = false;
    for (DefEntry const& entry : file.entries) {
      constant(entry);
      text(entry);
      enter(file, entry);
    }
  }

  void other_file(DefFile const& file) {
    is_beside_ = true;
    for (DefEntry const& entry : file.entries) enter(file, entry);
  }

  std::vector<Complaint> all() {
    std::stable_sort(
        complaints_.begin(), complaints_.end(),
        [](Complaint const& a, Complaint const& b) { return a.place.line < b.place.line; });
    return complaints_;
  }

 private:
  void enter(DefFile const& file, DefEntry const& entry) {
    number(entry);
    if (entry.kind == DefEntry::NAMESPACE) return;
    if (entry.kind == DefEntry::CATCH_ALL) catch_all(entry);
    name(file, entry);
  }

  void constant(DefEntry const& entry) {
    if (!is_identifier(entry.constant)) {
      complain(entry, quoted(entry.constant) + " cannot be the name of a constant");
    } else if (is_keyword(entry.constant)) {
      complain(entry, quoted(entry.constant) + " is a word of C++ and cannot be a constant");
    } else if (is_reserved(entry.constant)) {
      complain(entry, "C++ reserves " + quoted(entry.constant) + " for the implementation");
    }
    only_once(constants_, entry.constant, entry, "the constant " + quoted(entry.constant));
  }

  void text(DefEntry const& entry) {
    if (entry.kind == DefEntry::NAMESPACE) {
      if (entry.text.empty()) {
        complain(entry, "the URI is empty; names without a namespace are in TQ_NO_NS");
      }
    } else if (!xercesc::XMLChar1_1::isValidNCName(entry.text.data(), entry.text.size())) {
      complain(entry, quoted(to_utf8(entry.text)) + " is no name of an element or attribute");
    }
  }

  void number(DefEntry const& entry) {
    bool const is_namespace = entry.kind == DefEntry::NAMESPACE;
    if (entry.number == 0) {
      complain(entry,
               is_namespace ? "the number 0 means no namespace" : "the number 0 means no tag");
    }
    only_once(is_namespace ? namespace_numbers_ : tag_numbers_, entry.number, entry,
              "the number " + std::to_string(entry.number));
  }

  void name(DefFile const& file, DefEntry const& entry) {
    std::u16string const* const uri = file.uri_of(entry);
    if (uri == nullptr) {
      complain(entry, "there is no namespace " + quoted(entry.ns) + " in the file");
      return;
    }
    Name const name{*uri, entry.text};
    only_once(names_, name, entry, "the name " + to_string(name));
  }

  void catch_all(DefEntry const& entry) { only_once(catch_alls_, 0, entry, "a catch-all"); }

  template <class Seen, class Key>
  void only_once(Seen& seen, Key const& key, DefEntry const& entry, std::string const& what) {
    auto const [place, is_new] = seen.emplace(key, entry.place);
    if (is_new) return;
    Place const& other = place->second;
    complain(entry, what + " is there already, " +
                        (entry.place.file == other.file ? "in line " : "in " + other.file + ":") +
                        std::to_string(other.line));
  }

  /// Other files have complaints only of their own.
  void complain(DefEntry const& entry, std::string const& text) {
    if (!is_beside_) complaints_.push_back({entry.place, text});
  }

  std::vector<Complaint> complaints_;
  bool is_beside_ = false;
  std::map<std::string, Place> constants_;
  std::map<std::int32_t, Place> namespace_numbers_;
  std::map<std::int32_t, Place> tag_numbers_;
  std::map<Name, Place, NameLess> names_;
  std::map<int, Place> catch_alls_;
};

std::map<Name, DefEntry const*, NameLess> entries_by_name(DefFile const& file) {
  std::map<Name, DefEntry const*, NameLess> entries;
  for (DefEntry const& entry : file.entries) {
    std::u16string const* const uri = file.uri_of(entry);
    if (entry.kind != DefEntry::NAMESPACE && uri != nullptr) {
      entries.emplace(Name{*uri, entry.text}, &entry);
    }
  }
  return entries;
}

}  // namespace

std::vector<Complaint> complaints_about(DefFile const& file, std::vector<DefFile> const& beside) {
  Check check(file);
  // First, so that what is there twice is a complaint about the file.
  for (DefFile const& other : beside) check.other_file(other);
  check.file(file);
  return check.all();
}

std::vector<NameList::Entry> missing_names(NameList const& names, DefFile const& file,
                                           std::vector<DefFile> const& beside) {
  auto known = entries_by_name(file);
  for (DefFile const& other : beside) known.merge(entries_by_name(other));
  std::vector<NameList::Entry> missing;
  for (NameList::Entry const& entry : names.entries()) {
    if (known.find(entry.name) == known.end()) missing.push_back(entry);
  }
  return missing;
}

std::vector<Complaint> hidden_attributes(NameList const& names, DefFile const& file) {
  auto const known = entries_by_name(file);
  std::vector<Complaint> hidden;
  for (NameList::Entry const& entry : names.entries()) {
    auto const place = known.find(entry.name);
    if (!entry.is_attribute || place == known.end()) continue;
    DefEntry const& tag = *place->second;
    if (tag.number > Orn::SaxParser::LAST_SHOWN_ATTRIBUTE) {
      hidden.push_back({tag.place, "a SaxParser hides the attribute " + to_string(entry.name) +
                                       ": its number is above " +
                                       std::to_string(Orn::SaxParser::LAST_SHOWN_ATTRIBUTE)});
    }
  }
  return hidden;
}

}  // namespace vocabulary

#include "vocabulary/Addition.h"

#include <algorithm>
#include <map>

#include "tqxml/sax/SaxParser.h"
#include "vocabulary/Check.h"
#include "vocabulary/Constants.h"
#include "vocabulary/DefLiterals.h"
#include "vocabulary/FreeNumbers.h"

namespace vocabulary {

namespace {

/// The new names of one namespace.
struct Group {
  std::u16string uri;
  std::vector<NameList::Entry const*> names;
};

// In the order of the list, but for those without a namespace, which come last: they are the ones
// to give way when another name has the constant.
std::vector<Group> groups_of(std::vector<NameList::Entry> const& entries) {
  std::vector<Group> groups;
  std::map<std::u16string, std::size_t> places;
  for (NameList::Entry const& entry : entries) {
    auto const [place, is_new] = places.emplace(entry.name.uri, groups.size());
    if (is_new) groups.push_back({entry.name.uri, {}});
    groups[place->second].names.push_back(&entry);
  }
  std::stable_partition(groups.begin(), groups.end(),
                        [](Group const& group) { return !group.uri.empty(); });
  return groups;
}

class Writer {
 public:
  Writer(DefFile const& file, std::vector<DefFile> const& beside, std::optional<std::int32_t> first)
      : namespace_numbers_(first),
        tag_numbers_(first),
        begins_file_(file.text.empty()),
        ends_line_(begins_file_ || file.text.back() == '\n'),
        line_end_(file.text.find("\r\n") == std::string::npos ? "\n" : "\r\n") {
    for (DefEntry const& entry : file.entries) {
      constants_.take(entry.constant);
      numbers_for(entry).use_in_file(entry.number);
      if (entry.kind == DefEntry::NAMESPACE) namespaces_.emplace(entry.text, entry.constant);
    }
    for (DefFile const& other : beside) {
      for (DefEntry const& entry : other.entries) numbers_for(entry).use_beside(entry.number);
    }
  }

  Addition add(std::vector<Group> const& groups, NameList const& names) {
    choose_tag_numbers(groups);
    for (Group const& group : groups) add(group, names);
    return addition_;
  }

 private:
  FreeNumbers& numbers_for(DefEntry const& entry) {
    return entry.kind == DefEntry::NAMESPACE ? namespace_numbers_ : tag_numbers_;
  }

  /// In the order of the lines, unless that gives numbers to attributes that a SaxParser hides:
  /// then attributes have theirs first.
  void choose_tag_numbers(std::vector<Group> const& groups) {
    std::vector<NameList::Entry const*> entries;
    for (Group const& group : groups) {
      entries.insert(entries.end(), group.names.begin(), group.names.end());
    }
    std::vector<std::int32_t> numbers;
    for (std::size_t i = 0; i < entries.size(); ++i) numbers.push_back(tag_numbers_.take());
    if (!numbers.empty() && numbers.back() > Orn::SaxParser::LAST_SHOWN_ATTRIBUTE) {
      std::stable_partition(entries.begin(), entries.end(),
                            [](NameList::Entry const* entry) { return entry->is_attribute; });
    }
    for (std::size_t i = 0; i < entries.size(); ++i) number_of_[entries[i]] = numbers[i];
  }

  void add(Group const& group, NameList const& names) {
    std::string ns;
    begin_group();
    if (auto const known = namespaces_.find(group.uri); known != namespaces_.end()) {
      ns = known->second;
    } else if (!group.uri.empty()) {
      ns = add_namespace(group.uri, names.prefix_of(group.uri));
    } else {
      line("// Names without a namespace: as attributes and as the root they can only be read.");
    }
    for (NameList::Entry const* const entry : group.names) add(*entry, ns);
  }

  void begin_group() {
    if (!ends_line_) addition_.text += line_end_;
    if (!begins_file_) line("");
    ends_line_ = true;
    begins_file_ = false;
  }

  std::string add_namespace(std::u16string const& uri, std::u16string const& prefix) {
    std::string constant = constants_.of_namespace(uri, prefix);
    line("TQ_NS(" + std::to_string(namespace_numbers_.take()) + ", " + constant + ", " +
         literal_of(uri) + ")");
    ++addition_.namespaces;
    return constant;
  }

  void add(NameList::Entry const& entry, std::string const& ns) {
    line("TQ_TAG(" + std::to_string(number_of_[&entry]) + ", " +
         constants_.of_name(entry.name.local, ns) + ", " + (ns.empty() ? "TQ_NO_NS" : ns) + ", " +
         literal_of(entry.name.local) + ")");
    ++addition_.names;
  }

  void line(std::string const& text) { addition_.text += text + line_end_; }

  Constants constants_;
  FreeNumbers namespace_numbers_;
  FreeNumbers tag_numbers_;
  std::map<NameList::Entry const*, std::int32_t> number_of_;
  /// The constants of the namespaces that the file has, the first one for each URI.
  std::map<std::u16string, std::string> namespaces_;
  bool begins_file_;
  bool ends_line_;
  char const* line_end_;
  Addition addition_;
};

}  // namespace

Addition addition_to(DefFile const& file, std::vector<DefFile> const& beside, NameList const& names,
                     std::optional<std::int32_t> first) {
  std::vector<NameList::Entry> const missing = missing_names(names, file, beside);
  return Writer(file, beside, first).add(groups_of(missing), names);
}

}  // namespace vocabulary

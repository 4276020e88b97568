#ifndef TESTS_CONFORMANCE_RECORD_H
#define TESTS_CONFORMANCE_RECORD_H

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// What the readers did with each of the documents of a collection: a line for each, of columns
/// with tabs between them.
class Record {
 public:
  struct Line {
    /// Path, and what else tells one line from all others.
    std::string key;
    /// What the document is said to be.
    std::string kind;
    std::string dom;
    std::string sax;
  };

  /// Empty when there is no such file.
  static Record from_file(std::string const& path);
  void to_file(std::string const& path) const;

  void add(Line line) { lines_.push_back(std::move(line)); }
  /// The same for lines that have been printed.
  void add_lines(std::string const& text);
  std::vector<Line> const& lines() const { return lines_; }
  /// Null when there is none with that key.
  Line const* find(std::string const& key) const;

  /// Tells which lines are others than in `expected`, and gives how many.
  int tell_changes(Record const& expected, std::ostream& out) const;

 private:
  std::vector<Line> lines_;
};

std::ostream& operator<<(std::ostream& out, Record::Line const& line);

}  // namespace tests

#endif

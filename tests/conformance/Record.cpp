#include "tests/conformance/Record.h"

#include <algorithm>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace tests {
namespace {

Record::Line parsed(std::string const& text) {
  std::istringstream columns(text);
  Record::Line line;
  for (std::string* column : {&line.key, &line.kind, &line.dom, &line.sax}) {
    std::getline(columns, *column, '\t');
  }
  return line;
}

bool same(Record::Line const& a, Record::Line const& b) {
  return a.key == b.key && a.kind == b.kind && a.dom == b.dom && a.sax == b.sax;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, Record::Line const& line) {
  return out << line.key << '\t' << line.kind << '\t' << line.dom << '\t' << line.sax;
}

void Record::add_lines(std::string const& text) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) add(parsed(line));
}

Record Record::from_file(std::string const& path) {
  Record record;
  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) record.add(parsed(line));
  return record;
}

void Record::to_file(std::string const& path) const {
  std::ofstream file(path);
  file << "document\tkind\tDomParser\tSaxParser\n";
  for (Line const& line : lines_) file << line << '\n';
  if (!file.flush()) throw std::runtime_error(path + " could not be written");
}

Record::Line const* Record::find(std::string const& key) const {
  auto const found = std::find_if(lines_.begin(), lines_.end(),
                                  [&key](Line const& line) { return line.key == key; });
  return found == lines_.end() ? nullptr : &*found;
}

int Record::tell_changes(Record const& expected, std::ostream& out) const {
  int changes = 0;
  for (Line const& line : lines_) {
    Line const* const before = expected.find(line.key);
    if (before != nullptr && same(line, *before)) continue;
    ++changes;
    if (before != nullptr) out << "  - " << *before << '\n';
    out << "  + " << line << '\n';
  }
  for (Line const& before : expected.lines_) {
    if (find(before.key) != nullptr) continue;
    ++changes;
    out << "  - " << before << '\n';
  }
  return changes;
}

}  // namespace tests

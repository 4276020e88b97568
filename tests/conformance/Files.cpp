#include "tests/conformance/Files.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace tests {

std::string bytes_of(std::filesystem::path const& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path.string() + " could not be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::vector<std::string>> table_in(std::filesystem::path const& path,
                                               std::size_t columns) {
  std::istringstream lines(bytes_of(path));
  std::vector<std::vector<std::string>> table;
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line)) {
    std::istringstream fields(line);
    std::vector<std::string>& row = table.emplace_back();
    for (std::string field; std::getline(fields, field, '\t');) row.push_back(field);
    if (row.size() < columns) row.resize(columns);
  }
  return table;
}

}  // namespace tests

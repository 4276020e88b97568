#ifndef TESTS_CONFORMANCE_FILES_H
#define TESTS_CONFORMANCE_FILES_H

#include <filesystem>
#include <string>
#include <vector>

namespace tests {

/// The bytes of a file, which must be there.
std::string bytes_of(std::filesystem::path const& path);

/// The lines of a table, which must be there, with the columns of each, but for its heading. There
/// are at least `columns` columns in each, empty where the file has fewer.
std::vector<std::vector<std::string>> table_in(std::filesystem::path const& path,
                                               std::size_t columns);

}  // namespace tests

#endif

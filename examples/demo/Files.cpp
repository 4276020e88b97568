#include "Files.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace demo {

namespace {

[[noreturn]] void raise_for(std::filesystem::path const& path, std::string const& problem) {
  throw std::runtime_error(path.string() + " " + problem + ": " +
                           std::generic_category().message(errno));
}

}  // namespace

std::string read_file(std::filesystem::path const& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) raise_for(path, "cannot be read");
  std::string bytes;
  char piece[1 << 16];
  while (file.read(piece, sizeof piece), file.gcount() > 0) {
    bytes.append(piece, static_cast<std::size_t>(file.gcount()));
  }
  if (file.bad()) raise_for(path, "cannot be read");
  return bytes;
}

void write_file(std::filesystem::path const& path, std::string const& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes << std::flush;
  if (!file) raise_for(path, "cannot be written");
}

TemporaryFile::TemporaryFile() {
  std::string name = std::filesystem::temp_directory_path() / "file-types-XXXXXX";
  int const descriptor = mkstemp(name.data());
  if (descriptor < 0) raise_for(name, "cannot be made");
  close(descriptor);
  path_ = name;
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

}  // namespace demo

#ifndef DEMO_FILES_H
#define DEMO_FILES_H

#include <filesystem>
#include <string>

namespace demo {

/// The bytes of a file. Raises std::runtime_error, which names the file and the reason, when they
/// cannot be had.
std::string read_file(std::filesystem::path const& path);

/// Makes `bytes` the content of a file. Raises as `read_file` does.
void write_file(std::filesystem::path const& path, std::string const& bytes);

/// A new, empty file with a name of its own, which is removed at the end.
class TemporaryFile {
 public:
  TemporaryFile();
  TemporaryFile(TemporaryFile&&) = delete;
  ~TemporaryFile();

  std::filesystem::path const& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace demo

#endif

#ifndef JOBS_FILES_H
#define JOBS_FILES_H

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

// All bytes of a file. A stream that never opened would read as an empty document, and the
// complaint would be about that.
inline std::string bytes_of(std::string const& file) {
  std::ifstream in(file, std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(in), {});
  if (!in) throw std::runtime_error("cannot be read");
  return bytes;
}

#endif

// demo [FILE [CATALOGUE]]
//
// Reads a shared MIME database, the list of file types that desktops share, and says what is in it.
// Then writes a catalogue of those types as an XML document of its own, reads that back and checks
// that nothing was lost or changed on the way. The catalogue is kept when it is given a name.

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Files.h"
#include "MimeDatabase.h"
#include "Summary.h"
#include "TypeCatalogue.h"
#include "tqutil/STPException.h"

namespace {

using demo::FileType;
using std::filesystem::path;

constexpr char DEFAULT_DATABASE[] = "/usr/share/mime/packages/freedesktop.org.xml";

using Reader = std::vector<FileType>(std::string const&);

// What is wrong with a document is said together with the name of its file.
std::vector<FileType> parse(path const& file, std::string const& text, Reader* reader) {
  try {
    return reader(text);
  } catch (Orn::STPException const& e) {
    throw std::runtime_error(file.string() + ": " + e.what());
  }
}

std::vector<FileType> read_database(path const& file) {
  std::string const text = demo::read_file(file);
  std::vector<FileType> types = parse(file, text, demo::read_mime_database);
  std::cout << "Read " << file.string() << ", " << text.size() << " bytes:\n";
  demo::print_summary(std::cout, types);
  return types;
}

void write_catalogue(path const& file, std::vector<FileType> const& types) {
  std::string const text = demo::write_catalogue(types);
  demo::write_file(file, text);
  std::cout << "Wrote a catalogue of them, " << text.size() << " bytes, which begins:\n";
  demo::print_beginning(std::cout, text);
}

void check_catalogue(path const& file, std::vector<FileType> const& written) {
  std::vector<FileType> const read = parse(file, demo::read_file(file), demo::read_catalogue);
  if (!(read == written)) throw std::runtime_error("what was read back is not what was written");
  std::cout << "Read the catalogue back:\n  " << demo::count(read)
            << ", all as they were written.\n";
}

void run(path const& database, path const& catalogue) {
  std::vector<FileType> const types = read_database(database);
  write_catalogue(catalogue, types);
  check_catalogue(catalogue, types);
}

void run(path const& database) {
  demo::TemporaryFile const catalogue;
  run(database, catalogue.path());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 3) {
    std::cerr << "demo: too many arguments; give it a file to read and a file to write, or less\n";
    return 1;
  }
  path const database = argc > 1 ? argv[1] : DEFAULT_DATABASE;
  try {
    if (argc > 2) {
      run(database, argv[2]);
    } else {
      run(database);
    }
  } catch (std::exception const& e) {
    std::cerr << "demo: " << e.what() << '\n';
    return 1;
  }
}

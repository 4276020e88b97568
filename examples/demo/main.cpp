// demo [FILE [CATALOGUE]]
//
// Reads a shared MIME database, the list of file types that desktops share, and says what is in it.
// Then writes a catalogue of those types as an XML document of its own, reads that back and checks
// that nothing was lost or changed on the way. The catalogue is kept when it is given a name. The
// file is read whole and as a stream, which must agree; with "-" the standard input is, as a stream
// only, and the first types are shown as they come in.

#include <filesystem>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Files.h"
#include "MimeDatabase.h"
#include "Summary.h"
#include "TypeCatalogue.h"
#include "TypeTree.h"
#include "tqutil/STPException.h"

namespace {

using demo::FileType;
using std::filesystem::path;

constexpr char DEFAULT_DATABASE[] = "/usr/share/mime/packages/freedesktop.org.xml";
constexpr char STANDARD_INPUT[] = "-";
constexpr std::size_t SHOWN_AT_ONCE = 3;

using Reader = std::vector<FileType>(std::string const&);

// What is wrong with a document is said together with the name of its file.
std::vector<FileType> parse(path const& file, std::string const& text, Reader* reader) {
  try {
    return reader(text);
  } catch (Orn::STPException const& e) {
    throw std::runtime_error(file.string() + ": " + e.what());
  }
}

void check_stream(std::string const& text, std::vector<FileType> const& types) {
  std::istringstream in(text);
  std::vector<FileType> streamed;
  demo::stream_mime_database(in, [&](FileType const& type) { streamed.push_back(type); });
  if (!(streamed == types)) throw std::runtime_error("the two readers do not agree");
  std::cout << "Read it as a stream as well, with the same result.\n";
}

std::vector<FileType> read_file(path const& file) {
  std::string const text = demo::read_file(file);
  std::vector<FileType> types = parse(file, text, demo::read_mime_database);
  std::cout << "Read " << file.string() << ", " << text.size() << " bytes:\n";
  demo::print_summary(std::cout, types);
  check_stream(text, types);
  return types;
}

// Shows the first types while the rest may still be under way.
std::vector<FileType> read_standard_input() {
  std::cout << "Reading the standard input, which begins with:\n";
  std::vector<FileType> types;
  demo::stream_mime_database(std::cin, [&](FileType const& type) {
    types.push_back(type);
    if (types.size() <= SHOWN_AT_ONCE) std::cout << "  " << type.id << std::endl;
  });
  std::cout << "In all:\n";
  demo::print_summary(std::cout, types);
  return types;
}

std::string write_catalogue(path const& file, std::vector<FileType> const& types) {
  std::string text = demo::write_catalogue(types);
  demo::write_file(file, text);
  std::cout << "Wrote a catalogue of them, " << text.size() << " bytes, which begins:\n";
  demo::print_beginning(std::cout, text);
  return text;
}

void check_catalogue(path const& file, std::vector<FileType> const& written) {
  std::vector<FileType> const read = parse(file, demo::read_file(file), demo::read_catalogue);
  if (!(read == written)) throw std::runtime_error("what was read back is not what was written");
  std::cout << "Read the catalogue back:\n  " << demo::count(read)
            << ", all as they were written.\n";
}

void check_tree(std::string const& catalogue, std::vector<FileType> const& types) {
  for (auto const& [before, after] : demo::send_through_a_tree(catalogue, types)) {
    // Each reader gives attributes in the reverse of its own order, and trees compare them in
    // order.
    std::cout << "Made a tree of " << before.id << " with each reader:\n"
              << "  equal, for no element in it has two attributes, whose order could differ.\n"
              << "Added a pattern to the tree, wrote it into a new document and read that back:\n"
              << "  patterns before " << before.patterns.size() << ", after "
              << after.patterns.size() << "; titles before " << before.titles.size() << ", after "
              << after.titles.size() << ".\n";
    if (after.patterns.size() != before.patterns.size() + 1 || !(after.titles == before.titles)) {
      throw std::runtime_error("the tree did not become the document it should have");
    }
  }
}

void run(path const& database, path const& catalogue) {
  std::vector<FileType> const types =
      database == STANDARD_INPUT ? read_standard_input() : read_file(database);
  std::string const text = write_catalogue(catalogue, types);
  check_catalogue(catalogue, types);
  check_tree(text, types);
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

// read_document DomParser|SaxParser none|untrusted FILE
// Reads a document from beginning to end and shows the texts and values in it; else says why not,
// and ends with status 1.

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <utility>

#include "tests/limits/Readers.h"

int main(int argc, char** argv) {
  std::ifstream file(argc == 4 ? argv[3] : "", std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(file), {});
  for (tests::Reader const& reader : tests::READERS) {
    if (!file.is_open() || std::string(argv[1]) != reader.name) continue;
    bool const untrusted = std::string(argv[2]) == "untrusted";
    try {
      Orn::ReadLimits const limits = untrusted ? Orn::ReadLimits::untrusted() : Orn::ReadLimits();
      std::cout << reader.read(std::move(text), limits) << '\n';
      return 0;
    } catch (Orn::STPException const& e) {
      std::cout << e.what() << '\n';
      return 1;
    }
  }
  std::cerr << "usage: read_document DomParser|SaxParser none|untrusted FILE\n";
  return 2;
}

// read_document DomParser|SaxParser none|untrusted|closed FILE
// Reads a document from beginning to end and shows the texts and values in it; else says why not,
// and ends with status 1. Of the limits `closed` is the one that refuses what is external, alone.

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <utility>

#include "tests/limits/Readers.h"

namespace {

Orn::ReadLimits limits_named(std::string const& name) {
  if (name == "untrusted") return Orn::ReadLimits::untrusted();
  Orn::ReadLimits limits;
  limits.refuse_external = name == "closed";
  return limits;
}

}  // namespace

int main(int argc, char** argv) {
  std::ifstream file(argc == 4 ? argv[3] : "", std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(file), {});
  for (tests::Reader const& reader : tests::READERS) {
    if (!file.is_open() || std::string(argv[1]) != reader.name) continue;
    try {
      std::cout << reader.read(std::move(text), limits_named(argv[2])) << '\n';
      return 0;
    } catch (Orn::STPException const& e) {
      std::cout << e.what() << '\n';
      return 1;
    }
  }
  std::cerr << "usage: read_document DomParser|SaxParser none|untrusted|closed FILE\n";
  return 2;
}

#include <functional>
#include <iostream>
#include <sstream>
#include <string>

#include "tests/support/TestTags.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/foundation/ReadLimits.h"
#include "tqxml/sax/SaxParser.h"
#include "tqxml/writer/XmlDoc.h"

// A program like any other, but that Xerces-C++ cannot be initialised in it: prints what comes of
// every constructor of both readers, and of a document that is written.

namespace {

using Orn::DomParser;
using Orn::ReadLimits;
using Orn::SaxParser;
using Orn::XmlDoc;

void print_outcome(char const* what, std::function<void()> const& construct) {
  std::cout << what << ": ";
  try {
    construct();
    std::cout << "made\n";
  } catch (Orn::RuntimeException const& e) {
    std::cout << e.what() << '\n';
  }
}

}  // namespace

int main() {
  std::string const text = "<r/>";
  std::istringstream in(text);
  XmlDoc doc(testtags::u_r);
  doc.close();
  std::cout << doc.byte_array() << '\n';
  ReadLimits const limits = ReadLimits::untrusted();
  print_outcome("DomParser()", [] { DomParser const parser; });
  print_outcome("DomParser(text)", [&] { DomParser const parser(text); });
  print_outcome("DomParser(text to take over)",
                [] { DomParser const parser(std::string("<r/>")); });
  print_outcome("DomParser(document)", [&] { DomParser const parser(doc); });
  print_outcome("DomParser(text, limits)", [&] { DomParser const parser(text, limits); });
  print_outcome("DomParser(text to take over, limits)",
                [&] { DomParser const parser(std::string("<r/>"), limits); });
  print_outcome("SaxParser()", [] { SaxParser const parser; });
  print_outcome("SaxParser(stream)", [&] { SaxParser const parser(in); });
  print_outcome("SaxParser(pointer to stream)", [&] { SaxParser const parser(&in); });
  print_outcome("SaxParser(null)", [] { SaxParser const parser(nullptr); });
  print_outcome("SaxParser(limits)", [&] { SaxParser const parser(limits); });
  print_outcome("SaxParser(stream, limits)", [&] { SaxParser const parser(in, limits); });
  print_outcome("SaxParser(pointer to stream, limits)",
                [&] { SaxParser const parser(&in, limits); });
}

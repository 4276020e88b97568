#include <sstream>

#include "tests/threads/Work.h"
#include "tqxml/sax/SaxParser.h"

// Does what no program may: gives handles on one element to several threads. Whoever looks for
// races must find this one, inside of the library.

int main() {
  std::istringstream in("<r/>");
  Orn::SaxParser parser(in);
  Orn::SaxParser::Elem const shared = parser.root();
  tests::in_threads(2, [&shared](int /*thread*/) {
    for (int i = 0; i < 1000; ++i) Orn::SaxParser::Elem const copy(shared);
  });
}

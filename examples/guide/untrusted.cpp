// Documents from strangers, read with ReadLimits.

#include <sstream>

#include "shop.h"
#include "show.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/sax/SaxParser.h"

using Orn::Catalogue;
using Orn::DomParser;
using Orn::ReadLimits;
using Orn::SaxParser;

namespace {

void whole() {
  section("whole");
  //! [whole]
  std::string const harmless = "<order xmlns='urn:example:shop'><item>tea</item></order>";
  std::string const hostile =
      "<!DOCTYPE order [<!ENTITY e SYSTEM 'file:///etc/passwd'>]>\n"
      "<order xmlns='urn:example:shop'><item>&e;</item></order>";
  for (std::string const& received : {harmless, hostile}) {
    try {
      DomParser parser(received, ReadLimits::untrusted());
      std::cout << parser.root().child(shop::item).data() << '\n';
    } catch (Orn::STPException const& e) {
      std::cout << e.what() << '\n';
    }
  }
  //! [whole]
}

void stream() {
  section("stream");
  //! [stream]
  std::string endless = "<order xmlns='urn:example:shop'>\n";
  for (int i = 0; i < 2000; ++i) endless += "<item>";
  std::istringstream received(endless);
  SaxParser parser(ReadLimits::untrusted());
  try {
    SaxParser::Elem order = parser.initialize(&received);
    order.match(shop::order);
    std::cout << order.data() << '\n';
  } catch (Orn::StateException const&) {
    std::cout << "line " << parser.error_line() << ": " << parser.error_text() << '\n';
  }
  //! [stream]
}

void own() {
  section("own");
  //! [own]
  ReadLimits limits = ReadLimits::untrusted();
  limits.refuse_doctype = false;  // entities within the document, none from outside
  limits.bytes = 100'000;
  limits.depth = 20;
  DomParser parser(R"(<!DOCTYPE order [<!ENTITY shop "Tea and More">]>
<order xmlns="urn:example:shop" xmlns:s="urn:example:shop" s:id="&shop;"/>)",
                   limits);
  std::cout << parser.root().next_attr().data() << '\n';
  //! [own]
}

//! [crossed]
// A DomParser has one message for what is malformed and for what goes beyond a limit.
bool crossed_a_limit(Orn::RuntimeException const& e) {
  return e.message().index() == Catalogue::XERCES_SAX_PARSE_EXCEPTION &&
         e.message().arg(3).text().find(u"ReadLimits::", 0) == 0;
}
//! [crossed]

void told_apart() {
  section("told-apart");
  //! [told-apart]
  for (char const* received : {"<!DOCTYPE order><order/>", "<order>"}) {
    try {
      DomParser(received, ReadLimits::untrusted()).root();
    } catch (Orn::RuntimeException const& e) {
      std::cout << (crossed_a_limit(e) ? "refused" : "malformed") << '\n';
    }
  }
  //! [told-apart]
}

}  // namespace

int main() {
  whole();
  stream();
  own();
  told_apart();
}

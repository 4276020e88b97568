// Failures, and what they carry.

#include "shop.h"
#include "show.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"

using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::StateException;
using Orn::STPException;
using Orn::UString;
using Orn::XmlTag;

namespace {

void place() {
  section("place");
  //! [place]
  DomParser parser("<order xmlns='urn:example:shop'>\n  <item>tea</note>\n</order>");
  try {
    parser.root();
  } catch (RuntimeException const& e) {
    std::cout << e.what() << '\n';
    if (e.message().index() == Catalogue::XERCES_SAX_PARSE_EXCEPTION) {
      std::cout << "line " << e.message().arg(1).text() << '\n';
    }
  }
  //! [place]
}

void shape() {
  section("shape");
  //! [shape]
  DomParser parser("<order xmlns='urn:example:shop'><item>tea</item></order>");
  DomParser::Elem order = parser.root();
  try {
    order.child(shop::total);
  } catch (StateException const& e) {
    std::cout << e.what() << '\n';
  }
  //! [shape]
}

void unknown() {
  section("unknown");
  //! [unknown]
  DomParser parser("<parcel xmlns='urn:example:post'/>");
  try {
    parser.root().match(shop::order);
  } catch (Orn::TagException const& e) {
    std::cout << e.what() << '\n';
  }
  try {
    XmlTag::lookup(XmlTag::Id{4711});
  } catch (Orn::TagException const& e) {
    std::cout << e.what() << '\n';
  }
  //! [unknown]
}

void bytes() {
  section("bytes");
  //! [bytes]
  try {
    UString::from_utf8("gr\xfcn");
  } catch (Orn::EncodingException const& e) {
    std::cout << e.what() << '\n';
  }
  //! [bytes]
}

//! [chain]
void read_order(std::string const& text) {
  try {
    DomParser parser(text);
    parser.root().match(shop::order);
  } catch (RuntimeException const& e) {
    static char const* messages[] = {"shop 1", "SHOP0001E The order cannot be read."};
    throw RuntimeException(1, Orn::UMessage(messages, 1), nullptr, &e, 2);
  }
}
//! [chain]

void cause() {
  section("cause");
  //! [cause]
  try {
    read_order("<order");
  } catch (STPException const& e) {
    for (STPException const* reason = &e; reason != nullptr; reason = reason->cause()) {
      std::cout << reason->what() << '\n';
    }
  }
  //! [cause]
}

}  // namespace

int main() {
  place();
  shape();
  unknown();
  bytes();
  cause();
}

// Documents read with DomParser.

#include "attribute.h"
#include "shop.h"
#include "show.h"
#include "tqxml/dom/DomParser.h"

using Orn::DomParser;

namespace {

//! [document]
std::string const& document() {
  static std::string const text = R"(<order xmlns="urn:example:shop" xmlns:s="urn:example:shop"
    xmlns:p="urn:example:price" s:id="42" p:currency="EUR">
  <item s:id="tea">green tea</item>
  <item s:id="cup">a <note>blue</note> cup</item>
  <p:total>4.20</p:total>
</order>)";
  return text;
}
//! [document]

void demand() {
  section("demand");
  //! [demand]
  DomParser parser(document());
  DomParser::Elem order = parser.root();
  order.match(shop::order);                              // must be that element
  std::cout << order.child(shop::total).data() << '\n';  // must have that child
  DomParser::Elem note = order.opt_child(shop::note);    // may have that child
  std::cout << (note.is_nil() ? "no note" : "a note") << '\n';
  //! [demand]
}

void iterate() {
  section("iterate");
  DomParser parser(document());
  DomParser::Elem order = parser.root();
  //! [iterate]
  for (auto part = order.next_child(); !part.is_nil(); part = order.next_child()) {
    if (part.tag() == shop::item) std::cout << part.data() << '\n';
  }
  //! [iterate]
}

void by_tag() {
  section("by-tag");
  DomParser parser(document());
  DomParser::Elem order = parser.root();
  //! [by-tag]
  int items = 0;
  for (auto part = order.next_child(); !part.is_nil(); part = order.next_child()) {
    switch (part.tag()) {
      case shop::item:
        ++items;
        break;
      case shop::total:
        std::cout << items << " items, " << part.data() << '\n';
        break;
      default:
        std::cout << "not wanted: " << Orn::XmlTag::lookup(part.tag()).to_string() << '\n';
    }
  }
  //! [by-tag]
}

void attributes() {
  section("attributes");
  DomParser parser(document());
  //! [attributes]
  DomParser::Elem order = parser.root();
  for (auto attr = order.next_attr(); !attr.is_nil(); attr = order.next_attr()) {
    std::cout << Orn::XmlTag::lookup(attr.tag()).to_string() << " = " << attr.data() << '\n';
  }
  std::cout << attribute(order.child(shop::item), shop::id).data() << '\n';
  //! [attributes]
}

void again() {
  section("again");
  //! [again]
  DomParser parser("<order xmlns='urn:example:shop'/>");
  std::cout << parser.root().is_empty() << '\n';
  parser.set_xml_doc_text("<order xmlns='urn:example:shop'>tea</order>");
  std::cout << parser.root().is_empty() << '\n';
  //! [again]
}

void written() {
  section("written");
  //! [written]
  Orn::XmlDoc doc;
  doc.push_elem(shop::order);
  doc.add_elem(shop::note, u"grüner Tee", true);
  doc.close();
  DomParser parser(doc);
  std::cout << parser.root().child(shop::note).data() << '\n';
  //! [written]
}

}  // namespace

int main() {
  demand();
  iterate();
  by_tag();
  attributes();
  again();
  written();
}

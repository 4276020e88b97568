// Prefixes and declarations.

#include "shop.h"
#include "show.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/writer/XmlDoc.h"

using Orn::DomParser;
using Orn::UString;
using Orn::XmlDoc;

namespace {

void made_up() {
  section("made-up");
  //! [made-up]
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.add_elem(shop::item, u"tea", true);
  doc.add_elem(shop::total, u"4.20", true);
  //! [made-up]
  show(doc);
}

void chosen() {
  section("chosen");
  //! [chosen]
  XmlDoc doc;
  doc.add_ns(shop::ns_shop, u"shop");
  doc.add_ns(shop::ns_price, u"price");
  doc.push_elem(shop::order);
  doc.add_elem(shop::total, u"4.20", true);
  //! [chosen]
  show(doc);
}

void unprefixed() {
  section("unprefixed");
  //! [unprefixed]
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.push_elem(shop::total, true);
  doc.append_elem_body(u"4.20", true);
  doc.pop_elem(shop::total);
  //! [unprefixed]
  show(doc);
}

void xml_lang() {
  section("xml-lang");
  //! [xml-lang]
  XmlDoc doc;
  doc.add_ns(shop::ns_xml, u"xml");
  doc.push_elem(shop::order);
  doc.push_elem(shop::note);
  doc.add_attr(shop::lang, UString(u"de"));
  doc.append_elem_body(u"Tür", true);
  doc.pop_elem(shop::note);
  //! [xml-lang]
  show(doc);
}

void prefixes() {
  section("prefixes");
  //! [prefixes]
  char const* const documents[] = {
      "<order xmlns='urn:example:shop'><note>same</note></order>",
      "<a:order xmlns:a='urn:example:shop'><a:note>same</a:note></a:order>",
      "<order xmlns='urn:example:else'><note>other</note></order>",
  };
  for (char const* document : documents) {
    DomParser parser(document);
    DomParser::Elem note = parser.root().opt_child(shop::note);
    std::cout << (note.is_nil() ? UString(u"no note") : note.data()) << '\n';
  }
  //! [prefixes]
}

void bare_attributes() {
  section("bare-attributes");
  //! [bare-attributes]
  DomParser parser("<order xmlns='urn:example:shop' plain='3'/>");
  DomParser::Attribute attr = parser.root().next_attr();
  std::cout << Orn::XmlTag::lookup(attr.tag()).to_string() << (attr.tag() == shop::plain) << '\n';
  //! [bare-attributes]
}

}  // namespace

int main() {
  made_up();
  chosen();
  unprefixed();
  xml_lang();
  prefixes();
  bare_attributes();
}

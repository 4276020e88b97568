// Prefixes and declarations.

#include "shop.h"
#include "show.h"
#include "tqxml/writer/XmlDoc.h"

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

}  // namespace

int main() {
  made_up();
  chosen();
  unprefixed();
  xml_lang();
}

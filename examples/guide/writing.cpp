// Documents written element by element.

#include "shop.h"
#include "show.h"
#include "tqxml/writer/XmlDoc.h"

using Orn::UString;
using Orn::XmlDoc;

namespace {

void elements() {
  section("elements");
  //! [elements]
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.add_attr(shop::id, 42L);
  doc.push_elem(shop::item);
  doc.add_attr(shop::id, UString(u"tea"));
  doc.append_elem_body(u"green ", true);
  doc.append_elem_body(u"tea", true);
  doc.pop_elem(shop::item);
  doc.add_elem(shop::note, u"leave at the door", true);
  doc.add_elem(shop::note);
  doc.pop_elem(shop::order);
  doc.close();
  std::cout << doc.str() << '\n';
  //! [elements]
}

void indented() {
  section("indented");
  //! [indented]
  XmlDoc doc;
  doc.set_indented_format();
  doc.push_elem(shop::order);
  doc.add_elem(shop::item, u"tea", true);
  doc.push_elem(shop::total);
  doc.add_elem(shop::note, u"paid", true);
  doc.pop_elem(shop::total);
  doc.close();
  std::cout << doc.str();
  //! [indented]
}

void markup() {
  section("markup");
  //! [markup]
  XmlDoc doc(Orn::XmlTag::NO_TAG);  // begun: the XML declaration is written
  doc.add_processing_instruction(u"xml-stylesheet href=\"order.css\"");
  doc.push_elem(shop::order);
  doc.add_comment(u"from the web form");
  doc.add_elem_CDATA(shop::note, u"if (a < b && c < d)");
  doc.close();
  std::cout << doc.str() << '\n';
  //! [markup]
}

void pieces() {
  section("pieces");
  //! [pieces]
  XmlDoc doc;
  doc.add_ns(shop::ns_price);  // used below, so it must be known before the first piece
  doc.push_elem(shop::order);
  std::cout << doc.inc_str() << '\n';
  doc.add_elem(shop::item, u"tea", true);
  std::cout << doc.inc_str() << '\n';
  doc.add_elem(shop::total, u"4.20", true);
  doc.close();
  std::cout << doc.str() << '\n';
  //! [pieces]
}

void refused() {
  section("refused");
  //! [refused]
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.push_elem(shop::item);
  try {
    doc.pop_elem(shop::order);
  } catch (Orn::StateException const& e) {
    std::cout << e.what() << '\n';
  }
  doc.pop_elem(shop::item);  // the document is as it was, and can go on
  doc.close();
  std::cout << doc.str() << '\n';
  //! [refused]
}

}  // namespace

int main() {
  elements();
  indented();
  markup();
  pieces();
  refused();
}

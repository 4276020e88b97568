// What is escaped, and what is written as it is.

#include "shop.h"
#include "show.h"
#include "tqxml/writer/XmlDoc.h"

using Orn::XmlDoc;

namespace {

void text() {
  section("text");
  //! [text]
  for (char16_t const* sample : {u"tea for 2 > 1", u"R&D", u"&&&", u"a]]>b", u"&amp;"}) {
    std::cout << XmlDoc::escape(sample) << '\n';
  }
  //! [text]
}

void raw() {
  section("raw");
  //! [raw]
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.add_elem(shop::note, u"a < b", true);
  doc.add_elem(shop::note, u"a &lt; b", false);
  //! [raw]
  show(doc);
}

void attributes() {
  section("attributes");
  //! [attributes]
  XmlDoc doc;
  doc.push_elem(shop::item);
  doc.add_attr(shop::id, XmlDoc::escape_attr(u"12\" plate,\nR&D"));
  //! [attributes]
  show(doc);
}

void cdata() {
  section("cdata");
  //! [cdata]
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.add_elem_CDATA(shop::note, u"<b>");
  try {
    doc.add_elem_CDATA(shop::note, u"a[b[0]]>1");
  } catch (Orn::IllegalArgException const& e) {
    std::cout << e.what() << '\n';
  }
  //! [cdata]
  show(doc);
}

}  // namespace

int main() {
  text();
  raw();
  attributes();
  cdata();
}

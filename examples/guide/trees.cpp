// Element trees.

#include "shop.h"
#include "show.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/writer/XmlDocElem.h"

using Orn::DomParser;
using Orn::UString;
using Orn::XmlDoc;

namespace {

void build() {
  section("build");
  //! [build]
  XmlDoc::Elem order(shop::order);
  order.add_attr(shop::id, 42L);
  XmlDoc::Elem& item = order.add_elem(shop::item, u"tea", true);
  item.add_attr(shop::id, UString(u"green"));  // changes the child inside of the order
  std::cout << order.str() << '\n' << XmlDoc(order).str() << '\n';
  //! [build]
}

void shared() {
  section("shared");
  //! [shared]
  XmlDoc::Elem order(shop::order);
  XmlDoc::Elem& item = order.add_elem(shop::item, u"tea", true);
  XmlDoc::Elem copy = order;
  order.add_elem(shop::note, u"for one of them", true);
  item.add_body(u" and cake", true);  // the item is in both
  std::cout << order.content() << '\n' << copy.content() << '\n';
  //! [shared]
}

void from_reader() {
  section("from-reader");
  //! [from-reader]
  DomParser parser("<order xmlns='urn:example:shop'>now: <item>R&amp;D</item></order>");
  XmlDoc::Elem order(parser.root());
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.add_elem(order, false);
  //! [from-reader]
  show(doc);
}

void compare() {
  section("compare");
  //! [compare]
  XmlDoc::Elem tea_and_cup(shop::order);
  tea_and_cup.add_elem(shop::item, u"tea", true);
  tea_and_cup.add_elem(shop::item, u"cup", true);
  XmlDoc::Elem two_teas(shop::order);
  two_teas.add_elem(shop::item, u"tea", true);
  two_teas.add_elem(shop::item, u"tea", true);
  std::cout << (tea_and_cup == two_teas) << (two_teas == tea_and_cup) << '\n';
  //! [compare]
}

}  // namespace

int main() {
  build();
  shared();
  from_reader();
  compare();
}

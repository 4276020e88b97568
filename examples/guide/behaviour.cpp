// Behaviour that may surprise.

#include <sstream>

#include "shop.h"
#include "show.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/sax/SaxParser.h"
#include "tqxml/writer/XmlDoc.h"

using Orn::DomParser;
using Orn::SaxParser;
using Orn::UString;
using Orn::XmlDoc;

namespace {

void verbatim() {
  section("verbatim");
  //! [verbatim]
  XmlDoc doc;
  doc.push_elem(shop::item);
  doc.add_attr(shop::id, UString(u"12\" plate"));
  doc.close();
  std::cout << doc.str() << '\n';
  show_failure([&] { DomParser(doc).root(); });
  //! [verbatim]
}

void no_namespace() {
  section("no-namespace");
  //! [no-namespace]
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.add_attr(shop::plain, 1L);  // its tag is in TQ_NO_NS
  doc.close();
  std::cout << doc.str() << '\n';
  show_failure([&] { DomParser(doc).root(); });
  //! [no-namespace]
}

void recorded_prefix() {
  section("recorded-prefix");
  //! [recorded-prefix]
  XmlDoc doc;
  doc.push_elem(shop::order);
  UString text = doc.inc_str();
  show_failure([&] { doc.add_elem(shop::total); });
  doc.add_elem(shop::total);  // not refused any more
  doc.close();
  std::cout << text.append(doc.str()) << '\n';
  show_failure([&] { DomParser(text.to_utf8()).root(); });
  //! [recorded-prefix]
}

void empty_prefix() {
  section("empty-prefix");
  //! [empty-prefix]
  XmlDoc doc;
  doc.add_ns(shop::ns_shop, u"");
  doc.push_elem(shop::order);
  doc.add_elem(shop::note, u"two declarations on the root", true);
  //! [empty-prefix]
  show(doc);
  show_failure([&] { DomParser(doc).root(); });
}

void root_prefix() {
  section("root-prefix");
  //! [root-prefix]
  XmlDoc doc;
  doc.push_elem(shop::order, true);
  doc.push_elem(shop::item, true);  // its namespace has a prefix by now
  doc.pop_elem(shop::item);
  //! [root-prefix]
  show(doc);
}

void smallest_prefix() {
  section("smallest-prefix");
  //! [smallest-prefix]
  XmlDoc doc;
  doc.add_ns(shop::ns_shop, u"z");
  doc.push_elem(shop::order);
  doc.add_ns(shop::ns_shop, u"a");  // the end tag takes this one
  //! [smallest-prefix]
  show(doc);
}

void self_closing() {
  section("self-closing");
  //! [self-closing]
  XmlDoc doc;
  doc.push_elem(shop::order);
  doc.push_elem(shop::note);
  doc.pop_elem(shop::note);
  doc.add_elem(shop::note);
  doc.add_elem(shop::note, u"", true);
  doc.add_elem_CDATA(shop::note, u"");
  //! [self-closing]
  show(doc);
}

void comment_indentation() {
  section("comment-indentation");
  //! [comment-indentation]
  XmlDoc doc;
  doc.set_indented_format();
  doc.push_elem(shop::order);
  doc.add_elem(shop::note);
  doc.add_comment(u"the end tag follows on this line");
  doc.close();
  std::cout << doc.str();
  //! [comment-indentation]
}

void no_declaration() {
  section("no-declaration");
  //! [no-declaration]
  XmlDoc doc;
  doc.add_comment(u"first");
  doc.push_elem(shop::order);
  doc.close();
  std::cout << doc.str() << '\n';
  //! [no-declaration]
}

void second_close() {
  section("second-close");
  //! [second-close]
  XmlDoc doc(shop::order);
  doc.push_elem(shop::order);          // an order in an order
  show_failure([&] { doc.close(); });  // closes the inner one, then complains
  doc.close();
  show_failure([&] { doc.close(); });
  std::cout << doc.str() << '\n';
  //! [second-close]
}

void forbidden_characters() {
  section("forbidden-characters");
  //! [forbidden-characters]
  XmlDoc doc;
  doc.push_elem(shop::note);
  doc.append_elem_body(u"\u0007", true);
  doc.close();
  show_failure([&] { DomParser(doc).root(); });
  //! [forbidden-characters]
}

void carriage_returns() {
  section("carriage-returns");
  //! [carriage-returns]
  XmlDoc doc;
  doc.push_elem(shop::note);
  doc.append_elem_body(u"two\r\nlines", true);
  doc.close();
  std::cout << (DomParser(doc).root().data() == u"two\nlines") << '\n';
  //! [carriage-returns]
}

void iterations() {
  section("iterations");
  //! [iterations]
  DomParser parser(
      "<order xmlns='urn:example:shop' xmlns:s='urn:example:shop' s:id='1'><item/></order>");
  DomParser::Elem order = parser.root();
  for (int i = 0; i < 4; ++i) std::cout << (order.next_child().is_nil() ? "nil " : "child ");
  std::cout << '\n';
  for (int i = 0; i < 4; ++i) std::cout << (order.next_attr().is_nil() ? "nil " : "attribute ");
  std::cout << '\n';
  //! [iterations]
}

void mixed_content() {
  section("mixed-content");
  //! [mixed-content]
  DomParser parser(
      "<s:note xmlns:s='urn:example:shop'>a <s:item>blue</s:item> <![CDATA[<cup>]]></s:note>");
  std::cout << parser.root().data() << '\n';
  //! [mixed-content]
}

void entities() {
  section("entities");
  //! [entities]
  DomParser parser(R"(<!DOCTYPE note [<!ENTITY shop "Tea &amp; More">]>
<note xmlns="urn:example:shop" xmlns:s="urn:example:shop" s:id="&shop;">&shop; &lt;&#38;&gt;</note>)");
  DomParser::Elem note = parser.root();
  std::cout << note.next_attr().data() << '\n' << '"' << note.data() << '"' << '\n';
  //! [entities]
}

void two_readers() {
  section("two-readers");
  //! [two-readers]
  std::string const text = R"(<!DOCTYPE note [<!ENTITY shop "Tea">]>
<note xmlns="urn:example:shop">a &shop; <item>blue</item> cup</note>)";
  DomParser parser(text);
  std::cout << parser.root().data() << '\n';
  std::istringstream in(text);
  std::cout << SaxParser(in).root().data() << '\n';
  //! [two-readers]
}

void tree_attributes() {
  section("tree-attributes");
  //! [tree-attributes]
  DomParser parser("<s:item xmlns:s='urn:example:shop' s:id='12&quot; plate'/>");
  XmlDoc::Elem item(parser.root());
  std::cout << item.str() << '\n';
  //! [tree-attributes]
}

void white_space() {
  section("white-space");
  //! [white-space]
  DomParser parser("<order xmlns='urn:example:shop'><item> </item><note><!-- --></note></order>");
  std::cout << parser.root().child(shop::item).is_empty()
            << parser.root().child(shop::note).is_empty() << '\n';
  //! [white-space]
}

void unregistered() {
  section("unregistered");
  //! [unregistered]
  DomParser parser("<order xmlns='urn:example:shop'><gift/><item>tea</item></order>");
  DomParser::Elem order = parser.root();
  std::cout << order.child(shop::item).data() << '\n';  // passes the gift over
  DomParser::Elem gift = order.next_child();            // no complaint yet
  show_failure([&] { gift.tag(); });
  //! [unregistered]
}

void after_empty_text() {
  section("after-empty-text");
  //! [after-empty-text]
  DomParser parser;  // on the empty text
  show_failure([&] { parser.root(); });
  parser.set_xml_doc_text("<order xmlns='urn:example:shop'/>");
  std::cout << (parser.root().is_nil() ? "nil" : "an order") << '\n';
  parser.set_xml_doc_text("<order xmlns='urn:example:shop'/>");
  std::cout << (parser.root().is_nil() ? "nil" : "an order") << '\n';
  //! [after-empty-text]
}

void after_failure() {
  section("after-failure");
  //! [after-failure]
  DomParser parser("<order xmlns='urn:example:shop'><item>tea</item><item>c");
  show_failure([&] { parser.root(); });
  DomParser::Elem order = parser.root();  // what was built before the failure
  std::cout << order.child(shop::item).data() << '\n';
  //! [after-failure]
}

}  // namespace

int main() {
  verbatim();
  no_namespace();
  recorded_prefix();
  empty_prefix();
  root_prefix();
  smallest_prefix();
  self_closing();
  comment_indentation();
  no_declaration();
  second_close();
  forbidden_characters();
  carriage_returns();
  iterations();
  mixed_content();
  entities();
  two_readers();
  tree_attributes();
  white_space();
  unregistered();
  after_empty_text();
  after_failure();
}

// What gdb is to show: objects in all their conditions, at the calls of `look`.

#include <cstddef>
#include <cstring>
#include <new>
#include <sstream>
#include <string>
#include <utility>

#include "tqutil/UString.h"
#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/sax/SaxParser.h"
#include "tqxml/writer/XmlDoc.h"

namespace orders {
#include "tqutil/vocabulary/constants.h"

#include "orders.def"

#include "tqutil/vocabulary/end.h"

static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"

#include "orders.def"

#include "tqutil/vocabulary/end.h"
};
static Orn::Vocabulary const vocabulary("orders", entries);
}  // namespace orders

using Orn::DomParser;
using Orn::SaxParser;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;

static char const document[] =
    "<o:order xmlns:o='urn:example:orders' o:id='4&amp;2' plain='p'>"
    "<o:item>tea</o:item><o:item/>text<o:note>black</o:note></o:order>";

// Filled as memory is that nobody has written to, or that something else has been written to.
template <class Object, unsigned char BYTE>
static Object& garbage() {
  alignas(Object) static unsigned char bytes[sizeof(Object)];
  for (unsigned char& byte : bytes) byte = BYTE;
  return *std::launder(reinterpret_cast<Object*>(bytes));
}

static void look() { asm volatile(""); }

static void texts() {
  UString empty;
  UString small(u"tea");
  UString large(u"a text that is too long for the room in the string itself");
  UString awkward(u"\"quoted\" \\ line\nend caf\u00e9 \xD800 \U0001F600");
  UString very_long;
  for (int i = 0; i < 1000; ++i) very_long.append(u"0123456789");
  UString source(large);
  UString moved(std::move(source));
  look();
}

static void tags() {
  XmlTag const& in_namespace = XmlTag::lookup(orders::order);
  XmlTag const& plain = XmlTag::lookup(orders::plain);
  XmlTag const temporary(u"urn:x", u"y");
  XmlTag::Id known = orders::note;
  XmlTag::Id large = orders::large;
  XmlTag::Id unknown{99};
  XmlTag::Id negative{-5};
  XmlTag::Id none = XmlTag::NO_TAG;
  look();
  static_cast<void>(in_namespace.id() + plain.id() + temporary.id() + known + large + unknown +
                    negative + none);
}

static void trees() {
  XmlDoc::Elem leaf(orders::item);
  XmlDoc::Elem order(orders::order);
  order.add_attr(orders::id, 42L);
  order.add_attr(orders::plain, u"p");
  order.add_body(u"text", true);
  order.add_elem(orders::item, u"tea", true).add_attr(orders::id, 1L);
  order.add_elem(orders::note, u"", true);
  XmlDoc::Elem unknown(XmlTag::Id{99});
  XmlDoc::Elem source(order);
  XmlDoc::Elem moved(std::move(source));
  look();
}

static void dom_handles() {
  DomParser parser{std::string(document)};
  DomParser::Elem nil;
  DomParser::Elem root = parser.root();
  DomParser::Elem item = root.next_child();
  item.match(orders::item);
  DomParser::Attribute nil_attribute;
  DomParser::Attribute plain = root.next_attr();
  DomParser::Attribute id = root.next_attr();
  look();
}

static void sax_handles_begun() {
  std::istringstream in(document);
  SaxParser parser(in);
  SaxParser::Elem nil;
  SaxParser::Elem root = parser.root();
  look();
}

static void sax_handles() {
  std::istringstream in(document);
  SaxParser parser(in);
  SaxParser::Elem root = parser.root();
  SaxParser::Attribute nil_attribute;
  SaxParser::Attribute plain = root.next_attr();
  SaxParser::Attribute id = root.next_attr();
  SaxParser::Elem item = root.child();
  root.data();
  SaxParser::Elem source = root;
  SaxParser::Elem moved = std::move(source);
  look();
}

static void nothing_that_is_there() {
  auto& zero_text = garbage<UString, 0>();
  auto& bad_text = garbage<UString, 0xA5>();
  auto& zero_tag = garbage<XmlTag, 0>();
  auto& bad_tag = garbage<XmlTag, 0xA5>();
  auto& zero_tree = garbage<XmlDoc::Elem, 0>();
  auto& bad_tree = garbage<XmlDoc::Elem, 0xA5>();
  auto& zero_dom = garbage<DomParser::Elem, 0>();
  auto& bad_dom = garbage<DomParser::Elem, 0xA5>();
  auto& bad_dom_attribute = garbage<DomParser::Attribute, 0xA5>();
  auto& zero_sax = garbage<SaxParser::Elem, 0>();
  auto& bad_sax = garbage<SaxParser::Elem, 0xA5>();
  auto& bad_sax_attribute = garbage<SaxParser::Attribute, 0xA5>();
  // They lead to memory that is there, and is no node and no record.
  auto& other_dom = garbage<DomParser::Elem, 1>();
  auto& other_sax = garbage<SaxParser::Elem, 1>();
  static void* const decoy[32] = {};
  void const* const place = decoy;
  for (std::size_t at = sizeof(void*); at + sizeof place <= sizeof other_dom; at += sizeof place) {
    std::memcpy(reinterpret_cast<char*>(&other_dom) + at, &place, sizeof place);
  }
  std::memcpy(reinterpret_cast<char*>(&other_sax) + sizeof place, &place, sizeof place);
  look();
  static_cast<void>(zero_text);
  static_cast<void>(bad_text);
  static_cast<void>(zero_tag);
  static_cast<void>(bad_tag);
  static_cast<void>(zero_tree);
  static_cast<void>(bad_tree);
  static_cast<void>(zero_dom);
  static_cast<void>(bad_dom);
  static_cast<void>(bad_dom_attribute);
  static_cast<void>(zero_sax);
  static_cast<void>(bad_sax);
  static_cast<void>(bad_sax_attribute);
}

int main() {
  texts();
  tags();
  trees();
  dom_handles();
  sax_handles_begun();
  sax_handles();
  nothing_that_is_there();
}

#include <sstream>
#include <string_view>
#include <vector>

#include "tests/conformance/Reading.h"
#include "tests/conformance/TreeText.h"
#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/sax/SaxParser.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::SaxParser;
using Orn::StateException;
using Orn::UMessage;
using Orn::UString;
using Orn::XmlTag;

std::u16string_view view(UString const& text) {
  return {reinterpret_cast<char16_t const*>(text.data()), text.length()};
}

template <class Elem>
void write_start(Elem& element, TreeText& tree) {
  XmlTag const& name = XmlTag::lookup(element.tag());
  tree.start(view(name.ns()), view(name.simple_name()));
  for (auto attr = element.next_attr(); !attr.is_nil(); attr = element.next_attr()) {
    XmlTag const& attr_name = XmlTag::lookup(attr.tag());
    tree.attribute(view(attr_name.ns()), view(attr_name.simple_name()), view(attr.data()));
  }
}

/// Without recursion: documents may be deeper than the stack.
template <class Elem>
std::u16string tree_below(Elem const& root) {
  TreeText tree;
  std::vector<Elem> open{root};
  write_start(open.back(), tree);
  while (!open.empty()) {
    Elem const child = open.back().next_child();
    if (child.is_nil()) {
      tree.end(view(open.back().data()));
      open.pop_back();
    } else {
      open.push_back(child);
      write_start(open.back(), tree);
    }
  }
  return tree.text();
}

std::string complaint_of(RuntimeException const& e) {
  UMessage const& message = e.message();
  auto const arg = [&](int i) { return message.arg(i).text().to_utf8(); };
  switch (message.index()) {
    case Catalogue::XERCES_SAX_PARSE_EXCEPTION:
      return arg(1) + ":" + arg(2) + " " + arg(3);
    case Catalogue::XERCES_XML_EXCEPTION:
      return "exception " + arg(1) + " " + arg(3);
    case Catalogue::XERCES_DOM_EXCEPTION:
      return "exception " + arg(1) + " " + arg(2);
    default:
      return e.what();
  }
}

std::string complaint_of(SaxParser const& parser, StateException const& e) {
  if (e.message().index() != Catalogue::NOT_VALID_STREAM) return e.what();
  return std::to_string(parser.error_line()) + ":" + std::to_string(parser.error_column()) + " " +
         parser.error_text().to_utf8();
}

template <class... Limits>
Reading read_held(std::string const& xml, Limits const&... limits) {
  try {
    DomParser parser(xml, limits...);
    return {"", tree_below(parser.root())};
  } catch (RuntimeException const& e) {
    return {complaint_of(e), u""};
  } catch (std::exception const& e) {
    return {e.what(), u""};
  }
}

template <class... Limits>
Reading read_streamed(std::string const& xml, Limits const&... limits) {
  std::istringstream in(xml);
  SaxParser parser(limits...);
  try {
    return {"", tree_below(parser.initialize(&in))};
  } catch (StateException const& e) {
    return {complaint_of(parser, e), u""};
  } catch (std::exception const& e) {
    return {e.what(), u""};
  }
}

}  // namespace

Reading read_by_dom_parser(std::string const& xml) { return read_held(xml); }
Reading read_by_sax_parser(std::string const& xml) { return read_streamed(xml); }

Reading read_by_dom_parser(std::string const& xml, Orn::ReadLimits const& limits) {
  return read_held(xml, limits);
}
Reading read_by_sax_parser(std::string const& xml, Orn::ReadLimits const& limits) {
  return read_streamed(xml, limits);
}

}  // namespace tests

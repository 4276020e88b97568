#include "tests/conformance/RoundTrip.h"

#include <algorithm>

#include "tests/dom/DomReader.h"
#include "tests/sax/SaxReader.h"
#include "tests/support/Trees.h"
#include "tqutil/STPException.h"

namespace tests {
namespace {

using Orn::STPException;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;
using Elem = XmlDoc::Elem;

std::u16string text_of(UString const& text) {
  return {reinterpret_cast<char16_t const*>(text.data()), text.length()};
}

void take_twins(Head& head, Twins& twins) {
  head.first = twins.of(head.first);
  for (auto& attr : head.second) attr.id = twins.of(attr.id);
}

/// The tree as it can be written.
Elem to_be_written(Elem const& tree, Twins& twins) {
  return changed(tree, [&twins](Head& head) {
    take_twins(head, twins);
    for (auto& attr : head.second) attr.value = XmlDoc::escape_attr(attr.value);
  });
}

/// Line ends in text as every reader gives them.
UString with_line_feeds(UString const& text) {
  UString normalised;
  for (unsigned int i = 0; i < text.length(); ++i) {
    bool const carriage_return = text[i] == '\r';
    if (carriage_return && text[i + 1] == '\n') continue;
    normalised.append(carriage_return ? static_cast<unsigned short>('\n') : text[i]);
  }
  return normalised;
}

/// The tree as it should be when it has been written and read.
Elem to_be_read(Elem const& tree, Twins& twins) {
  Elem const with_twins = changed(
      tree, [&twins](Head& head) { take_twins(head, twins); },
      [](UString& text) { text = with_line_feeds(text); });
  return with_sorted_attributes(with_twins);
}

bool is_control_character(unsigned char c) {
  return c < ' ' && c != '\t' && c != '\n' && c != '\r';
}

/// Whether the tree came from a document of XML 1.1, for the writer's are of 1.0.
bool holds_control_characters(std::string const& document) {
  return std::any_of(document.begin(), document.end(), is_control_character);
}

template <class Reader>
Elem tree_of(std::string const& xml) {
  Reader reader(xml);
  typename Reader::Elem root = reader.root();
  return Elem(root);
}

template <class Reader>
bool is_refused(std::string const& xml) {
  try {
    tree_of<Reader>(xml);
    return false;
  } catch (STPException const&) {
    return true;
  }
}

template <class Reader>
std::string fault_of_round_trip(std::string const& xml, Twins& twins) {
  Elem const tree = tree_of<Reader>(xml);
  std::string const written = XmlDoc(to_be_written(tree, twins)).byte_array();
  if (holds_control_characters(written)) {
    return is_refused<Reader>(written) ? "" : "control characters are accepted";
  }
  Elem const before = to_be_read(tree, twins);
  Elem const after = with_sorted_attributes(tree_of<Reader>(written));
  return before == after && after == before ? "" : "the tree is another one";
}

}  // namespace

XmlTag::Id Twins::of(XmlTag::Id tag) {
  auto const [place, is_new] = twins_.try_emplace(tag);
  if (is_new) {
    XmlTag const& name = XmlTag::lookup(tag);
    int const new_ns = static_cast<int>(namespaces_.size());
    int const ns = namespaces_.try_emplace(text_of(name.ns()), new_ns).first->second;
    std::string const digits = std::to_string(ns);
    std::u16string const uri = u"urn:twin:" + std::u16string(digits.begin(), digits.end());
    place->second = names_.number_of(uri, text_of(name.simple_name()));
  }
  return place->second;
}

std::string fault_of_dom_round_trip(std::string const& xml, Twins& twins) {
  return fault_of_round_trip<DomReader>(xml, twins);
}

std::string fault_of_sax_round_trip(std::string const& xml, Twins& twins) {
  return fault_of_round_trip<SaxReader>(xml, twins);
}

}  // namespace tests

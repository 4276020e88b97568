#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "fuzz/Confinement.h"
#include "fuzz/Documents.h"
#include "fuzz/Target.h"
#include "tests/support/Trees.h"
#include "tqutil/UtilExceptions.h"
#include "tqutil/Vocabulary.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/sax/SaxParser.h"
#include "tqxml/writer/XmlDoc.h"

// Reads a document with both readers and compares what they make of it. Where they differ by
// contract (docs/behaviour.md, "Where the two readers differ") this target knows how:
//
//   - Attributes come in other orders, and a stream's hides those with high numbers.
//   - The text of mixed content has bare start tags with one reader and not with the other.
//   - What comes of a reference to an entity is seen by one reader only. So of documents that
//     declare entities nothing is compared but whether they are accepted, and the root.
//   - A version of XML between 1.1 and 2.0 is refused by one reader alone, and so are some names in
//     a DTD. Such documents are not compared.
//   - What entities make of a document is compared with all of its bytes by one reader, and with
//     those that have been read by the other. The first counts the copies in its tree as well. So
//     either may refuse for it what the other accepts.
//   - What a piece of markup may take of memory is left without a limit.
//   - An external DTD is read by one reader only. Documents that have one are not compared.

namespace fuzz {
namespace {

using Orn::Catalogue;
using Orn::DomParser;
using Orn::SaxParser;
using Orn::StateException;
using Orn::UString;
using Orn::XmlTag;
using Tree = Orn::XmlDoc::Elem;

// No name is refused, so that as much as possible is read.
Orn::VocabularyEntry const entries[] = {
    {Orn::VocabularyEntry::NAMESPACE, 9001, "ns_any", 0, u"urn:test:any"},
    {Orn::VocabularyEntry::CATCH_ALL, 1130, "any", 9001, u"any"},
};
Orn::Vocabulary const vocabulary("any", entries);

using Attributes = std::vector<std::pair<XmlTag::Id, UString>>;

/// An element as one of the readers shows it.
struct Node {
  XmlTag::Id tag = XmlTag::NO_TAG;
  Attributes attributes;
  UString text;
  bool is_empty = false;
  std::vector<Node> children;
};

template <class Elem>
Node read(Elem elem) {
  Node node;
  node.tag = elem.tag();
  node.is_empty = elem.is_empty();
  for (auto attribute = elem.next_attr(); !attribute.is_nil(); attribute = elem.next_attr()) {
    if (attribute.tag() > SaxParser::LAST_SHOWN_ATTRIBUTE) continue;
    node.attributes.emplace_back(attribute.tag(), attribute.data());
  }
  std::sort(node.attributes.begin(), node.attributes.end());
  for (Elem child = elem.next_child(); !child.is_nil(); child = elem.next_child()) {
    node.children.push_back(read(child));
  }
  node.text = elem.data();
  return node;
}

/// What a reader made of a document.
struct Result {
  std::optional<Node> root;
  std::optional<Tree> tree;
  /// The tree that is held refuses some of what the scanner below both readers takes.
  bool is_refused_by_tree = false;
  /// Of a document that was refused.
  UString complaint, line, column;
};

UString decimal(std::uint64_t number) { return UString::from_utf8(std::to_string(number)); }

/// Whether the tree refuses such documents, by the code of its exception: versions of XML but 1.0
/// and 1.1; a default value for an attribute whose name is none with namespaces; a character beyond
/// U+FFFF in the name of an instruction or in one that a DTD declares.
bool is_known_refusal(UString const& code, std::string const& document) {
  if (code == u"9") return mentions(document, "version");
  if (code == u"14") return mentions(document, "<!ATTLIST");
  return code == u"5" && (mentions(document, "<?") || mentions(document, "<!DOCTYPE"));
}

using Limits = std::optional<Orn::ReadLimits>;

Result read_held(std::string const& document, Limits const& limits) {
  Result result;
  try {
    auto const held = limits ? std::make_unique<DomParser>(document, *limits)
                             : std::make_unique<DomParser>(document);
    DomParser& parser = *held;
    result.root = read(parser.root());
    result.tree = Tree(parser.root());
  } catch (Orn::RuntimeException const& e) {
    check(e.message().catalogue() == Catalogue::table(), "another message was raised");
    switch (e.message().index()) {
      case Catalogue::XERCES_SAX_PARSE_EXCEPTION:
        result.line = e.message().arg(1).text();
        result.column = e.message().arg(2).text();
        result.complaint = e.message().arg(3).text();
        break;
      case Catalogue::XERCES_DOM_EXCEPTION:
        check(is_known_refusal(e.message().arg(1).text(), document), e.what());
        result.is_refused_by_tree = true;
        break;
      case Catalogue::XERCES_XML_EXCEPTION:
        result.complaint = e.message().arg(3).text();
        break;
      default:
        check(Confinement::is_exhausted(), e.what());
    }
  }
  return result;
}

Result read_streamed(std::string const& document, Limits const& limits) {
  Result result;
  std::istringstream in(document);
  SaxParser parser = limits ? SaxParser(*limits) : SaxParser();
  try {
    result.root = read(parser.initialize(&in));
  } catch (StateException const& e) {
    check(e.message().index() == Catalogue::NOT_VALID_STREAM ||
              (limits && e.message().index() == Catalogue::PARSER_ERROR),
          e.what());
    result.complaint = parser.error_text();
    result.line = decimal(parser.error_line());
    result.column = decimal(parser.error_column());
  }
  if (result.root) {
    std::istringstream again(document);
    SaxParser::Elem root = SaxParser(again).root();
    // The parser is gone, and what it has not read with it.
    check(root.tag() == result.root->tag, "the root has another tag");
    in.clear();
    in.seekg(0);
    root = parser.initialize(&in);
    result.tree = Tree(root);
  }
  return result;
}

/// Whether `held` is `streamed` with `tags` bare start tags in between.
bool is_with_start_tags(UString const& held, UString const& streamed, std::size_t tags) {
  // How far `streamed` has been met, and how many tags, at each place of `held`. There is more than
  // one way only where the text itself has the looks of a start tag.
  using Met = std::pair<std::size_t, std::size_t>;
  std::vector<std::set<Met>> met(held.length() + 1);
  met[0].insert({0, 0});
  for (unsigned int i = 0; i < held.length(); ++i) {
    for (auto const& [text, tag] : met[i]) {
      if (text < streamed.length() && held[i] == streamed[static_cast<unsigned int>(text)]) {
        met[i + 1].insert({text + 1, tag});
      }
      if (held[i] != u'<' || tag == tags) continue;
      unsigned int const end = held.find(UString::unit_type{u'>'}, i);
      if (end != UString::npos && end > i + 1) met[end + 1].insert({text, tag + 1});
    }
  }
  return met.back().count({streamed.length(), tags}) != 0;
}

void compare_element(Node const& held, Node const& streamed) {
  check(held.tag == streamed.tag, "the tags differ");
  check(held.attributes == streamed.attributes, "the attributes differ");
}

void compare(Node const& held, Node const& streamed) {
  compare_element(held, streamed);
  check(is_with_start_tags(held.text, streamed.text, held.children.size()), "the texts differ");
  check(held.children.size() == streamed.children.size(), "the children differ");
  // An empty CDATA section is something that is held, and nothing that is read.
  check(held.is_empty == streamed.is_empty || (streamed.is_empty && held.text.empty()),
        "only one is empty");
  for (std::size_t i = 0; i < held.children.size(); ++i) {
    compare(held.children[i], streamed.children[i]);
  }
}

/// A tree as both readers should have it: without what only one shows, and in one order.
Tree comparable(Tree const& tree) {
  return tests::changed(tree, [](tests::Head& head) {
    auto& attributes = head.second;
    attributes.erase(
        std::remove_if(attributes.begin(), attributes.end(),
                       [](auto const& a) { return a.id > SaxParser::LAST_SHOWN_ATTRIBUTE; }),
        attributes.end());
    // The catch-all tag may be there several times.
    std::sort(attributes.begin(), attributes.end(), [](auto const& a, auto const& b) {
      return std::tie(a.id, a.value) < std::tie(b.id, b.value);
    });
  });
}

/// A complaint may name the document, for which each reader has a name of its own.
UString without_name(UString complaint) {
  for (char16_t const* name : {u"'some-fake-system-id?\?\?'", u"'{null}'"}) {
    UString const wanted(name);
    unsigned int const place = complaint.find(wanted, 0);
    if (place != UString::npos) complaint.erase(place, wanted.length());
  }
  return complaint;
}

/// Whether there is nothing in the bytes that could not be decoded, which the reader that has all
/// of them at hand finds sooner, and in front of which there may be something else to complain of.
bool is_plain_utf8(std::string const& document) {
  try {
    static_cast<void>(UString::from_utf8(document));
    return document.find('\0') == document.npos && !mentions(document, "encoding");
  } catch (Orn::EncodingException const&) {
    return false;
  }
}

void compare_complaints(Result const& held, Result const& streamed) {
  if (without_name(held.complaint) != without_name(streamed.complaint)) {
    fail("the complaints differ: " + held.complaint.to_utf8() + "\nand " +
         streamed.complaint.to_utf8());
  }
  if (held.line.empty()) return;
  check(held.line == streamed.line, "the lines differ");
  check(held.column == streamed.column, "the columns differ");
}

bool is_of_amplification(UString const& complaint) {
  return complaint.find(u"ReadLimits::amplification:", 0) == 0;
}

/// Whether both readers accept the document or both refuse it. A zero byte behind the root ends the
/// document, and of bytes behind it that cannot be decoded the reader that has all of them at hand
/// comes upon more. What entities make of a document the readers count each in its way.
bool agree_on_acceptance(Result const& held, Result const& streamed, std::string const& document) {
  if (held.root.has_value() == streamed.root.has_value()) return true;
  if (is_of_amplification(held.complaint) || is_of_amplification(streamed.complaint)) {
    return mentions(document, "<!DOCTYPE");
  }
  return !held.root && document.find('\0') != document.npos && !is_plain_utf8(document);
}

void run(std::string const& document, Limits const& limits) {
  if (has_external_subset(document)) return;
  Result const held = read_held(document, limits);
  if (Confinement::is_exhausted() || held.is_refused_by_tree) return;
  Result const streamed = read_streamed(document, limits);
  if (Confinement::is_exhausted()) return;
  check(agree_on_acceptance(held, streamed, document), "only one reader accepts it");
  if (!held.root || !streamed.root) {
    // The reader that has all of the text may find sooner that it is too long.
    if (!limits && is_plain_utf8(document)) compare_complaints(held, streamed);
  } else if (mentions(document, "<!ENTITY")) {
    compare_element(*held.root, *streamed.root);
  } else {
    compare(*held.root, *streamed.root);
    check(comparable(*held.tree) == comparable(*streamed.tree), "the trees differ");
  }
}

}  // namespace
}  // namespace fuzz

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  fuzz::Confinement const confinement;
  try {
    fuzz::SteeredDocument input(data, size);
    auto limits = fuzz::next_limits(input.steering);
    // What a reader needs for a piece of markup is its own affair.
    if (limits) limits->markup_memory = Orn::ReadLimits::NONE;
    fuzz::run(input.document, limits);
  } catch (std::bad_alloc const&) {
    fuzz::check(fuzz::Confinement::is_exhausted(), "memory ran out");
  }
  return 0;
}

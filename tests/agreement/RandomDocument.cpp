#include "tests/agreement/RandomDocument.h"

#include <iterator>

namespace tests {

using Orn::UString;

RandomDocument::Name const RandomDocument::names[] = {
    {tag::a, "", "", "a"},
    {tag::b, "", "", "b"},
    {tag::c, "", "", "c"},
    {tag::d, "", "", "d"},
    {tag::x, "", "", "x"},
    {tag::u_a, "urn:test:u", "u:", "a"},
    {tag::u_b, "urn:test:u", "u:", "b"},
    {tag::u_c, "urn:test:u", "u:", "c"},
    {tag::v_a, "urn:test:v", "v:", "a"},
    {tag::v_d, "urn:test:v", "v:", "d"},
    {tag::w_e, "urn:test:w", "w:", "e"},
};

namespace {

/// A piece of text as it is written in element content or in an attribute, and what it stands for.
struct Piece {
  char const* xml;
  char16_t const* text;
};

Piece const pieces[] = {
    {"x", u"x"},
    {" ", u" "},
    {"plain words", u"plain words"},
    {"&lt;", u"<"},
    {"&gt;", u">"},
    {"&amp;", u"&"},
    {"&quot;", u"\""},
    {"&apos;", u"'"},
    {"&#65;", u"A"},
    {"&#xe9;", u"\u00e9"},
    {"&#x1F600;", u"\U0001F600"},
    {"&#10;", u"\n"},
    {"&#13;", u"\r"},
    {"\xc3\xa9", u"\u00e9"},
    {"\xe2\x82\xac", u"\u20ac"},
    {"\xf0\x9f\x98\x80", u"\U0001F600"},
};

Piece const content_pieces[] = {
    {"\n", u"\n"}, {"\r\n", u"\n"}, {"\r", u"\n"}, {"\t", u"\t"}, {"\"'", u"\"'"}, {"]]", u"]]"},
};

Piece const attribute_pieces[] = {
    {"\n", u" "},       {"\r\n", u" "}, {"\t", u" "},
    {"&#9;", u"\t"},    {">", u">"},    {"&text;", u"text of an entity"},
    {"&nothing;", u""},
};

std::string const declarations =
    "<!DOCTYPE r [\n"
    "<!ENTITY text 'text of an entity'><!ENTITY nothing ''>\n"
    "<!ENTITY element '<u:a xmlns:u=\"urn:test:u\" x=\"1\">inside</u:a>'>\n"
    "]>\n";

}  // namespace

RandomDocument::RandomDocument(unsigned int seed) : engine_(seed) {
  if (one_in(2)) xml_ += "<?xml version='1.0' encoding='UTF-8'?>";
  write_what_is_invisible();
  xml_ += declarations;
  write_what_is_invisible();
  root_ = write_element(0, "", true);
  write_what_is_invisible();
}

Node RandomDocument::write_element(unsigned int depth, std::string const& default_ns,
                                   bool is_root) {
  Name const& name = one_of(names);
  bool const prefixed = *name.ns_uri != '\0' && one_in(2);
  // Without a prefix the default namespace has to be that of the element.
  std::string const inner_ns = prefixed ? default_ns : name.ns_uri;
  std::string const written = (prefixed ? name.prefix : std::string()) + name.local;
  Node node{name.tag, UString::from_utf8(written), {}, {}};
  xml_ += "<" + written;
  if (is_root) {
    xml_ += " xmlns:u='urn:test:u' xmlns:v=\"urn:test:v\" xmlns:w='urn:test:w'";
  }
  if (inner_ns != default_ns) xml_ += " xmlns='" + inner_ns + "'";
  write_attributes(node);
  if (one_in(5)) {
    xml_ += "/>";
    return node;
  }
  xml_ += ">";
  write_content(node, depth, inner_ns);
  xml_ += "</" + written + ">";
  return node;
}

void RandomDocument::write_attributes(Node& node) {
  // The number of names is a prime, so that any step leads through all of them.
  constexpr auto count = static_cast<unsigned int>(std::size(names));
  unsigned int const start = below(count), step = 1 + below(count - 1);
  for (unsigned int i = 0; i < count; ++i) {
    if (!one_in(6)) continue;
    Name const& name = names[(start + i * step) % count];
    UString value;
    xml_ += std::string(one_in(2) ? " " : "\n  ") + name.prefix + name.local + "=\"";
    for (unsigned int n = below(5); n > 0; --n) {
      Piece const& piece = one_in(3) ? one_of(attribute_pieces) : one_of(pieces);
      xml_ += piece.xml;
      value.append(piece.text);
    }
    xml_ += "\"";
    node.attributes.emplace_back(name.tag, value);
  }
}

void RandomDocument::write_content(Node& node, unsigned int depth, std::string const& default_ns) {
  for (unsigned int n = below(8); n > 0; --n) {
    switch (below(6)) {
      case 0:
      case 1:
        if (depth < 8 && elements_left_ > 0) {
          --elements_left_;
          node.content.push_back(
              {Node::Part::PLAIN, UString(), {write_element(depth + 1, default_ns, false)}});
        }
        break;
      case 2:
        write_text(node);
        break;
      case 3:
        write_cdata(node);
        break;
      case 4:
        write_entity(node);
        break;
      default:
        write_what_is_invisible();
    }
  }
}

void RandomDocument::write_text(Node& node) {
  UString text;
  // Now and then more than the stream gives at once.
  unsigned int const most = one_in(40) ? 600 : 6;
  for (unsigned int n = below(most) + 1; n > 0; --n) {
    Piece const& piece = one_in(4) ? one_of(content_pieces) : one_of(pieces);
    xml_ += piece.xml;
    text.append(piece.text);
    // A line feed behind it would be part of the same line end.
    if (xml_.back() == '\r') xml_ += "<!---->";
  }
  node.content.push_back({Node::Part::PLAIN, text, {}});
}

void RandomDocument::write_cdata(Node& node) {
  static Piece const texts[] = {
      {"", u""},     {"<&>", u"<&>"}, {"&lt;", u"&lt;"},
      {"]]", u"]]"}, {"\r\n", u"\n"}, {"\xf0\x9f\x98\x80", u"\U0001F600"},
  };
  Piece const& piece = one_of(texts);
  xml_ += "<![CDATA[" + std::string(piece.xml) + "]]>";
  node.content.push_back({Node::Part::CDATA, piece.text, {}});
}

void RandomDocument::write_entity(Node& node) {
  switch (below(3)) {
    case 0:
      xml_ += "&text;";
      node.content.push_back({Node::Part::FROM_ENTITY, u"text of an entity", {}});
      break;
    case 1:
      xml_ += "&nothing;";
      break;
    default: {
      xml_ += "&element;";
      Node inside{tag::u_a, u"u:a", {{tag::x, u"1"}}, {}};
      inside.content.push_back({Node::Part::PLAIN, u"inside", {}});
      node.content.push_back({Node::Part::FROM_ENTITY, UString(), {inside}});
    }
  }
}

void RandomDocument::write_what_is_invisible() {
  static char const* const texts[] = {"<!-- <a> & -->", "<!---->", "<?target <b> ?>", "<?t?>"};
  for (unsigned int n = below(3); n > 0; --n) xml_ += one_of(texts);
}

}  // namespace tests

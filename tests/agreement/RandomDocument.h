#ifndef TESTS_AGREEMENT_RANDOMDOCUMENT_H
#define TESTS_AGREEMENT_RANDOMDOCUMENT_H

#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "tests/support/ReaderTest.h"
#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"

namespace tests {

enum class Reader { DOM, STREAMING };

/// An element of a random document, as the contract of the readers shows it.
struct Node {
  /// A piece of content: a text, or one element. What comes out of a reference to an entity is as
  /// good as any other for the streaming reader, and nothing at all for the DOM reader. A CDATA
  /// section is something for the DOM reader even when there is no text in it.
  struct Part {
    enum Kind { PLAIN, CDATA, FROM_ENTITY };
    Kind kind;
    Orn::UString text;
    std::vector<Node> element;
  };

  Orn::XmlTag::Id tag;
  /// As written, prefix included.
  Orn::UString name;
  /// In the order of the document.
  Attributes attributes;
  std::vector<Part> content;

  std::vector<Node const*> children(Reader reader) const {
    std::vector<Node const*> children;
    for (Part const& part : content) {
      if (shows(reader, part) && !part.element.empty()) children.push_back(&part.element.front());
    }
    return children;
  }

  Orn::UString data(Reader reader) const {
    Orn::UString data;
    for (Part const& part : content) {
      if (!shows(reader, part)) continue;
      data.append(part.text);
      if (reader == Reader::DOM && !part.element.empty()) {
        data.append(u"<").append(part.element.front().name).append(u">");
      }
    }
    return data;
  }

  bool is_empty(Reader reader) const {
    for (Part const& part : content) {
      bool const is_nothing = part.text.empty() && part.element.empty();
      bool const counts = reader == Reader::DOM && part.kind == Part::CDATA;
      if (shows(reader, part) && (counts || !is_nothing)) return false;
    }
    return true;
  }

 private:
  static bool shows(Reader reader, Part const& part) {
    return reader == Reader::STREAMING || part.kind != Part::FROM_ENTITY;
  }
};

/// Makes documents up, each together with what it holds.
class RandomDocument {
 public:
  explicit RandomDocument(unsigned int seed);

  std::string const& xml() const { return xml_; }
  Node const& root() const { return root_; }

 private:
  struct Name {
    Orn::XmlTag::Id tag;
    char const* ns_uri;
    char const* prefix;
    char const* local;
  };

  unsigned int below(unsigned int limit) { return static_cast<unsigned int>(engine_() % limit); }
  bool one_in(unsigned int n) { return below(n) == 0; }

  Node write_element(unsigned int depth, std::string const& default_ns, bool is_root);
  void write_attributes(Node& node);
  void write_content(Node& node, unsigned int depth, std::string const& default_ns);
  void write_text(Node& node);
  void write_cdata(Node& node);
  void write_entity(Node& node);
  void write_what_is_invisible();

  template <class T, std::size_t N>
  T const& one_of(T const (&choices)[N]) {
    return choices[below(static_cast<unsigned int>(N))];
  }

  static Name const names[];

  std::mt19937 engine_;
  unsigned int elements_left_ = 60;
  std::string xml_;
  Node root_;
};

}  // namespace tests

#endif

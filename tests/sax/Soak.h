#ifndef TESTS_SAX_SOAK_H
#define TESTS_SAX_SOAK_H

#include <cstddef>
#include <cstdint>
#include <istream>
#include <streambuf>
#include <string>

#include "tests/support/Needs.h"
#include "tqxml/sax/SaxParser.h"

namespace tests {

/// How much there is in a document, or has been read of it; lengths in UTF-16 units.
struct Amounts {
  std::uint64_t elements = 0;
  std::uint64_t attributes = 0;
  std::uint64_t attribute_length = 0;
  std::uint64_t text_length = 0;

  bool operator==(Amounts const& other) const {
    return elements == other.elements && attributes == other.attributes &&
           attribute_length == other.attribute_length && text_length == other.text_length;
  }
};

/// A document of `size` bytes, and a few more, that is made while it is read. The names are those
/// of the tests' vocabulary. No text stands directly in its root: as part of an open element it
/// would have to be kept to the end.
class GeneratedDocument : public std::streambuf {
 public:
  explicit GeneratedDocument(std::uint64_t size) : size_(size) {
    part_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r xmlns:p=\"urn:test:u\">";
    amounts_.elements = 1;
    give_part();
  }

  /// Of what has been made so far.
  Amounts const& amounts() const { return amounts_; }

 protected:
  int_type underflow() override {
    if (ended_) return traits_type::eof();
    if (made_ < size_) {
      make_item();
    } else {
      part_ = "</r>\n";
      ended_ = true;
    }
    give_part();
    return traits_type::to_int_type(*gptr());
  }

 private:
  void make_item() {
    ++items_;
    std::string const number = std::to_string(items_);
    std::string const value(items_ % 100, 'v'), text(items_ % 700, 't');
    part_ = "<a x=\"" + number + "\" p:b=\"" + value + "\">";
    part_ += "<b>" + text + " &amp; " + number + "</b>\n";
    part_ += "<!-- " + number + " --><?target " + number + "?>";
    part_ += "<c><d e=\"" + number + "\"/><![CDATA[<" + number + ">]]></c></a>";
    amounts_.elements += 4;
    amounts_.attributes += 3;
    amounts_.attribute_length += 2 * number.size() + value.size();
    amounts_.text_length += text.size() + 3 + number.size() + 1 + 2 + number.size();
  }

  void give_part() {
    made_ += part_.size();
    setg(part_.data(), part_.data(), part_.data() + part_.size());
  }

  std::uint64_t size_;
  std::uint64_t made_ = 0;
  std::size_t items_ = 0;
  bool ended_ = false;
  std::string part_;
  Amounts amounts_;
};

/// Reads every attribute and every text of the element and of all below it, forgetting each child
/// before the next.
inline void read_everything(Orn::SaxParser::Elem element, Amounts& read) {
  ++read.elements;
  for (auto attr = element.next_attr(); !attr.is_nil(); attr = element.next_attr()) {
    ++read.attributes;
    read.attribute_length += attr.data().length();
  }
  while (true) {
    Orn::SaxParser::Elem const child = element.next_child();
    if (child.is_nil()) break;
    read_everything(child, read);
  }
  read.text_length += element.data().length();
}

/// Whether a document of that size is read as it was made.
inline bool reads_all_of(std::uint64_t size) {
  GeneratedDocument document(size);
  std::istream in(&document);
  Orn::SaxParser const parser(in);
  Amounts read;
  read_everything(parser.root(), read);
  return read == document.amounts();
}

/// What `reads_all_of(size)` needs.
inline Needs needs_of(std::uint64_t size) {
  return needs_of([size] { return reads_all_of(size); });
}

constexpr std::uint64_t MIB = 1048576;
/// By how much the peak of a long document may exceed that of one of a MiB.
constexpr double ALLOWED_DIFFERENCE_MIB = 8;

}  // namespace tests

#endif

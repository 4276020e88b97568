#ifndef TESTS_WRITER_WRITERMODEL_H
#define TESTS_WRITER_WRITERMODEL_H

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/writer/Snapshot.h"
#include "tests/writer/ThreePassEscape.h"

namespace tests {

inline std::u16string to_u16(Orn::UString const& text) {
  return std::u16string(text.data(), text.data() + text.length());
}

inline Orn::UString to_ustring(std::u16string const& text) {
  return Orn::UString(text.data(), text.size());
}

inline std::u16string to_u16(std::uint32_t number) {
  std::string const digits = std::to_string(number);
  return std::u16string(digits.begin(), digits.end());
}

/// What XmlDoc ought to do, in the plainest way: a list of all that has been written, from which
/// everything else is worked out anew whenever it is wanted. It offers the calls of XmlDoc.
class WriterModel {
 public:
  /// Thrown for a refused call: the identifier of the message and its arguments.
  struct Refusal {
    std::string message;
  };

  void set_indented_format() { indented_ = true; }

  void start_doc(Orn::XmlTag::Id root) {
    if (state() > 1) return;
    if (root != Orn::XmlTag::NO_TAG) entry(root);
    if (state() == 0) add_xml_decl(u"UTF-8");
    if (root != Orn::XmlTag::NO_TAG) start(root, false);
  }

  Orn::XmlTag::Id push_elem(Orn::XmlTag::Id tag, bool default_ns) {
    if (state() > 2) refuse("ZEMKA0696E");
    if (state() == 2) {
      start(tag, default_ns);
    } else {
      start_doc(tag);
    }
    return tag;
  }

  void pop_elem(Orn::XmlTag::Id tag) {
    auto const open = open_tags();
    if (open.empty() || (tag != Orn::XmlTag::NO_TAG && tag != open.back())) refuse("ZEMKA0695E");
    Orn::XmlTag const& popped = entry(open.back());
    std::u16string const prefix = smallest_prefix(to_u16(popped.ns())).value_or(u"");
    std::u16string text = after_start_tag() ? u"" : line_break(open.size() - 1);
    text += u"</" + prefix + (prefix.empty() ? u"" : u":") + to_u16(popped.simple_name()) + u">";
    if (open.size() == 1 && indented_) text += u"\n";
    pieces_.push_back({Piece::END, text, open.back()});
  }

  void add_elem(Orn::XmlTag::Id tag, bool default_ns) {
    start_leaf(tag, default_ns);
    pieces_.push_back({Piece::LEAF_END, u"/>", tag});
  }

  void add_elem(Orn::XmlTag::Id tag, Orn::UString const& text, bool do_escape) {
    if (text.empty()) return add_elem(tag, false);
    start_leaf(tag, false);
    append_elem_body(text, do_escape);
    pop_elem(tag);
  }

  void add_elem_CDATA(Orn::XmlTag::Id tag, Orn::UString const& text) {
    if (to_u16(text).find(u"]]>") != std::u16string::npos) {
      refuse("ZEMKA0693E(]]>)(" + text.to_utf8() + ")(" + text.to_utf8() + ")");
    }
    start_leaf(tag, false);
    pieces_.push_back({Piece::TEXT, u"<![CDATA[" + to_u16(text) + u"]]>"});
    pop_elem(tag);
  }

  void add_attr(Orn::XmlTag::Id name, Orn::UString const& value) {
    if (!start_tag_open()) refuse("ZEMKA0692E");
    std::u16string const qualified = qualified_name(name, false);
    pieces_.push_back({Piece::ATTRIBUTE, u" " + qualified + u"=\"" + to_u16(value) + u"\""});
  }

  void add_attr(Orn::XmlTag::Id name, long value) {
    add_attr(name, Orn::UString::from_utf8(std::to_string(value)));
  }

  void append_elem_body(Orn::UString const& text, bool do_escape) {
    if (open_tags().empty()) refuse("ZEMKA0694E");
    pieces_.push_back({Piece::TEXT, do_escape ? in_three_passes(to_u16(text)) : to_u16(text)});
  }

  void add_comment(Orn::UString const& text) { add_markup(u"!-- " + to_u16(text) + u" --"); }
  void add_processing_instruction(Orn::UString const& text) {
    add_markup(u"?" + to_u16(text) + u"?");
  }
  void add_xml_decl(Orn::UString const& encoding) {
    add_markup(u"?xml version=\"1.0\" encoding=\"" + to_u16(encoding) + u"\"?");
  }

  void add_ns(Orn::XmlTag::NsId ns, Orn::UString const& prefix) {
    record(uri_of(ns), to_u16(prefix));
  }
  void add_ns(Orn::XmlTag::NsId ns) {
    std::u16string const uri = uri_of(ns);
    if (!smallest_prefix(uri)) record(uri, made_up_prefix());
  }

  void close() {
    if (state() == 2) {
      if (open_tags().back() != root()) refuse("ZEMKA0690E");
      pop_elem(root());
    }
    if (state() != 0 && state() != 3) refuse("ZEMKA0691E");
    write_declarations();
    closed_ = true;
  }

  Orn::UString str() const {
    if (!closed_) refuse("ZEMKA0697E");
    return to_ustring(out());
  }

  std::string byte_array() const {
    std::string const bytes = str().to_utf8();
    return bytes.substr(0, bytes.find('\0'));
  }

  Orn::UString inc_str() {
    if (state() == 0) refuse("ZEMKA0699E");
    pieces_.push_back({Piece::TAKEN});
    write_declarations();
    std::u16string const piece = out();
    taken_ += piece.size();
    return to_ustring(piece);
  }

  Snapshot snapshot() const {
    Snapshot s;
    s.out = to_ustring(out());
    s.state = state();
    s.tags = open_tags();
    s.start_tag_open = start_tag_open();
    s.after_start_tag = after_start_tag();
    s.root_tag = root();
    s.ns_counter = made_up_;
    s.ns_insert_pos = insert_pos();
    for (auto const& [uri, prefix] : prefixes_) {
      s.ns_decls[to_ustring(uri)].insert(to_ustring(prefix));
    }
    return s;
  }

 private:
  struct Piece {
    enum Kind { MARKUP, START, ATTRIBUTE, TEXT, LEAF_END, END, TAKEN } kind;
    std::u16string text = {};
    Orn::XmlTag::Id tag = Orn::XmlTag::NO_TAG;
  };

  [[noreturn]] static void refuse(std::string const& message) { throw Refusal{message}; }

  static Orn::XmlTag const& entry(Orn::XmlTag::Id tag) {
    try {
      return Orn::XmlTag::lookup(tag);
    } catch (Orn::TagException const&) {
      refuse("TQUTL0001E(" + std::to_string(tag) + ")");
    }
  }

  static std::u16string uri_of(Orn::XmlTag::NsId ns) {
    try {
      return to_u16(Orn::XmlTag::ns_URI(ns));
    } catch (Orn::TagException const&) {
      refuse("TQUTL0003E(" + std::to_string(ns) + ")");
    }
  }

  void start(Orn::XmlTag::Id tag, bool default_ns) {
    std::u16string const name = qualified_name(tag, default_ns);
    pieces_.push_back({Piece::START, line_break(open_tags().size()) + u"<" + name, tag});
  }

  void start_leaf(Orn::XmlTag::Id tag, bool default_ns) {
    if (state() < 2) entry(tag);
    push_elem(tag, default_ns);
  }

  void add_markup(std::u16string const& text) {
    if (state() > 2) refuse("ZEMKA0696E");
    std::u16string const before = state() == 2 ? line_break(open_tags().size()) : u"";
    pieces_.push_back({Piece::MARKUP, before + u"<" + text + u">"});
  }

  std::u16string line_break(std::size_t depth) const {
    return indented_ ? u"\n" + std::u16string(2 * depth, u' ') : u"";
  }

  std::u16string qualified_name(Orn::XmlTag::Id id, bool default_ns) {
    Orn::XmlTag const& tag = entry(id);
    std::u16string const uri = to_u16(tag.ns());
    std::u16string const name = to_u16(tag.simple_name());
    if (!default_ns && !smallest_prefix(uri)) record(uri, made_up_prefix());
    std::u16string const prefix = smallest_prefix(uri).value_or(u"");
    return prefix.empty() ? name + declaration(uri, u"") : prefix + u":" + name;
  }

  static std::u16string declaration(std::u16string const& uri, std::u16string const& prefix) {
    return (prefix.empty() ? u" xmlns" : u" xmlns:" + prefix) + u"=\"" + uri + u"\"";
  }

  std::u16string made_up_prefix() { return u"N" + to_u16(++made_up_); }

  std::optional<std::u16string> smallest_prefix(std::u16string const& uri) const {
    std::optional<std::u16string> smallest;
    for (auto const& [declared_uri, prefix] : prefixes_) {
      if (declared_uri == uri) smallest = std::min(prefix, smallest.value_or(prefix));
    }
    return smallest;
  }

  void record(std::u16string const& uri, std::u16string const& prefix) {
    std::pair<std::u16string, std::u16string> const declared{uri, prefix};
    if (std::find(prefixes_.begin(), prefixes_.end(), declared) == prefixes_.end()) {
      prefixes_.push_back(declared);
    }
    if (declarations_) refuse("ZEMKA0698E");
  }

  void write_declarations() {
    if (root() == Orn::XmlTag::NO_TAG || declarations_) return;
    auto sorted = prefixes_;
    std::sort(sorted.begin(), sorted.end());
    declarations_.emplace();
    for (auto const& [uri, prefix] : sorted) *declarations_ += declaration(uri, prefix);
  }

  /// The text of the first `count` pieces, whether or not it has been taken since.
  std::u16string text(std::size_t count) const {
    std::u16string all;
    bool open = false;
    for (std::size_t i = 0; i < count; ++i) {
      Piece const& piece = pieces_[i];
      if (open && piece.kind != Piece::ATTRIBUTE && piece.kind != Piece::LEAF_END) all += u">";
      if (piece.kind != Piece::ATTRIBUTE) open = piece.kind == Piece::START;
      all += piece.text;
      if (i == place_of_root()) all += declarations_.value_or(u"");
    }
    return all;
  }

  std::u16string out() const { return text(pieces_.size()).substr(taken_); }

  std::uint32_t state() const {
    if (closed_) return 4;
    if (pieces_.empty()) return 0;
    if (root() == Orn::XmlTag::NO_TAG) return 1;
    return open_tags().empty() ? 3 : 2;
  }

  /// The number of pieces when there is no root.
  std::size_t place_of_root() const {
    std::size_t i = 0;
    while (i < pieces_.size() && pieces_[i].kind != Piece::START) ++i;
    return i;
  }

  Orn::XmlTag::Id root() const {
    std::size_t const i = place_of_root();
    return i < pieces_.size() ? pieces_[i].tag : Orn::XmlTag::NO_TAG;
  }

  std::vector<Orn::XmlTag::Id> open_tags() const {
    std::vector<Orn::XmlTag::Id> open;
    for (Piece const& piece : pieces_) {
      if (piece.kind == Piece::START) open.push_back(piece.tag);
      if (piece.kind == Piece::END || piece.kind == Piece::LEAF_END) open.pop_back();
    }
    return open;
  }

  bool start_tag_open() const {
    bool open = false;
    for (Piece const& piece : pieces_) {
      if (piece.kind != Piece::ATTRIBUTE) open = piece.kind == Piece::START;
    }
    return open;
  }

  bool after_start_tag() const {
    bool after = true;
    for (Piece const& piece : pieces_) {
      if (piece.kind == Piece::START || piece.kind == Piece::MARKUP) after = true;
      if (piece.kind == Piece::END || piece.kind == Piece::LEAF_END) after = false;
    }
    return after;
  }

  std::uint32_t insert_pos() const {
    if (root() == Orn::XmlTag::NO_TAG || declarations_) return 0;
    return static_cast<std::uint32_t>(text(place_of_root() + 1).size() - taken_);
  }

  std::vector<Piece> pieces_;
  bool indented_ = false;
  bool closed_ = false;
  std::size_t taken_ = 0;
  std::uint32_t made_up_ = 0;
  std::vector<std::pair<std::u16string, std::u16string>> prefixes_;
  /// What stands behind the root's name once it has been written.
  std::optional<std::u16string> declarations_;
};

}  // namespace tests

#endif

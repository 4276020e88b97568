#include "tests/threads/Work.h"

#include <random>
#include <sstream>

#include "tests/support/TestTags.h"
#include "tqutil/STPException.h"
#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/sax/SaxParser.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {
namespace {

namespace tag = testtags;
using Orn::DomParser;
using Orn::ReadLimits;
using Orn::SaxParser;
using Orn::STPException;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;

class Worker {
 public:
  explicit Worker(unsigned int seed) : engine_(seed) {}

  std::string work() {
    std::string const document = written();
    see(document);
    DomParser in_memory(document);
    walk(in_memory.root());
    std::istringstream stream(document);
    SaxParser streaming(stream);
    walk_and_keep(streaming.root());
    DomParser guarded_in_memory(document, ReadLimits::untrusted());
    walk(guarded_in_memory.root());
    stream.clear();
    stream.seekg(0);
    SaxParser guarded_streaming(stream, ReadLimits::untrusted());
    walk_and_keep(guarded_streaming.root());
    compare_trees(document);
    be_refused(document);
    return seen_.str();
  }

 private:
  static constexpr XmlTag::Id TAGS[] = {tag::u_a, tag::u_b, tag::u_c, tag::v_a, tag::v_d, tag::w_e};

  std::size_t below(std::size_t limit) { return engine_() % limit; }
  XmlTag::Id any_tag() { return TAGS[below(std::size(TAGS))]; }

  UString any_text() {
    static constexpr char16_t const* PIECES[] = {u"text ", u"<&>\"'", u"\u00e9\u20ac",
                                                 u"\U0001F600",
                                                 u"one that is longer than what fits inside "};
    UString text;
    for (std::size_t i = below(6); i != 0; --i) text.append(PIECES[below(std::size(PIECES))]);
    return text;
  }

  void see(std::string const& text) { seen_ << text << '\n'; }
  void see(UString const& text) { see(text.to_utf8()); }
  void see(XmlTag::Id id) { see(XmlTag::lookup(id).to_string()); }

  std::string written() {
    XmlDoc doc(tag::u_r);
    for (int i = 0; i < 10; ++i) write_element(doc, 3);
    doc.close();
    see(doc.str());
    return doc.byte_array();
  }

  void write_element(XmlDoc& doc, int depth) {
    XmlTag::Id const name = doc.push_elem(any_tag());
    if (below(2) == 0) doc.add_attr(tag::v_b, XmlDoc::escape_attr(any_text()));
    if (below(3) == 0) doc.add_attr(tag::u_c, static_cast<long>(below(1000)));
    doc.append_elem_body(any_text(), true);
    doc.add_elem(any_tag(), any_text(), true);
    if (below(3) == 0) doc.add_elem_CDATA(any_tag(), any_text());
    if (below(3) == 0) doc.add_comment(u" a comment ");
    for (std::size_t i = depth == 0 ? 0 : below(3); i != 0; --i) write_element(doc, depth - 1);
    doc.pop_elem(name);
  }

  template <class Elem>
  void walk(Elem element) {
    see(element.tag());
    for (auto attr = element.next_attr(); !attr.is_nil(); attr = element.next_attr()) {
      see(attr.tag());
      see(attr.data());
    }
    for (auto child = element.next_child(); !child.is_nil(); child = element.next_child()) {
      walk(child);
    }
    see(element.data());
  }

  /// Lets go of some elements at once and of some at the end.
  void walk_and_keep(SaxParser::Elem root) {
    std::vector<SaxParser::Elem> kept;
    for (SaxParser::Elem child = root.next_child(); !child.is_nil(); child = root.next_child()) {
      if (below(2) == 0) kept.push_back(child);
      if (below(2) == 0) walk(child);
    }
    for (SaxParser::Elem& child : kept) see(child.data());
  }

  void compare_trees(std::string const& document) {
    DomParser parser(document);
    XmlDoc::Elem const tree(parser.root());
    XmlDoc::Elem copy(tree);
    see(copy == tree ? "equal" : "not equal");
    copy.add_elem(any_tag(), any_text(), true);
    copy.add_elem(tree);
    see(copy == tree ? "equal" : "not equal");
    XmlDoc::Elem const again(copy);
    see(again == copy ? "equal" : "not equal");
    see(copy.str());
  }

  template <class Call>
  void see_refusal(Call call) {
    try {
      call();
      see("not refused");
    } catch (STPException const& e) {
      STPException const copy(e);
      see(copy.what());
    }
  }

  void be_refused(std::string const& document) {
    std::string const cut = document.substr(0, 1 + below(document.size() - 1));
    see_refusal([&] { walk(DomParser(cut).root()); });
    std::istringstream stream(cut);
    see_refusal([&] { walk(SaxParser(stream).root()); });
    see_refusal([] { XmlTag::lookup(tag::unregistered); });
    see_refusal([] { DomParser("<unknown/>").root().match(tag::u_a); });
    see_refusal([&] { DomParser(document).root().child(tag::z); });
    see_refusal([] { static_cast<void>(XmlDoc(tag::u_a).str()); });
    see_refusal([] { SaxParser::Elem().next_child(); });
  }

  std::mt19937 engine_;
  std::ostringstream seen_;
};

}  // namespace

std::string work(unsigned int seed) { return Worker(seed).work(); }

}  // namespace tests

#ifndef TQXML_WRITER_XMLDOC_H
#define TQXML_WRITER_XMLDOC_H

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/foundation/Export.h"
#include "tqxml/foundation/TextBuffer.h"
#include "tqxml/writer/NamespaceTable.h"
#include "tqxml/writer/OpenElements.h"

namespace Orn {

/// A forward-only writer that builds one XML document in memory.
///
///     XmlDoc doc;
///     doc.push_elem(orders::order);
///     doc.add_attr(orders::id, 42L);
///     doc.add_elem(orders::note, UString(u"R&D"), true);
///     doc.pop_elem(orders::order);
///     doc.close();
///     std::string bytes = doc.byte_array();
///
/// gives, on one line,
///
///     <?xml version="1.0" encoding="UTF-8"?>
///     <N1:order xmlns:N1="urn:example:orders" N1:id="42"><N1:note>R&amp;D</N1:note></N1:order>
///
/// Elements and attributes are named by the numbers of the tag registry. A prefix is made up for
/// each namespace that has none, and all namespaces are declared on the root element; that goes for
/// names without a namespace too, whose declaration (of the empty URI) no reader accepts. Attribute
/// values, comments, processing instructions and namespace URIs are written exactly as given; so
/// is text, unless escaping is asked for.
///
/// A document goes through five states: initial, started (something written, no root yet), root
/// open, close pending (root closed), closed. A call that the state does not allow raises
/// StateException with the message named at the operation; a tag that the registry does not know
/// raises TagException. Checks come before anything is written: a refused call leaves the document
/// as it was, except for what "Namespace cannot be added after partial output" records and what
/// `close()` may have written. A failed allocation, or a text that has become too long for a
/// UString (std::length_error), leaves a document that can only be destroyed or assigned to.
///
/// Every operation costs time in proportion to what it writes. A document belongs to one thread at
/// a time; distinct documents are independent.
class TQXML_API XmlDoc {
 public:
  class Elem;

  /// An initial document: nothing is written.
  XmlDoc();
  /// A document begun with `start_doc(root)`.
  explicit XmlDoc(XmlTag::Id root);
  /// A closed document, not indented, with `e` as its root. Raises what `add_elem(e)` raises.
  explicit XmlDoc(Elem const& e);
  /// The copy goes on from the same half-written text, independently. Costs the length of the text.
  XmlDoc(XmlDoc const& other);
  /// Gives up what this document holds, and goes on as a copy does.
  XmlDoc& operator=(XmlDoc const& other);
  /// The document need not be closed.
  virtual ~XmlDoc();

  /// From now on each start tag, comment and processing instruction, from the root on, and each end
  /// tag that stands behind a whole element, goes on a line of its own, two blanks deeper a level.
  /// Text is never indented. There is no way back.
  void set_indented_format();

  /// In the initial state writes the XML declaration; then, if `root` is a tag and there is no root
  /// yet, opens it as `push_elem` does. Once there is a root it does nothing, in any state.
  void start_doc(XmlTag::Id root);

  /// Writes the start tag of an element, as the root if there is none yet, and leaves it open for
  /// attributes; whatever is written next completes it. Returns `tag`.
  /// `default_ns` true: when the namespace has no prefix in this document the element is written
  /// without one and declares its namespace itself, xmlns="URI". False: a prefix is made up. The
  /// root always gets a prefix. NO_TAG before there is a root only begins the document, as
  /// `start_doc` does; the operations that write an element whole refuse it.
  /// Raises START_TAG_DISALLOWED once the root has been closed, NAMESPACE_AFTER_OUTPUT for a
  /// namespace that is new after `inc_str()` and would need a prefix.
  XmlTag::Id push_elem(XmlTag::Id tag, bool default_ns = false);
  /// A text would quietly become `default_ns`.
  XmlTag::Id push_elem(XmlTag::Id tag, void const* text) = delete;
  /// Writes the end tag of the innermost open element, which must be `tag`; NO_TAG closes any.
  /// An element without content is written as `<a></a>`. Closing the root ends the markup.
  /// Raises POPPED_ELEMENT_MISMATCH when no element is open or another one is innermost.
  void pop_elem(XmlTag::Id tag);

  /// Writes a whole element without content or attributes, `<a/>`. Raises as `push_elem` does.
  void add_elem(XmlTag::Id tag, bool default_ns = false);
  /// Writes a whole element with a text: `<a>text</a>`, or `<a/>` for the empty text. `do_escape`
  /// true passes the text through `escape`; false writes it as it is, so it may hold markup.
  /// Raises as `push_elem` does.
  void add_elem(XmlTag::Id tag, UString const& text, bool do_escape);
  /// A text without `do_escape` would quietly become `default_ns`.
  void add_elem(XmlTag::Id tag, void const* text) = delete;
  /// Writes a whole element whose text stands in one CDATA section, also when it is empty.
  /// Raises IllegalArgException CDATA_TERMINATOR_IN_TEXT when `text` holds "]]>", else as
  /// `push_elem` does.
  void add_elem_CDATA(XmlTag::Id tag, UString const& text);

  /// Writes an element tree, as the same elements written by hand would be; text as it is in the
  /// tree. `default_ns` goes for every element. Raises as `push_elem` does; what was written before
  /// the failure stays.
  void add_elem(Elem const& e, bool default_ns = false);

  /// Adds an attribute to the start tag that is still open. `value` is written verbatim: a
  /// quotation mark, "&" or "<" in it must have been made safe before, see `escape_attr`. Nothing
  /// checks for a name given twice.
  /// Raises NO_OPEN_ELEMENT_FOR_ATTRIBUTE when no start tag is open (text, a child, `inc_str()`
  /// complete it), NAMESPACE_AFTER_OUTPUT as `push_elem` does.
  void add_attr(XmlTag::Id name, UString const& value);
  /// The same with a whole number in decimal. A wider integer is cut to a `long`.
  void add_attr(XmlTag::Id name, long value);
  /// A fraction would quietly be cut off.
  template <class Number, std::enable_if_t<std::is_floating_point_v<Number>, int> = 0>
  void add_attr(XmlTag::Id name, Number value) = delete;

  /// Appends text to the innermost open element, escaped by `escape` or as it is. May be called
  /// again and between children. Raises NO_OPEN_ELEMENT_FOR_BODY when no element is open.
  void append_elem_body(UString const& text, bool do_escape);

  /// Writes a comment, `<!-- text -->`, verbatim: the text must not hold "--". In a new document it
  /// comes first, and there will be no XML declaration. Raises START_TAG_DISALLOWED once the root
  /// has been closed.
  void add_comment(UString const& text);
  /// Writes a processing instruction, `<?text?>`, verbatim. Otherwise as `add_comment`.
  void add_processing_instruction(UString const& text);
  /// Writes an XML declaration that names `encoding`, wherever the document stands. The name has no
  /// influence: `byte_array()` is always UTF-8. Otherwise as `add_comment`.
  void add_xml_decl(UString const& encoding);

  /// Declares `prefix` for a namespace, beside those it has. It is written as it is: nothing checks
  /// that it is a name, or that no other namespace has it, be it chosen or made up (N1, N2, ...);
  /// declared twice it makes the document ill-formed. Names take the first of the prefixes of their
  /// namespace in code-unit order; all of them are declared on the root. The empty prefix makes
  /// elements of the namespace unprefixed, with a declaration each, and its attributes ill-formed.
  /// Raises NAMESPACE_AFTER_OUTPUT after the declarations have been written (by the first
  /// `inc_str()` or `close()` with a root); the prefix is recorded nevertheless, will not be
  /// declared, and names of the namespace use it from then on without a further exception.
  void add_ns(XmlTag::NsId ns, UString const& prefix);
  /// Makes up a prefix (N1, N2, ...) for a namespace that has none; otherwise does nothing.
  /// Raises as above.
  void add_ns(XmlTag::NsId ns);

  /// Closes the root, if it is still open, and the document. A document without any markup becomes
  /// an empty text.
  /// Raises ACTIVE_PUSHED_ELEMENTS when the innermost open element is not the root's tag, and
  /// NOT_CLOSE_PENDING when something but no root has been written or the document is closed
  /// already; also, after one end tag has been written, when elements with the root's own tag were
  /// open inside it.
  void close();

  /// The text of the closed document; after `inc_str()` calls, the rest of it.
  /// Raises CLOSE_NOT_CALLED unless the document is closed.
  UString str() const;
  /// The same in UTF-8 without a byte-order mark, lone surrogates as U+FFFD, and only up to the
  /// first U+0000, should there be one.
  std::string byte_array() const;
  /// The markup of a tree as `add_elem(e, true)` would write it here, with this document's
  /// indentation and prefixes, but not kept in it. An initial document is started. Meant for a
  /// document with an open root and no open start tag: an open one is completed, its ">" goes with
  /// the markup, and without a root the declarations of the fragment's own root are missing, and a
  /// namespace may be refused as if there had been output.
  /// Raises as `add_elem` does; what was written before the failure then stays.
  UString str(Elem const& e);
  /// What has been written since the last call, which is then forgotten here: the pieces and the
  /// final `str()` make up the document. Completes an open start tag. The first call with a root
  /// writes the namespace declarations, after which no namespace can be added.
  /// Raises NOT_STARTED in the initial state.
  UString inc_str();

  /// `text` as element content: "&", "<" and the ">" of "]]>" as entities, or the whole in a CDATA
  /// section where that is not longer (never when "]]>" is in it). Everything else stays, control
  /// characters included, which no XML document may hold. Costs the length of the text.
  static UString escape(UString const& text);
  /// `value` made safe for `add_attr`: "&", "<", '"', and as character references tab, line feed
  /// and carriage return, which a reader would otherwise take for blanks.
  static UString escape_attr(UString const& value);

 private:
  friend class XmlDocTestAccess;  // for the tests of this library alone

  enum State : std::uint32_t {
    DOC_INITIAL = 0,
    DOC_STARTED = 1,
    DOC_ROOT_OPEN = 2,
    DOC_CLOSE_PENDING = 3,
    DOC_CLOSED = 4,
  };

  /// A name ready to be written: its registry entry, and the prefix in the namespace table.
  struct QualifiedName {
    XmlTag const& tag;
    UString const& prefix;

    /// How many units it may take.
    std::size_t length() const noexcept {
      return std::size_t{prefix.length()} + 1 + tag.simple_name().length();
    }
    void put(TextBuffer::Pen& pen) const noexcept {
      if (!prefix.empty()) pen.put(prefix).put(TextBuffer::Unit{u':'});
      pen.put(tag.simple_name());
    }
  };

  TQXML_LOCAL void next_state();
  TQXML_LOCAL void check_doc_closed() const;
  TQXML_LOCAL void check_start_tag_allowed() const;

  TQXML_LOCAL void start_doc_or_begin_start_tag(XmlTag::Id tag, bool default_ns);
  [[gnu::noinline]] TQXML_LOCAL void write_declaration();
  [[gnu::noinline]] TQXML_LOCAL QualifiedName open_root(XmlTag::Id root);
  TQXML_LOCAL QualifiedName begin_leaf(XmlTag::Id tag, bool default_ns);
  TQXML_LOCAL QualifiedName begin_inner(XmlTag::Id tag, bool default_ns);
  TQXML_LOCAL void begin_start_tag(QualifiedName name);
  TQXML_LOCAL bool begin_tree(Elem const& e, bool default_ns);
  TQXML_LOCAL TextBuffer::Pen open_start_tag(std::size_t units);
  TQXML_LOCAL void close_start_tag();
  TQXML_LOCAL bool put_leaf_at_once(QualifiedName name, UString const& text, bool do_escape);
  [[gnu::noinline]] TQXML_LOCAL void write_leaf(XmlTag::Id tag, UString const& text,
                                                bool do_escape);
  TQXML_LOCAL void do_pop_elem(XmlTag::Id tag);
  TQXML_LOCAL void write_end_tag(QualifiedName name);
  [[gnu::noinline]] TQXML_LOCAL void add_indent();
  TQXML_LOCAL void add_bracketed(std::u16string_view opening, UString const& text,
                                 std::u16string_view closing);
  TQXML_LOCAL void begin_bracketed(std::u16string_view opening);
  TQXML_LOCAL void end_bracketed(std::u16string_view closing);

  TQXML_LOCAL QualifiedName qualify(XmlTag::Id tag, bool default_ns);
  [[gnu::noinline]] TQXML_LOCAL UString const& new_ns_prefix(XmlTag const& tag, bool default_ns);
  [[gnu::noinline]] TQXML_LOCAL void add_own_declaration(QualifiedName name);
  TQXML_LOCAL UString const& declare(UString const& uri, UString prefix);
  TQXML_LOCAL UString next_prefix();
  TQXML_LOCAL void insert_ns_decls();

  /// Markup produced and not yet handed out by inc_str().
  TextBuffer out;
  /// Where the namespace declarations go, right behind the root's name; 0 when there is no such
  /// place (yet, or any more).
  std::uint32_t ns_insert_pos = 0;
  /// The last start tag still lacks its ">".
  bool start_tag_open = false;
  bool indented = false;
  std::uint32_t state = DOC_INITIAL;
  XmlTag::Id root_tag = XmlTag::NO_TAG;
  /// The number in the last prefix made up.
  std::uint32_t ns_counter = 0;
  /// Whether the last markup was a start tag, comment or processing instruction, behind which an
  /// end tag is not indented.
  bool after_start_tag = true;
  /// The open elements, the innermost at the back. Not empty exactly in DOC_ROOT_OPEN.
  OpenElements tags;
  /// The prefixes of each namespace URI.
  NamespaceTable ns_decls;
};

}  // namespace Orn

// The element tree is part of the writer's interface; it stands in a file of its own.
#include "tqxml/writer/XmlDocElem.h"

#endif

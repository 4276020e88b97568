#ifndef TQXML_DOM_DOMPARSER_H
#define TQXML_DOM_DOMPARSER_H

#include <cstdint>
#include <memory>
#include <string>

#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/foundation/Export.h"
#include "tqxml/foundation/ReadLimits.h"
#include "tqxml/foundation/XercesForward.h"

namespace Orn {

class XmlDoc;

/// A reader that holds a whole XML document and parses it when its root is first asked for.
///
///     DomParser parser(bytes);
///     DomParser::Elem order = parser.root();
///     order.match(orders::order);                          // raises if it is another document
///     UString note = order.child(orders::note).data();     // raises if there is none
///     for (DomParser::Elem line = order.next_child(); !line.is_nil(); line = order.next_child())
///       use(line.tag(), line.data());
///     DomParser::Elem remark = order.opt_child(orders::remark);
///     if (!remark.is_nil()) ...
///
/// The encoding is what the document declares, namespaces are processed, nothing is validated.
/// External entities and an external DTD subset are read where a document refers to them, and
/// entities may ask for any amount of memory: give a DomParser documents from strangers only with
/// ReadLimits.
///
/// Handles own nothing: they are valid as long as the parser keeps its document, that is until it
/// is destroyed or its text is reset. A parser and its handles belong to one thread at a time;
/// distinct parsers are independent. The document usually takes about twelve times the memory of
/// its text, eight times where addresses have 32 bits, and up to 80 times when it is nothing but
/// short elements.
///
/// Each constructor raises RuntimeException UNABLE_TO_INITIALIZE_XERCES when the XML parser could
/// not be initialised while the library was loaded.
class TQXML_API DomParser {
 public:
  class Elem;
  class Attribute;

  /// A parser on the empty text.
  DomParser();
  /// A parser on a copy of `text`. It is not parsed yet.
  explicit DomParser(std::string const& text);
  /// The same without a copy: what is left in `text` is not specified.
  explicit DomParser(std::string&& text);
  /// A parser on a copy of `text`, kept to limits, and so is every text that it is given later.
  DomParser(std::string const& text, ReadLimits const& limits);
  /// The same without a copy: what is left in `text` is not specified.
  DomParser(std::string&& text, ReadLimits const& limits);
  /// A parser on the text of a closed document, as `XmlDoc::byte_array()` gives it. Raises what
  /// `XmlDoc::str()` raises.
  explicit DomParser(XmlDoc const& doc);
  DomParser(DomParser const&) = delete;
  /// Takes over the other parser's text, never its document. Resets as `set_xml_doc_text` does.
  DomParser& operator=(DomParser const& other);
  /// Ends the document and with it every handle.
  virtual ~DomParser();

  /// Replaces the text; it is parsed by the next `root()`. A document that has been parsed is given
  /// up, and its handles are no longer valid, provided that its text was not empty: after a failed
  /// parse of the empty text the new text is kept but never parsed, and `root()` is nil.
  void set_xml_doc_text(std::string const& text);

  /// The document element. The first call parses the text; later ones give a new handle on the same
  /// element.
  /// Raises RuntimeException when the parse fails: XERCES_SAX_PARSE_EXCEPTION, with line and column
  /// from 1, for a document that is not well-formed or goes beyond a limit; otherwise
  /// XERCES_XML_EXCEPTION, XERCES_DOM_EXCEPTION or UNRECOGNIZED_XERCES_EXCEPTION. When memory runs
  /// out it is the last of these or std::bad_alloc. The parser can be given another text then;
  /// asked again without one, it answers with the part of the document that was built before the
  /// failure, which may be nil, and parses anew when none was begun.
  Elem root();

 private:
  class TQXML_LOCAL TagCache;
  class TQXML_LOCAL LimitedParser;

  TQXML_LOCAL bool is_parsed() const;
  /// Null for no limits.
  TQXML_LOCAL static std::unique_ptr<xercesc::XercesDOMParser> new_parser(ReadLimits const* limits);
  /// Null when the parser has none.
  TQXML_LOCAL LimitedParser* limited_parser() const;
  TQXML_LOCAL ReadLimits const* limits() const;
  TQXML_LOCAL void parse();
  TQXML_LOCAL void parse_from(xercesc::MemBufInputSource const& source);

  std::string xml_doc_text;
  /// Null between a parse that failed early and the next, unless it has limits, which it keeps.
  std::unique_ptr<xercesc::XercesDOMParser> parser;
  std::unique_ptr<xercesc::ErrorHandler> error_handler;
  /// Made anew for each document.
  std::unique_ptr<TagCache> tags;
};

/// A handle on an element of a parsed document, or nil.
///
/// A copy goes on iterating from where the original stands, independently. Unless said otherwise an
/// operation on a nil handle raises StateException NIL_ELEMENT, which names the operation, and a
/// name that the registry does not know raises TagException. A failed operation moves no iteration.
class TQXML_API DomParser::Elem {
 public:
  /// A nil handle.
  Elem() noexcept = default;
  /// A handle on the same element that goes on from where the other stands.
  Elem(Elem const&) = default;
  /// Makes this handle one like the other.
  Elem& operator=(Elem const&) = default;
  /// Leaves the element as it is.
  virtual ~Elem();

  /// Whether there is nothing behind the handle.
  bool is_nil() const noexcept { return node == nullptr; }
  /// Raises NIL_ELEMENT for "DomParser::Elem::name()" when the handle is nil. `name` may be any
  /// text: that of an operation, or what the caller misses.
  void check_is_nil(UString const& name) const;

  /// A handle on the same element whose iterations stand at the beginning.
  Elem restarted() const noexcept { return Elem(node, tags, tag_id); }

  /// The tag of the element, by its namespace and local name; prefixes play no part. Looked up in
  /// the registry at most once a handle; the parser remembers the names that it saw last.
  XmlTag::Id tag() const;
  /// Raises TAG_MISMATCH unless the tag is `expected`.
  void match(XmlTag::Id expected) const;

  /// The first child element. Raises NO_CHILDREN when there is none. Moves no iteration.
  Elem child() const;
  /// The first child element with the tag `id`. Raises MISSING_REQUIRED_CHILD when there is none.
  /// Moves no iteration. Costs a walk over the children before it.
  Elem child(XmlTag::Id id) const;
  /// The same, but nil when there is none.
  Elem opt_child(XmlTag::Id id) const;
  /// The next child element in document order; nil after the last, and then from the first again.
  Elem next_child();

  /// The next attribute, in the reverse of the parser's order; nil after the last, for good.
  /// Namespace declarations are left out.
  Attribute next_attr();

  /// The text directly inside the element, CDATA sections included, as it stands. A child element
  /// contributes its bare start tag, `<name>` with the document's own prefix, and no content.
  /// Comments, processing instructions and references to general entities contribute nothing.
  UString data() const;
  /// Whether there is neither a child element nor text; white space is text.
  bool is_empty() const;
  /// Raises IS_EMPTY_MISMATCH unless `is_empty()` is `expected`.
  void check_is_empty(bool expected) const;

 private:
  friend class DomParser;
  Elem(xercesc::DOMNode* element, TagCache* tags, XmlTag::Id id = XmlTag::NO_TAG) noexcept
      : node(element), tags(tags), tag_id(id) {}
  TQXML_LOCAL xercesc::DOMNode& known_node(char16_t const* operation) const;

  xercesc::DOMNode* node = nullptr;
  /// The parser's.
  TagCache* tags = nullptr;
  /// NO_TAG until known.
  mutable XmlTag::Id tag_id = XmlTag::NO_TAG;
  /// The child that next_child() returned last; null at the start.
  xercesc::DOMNode* child_cursor = nullptr;
  /// Where next_attr() looks next, counting down; negative when all have been given.
  std::int32_t attr_index = 0;
  /// Null until next_attr() has first found attributes.
  xercesc::DOMNamedNodeMap* attrs = nullptr;
};

/// A handle on an attribute of a parsed document, or nil. An operation on a nil handle raises
/// StateException NIL_ATTRIBUTE, which names the operation.
class TQXML_API DomParser::Attribute {
 public:
  /// A nil handle.
  Attribute() noexcept = default;
  /// A handle on the same attribute.
  Attribute(Attribute const&) = default;
  /// Makes this handle one like the other.
  Attribute& operator=(Attribute const&) = default;
  /// Leaves the attribute as it is.
  virtual ~Attribute();

  /// Whether there is nothing behind the handle.
  bool is_nil() const noexcept { return node == nullptr; }
  /// Raises NIL_ATTRIBUTE for "DomParser::Attribute::name()" when the handle is nil. `name` may be
  /// any text.
  void check_is_nil(UString const& name) const;

  /// The tag of the attribute, by its namespace and local name. Looked up as for elements. Raises
  /// TagException for a name that the registry does not know.
  XmlTag::Id tag() const;
  /// Raises TAG_MISMATCH unless the tag is `expected`.
  void match(XmlTag::Id expected) const;
  /// The value, references resolved and white space normalised by the parser.
  UString data() const;

 private:
  friend class DomParser::Elem;
  Attribute(xercesc::DOMNode* attribute, TagCache* tags) noexcept : node(attribute), tags(tags) {}
  TQXML_LOCAL xercesc::DOMNode& known_node(char16_t const* operation) const;

  xercesc::DOMNode* node = nullptr;
  /// The parser's.
  TagCache* tags = nullptr;
  /// NO_TAG until known.
  mutable XmlTag::Id tag_id = XmlTag::NO_TAG;
};

}  // namespace Orn

#endif

#ifndef TQXML_SAX_SAXPARSER_H
#define TQXML_SAX_SAXPARSER_H

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <utility>

#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/foundation/Export.h"
#include "tqxml/foundation/ReadLimits.h"
#include "tqxml/foundation/Ref.h"

namespace Orn {

/// A reader that takes an XML document from a stream, only as far as the caller's navigation needs.
///
///     SaxParser parser;
///     SaxParser::Elem order = parser.initialize(&std::cin);  // reads up to the root's start tag
///     order.match(orders::order);                            // raises if it is another document
///     for (SaxParser::Elem line = order.next_child(); !line.is_nil(); line = order.next_child())
///       use(line.tag(), line.data());                        // each is forgotten after its turn
///     order.child(orders::note);                             // raises: they have been given away
///
/// The encoding is what the document declares, namespaces are processed, nothing is validated and
/// no external DTD subset is read; external entities are read where the document refers to them,
/// and entities may ask for any amount of memory, so give a SaxParser documents from strangers only
/// with ReadLimits.
///
/// What reading forward means: `child` and `opt_child` keep what they read past, `data` reads and
/// keeps the rest of the element, `next_child` gives children away. Memory stays bounded for a
/// caller who walks with `next_child` and drops each child before taking the next: the open
/// elements, with the text directly inside of them, which `data` gives, the largest single item,
/// each different name that there has been, of namespaces too, and some tens of KiB for records
/// that wait to be used again. The stream is read in pieces of at
/// most 1024 bytes, each awaited whole unless the stream ends, and the step that delivers the
/// root's end tag reads on to the end of the stream, since nothing but comments, instructions and
/// white space may follow.
///
/// Handles share counted records: one stays valid after its element has ended, after the parser has
/// gone on, and after the parser is gone; only asking for more input raises NOT_VALID_STREAM then.
/// They may be released in any order. The stream is the caller's and must live as long as anything
/// may still be read from it. A parser and its handles belong to one thread at a time; distinct
/// parsers are independent.
///
/// Every operation that reads may raise StateException NOT_VALID_STREAM (malformed input, see
/// `error_text`; the end of the stream; a parser that has failed before) or PARSER_ERROR (a limit
/// has been crossed; or an error that the parser does not take for fatal, of which none is known
/// without validation), RuntimeException BAD_READ (the stream went bad), TagException (a name that
/// the registry does not know), std::bad_alloc, std::length_error (a text too long for a UString)
/// and whatever the stream itself throws. After any of them the parse is over: what has been read
/// stays readable, and asking for more raises NOT_VALID_STREAM.
///
/// Each constructor raises RuntimeException UNABLE_TO_INITIALIZE_XERCES when the XML parser could
/// not be initialised while the library was loaded.
class TQXML_API SaxParser {
 public:
  class Elem;
  class Attribute;

  /// The largest piece taken from the stream at once, in bytes: small, so that a document is read
  /// only as far as navigation needs.
  static constexpr unsigned int MAX_READ = 1024;
  /// The highest number of a tag that `Elem::next_attr` gives.
  static constexpr int LAST_SHOWN_ATTRIBUTE = 1141;

  /// A parser without a document.
  SaxParser();
  /// A parser that has read `in` up to and including the root's start tag. Raises what reading
  /// raises; use `initialize` to learn more about a document that fails here. A stream that was
  /// never opened reads as an empty document.
  explicit SaxParser(std::istream& in);
  /// The same; a null pointer raises BAD_READ.
  explicit SaxParser(std::istream* in);
  /// A parser without a document; each one that `initialize` gives it is kept to the limits.
  explicit SaxParser(ReadLimits const& limits);
  /// The same with a document, as above.
  SaxParser(std::istream& in, ReadLimits const& limits);
  /// The same; a null pointer raises BAD_READ.
  SaxParser(std::istream* in, ReadLimits const& limits);
  /// Both then read the same document: what one reads the other has read.
  SaxParser(SaxParser const& other);
  /// The same, after letting go of the document that this one has.
  SaxParser& operator=(SaxParser const& other);
  /// Lets go of the document. Handles stay good for what has been read.
  virtual ~SaxParser();

  /// Gives up the document, if there is one, and begins with that of `in`, up to and including the
  /// root's start tag, which it returns. The stream is kept by its address and stays the caller's.
  /// Raises what reading raises, BAD_READ for a null pointer; there is no root then, and
  /// `error_text` says what was malformed.
  Elem initialize(std::istream* in);

  /// The root element; nil without a document.
  Elem root() const;

  /// What the parser said about the error that ended the parse, or about the limit; empty when it
  /// has said nothing.
  UString error_text() const;
  /// The line where it said so, counted from 1; 0 when it has said nothing. For malformed markup
  /// line and column are just behind the place; an undecodable byte is reported up to one buffer
  /// early.
  std::uint64_t error_line() const;
  /// The column, likewise.
  std::uint64_t error_column() const;

 private:
  class TQXML_LOCAL ParserImpl;
  class TQXML_LOCAL LimitedParserImpl;
  class TQXML_LOCAL StreamInputSource;
  template <class Record>
  friend struct RefCount;
  class TQXML_LOCAL ElemImpl;
  class TQXML_LOCAL AttributeImpl;
  class TQXML_LOCAL RecordPool;
  class TQXML_LOCAL TagCache;

  /// `limits` is null for none.
  TQXML_LOCAL void start(std::istream* in, ReadLimits const* limits);
  TQXML_LOCAL static std::unique_ptr<ParserImpl> new_parser(std::istream* in,
                                                            ReadLimits const* limits);

  std::shared_ptr<ParserImpl> impl_;
  Ref<ElemImpl> root_;
};

template <>
struct TQXML_API RefCount<SaxParser::ElemImpl> {
  static void retain(SaxParser::ElemImpl* record) noexcept;
  static void release(SaxParser::ElemImpl* record) noexcept;
};

template <>
struct TQXML_API RefCount<SaxParser::AttributeImpl> {
  static void retain(SaxParser::AttributeImpl* record) noexcept;
  static void release(SaxParser::AttributeImpl* record) noexcept;
};

/// A handle on an element of the document that is being read, or nil.
///
/// Unless said otherwise an operation on a nil handle raises StateException NIL_ELEMENT, which
/// names the operation. Copies share the element, and with it the iterations.
class TQXML_API SaxParser::Elem {
 public:
  /// A nil handle.
  Elem() noexcept = default;
  /// @{

  /// A copy shares the element. A handle that was moved from is nil.
  Elem(Elem const& other) noexcept = default;
  Elem(Elem&& other) noexcept = default;
  Elem& operator=(Elem const& other) noexcept = default;
  Elem& operator=(Elem&& other) noexcept = default;
  /// @}

  /// Lets go of the element, which is forgotten with its last handle if `next_child` gave it away.
  virtual ~Elem();

  /// Whether there is nothing behind the handle.
  bool is_nil() const noexcept { return !record_; }
  /// Raises NIL_ELEMENT for "SaxParser::Elem::name()" when the handle is nil. `name` may be any
  /// text: that of an operation, or what the caller misses.
  void check_is_nil(UString const& name) const;

  /// The tag of the element, by its namespace and local name; prefixes play no part. Reads nothing.
  XmlTag::Id tag() const;
  /// Raises TAG_MISMATCH unless the tag is `expected`. Reads nothing.
  void match(XmlTag::Id expected) const;

  /// The first child element, nil when there is none. Reads at most to the child's start tag.
  /// Raises CHILD_AFTER_NEXT_CHILD once `next_child` has been called on the element.
  Elem child() const;
  /// The first child element with the tag `id`. Reads at most to its start tag, keeping the
  /// children before it. Raises MISSING_REQUIRED_CHILD when there is none,
  /// OPT_CHILD_AFTER_NEXT_CHILD once `next_child` has been called on the element.
  Elem child(XmlTag::Id id) const;
  /// The same, but nil when there is none.
  Elem opt_child(XmlTag::Id id) const;
  /// Takes the next child element away from this one, so that it is forgotten with its last handle;
  /// nil after the last, for good. Reads at most to the child's start tag. From the first call on
  /// `child` and `opt_child` are refused.
  Elem next_child();

  /// The next attribute, the last one first; nil after the last, for good. Namespace declarations
  /// are left out, and so are attributes numbered above LAST_SHOWN_ATTRIBUTE. Reads nothing.
  Attribute next_attr();

  /// The text directly inside the element, that of child elements not included. Reads the rest of
  /// the element and keeps its children.
  UString data() const;
  /// Whether there is neither a child element nor text; white space is text. Reads at most to the
  /// first of either.
  bool is_empty() const;
  /// Raises IS_EMPTY_MISMATCH unless `is_empty()` is `expected`.
  void check_is_empty(bool expected) const;

 private:
  friend class SaxParser;
  explicit Elem(Ref<ElemImpl> record) noexcept : record_(std::move(record)) {}
  TQXML_LOCAL ElemImpl& record(char16_t const* operation) const;

  Ref<ElemImpl> record_;
};

/// A handle on an attribute of an element that has been read, or nil. Valid also when the element
/// is gone. An operation on a nil handle raises StateException NIL_ATTRIBUTE, which names the
/// operation.
class TQXML_API SaxParser::Attribute {
 public:
  /// A nil handle.
  Attribute() noexcept = default;
  /// @{

  /// A copy shares the attribute. A handle that was moved from is nil.
  Attribute(Attribute const& other) noexcept = default;
  Attribute(Attribute&& other) noexcept = default;
  Attribute& operator=(Attribute const& other) noexcept = default;
  Attribute& operator=(Attribute&& other) noexcept = default;
  /// @}

  /// Lets go of the attribute.
  virtual ~Attribute();

  /// Whether there is nothing behind the handle.
  bool is_nil() const noexcept { return !record_; }
  /// Raises NIL_ATTRIBUTE for "SaxParser::Attribute::name()" when the handle is nil. `name` may be
  /// any text.
  void check_is_nil(UString const& name) const;

  /// The tag of the attribute, by its namespace and local name.
  XmlTag::Id tag() const;
  /// Raises TAG_MISMATCH unless the tag is `expected`.
  void match(XmlTag::Id expected) const;
  /// The value, references resolved and white space normalised by the parser.
  UString data() const;

 private:
  friend class SaxParser::Elem;
  explicit Attribute(Ref<AttributeImpl> record) noexcept : record_(std::move(record)) {}
  TQXML_LOCAL AttributeImpl& record(char16_t const* operation) const;

  Ref<AttributeImpl> record_;
};

}  // namespace Orn

#endif

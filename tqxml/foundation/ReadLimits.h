#ifndef TQXML_FOUNDATION_READLIMITS_H
#define TQXML_FOUNDATION_READLIMITS_H

#include <cstdint>
#include <limits>

#include "tqxml/foundation/Export.h"

namespace Orn {

/// What a document may ask of a reader, for documents whose sender is not trusted. A reader that is
/// made without limits has none, and one made with `ReadLimits()` neither.
///
///     Orn::ReadLimits limits = Orn::ReadLimits::untrusted();
///     limits.bytes = 50'000'000;
///     Orn::DomParser parser(bytes, limits);
///
/// A document that goes beyond a limit is refused while it is read, as a malformed one is: a
/// DomParser raises RuntimeException XERCES_SAX_PARSE_EXCEPTION, a SaxParser StateException
/// PARSER_ERROR. The third argument of the first, and `SaxParser::error_text()`, begin with the
/// name of the limit, "ReadLimits::depth: more than 1024 levels of elements"; both messages have
/// line and column in front. What may be as much as the limit is allowed; one more is not.
///
/// Lengths are in UTF-16 code units, with all references resolved.
struct TQXML_API ReadLimits {
  /// The value of a limit that is off.
  static constexpr std::uint64_t NONE = std::numeric_limits<std::uint64_t>::max();

  /// Whether a document that has a DOCTYPE is refused, before any of its declarations and anything
  /// outside are read.
  bool refuse_doctype = false;
  /// Whether a document is refused that has an external DTD subset, or where it refers to an
  /// external entity: no file is opened and no connection made. One that is declared and never
  /// referred to is none.
  bool refuse_external = false;

  /// Whether a document is refused that declares an encoding whose name does not begin with UTF-8,
  /// UTF8, UTF-16, UTF-32, ISO-10646-UCS-, US-ASCII, ASCII, ISO-8859-, windows-125, KOI8-, EUC-,
  /// GB2312, GBK, GB18030, Big5, Shift_JIS or EBCDIC-CP-, in capitals or not. In some of the
  /// others, as in UTF-7, bytes of ASCII stand for something else, so that what looks at the bytes
  /// on their way sees another text than the reader. (Xerces-C++ also believes a declaration in
  /// ASCII of EBCDIC, or of a UTF with its byte order such as UTF-16LE, and reads on in that.) An
  /// entity that is read from elsewhere is not looked at.
  bool refuse_unusual_encodings = false;

  /// How many characters a document may make of each byte of its own, from `amplification_floor`
  /// characters on: text, values and markup as they are after entities have been put in, defaults
  /// of a DTD included, and besides, for each reference to an entity, REFERENCE_COST and the length
  /// of the entity; outside of content, where it is not known which one it is, of the longest; for
  /// each default, DEFAULT_COST; and with a DomParser half the bytes of the copies that its tree
  /// makes of entities at the end. The predefined entities and references to characters are none. 0
  /// counts as 1, which a document without a DOCTYPE does not exceed in one of the usual encodings.
  /// A DomParser compares with all bytes of the document, a SaxParser with those that it has read.
  std::uint64_t amplification = NONE;
  /// Up to how many characters `amplification` does not matter.
  std::uint64_t amplification_floor = 0;
  /// How many entities may be read inside of each other, where one refers to the next.
  std::uint64_t entity_depth = NONE;

  /// How many elements may be inside of each other, the root and the innermost included.
  std::uint64_t depth = NONE;
  /// How many attributes an element may have, namespace declarations and defaults included.
  std::uint64_t attributes = NONE;
  /// How many namespace declarations may be in force at a time, on the open elements together.
  std::uint64_t namespaces = NONE;
  /// How many bytes the document may have. A DomParser looks before it begins; a SaxParser takes no
  /// more than one byte beyond from the stream.
  std::uint64_t bytes = NONE;
  /// How many bytes of memory the parser may take for a piece of markup that it has not delivered:
  /// a tag with its attributes, a comment, an instruction, a CDATA section, a DOCTYPE with its
  /// declarations. It stops markup whose end does not come, before one of the lengths below can be
  /// told. The memory is several times the length: with 8 MiB a comment may have some two million
  /// characters. A text is collected as well, in pieces of up to 1,048,576, for which 7 MiB are
  /// enough. At the beginning of the document and of an external entity there are 128 KiB more, for
  /// what decodes it.
  std::uint64_t markup_memory = NONE;
  /// How many different names of elements and attributes, each with its prefix, and of namespaces
  /// there may be outside of a DTD. A parser keeps all of them, and takes time in proportion to
  /// their square where they are chosen for that.
  std::uint64_t names = NONE;
  /// How long the name of an element, an attribute or an instruction may be, its prefix included.
  /// This and the lengths that follow are not about what is inside of a DTD, where only
  /// `markup_memory` counts.
  std::uint64_t name = NONE;
  /// How long the text directly inside an element may be, in all its pieces and however it is
  /// written, and how long a comment or an instruction.
  std::uint64_t text = NONE;
  /// How long an attribute's value may be.
  std::uint64_t attribute_value = NONE;

  /// As how many characters a reference to an entity counts besides those of the entity: about as
  /// many as the parser could read in the time that it takes.
  static constexpr std::uint64_t REFERENCE_COST = 100;
  /// As how many characters an attribute that only the DTD gives an element counts besides its own:
  /// a tree takes about as much memory for either.
  static constexpr std::uint64_t DEFAULT_COST = 500;

  /// Limits for documents from anyone. A DOCTYPE, what is external and unusual encodings are
  /// refused. 10,000,000 bytes, 1024 levels, 1024 attributes, 256 namespace declarations, 1,200
  /// different names, each of up to 65,536 code units, texts of 10,000,000, attribute values of
  /// 500,000, and 8 MiB for a piece of markup are allowed, and to those who allow a DOCTYPE after
  /// all 100 characters a byte from 8,388,608 on, and entities 40 levels deep.
  static ReadLimits untrusted();
};

}  // namespace Orn

#endif

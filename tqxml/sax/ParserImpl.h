#ifndef TQXML_SAX_PARSERIMPL_H
#define TQXML_SAX_PARSERIMPL_H

#include <vector>
#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

#include "tqxml/sax/ElemImpl.h"
#include "tqxml/sax/SaxParser.h"
#include "tqxml/sax/StreamInputSource.h"
#include "tqxml/sax/TagCache.h"

namespace Orn {

/// Drives the scanner one step at a time and turns its events into records.
///
/// The way of a call: a handle (SaxElem.cpp) asks its record (ElemImpl), which answers from what
/// has been read or calls `next_token()`; the scanner then takes bytes from the StreamInputSource
/// and calls back into the handlers below, which add to the innermost open record.
class SaxParser::ParserImpl : public xercesc::SAXParser {
 public:
  /// What the scanner said about the error that ended the parse.
  struct Complaint {
    UString text;
    std::uint64_t line = 0;
    std::uint64_t column = 0;
  };

  /// Kept to the limits of the guard, if there is one.
  ParserImpl(std::istream* in, xercesc::MemoryManager* memory, LimitGuard* guard);
  ~ParserImpl() override;

  /// Reads up to the root's start tag and gives the root, once.
  Ref<ElemImpl> root();
  /// Makes one step of the scan. Raises NOT_VALID_STREAM when there is none left or the document is
  /// malformed, and again whenever it is called after that or after any other exception.
  void next_token();

  Complaint const& complaint() const noexcept { return complaint_; }
  /// Null when there are none.
  ReadLimits const* limits() const noexcept {
    return guard_ == nullptr ? nullptr : &guard_->limits();
  }

 protected:
  using Text = XMLCh const*;

  void startElement(xercesc::XMLElementDecl const& decl, unsigned int uri_id, Text prefix,
                    xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes,
                    XMLSize_t attribute_count, bool is_empty, bool is_root) override;
  void endElement(xercesc::XMLElementDecl const& decl, unsigned int uri_id, bool is_root,
                  Text prefix) override;
  void docCharacters(Text text, XMLSize_t length, bool cdata_section) override;
  void error(unsigned int code, Text domain, ErrTypes type, Text text, Text system_id,
             Text public_id, XMLFileLoc line, XMLFileLoc column) override;

  // Not part of what a caller sees. The base versions must not run: they would call the installed
  // handler, which is this object.
  void docComment(Text) override {}
  void docPI(Text, Text) override {}
  void endDocument() override {}
  void endEntityReference(xercesc::XMLEntityDecl const&) override {}
  void ignorableWhitespace(Text, XMLSize_t, bool) override {}
  void resetDocument() override {}
  void startDocument() override {}
  void startEntityReference(xercesc::XMLEntityDecl const&) override {}
  void XMLDecl(Text, Text, Text, Text) override {}

  /// Lets `doctypeDecl` be called.
  void connect_doctype() { setDTDHandler(&unused_handler_); }

 private:
  bool scan_step();
  void add_attributes(ElemImpl& element, xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes,
                      XMLSize_t count);
  void end_current() noexcept;

  bool started_ = false;
  /// Nothing more can be scanned. Stepping the scanner beyond its end or after an exception would
  /// crash it.
  bool over_ = false;
  LimitGuard* const guard_;
  StreamInputSource input_;
  xercesc::XMLPScanToken token_;
  TagCache tags_;
  Ref<RecordPool> records_ = RecordPool::make();
  /// The elements that the scanner is inside of, the innermost at the back.
  std::vector<Ref<ElemImpl>> open_elements_;
  /// The root until it is asked for.
  Ref<ElemImpl> root_;
  Complaint complaint_;
  /// The scanner reports errors only to a parser with an error handler; `error` never calls it. As
  /// a handler of declarations it does nothing.
  xercesc::HandlerBase unused_handler_;
};

}  // namespace Orn

#endif

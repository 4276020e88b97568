#ifndef TQXML_SAX_STREAMINPUTSOURCE_H
#define TQXML_SAX_STREAMINPUTSOURCE_H

#include <iosfwd>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include "tqxml/sax/SaxParser.h"

namespace Orn {

/// Gives the scanner the bytes of the caller's stream, which is neither owned nor closed here.
class SaxParser::StreamInputSource : public xercesc::InputSource {
 public:
  class BinStream;

  explicit StreamInputSource(std::istream* in);
  /// The scanner owns what it gets.
  xercesc::BinInputStream* makeStream() const override;

 private:
  std::istream* in_;
};

class SaxParser::StreamInputSource::BinStream : public xercesc::BinInputStream {
 public:
  explicit BinStream(std::istream* in) : in_(in) {}

  /// Reads at most MAX_READ bytes, whatever is asked for. The end of the stream gives fewer, and
  /// then none. Raises RuntimeException BAD_READ when the stream has gone bad or there is none.
  XMLSize_t readBytes(XMLByte* to_fill, XMLSize_t max_to_read) override;

  /// Seeks to the start of the stream, on purpose, and gives the position that this reports. The
  /// scanner never asks.
  XMLFilePos curPos() const override;

  XMLCh const* getContentType() const override { return nullptr; }

 private:
  std::istream* in_;
};

}  // namespace Orn

#endif

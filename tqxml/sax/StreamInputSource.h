#ifndef TQXML_SAX_STREAMINPUTSOURCE_H
#define TQXML_SAX_STREAMINPUTSOURCE_H

#include <iosfwd>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include "tqxml/foundation/LimitGuard.h"
#include "tqxml/sax/SaxParser.h"

namespace Orn {

/// Gives the scanner the bytes of the caller's stream, which is neither owned nor closed here.
class SaxParser::StreamInputSource : public xercesc::InputSource {
 public:
  class BinStream;

  /// `guard` is told of what is read; null for nobody.
  StreamInputSource(std::istream* in, LimitGuard* guard);
  /// The scanner owns what it gets.
  xercesc::BinInputStream* makeStream() const override;

 private:
  std::istream* in_;
  LimitGuard* guard_;
};

class SaxParser::StreamInputSource::BinStream : public xercesc::BinInputStream {
 public:
  BinStream(std::istream* in, LimitGuard* guard) : in_(in), guard_(guard) {}

  /// Reads at most MAX_READ bytes, whatever is asked for. The end of the stream gives fewer, and
  /// then none. Raises RuntimeException BAD_READ when the stream has gone bad or there is none, and
  /// throws what the guard throws.
  XMLSize_t readBytes(XMLByte* to_fill, XMLSize_t max_to_read) override;

  /// Seeks to the start of the stream, on purpose, and gives the position that this reports. The
  /// scanner never asks.
  XMLFilePos curPos() const override;

  XMLCh const* getContentType() const override { return nullptr; }

 private:
  std::istream* in_;
  LimitGuard* guard_;
};

}  // namespace Orn

#endif

#include "tqxml/sax/StreamInputSource.h"

#include <algorithm>
#include <istream>
#include <xercesc/util/PlatformUtils.hpp>

#include "tqxml/foundation/Raise.h"

namespace Orn {

SaxParser::StreamInputSource::StreamInputSource(std::istream* in)
    : InputSource(xercesc::XMLPlatformUtils::fgMemoryManager), in_(in) {}

xercesc::BinInputStream* SaxParser::StreamInputSource::makeStream() const {
  return new BinStream(in_);
}

XMLSize_t SaxParser::StreamInputSource::BinStream::readBytes(XMLByte* to_fill,
                                                             XMLSize_t max_to_read) {
  if (in_ == nullptr) raise<RuntimeException>(Catalogue::BAD_READ);
  XMLSize_t const wanted = std::min<XMLSize_t>(max_to_read, MAX_READ);
  in_->read(reinterpret_cast<char*>(to_fill), static_cast<std::streamsize>(wanted));
  if (in_->bad()) raise<RuntimeException>(Catalogue::BAD_READ);
  return static_cast<XMLSize_t>(in_->gcount());
}

XMLFilePos SaxParser::StreamInputSource::BinStream::curPos() const {
  return static_cast<XMLFilePos>(std::streamoff(in_->rdbuf()->pubseekpos(0, std::ios_base::in)));
}

}  // namespace Orn

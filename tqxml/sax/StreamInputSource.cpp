#include "tqxml/sax/StreamInputSource.h"

#include <algorithm>
#include <istream>
#include <xercesc/util/PlatformUtils.hpp>

#include "tqxml/foundation/Raise.h"

namespace Orn {

SaxParser::StreamInputSource::StreamInputSource(std::istream* in, LimitGuard* guard)
    : InputSource(xercesc::XMLPlatformUtils::fgMemoryManager), in_(in), guard_(guard) {}

xercesc::BinInputStream* SaxParser::StreamInputSource::makeStream() const {
  return new BinStream(in_, guard_);
}

XMLSize_t SaxParser::StreamInputSource::BinStream::readBytes(XMLByte* to_fill,
                                                             XMLSize_t max_to_read) {
  if (in_ == nullptr) raise<RuntimeException>(Catalogue::BAD_READ);
  XMLSize_t wanted = std::min<XMLSize_t>(max_to_read, MAX_READ);
  if (guard_ != nullptr) wanted = guard_->bytes_to_read(wanted);
  in_->read(reinterpret_cast<char*>(to_fill), static_cast<std::streamsize>(wanted));
  if (in_->bad()) raise<RuntimeException>(Catalogue::BAD_READ);
  auto const count = static_cast<XMLSize_t>(in_->gcount());
  if (guard_ != nullptr) guard_->bytes(count);
  return count;
}

XMLFilePos SaxParser::StreamInputSource::BinStream::curPos() const {
  return static_cast<XMLFilePos>(std::streamoff(in_->rdbuf()->pubseekpos(0, std::ios_base::in)));
}

}  // namespace Orn

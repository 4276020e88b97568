#include "vocabulary/ByteSource.h"

namespace vocabulary {

class ByteSource::Stream : public xercesc::BinInputStream {
 public:
  Stream(std::istream& in, Orn::LimitGuard& guard) : in_(in), guard_(guard) {}

  XMLFilePos curPos() const override { return position_; }
  XMLCh const* getContentType() const override { return nullptr; }

  XMLSize_t readBytes(XMLByte* to_fill, XMLSize_t max_to_read) override {
    in_.read(reinterpret_cast<char*>(to_fill), static_cast<std::streamsize>(max_to_read));
    if (in_.bad()) throw ReadFailed();
    auto const count = static_cast<XMLSize_t>(in_.gcount());
    position_ += count;
    guard_.bytes(count);
    return count;
  }

 private:
  std::istream& in_;
  Orn::LimitGuard& guard_;
  XMLFilePos position_ = 0;
};

xercesc::BinInputStream* ByteSource::makeStream() const { return new Stream(in_, guard_); }

}  // namespace vocabulary

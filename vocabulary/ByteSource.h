#ifndef VOCABULARY_BYTESOURCE_H
#define VOCABULARY_BYTESOURCE_H

#include <istream>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include "tqxml/foundation/LimitGuard.h"

namespace vocabulary {

/// Goes through the parser when the stream has gone bad.
struct ReadFailed {};

/// Gives the scanner the bytes of a stream, and tells the guard how many they are.
class ByteSource : public xercesc::InputSource {
 public:
  ByteSource(std::istream& in, Orn::LimitGuard& guard) : in_(in), guard_(guard) {}
  /// The scanner owns what it gets.
  xercesc::BinInputStream* makeStream() const override;

 private:
  class Stream;

  std::istream& in_;
  Orn::LimitGuard& guard_;
};

}  // namespace vocabulary

#endif

#ifndef BENCH_CONTENDERS_PIECES_H
#define BENCH_CONTENDERS_PIECES_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <streambuf>
#include <string_view>

#include "bench/contenders/Contenders.h"

namespace bench {

/// A document as it comes in from elsewhere: in pieces of at most `PIECE` bytes.
class Pieces {
 public:
  explicit Pieces(std::string_view document) : rest_(document) {}

  /// The next piece, no longer than `most` either; empty at the end.
  std::string_view next(std::size_t most = PIECE) {
    std::string_view const piece = rest_.substr(0, std::min(most, PIECE));
    rest_.remove_prefix(piece.size());
    return piece;
  }

  /// The same, copied to where a parser wants it. Returns its length.
  std::size_t read(void* to, std::size_t most) {
    std::string_view const piece = next(most);
    std::memcpy(to, piece.data(), piece.size());
    return piece.size();
  }

 private:
  std::string_view rest_;
};

/// The same for a std::istream.
class PieceBuffer : public std::streambuf {
 public:
  explicit PieceBuffer(std::string_view document) : pieces_(document) {}

 protected:
  int_type underflow() override {
    std::string_view const piece = pieces_.next();
    if (piece.empty()) return traits_type::eof();
    char* const begin = const_cast<char*>(piece.data());
    setg(begin, begin, begin + piece.size());
    return traits_type::to_int_type(*begin);
  }

 private:
  Pieces pieces_;
};

}  // namespace bench

#endif

#ifndef BENCH_CONTENDERS_CONTENDERS_H
#define BENCH_CONTENDERS_CONTENDERS_H

#include <string>
#include <string_view>
#include <vector>

#include "bench/contenders/Walk.h"
#include "bench/orders/Orders.h"

namespace bench {

/// Writes the whole document to a string of UTF-8, from nothing.
using Write = std::string (*)(Orders const&);

/// Reads a whole document and walks all of it. The same walk twice: once with the cheap sums that
/// are timed, once with the digest by which the contenders are checked against each other.
struct Read {
  Tally (*tally)(std::string_view document);
  Digest (*digest)(std::string_view document);
};

/// Makes a Read of a class with `template <class Sink> static void read(std::string_view, Sink&)`.
template <class Reader>
constexpr Read read_with() {
  return {
      [](std::string_view document) {
        Tally tally;
        Reader::read(document, tally);
        return tally;
      },
      [](std::string_view document) {
        Digest digest;
        Reader::read(document, digest);
        return digest;
      },
  };
}

struct Writer {
  char const* name;
  Write write;
};

struct Reader {
  char const* name;
  Read read;
};

/// Everyone who takes part. The first of each list is this library.
struct Contenders {
  std::vector<Writer> writers;
  /// Take the whole document from memory.
  std::vector<Reader> whole_readers;
  /// Take it in pieces of at most `PIECE` bytes.
  std::vector<Reader> stream_readers;
};

/// The most that a stream gives at once, in bytes.
inline constexpr std::size_t PIECE = 1024;

// One a library, each in the file of its name; those of libraries that were not found when the
// build was configured are not there.
void add_tqxml(Contenders& contenders);
void add_by_hand(Contenders& contenders);
void add_xerces(Contenders& contenders);
void add_libxml2(Contenders& contenders);
void add_expat(Contenders& contenders);
void add_pugixml(Contenders& contenders);
void add_tinyxml2(Contenders& contenders);
void add_rapidxml(Contenders& contenders);
void add_qt(Contenders& contenders);

Contenders all_contenders();

}  // namespace bench

#endif

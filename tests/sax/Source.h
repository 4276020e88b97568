#ifndef TESTS_SAX_SOURCE_H
#define TESTS_SAX_SOURCE_H

#include <algorithm>
#include <cstddef>
#include <istream>
#include <streambuf>
#include <string>
#include <utility>

namespace tests {

/// What a broken Source throws at its reader.
struct SourceBroke {};

/// A stream that gives the bytes of a text and keeps account of what is taken.
class Source : public std::istream {
 public:
  explicit Source(std::string bytes) : std::istream(nullptr), buffer_(std::move(bytes)) {
    rdbuf(&buffer_);
  }

  /// Lets whoever reads beyond the first `position` bytes get a SourceBroke.
  void break_at(std::size_t position) { buffer_.break_at(position); }

  /// How many bytes have been taken, and how often.
  std::size_t taken() const { return buffer_.taken(); }
  std::size_t reads() const { return buffer_.reads; }
  /// The most bytes that were asked for at once.
  std::streamsize largest_read() const { return buffer_.largest_read; }
  bool sought() const { return buffer_.sought; }

 private:
  class Buffer : public std::streambuf {
   public:
    explicit Buffer(std::string bytes) : bytes_(std::move(bytes)) { give(bytes_.size()); }

    void break_at(std::size_t position) {
      breaks_ = true;
      give(std::min(position, bytes_.size()));
    }
    std::size_t taken() const { return static_cast<std::size_t>(gptr() - eback()); }

    std::size_t reads = 0;
    std::streamsize largest_read = 0;
    bool sought = false;

   protected:
    std::streamsize xsgetn(char* to, std::streamsize wanted) override {
      ++reads;
      largest_read = std::max(largest_read, wanted);
      return std::streambuf::xsgetn(to, wanted);
    }
    int_type underflow() override {
      if (breaks_) throw SourceBroke();
      return traits_type::eof();
    }
    pos_type seekoff(off_type /*by*/, std::ios_base::seekdir /*from*/,
                     std::ios_base::openmode /*which*/) override {
      sought = true;
      return -1;
    }
    pos_type seekpos(pos_type /*to*/, std::ios_base::openmode /*which*/) override {
      sought = true;
      return -1;
    }

   private:
    void give(std::size_t length) {
      std::ptrdiff_t const position = gptr() - eback();
      setg(bytes_.data(), bytes_.data() + position, bytes_.data() + length);
    }

    std::string bytes_;
    bool breaks_ = false;
  };

  Buffer buffer_;
};

}  // namespace tests

#endif

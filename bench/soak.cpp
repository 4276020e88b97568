// soak BYTES: reads a document of a MiB and one of BYTES, both made while they are read, with the
// streaming reader, every attribute and every text of it, and shows what that took. Ends with 0
// when both were read as they were made and the peak of the memory differs by no more than is
// allowed.

#include <cstdio>
#include <cstdlib>

#include "tests/sax/Soak.h"

namespace {

tests::Needs show(std::uint64_t size) {
  tests::Needs const needs = tests::needs_of(size);
  double const mib = static_cast<double>(size) / static_cast<double>(tests::MIB);
  std::printf("%10.0f MiB %9.2f s %8.1f MB/s %9.2f MiB%s\n", mib, needs.seconds,
              static_cast<double>(size) / 1e6 / needs.seconds, needs.peak_mib,
              needs.succeeded ? "" : "  FAILED");
  std::fflush(stdout);
  return needs;
}

}  // namespace

int main(int argc, char** argv) {
  std::uint64_t const size = argc == 2 ? std::strtoull(argv[1], nullptr, 10) : 0;
  if (size == 0) {
    std::fprintf(stderr, "soak: give a number of bytes\n");
    return 2;
  }
  std::printf("%14s %11s %13s %13s\n", "size", "time", "speed", "peak memory");
  std::fflush(stdout);
  tests::Needs const one = show(tests::MIB), whole = show(size);
  double const difference = whole.peak_mib - one.peak_mib;
  std::printf("The peaks differ by %.2f MiB; %.0f are allowed.\n", difference,
              tests::ALLOWED_DIFFERENCE_MIB);
  bool const good = one.succeeded && whole.succeeded && difference <= tests::ALLOWED_DIFFERENCE_MIB;
  return good ? 0 : 1;
}

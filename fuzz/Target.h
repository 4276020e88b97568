#ifndef FUZZ_TARGET_H
#define FUZZ_TARGET_H

#include <cstddef>
#include <cstdint>
#include <string>

// What libFuzzer, and the replay program in its place, calls of a target.

/// Runs the target on one input. Whatever is wrong ends the process: see `fuzz::fail`.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

/// Changes an input in place, to at most `max_size` bytes, and gives its new size. Of some targets
/// only; the others are given to LLVMFuzzerMutate.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned int seed);

/// Changes bytes without knowing what they mean. The fuzzer's own.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace fuzz {

/// Says on the standard error stream what was found, and aborts.
[[noreturn]] void fail(std::string const& what);

inline void check(bool holds, char const* what) {
  if (!holds) fail(what);
}

}  // namespace fuzz

#endif

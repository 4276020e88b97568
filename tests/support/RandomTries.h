#ifndef TESTS_SUPPORT_RANDOMTRIES_H
#define TESTS_SUPPORT_RANDOMTRIES_H

namespace tests {

/// How often something random is tried: with sanitizers, which take many times as long, less often
/// than `usual`.
constexpr unsigned int random_tries(unsigned int usual) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  return usual / 8;
#else
  return usual;
#endif
}

}  // namespace tests

#endif

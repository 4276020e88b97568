#include <unistd.h>

#include <cstdio>
#include <exception>
#include <xercesc/util/PlatformUtils.hpp>

#include "tqxml/dom/DomParser.h"

// In this program the initialisation of Xerces fails while the library is loaded, with an exception
// that is not one of Xerces: the library lets it pass, which ends the program before its main().
// That is the success of this test.

namespace {

constexpr int FAILURE = 4711;

[[noreturn]] void end_of_program() {
  try {
    std::rethrow_exception(std::current_exception());
  } catch (int failure) {
    _exit(failure == FAILURE ? 0 : 1);
  } catch (...) {
    _exit(1);
  }
}

void expect_the_end() { std::set_terminate(end_of_program); }

// What stands here runs before the initialisation of the shared libraries.
__attribute__((section(".preinit_array"), used)) void (*first_of_all)() = expect_the_end;

}  // namespace

void xercesc::XMLPlatformUtils::Initialize(char const*, char const*, PanicHandler*,
                                           MemoryManager*) {
  throw FAILURE;
}

int main() {
  Orn::DomParser parser;
  std::puts("The library has been loaded as if nothing had happened.");
  return 1;
}

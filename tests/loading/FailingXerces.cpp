#include <dlfcn.h>

#include <xercesc/util/IOException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

// A library that stands between its program and Xerces-C++, and whose initialisation fails.

void xercesc::XMLPlatformUtils::Initialize(char const* locale, char const* nls_home,
                                           PanicHandler* panic, MemoryManager* memory) {
  // The failure itself needs an initialised Xerces.
  auto* const initialize =
      reinterpret_cast<void (*)(char const*, char const*, PanicHandler*, MemoryManager*)>(
          dlsym(RTLD_NEXT,
                "_ZN11xercesc_3_216XMLPlatformUtils10InitializeEPKcS2_PNS_12PanicHandlerEPNS_"
                "13MemoryManagerE"));
  initialize(locale, nls_home, panic, memory);
  throw IOException("Somewhere.cpp", 123, XMLExcepts::File_CouldNotOpenFile, u"a file", nullptr,
                    nullptr, nullptr, fgMemoryManager);
}

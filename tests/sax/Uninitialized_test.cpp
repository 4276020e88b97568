#include <dlfcn.h>
#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <xercesc/util/IOException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "tests/support/Raises.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/sax/SaxParser.h"

// In this program the initialisation of Xerces fails while the library is loaded.

void xercesc::XMLPlatformUtils::Initialize(char const* locale, char const* nls_home,
                                           PanicHandler* panic, MemoryManager* memory) {
  // The failure itself needs an initialised Xerces.
  auto* const initialize =
      reinterpret_cast<void (*)(char const*, char const*, PanicHandler*, MemoryManager*)>(
          dlsym(RTLD_NEXT,
                "_ZN11xercesc_3_216XMLPlatformUtils10InitializeEPKcS2_PNS_12PanicHandlerEPNS_"
                "13MemoryManagerE"));
  initialize(locale, nls_home, panic, memory);
  throw IOException("Somewhere.cpp", 123, XMLExcepts::File_CouldNotOpenFile, u"a name", nullptr,
                    nullptr, nullptr, fgMemoryManager);
}

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::RuntimeException;
using Orn::SaxParser;

TEST(FailedInitialization, IsRaisedByEveryConstructor) {
  std::istringstream in("<r/>");
  EXPECT_RAISES(SaxParser(), RuntimeException, Catalogue::UNABLE_TO_INITIALIZE_XERCES);
  EXPECT_RAISES(SaxParser(in), RuntimeException, Catalogue::UNABLE_TO_INITIALIZE_XERCES);
  EXPECT_RAISES(SaxParser(&in), RuntimeException, Catalogue::UNABLE_TO_INITIALIZE_XERCES);
  EXPECT_RAISES(SaxParser(nullptr), RuntimeException, Catalogue::UNABLE_TO_INITIALIZE_XERCES);
  Orn::ReadLimits const limits = Orn::ReadLimits::untrusted();
  EXPECT_RAISES(SaxParser(limits), RuntimeException, Catalogue::UNABLE_TO_INITIALIZE_XERCES);
  EXPECT_RAISES(SaxParser(in, limits), RuntimeException, Catalogue::UNABLE_TO_INITIALIZE_XERCES);
  EXPECT_RAISES(SaxParser(&in, limits), RuntimeException, Catalogue::UNABLE_TO_INITIALIZE_XERCES);
}

TEST(FailedInitialization, LeavesTheStreamUnread) {
  std::istringstream in("<r/>");
  EXPECT_THROW(SaxParser{in}, RuntimeException);
  EXPECT_EQ(in.tellg(), 0);
  EXPECT_TRUE(in.good());
}

TEST(FailedInitialization, LeavesNilHandlesUsable) {
  EXPECT_TRUE(SaxParser::Elem().is_nil());
  EXPECT_RAISES(SaxParser::Elem().tag(), Orn::StateException, Catalogue::NIL_ELEMENT,
                u"SaxParser::Elem::tag()");
  EXPECT_TRUE(SaxParser::Attribute().is_nil());
}

}  // namespace
}  // namespace tests

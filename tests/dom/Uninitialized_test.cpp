#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <functional>
#include <string>
#include <xercesc/util/IOException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "tests/support/Raises.h"
#include "tests/support/TestTags.h"
#include "tqutil/UString.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/writer/XmlDoc.h"

// In this program the initialisation of Xerces fails while the library is loaded.

namespace {

xercesc::IOException initialization_failure() {
  return xercesc::IOException("Somewhere.cpp", 123, xercesc::XMLExcepts::File_CouldNotOpenFile,
                              u"caf\u00e9", nullptr, nullptr, nullptr,
                              xercesc::XMLPlatformUtils::fgMemoryManager);
}

int standard_error = -1;
int capture = -1;

void capture_standard_error() {
  standard_error = dup(STDERR_FILENO);
  capture = memfd_create("what is written to the standard error stream", 0);
  dup2(capture, STDERR_FILENO);
}

// What stands here runs before the initialisation of the shared libraries.
__attribute__((section(".preinit_array"), used)) void (*first_of_all)() = capture_standard_error;

std::string end_of_capture() {
  dup2(standard_error, STDERR_FILENO);
  std::string text(static_cast<std::size_t>(lseek(capture, 0, SEEK_END)), '\0');
  EXPECT_EQ(pread(capture, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
  close(capture);
  return text;
}

std::string const written_at_load = end_of_capture();

}  // namespace

void xercesc::XMLPlatformUtils::Initialize(char const* locale, char const* nls_home,
                                           PanicHandler* panic, MemoryManager* memory) {
  // The failure itself needs an initialised Xerces.
  auto* const initialize =
      reinterpret_cast<void (*)(char const*, char const*, PanicHandler*, MemoryManager*)>(
          dlsym(RTLD_NEXT,
                "_ZN11xercesc_3_216XMLPlatformUtils10InitializeEPKcS2_PNS_12PanicHandlerEPNS_"
                "13MemoryManagerE"));
  initialize(locale, nls_home, panic, memory);
  throw initialization_failure();
}

namespace tests {
namespace {

namespace tag = testtags;
using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::StateException;
using Orn::UString;
using Orn::XmlDoc;

TEST(FailedInitialization, IsWrittenToTheStandardErrorStreamByEachReader) {
  std::string const diagnostic = "Error during Xerces-c Initialization.\n  Exception message:" +
                                 UString(initialization_failure().getMessage()).to_utf8() + "\n";
  EXPECT_EQ(written_at_load, diagnostic + diagnostic);
}

TEST(FailedInitialization, IsRaisedByEveryConstructor) {
  XmlDoc doc(tag::u_r);
  doc.close();
  for (std::function<void()> const& construct :
       {std::function<void()>([] { DomParser parser; }),
        std::function<void()>([] { DomParser parser(""); }),
        std::function<void()>([] { DomParser parser("<r/>"); }),
        std::function<void()>([] { DomParser parser("<r/>", Orn::ReadLimits::untrusted()); }),
        std::function<void()>([&] { DomParser parser(doc); })}) {
    EXPECT_TRUE(
        raises(construct, typeid(RuntimeException), Catalogue::UNABLE_TO_INITIALIZE_XERCES));
  }
}

TEST(FailedInitialization, IsRaisedAfterTheTextHasBeenTaken) {
  EXPECT_TRUE(raises([] { DomParser parser((XmlDoc(tag::u_r))); }, typeid(StateException),
                     Catalogue::CLOSE_NOT_CALLED));
}

TEST(FailedInitialization, ReadsAsOneLine) {
  EXPECT_STREQ(caught<RuntimeException>([] { DomParser(); }).what(),
               "ZEMKA0672E Unable to initialize Xerces-c.");
}

TEST(FailedInitialization, LeavesTheRestOfTheLibraryUsable) {
  XmlDoc doc(tag::u_r);
  doc.close();
  EXPECT_FALSE(doc.byte_array().empty());
  EXPECT_TRUE(DomParser::Elem().is_nil());
}

}  // namespace
}  // namespace tests

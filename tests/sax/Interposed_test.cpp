#include <dlfcn.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/IOException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "tests/sax/Source.h"
#include "tests/support/Raises.h"
#include "tests/support/ReaderTest.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/sax/SaxParser.h"

// This program stands between the library and two things that it calls: the steps of Xerces, which
// it counts, looks at and lets fail, and the look-up of names in the registry, which it counts.

namespace {

int steps = 0;
int look_ups = 0;
std::function<void(xercesc::SAXParser&, xercesc::InputSource const&)> before_first_step;
std::function<void(xercesc::SAXParser&)> before_step;

template <class Function>
Function* next(char const* mangled_name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, mangled_name));
}

}  // namespace

bool xercesc::SAXParser::parseFirst(InputSource const& source, XMLPScanToken& token) {
  static auto* const first = next<bool(SAXParser*, InputSource const&, XMLPScanToken&)>(
      "_ZN11xercesc_3_29SAXParser10parseFirstERKNS_11InputSourceERNS_13XMLPScanTokenE");
  ++steps;
  if (before_first_step) before_first_step(*this, source);
  return first(this, source, token);
}

bool xercesc::SAXParser::parseNext(XMLPScanToken& token) {
  static auto* const step = next<bool(SAXParser*, XMLPScanToken&)>(
      "_ZN11xercesc_3_29SAXParser9parseNextERNS_13XMLPScanTokenE");
  ++steps;
  if (before_step) before_step(*this);
  return step(this, token);
}

Orn::XmlTag const& Orn::XmlTag::lookup(std::u16string_view ns_uri, std::u16string_view name) {
  static auto* const look_up = next<XmlTag const&(std::u16string_view, std::u16string_view)>(
      "_ZN3Orn6XmlTag6lookupESt17basic_string_viewIDsSt11char_traitsIDsEES4_");
  ++look_ups;
  return look_up(ns_uri, name);
}

Orn::XmlTag const& Orn::XmlTag::lookup(XmlTag& tag) {
  static auto* const look_up = next<XmlTag const&(XmlTag&)>("_ZN3Orn6XmlTag6lookupERS0_");
  ++look_ups;
  return look_up(tag);
}

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::SaxParser;
using Orn::StateException;
using Elem = SaxParser::Elem;

class Step : public testing::Test {
 protected:
  Step() { steps = 0; }
  ~Step() override {
    before_first_step = nullptr;
    before_step = nullptr;
  }

  /// The root of a document that stays readable during the test.
  Elem root_of(std::string const& xml) {
    stream_.str(xml);
    return parser_.initialize(&stream_);
  }
  SaxParser const& parser() const { return parser_; }

  /// How many steps `call` makes.
  template <class Call>
  int during(Call call) {
    int const before = steps;
    call();
    return steps - before;
  }

 private:
  std::istringstream stream_;
  SaxParser parser_;
};

TEST_F(Step, IsMadeOnlyAsFarAsNavigationNeeds) {
  Elem root;
  // The prolog and the start tag.
  EXPECT_EQ(during([&] { root = root_of("<r>x<a>y</a><b/></r>"); }), 2);
  EXPECT_EQ(during([&] { EXPECT_FALSE(root.is_empty()); }), 1);
  EXPECT_EQ(during([&] { EXPECT_EQ(root.child().tag(), tag::a); }), 1);
  EXPECT_EQ(during([&] { EXPECT_EQ(root.child().tag(), tag::a); }), 0);
  EXPECT_EQ(during([&] { EXPECT_EQ(root.child().data(), u"y"); }), 2);
  EXPECT_EQ(during([&] { EXPECT_EQ(root.child().data(), u"y"); }), 0);
  EXPECT_EQ(during([&] { EXPECT_EQ(root.child(tag::b).tag(), tag::b); }), 1);
  EXPECT_EQ(during([&] { EXPECT_TRUE(root.opt_child(tag::c).is_nil()); }), 1);
  EXPECT_EQ(during([&] { EXPECT_TRUE(root.opt_child(tag::c).is_nil()); }), 0);
  EXPECT_EQ(during([&] { EXPECT_EQ(root.data(), u"x"); }), 0);
  EXPECT_EQ(during([&] { EXPECT_EQ(remaining_children(root), (Tags{tag::a, tag::b})); }), 0);
}

TEST_F(Step, IsNotMadeAfterTheDocumentHasEnded) {
  Elem root = root_of("<r/>");
  EXPECT_EQ(during([&] {
              EXPECT_EQ(root.data(), u"");
              EXPECT_TRUE(root.is_empty());
              EXPECT_TRUE(root.child().is_nil());
              EXPECT_TRUE(root.opt_child(tag::a).is_nil());
              EXPECT_TRUE(root.next_child().is_nil());
            }),
            0);
}

TEST_F(Step, IsNotMadeAfterOneThatWasTheEndOfTheInput) {
  Elem root = root_of("<r><a>");
  EXPECT_THROW(root.data(), StateException);
  EXPECT_EQ(during([&] {
              EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM);
              EXPECT_RAISES(root.child().data(), StateException, Catalogue::NOT_VALID_STREAM);
            }),
            0);
}

TEST_F(Step, IsNotMadeAfterOneThatEndedWithAnException) {
  Elem root = root_of("<r><unknown/></r>");
  EXPECT_THROW(root.data(), Orn::TagException);
  EXPECT_EQ(
      during([&] { EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM); }), 0);
}

TEST_F(Step, IsNotMadeWithoutAnInput) {
  EXPECT_EQ(during([] { SaxParser const parser; }), 0);
}

TEST_F(Step, IsWithNamespacesWithoutValidationAndWithoutAnExternalSubset) {
  xercesc::SAXParser const plain;
  before_first_step = [&](xercesc::SAXParser& parser, xercesc::InputSource const& source) {
    EXPECT_TRUE(parser.getDoNamespaces());
    EXPECT_EQ(parser.getValidationScheme(), xercesc::SAXParser::Val_Never);
    EXPECT_FALSE(parser.getLoadExternalDTD());
    EXPECT_EQ(parser.getDoSchema(), plain.getDoSchema());
    EXPECT_EQ(parser.getExitOnFirstFatalError(), plain.getExitOnFirstFatalError());
    EXPECT_EQ(parser.getDocumentHandler(), nullptr);
    EXPECT_EQ(parser.getLowWaterMark(), 0U);
    EXPECT_EQ(source.getSystemId(), nullptr);
    EXPECT_EQ(source.getPublicId(), nullptr);
    EXPECT_EQ(source.getEncoding(), nullptr);
  };
  EXPECT_EQ(root_of("<r/>").tag(), tag::r);
  EXPECT_EQ(steps, 2);
}

TEST_F(Step, ReadsAtMost1024BytesAtOnceWhateverXercesAsksFor) {
  Source source("<r>" + std::string(5000, ' ') + "</r>");
  before_first_step = [](auto&, xercesc::InputSource const& input) {
    std::unique_ptr<xercesc::BinInputStream> const stream(input.makeStream());
    XMLByte bytes[4096];
    EXPECT_EQ(stream->readBytes(bytes, 4096), 1024U);
    EXPECT_EQ(stream->readBytes(bytes, 1025), 1024U);
    EXPECT_EQ(stream->readBytes(bytes, 1000), 1000U);
    EXPECT_EQ(stream->readBytes(bytes, 1), 1U);
    EXPECT_EQ(stream->readBytes(bytes, 4096), 1024U);
    EXPECT_EQ(stream->readBytes(bytes, 4096), 5007U - 3 * 1024 - 1001);
    EXPECT_EQ(stream->readBytes(bytes, 4096), 0U);
    EXPECT_EQ(stream->readBytes(bytes, 4096), 0U);
    EXPECT_EQ(stream->getContentType(), nullptr);
  };
  EXPECT_RAISES(SaxParser(source), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_EQ(source.largest_read(), 1024);
}

TEST_F(Step, WouldSeekToTheStartIfXercesAskedForThePosition) {
  std::istringstream in("<r/>");
  before_first_step = [&](auto&, xercesc::InputSource const& input) {
    std::unique_ptr<xercesc::BinInputStream> const stream(input.makeStream());
    XMLByte bytes[3];
    EXPECT_EQ(stream->readBytes(bytes, 3), 3U);
    EXPECT_EQ(stream->curPos(), 0U);
    EXPECT_EQ(in.tellg(), 0);
  };
  EXPECT_EQ(SaxParser(in).root().tag(), tag::r);
}

xercesc::IOException xml_exception() {
  return xercesc::IOException("Somewhere.cpp", 123, xercesc::XMLExcepts::File_CouldNotOpenFile,
                              u"a name", nullptr, nullptr, nullptr,
                              xercesc::XMLPlatformUtils::fgMemoryManager);
}

TEST_F(Step, ThatFailsWithAnXmlExceptionIsAStreamThatIsNotValid) {
  Elem root = root_of("<r><a/></r>");
  before_step = [](auto&) { throw xml_exception(); };
  EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM);
  EXPECT_EQ(parser().error_text(), xml_exception().getMessage());
  EXPECT_FALSE(parser().error_text().empty());
  EXPECT_EQ(during([&] { EXPECT_THROW(root.data(), StateException); }), 0);
}

TEST_F(Step, ThatRunsOutOfMemoryIsABadAlloc) {
  Elem root = root_of("<r><a/></r>");
  before_step = [](auto&) { throw xercesc::OutOfMemoryException(); };
  EXPECT_THROW(root.data(), std::bad_alloc);
  EXPECT_EQ(
      during([&] { EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM); }), 0);
  EXPECT_EQ(parser().error_text(), u"");
}

TEST_F(Step, ThatRunsOutOfMemoryAtFirstIsABadAlloc) {
  before_first_step = [](auto&, auto&) { throw xercesc::OutOfMemoryException(); };
  EXPECT_THROW(root_of("<r/>"), std::bad_alloc);
  EXPECT_TRUE(parser().root().is_nil());
}

using Report = xercesc::XMLErrorReporter::ErrTypes;

void report(xercesc::SAXParser& parser, Report type, char16_t const* text) {
  parser.error(1, u"domain", type, text, u"system", u"public", 12, 34);
}

TEST_F(Step, WithAnErrorReportedRaisesItsText) {
  Elem root = root_of("<r><a/></r>");
  before_step = [](auto& parser) { report(parser, Report::ErrType_Error, u"the text"); };
  EXPECT_RAISES(root.data(), StateException, Catalogue::PARSER_ERROR, u"the text");
  EXPECT_EQ(parser().error_text(), u"the text");
  EXPECT_EQ(parser().error_line(), 12U);
  EXPECT_EQ(parser().error_column(), 34U);
  EXPECT_RAISES(root.data(), StateException, Catalogue::NOT_VALID_STREAM);
}

TEST_F(Step, WithAWarningReportedGoesOn) {
  Elem root = root_of("<r><a/>x</r>");
  before_step = [](auto& parser) { report(parser, Report::ErrType_Warning, u"the text"); };
  EXPECT_EQ(root.data(), u"x");
  EXPECT_EQ(parser().error_text(), u"");
  EXPECT_EQ(parser().error_line(), 0U);
}

TEST_F(Step, WithSeveralErrorsReportedTellsTheFirst) {
  Elem root = root_of("<r><a></r>");
  before_step = [](auto& parser) { report(parser, Report::ErrType_Fatal, u"the text"); };
  EXPECT_THROW(root.data(), StateException);
  EXPECT_EQ(parser().error_text(), u"the text");
  EXPECT_EQ(parser().error_line(), 12U);
}

using LookUp = Step;

TEST_F(LookUp, HappensOnceForEveryElementAndAttributeAndNeverForDeclarations) {
  look_ups = 0;
  Elem root =
      root_of("<r a='1' xmlns='urn:test:u' xmlns:p='urn:test:v' p:b='2'><a/><b c='3'/></r>");
  EXPECT_EQ(look_ups, 3);
  root.data();
  EXPECT_EQ(look_ups, 6);
  root.tag();
  root.match(tag::u_r);
  EXPECT_EQ(root.next_attr().tag(), tag::v_b);
  EXPECT_EQ(root.child(tag::u_b).next_attr().tag(), tag::c);
  EXPECT_EQ(remaining_children(root), (Tags{tag::u_a, tag::u_b}));
  EXPECT_EQ(look_ups, 6);
}

}  // namespace
}  // namespace tests

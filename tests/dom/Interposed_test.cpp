#include <dlfcn.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/IOException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "tests/support/Raises.h"
#include "tests/support/TestTags.h"
#include "tqutil/XmlTag.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"

// This program stands between the library and two things that it calls: the parse of Xerces, which
// it counts, looks at and lets fail, and the look-up of names in the registry, which it counts.

namespace {

int parses = 0;
int look_ups = 0;
std::function<void(xercesc::AbstractDOMParser&, xercesc::InputSource const&)> before_parse;

template <class Function>
Function* next(char const* mangled_name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, mangled_name));
}

}  // namespace

void xercesc::AbstractDOMParser::parse(InputSource const& source) {
  static auto* const parse_by_xerces = next<void(AbstractDOMParser*, InputSource const&)>(
      "_ZN11xercesc_3_217AbstractDOMParser5parseERKNS_11InputSourceE");
  ++parses;
  if (before_parse) before_parse(*this, source);
  parse_by_xerces(this, source);
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

namespace tag = testtags;
using Orn::Catalogue;
using Orn::DomParser;
using Orn::RuntimeException;
using Orn::UMessage;
using Orn::UString;

class Parse : public testing::Test {
 protected:
  Parse() { parses = 0; }
  ~Parse() override { before_parse = nullptr; }

  template <class Failure>
  void fail_with(Failure const& failure) {
    before_parse = [=](auto&, auto&) { throw failure; };
  }

  /// What the message of a parse that fails with `failure` says of it.
  template <class Failure>
  RuntimeException translation_of(Failure const& failure) {
    fail_with(failure);
    return caught<RuntimeException>([] { DomParser("<r/>").root(); });
  }
};

xercesc::IOException xml_exception() {
  return xercesc::IOException("Somewhere.cpp", 123, xercesc::XMLExcepts::File_CouldNotOpenFile,
                              u"a name", nullptr, nullptr, nullptr,
                              xercesc::XMLPlatformUtils::fgMemoryManager);
}

xercesc::DOMException dom_exception() {
  return xercesc::DOMException(xercesc::DOMException::NOT_FOUND_ERR, 0,
                               xercesc::XMLPlatformUtils::fgMemoryManager);
}

UString number(int value) { return UMessage::Arg(value).text(); }

TEST_F(Parse, HappensOnceHoweverOftenTheRootIsAskedFor) {
  DomParser parser("<r/>");
  EXPECT_EQ(parses, 0);
  parser.root();
  EXPECT_EQ(parses, 1);
  parser.root();
  parser.root();
  EXPECT_EQ(parses, 1);
}

TEST_F(Parse, OfANewTextWaitsForTheRoot) {
  DomParser source("<a/>");
  DomParser parser("<b/>");
  parser.root();
  parser.set_xml_doc_text("<c/>");
  parser = source;
  EXPECT_EQ(parses, 1);
  EXPECT_EQ(parser.root().tag(), tag::a);
  EXPECT_EQ(parses, 2);
}

TEST_F(Parse, ThatFailedIsNotRepeatedOnceThereIsADocument) {
  DomParser parser("<r>");
  EXPECT_THROW(parser.root(), RuntimeException);
  parser.root();
  EXPECT_EQ(parses, 1);
}

TEST_F(Parse, ThatFailedBeforeThereWasADocumentIsRepeated) {
  DomParser parser("<r/>");
  fail_with(1);
  EXPECT_THROW(parser.root(), RuntimeException);
  EXPECT_THROW(parser.root(), RuntimeException);
  before_parse = nullptr;
  EXPECT_EQ(parser.root().tag(), tag::r);
  EXPECT_EQ(parses, 3);
}

TEST_F(Parse, OfANewTextDoesNotHappenAfterTheEmptyTextHasFailed) {
  DomParser parser;
  EXPECT_THROW(parser.root(), RuntimeException);
  parser.set_xml_doc_text("<r/>");
  parser.root();
  EXPECT_EQ(parses, 1);
}

TEST_F(Parse, IsOfTheBytesOfTheTextUnderAMadeUpName) {
  std::string const xml = "<r>\xc3\xa9</r>";
  before_parse = [&](auto&, xercesc::InputSource const& source) {
    EXPECT_EQ(UString(source.getSystemId()), u"some-fake-system-id???");
    EXPECT_EQ(source.getPublicId(), nullptr);
    EXPECT_EQ(source.getEncoding(), nullptr);
    std::unique_ptr<xercesc::BinInputStream> const stream(source.makeStream());
    std::string bytes(xml.size() + 1, '\0');
    bytes.resize(stream->readBytes(reinterpret_cast<XMLByte*>(bytes.data()), bytes.size()));
    EXPECT_EQ(bytes, xml);
  };
  DomParser(xml).root();
  EXPECT_EQ(parses, 1);
}

TEST_F(Parse, IsWithNamespacesWithoutValidationAndOtherwiseAsXercesIsBorn) {
  xercesc::XercesDOMParser const plain;
  before_parse = [&](xercesc::AbstractDOMParser& parser, auto&) {
    EXPECT_TRUE(parser.getDoNamespaces());
    EXPECT_EQ(parser.getValidationScheme(), xercesc::AbstractDOMParser::Val_Never);
    EXPECT_EQ(parser.getDoSchema(), plain.getDoSchema());
    EXPECT_EQ(parser.getLoadExternalDTD(), plain.getLoadExternalDTD());
    EXPECT_EQ(parser.getExitOnFirstFatalError(), plain.getExitOnFirstFatalError());
    EXPECT_EQ(parser.getCreateEntityReferenceNodes(), plain.getCreateEntityReferenceNodes());
    EXPECT_EQ(parser.getCreateCommentNodes(), plain.getCreateCommentNodes());
    EXPECT_EQ(parser.getIncludeIgnorableWhitespace(), plain.getIncludeIgnorableWhitespace());
  };
  DomParser("<r/>").root();
  EXPECT_EQ(parses, 1);
}

TEST_F(Parse, IsStoppedByFatalErrorsOnly) {
  before_parse = [](xercesc::AbstractDOMParser& parser, auto&) {
    auto& handler = *dynamic_cast<xercesc::XercesDOMParser&>(parser).getErrorHandler();
    xercesc::SAXParseException const error(u"text", u"", u"", 12, 34);
    EXPECT_NO_THROW(handler.warning(error));
    EXPECT_NO_THROW(handler.error(error));
    EXPECT_THROW(handler.fatalError(error), xercesc::SAXParseException);
  };
  DomParser("<r/>").root();
  EXPECT_EQ(parses, 1);
}

TEST_F(Parse, ThatFailsWithAnXmlExceptionTellsItsCodeItsSourceLineAndItsText) {
  RuntimeException const e = translation_of(xml_exception());
  UString const text(xml_exception().getMessage());
  UString const code = number(xercesc::XMLExcepts::File_CouldNotOpenFile);
  EXPECT_TRUE(carries(
      e, {Catalogue::table(), Catalogue::XERCES_XML_EXCEPTION, {code, u"123", text}, 39, 2}));
  EXPECT_FALSE(text.empty());
  EXPECT_EQ(std::string(e.what()), "ZEMKA0673E Xerces XMLException: code: " + code.to_utf8() +
                                       ", line: 123, msg: " + text.to_utf8() + ".");
}

TEST_F(Parse, ThatFailsWithADomExceptionTellsItsCodeAndItsText) {
  RuntimeException const e = translation_of(dom_exception());
  UString const text(dom_exception().getMessage());
  EXPECT_TRUE(
      carries(e, {Catalogue::table(), Catalogue::XERCES_DOM_EXCEPTION, {u"8", text}, 39, 2}));
  EXPECT_FALSE(text.empty());
  EXPECT_EQ(std::string(e.what()),
            "ZEMKA0674E Xerces DOMException: code: 8, msg: " + text.to_utf8() + ".");
}

TEST_F(Parse, ThatFailsWithADomExceptionWithoutATextLeavesItEmpty) {
  EXPECT_STREQ(translation_of(xercesc::DOMException()).what(),
               "ZEMKA0674E Xerces DOMException: code: 0, msg: .");
}

TEST_F(Parse, ThatFailsWithASaxParseExceptionTellsItsPlaceAndItsText) {
  RuntimeException const e =
      translation_of(xercesc::SAXParseException(u"the text", u"public", u"system", 12, 34));
  EXPECT_TRUE(carries(e, {Catalogue::table(),
                          Catalogue::XERCES_SAX_PARSE_EXCEPTION,
                          {u"12", u"34", u"the text"},
                          39,
                          2}));
  EXPECT_STREQ(e.what(),
               "ZEMKA0675E Xerces SAXParseException: line: 12, column: 34, msg: the text.");
}

TEST_F(Parse, ThatFailsWithAnythingElseIsUnrecognized) {
  RuntimeException const translations[] = {
      translation_of(1),
      translation_of(std::runtime_error("a text")),
      translation_of(xercesc::OutOfMemoryException()),
      translation_of(xercesc::SAXException(u"a text")),
      translation_of(UString(u"a text")),
  };
  for (RuntimeException const& e : translations) {
    EXPECT_TRUE(
        carries(e, {Catalogue::table(), Catalogue::UNRECOGNIZED_XERCES_EXCEPTION, {}, 39, 2}));
    EXPECT_STREQ(e.what(), "ZEMKA0676E Unrecognized exception from Xerces while parsing XML.");
  }
}

TEST_F(Parse, CanBeTriedWithAnotherTextAfterAnyFailure) {
  DomParser parser("<a/>");
  for (std::function<void()> const& fail :
       {std::function<void()>([&] { fail_with(xml_exception()); }),
        std::function<void()>([&] { fail_with(dom_exception()); }),
        std::function<void()>([&] { fail_with(1); })}) {
    fail();
    EXPECT_THROW(parser.root(), RuntimeException);
    before_parse = nullptr;
    parser.set_xml_doc_text("<b/>");
    EXPECT_EQ(parser.root().tag(), tag::b);
    parser.set_xml_doc_text("<a/>");
  }
}

class LookUp : public testing::Test {
 protected:
  /// How often `call` looks a name up.
  template <class Call>
  int during(Call call) {
    int const before = look_ups;
    call();
    return look_ups - before;
  }

  DomParser parser{"<r b='1'><a/></r>"};
};

TEST_F(LookUp, OfATagHappensOnceAHandle) {
  DomParser::Elem root = parser.root();
  EXPECT_EQ(during([&] { root.tag(); }), 1);
  EXPECT_EQ(during([&] { root.tag(); }), 0);
  EXPECT_EQ(during([&] { root.match(tag::r); }), 0);
  DomParser::Elem copy = root;
  EXPECT_EQ(during([&] { copy.tag(); }), 0);
  DomParser::Attribute b = root.next_attr();
  EXPECT_EQ(during([&] { b.tag(); }), 1);
  EXPECT_EQ(during([&] { b.match(tag::b); }), 0);
}

TEST_F(LookUp, IsNotNeededForAChildThatWasAskedForByItsTag) {
  DomParser::Elem root = parser.root();
  DomParser::Elem a = root.opt_child(tag::a);
  EXPECT_EQ(during([&] { EXPECT_EQ(a.tag(), tag::a); }), 0);
  a = root.child(tag::a);
  EXPECT_EQ(during([&] { EXPECT_EQ(a.tag(), tag::a); }), 0);
}

TEST_F(LookUp, OfAChildFoundOtherwiseHappensOnce) {
  DomParser::Elem root = parser.root();
  DomParser::Elem a = root.child();
  EXPECT_EQ(during([&] { EXPECT_EQ(a.tag(), tag::a); }), 1);
  // The document knows it by now, for whatever handle.
  a = root.next_child();
  EXPECT_EQ(during([&] { EXPECT_EQ(a.tag(), tag::a); }), 0);
}

TEST_F(LookUp, IsNotRepeatedAfterAMatchThatFailed) {
  DomParser::Elem root = parser.root();
  EXPECT_THROW(root.match(tag::a), Orn::StateException);
  EXPECT_EQ(during([&] { EXPECT_EQ(root.tag(), tag::r); }), 0);
}

}  // namespace
}  // namespace tests

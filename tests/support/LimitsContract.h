#ifndef TESTS_SUPPORT_LIMITSCONTRACT_H
#define TESTS_SUPPORT_LIMITSCONTRACT_H

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <xercesc/internal/XMLReader.hpp>

#include "tqutil/STPException.h"
#include "tqutil/UString.h"
#include "tqxml/foundation/ReadLimits.h"

namespace tests {

using Orn::ReadLimits;
using Orn::UString;

/// How a reader tells that a limit has been crossed: what and how far it had come.
struct Crossing {
  std::uint64_t line;
  std::uint64_t column;
  UString text;

  bool operator==(Crossing const& other) const {
    return line == other.line && column == other.column && text == other.text;
  }
};

inline std::ostream& operator<<(std::ostream& out, Crossing const& crossing) {
  return out << crossing.line << ':' << crossing.column << ' ' << crossing.text;
}

/// `complaint` with what every such text begins and ends with.
inline UString limit_text(std::string const& complaint) {
  return UString::from_utf8(
      "ReadLimits::" + complaint +
      "; refuse the document, or read it again with another limit if you trust its source");
}

inline std::string repeated(std::size_t times, std::string const& text) {
  std::string all;
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

/// A file with a text that a document may try to get at.
class Canary {
 public:
  static constexpr char16_t SONG[] = u"what is in a file";

  explicit Canary(std::string const& text = UString(SONG).to_utf8())
      : path_(std::filesystem::temp_directory_path() / name()) {
    std::ofstream(path_) << text;
  }
  Canary(Canary const&) = delete;
  Canary& operator=(Canary const&) = delete;
  ~Canary() { std::filesystem::remove(path_); }

  std::string uri() const { return "file://" + path_.string(); }

 private:
  static std::string name() { return "tqxml-canary-" + std::to_string(getpid()); }

  std::filesystem::path path_;
};

/// What every reader promises of its limits. A reader joins with one line:
///
///   INSTANTIATE_TYPED_TEST_SUITE_P(Dom, LimitsContract, LimitedDom);
///
/// It has two operations. `read(xml, limits)` reads a document from beginning to end and gives what
/// `walk` gives. `crossing(xml, limits)` tries to, and gives the crossing when a limit stops it:
/// anything else that is raised passes, and so does an exception for a crossing that is not what
/// the reader is to raise for it.
template <class Reader>
class LimitsContract : public testing::Test {
 protected:
  using Limit = std::uint64_t ReadLimits::*;

  static ReadLimits with(Limit limit, std::uint64_t value) {
    ReadLimits limits;
    limits.*limit = value;
    return limits;
  }

  /// The document is read with that limit, and refused with one less.
  static void expect_just_within(std::string const& xml, Limit limit, std::uint64_t value,
                                 std::string const& complaint, std::uint64_t line,
                                 std::uint64_t column) {
    SCOPED_TRACE(xml.substr(0, 100));
    EXPECT_EQ(Reader::crossing(xml, with(limit, value)), std::nullopt);
    EXPECT_EQ(Reader::crossing(xml, with(limit, value - 1)),
              (Crossing{line, column, limit_text(complaint)}));
  }

  /// The document delivers exactly so many characters.
  static void expect_delivery(std::string const& xml, std::uint64_t characters) {
    SCOPED_TRACE(xml);
    ASSERT_GT(characters, xml.size());
    ReadLimits limits = with(&ReadLimits::amplification, 1);
    limits.amplification_floor = characters;
    EXPECT_EQ(Reader::crossing(xml, limits), std::nullopt);
    --limits.amplification_floor;
    auto const crossing = Reader::crossing(xml, limits);
    ASSERT_TRUE(crossing.has_value());
    EXPECT_EQ(crossing->text,
              limit_text("amplification: more than 1 characters for each byte that was read"));
  }

  /// The document is refused for a limit on the memory of its markup, and read with another.
  static void expect_too_much_memory(std::string const& xml) {
    SCOPED_TRACE(xml.substr(0, 100));
    auto const crossing = Reader::crossing(xml, with(&ReadLimits::markup_memory, 1048576));
    ASSERT_TRUE(crossing.has_value());
    EXPECT_EQ(crossing->text,
              limit_text("markup_memory: more than 1048576 bytes of memory for a piece of markup"));
    EXPECT_EQ(Reader::crossing(xml, with(&ReadLimits::markup_memory, 1073741824)), std::nullopt);
  }

  static ReadLimits without_doctype() {
    ReadLimits limits;
    limits.refuse_doctype = true;
    return limits;
  }
  static ReadLimits without_external() {
    ReadLimits limits;
    limits.refuse_external = true;
    return limits;
  }
};

TYPED_TEST_SUITE_P(LimitsContract);

TYPED_TEST_P(LimitsContract, AreAllOffAtFirst) {
  std::string const xml = "<!DOCTYPE r [<!ENTITY e 'xx'>]>" + repeated(2000, "<r>") +
                          repeated(2000, "&e;") + repeated(2000, "</r>");
  EXPECT_EQ(TypeParam::crossing(xml, ReadLimits()), std::nullopt);
}

TYPED_TEST_P(LimitsContract, RefuseADoctypeWhereItStands) {
  for (char const* doctype : {"<!DOCTYPE r>", "<!DOCTYPE r [<!ENTITY e 'x'>]>", "<!DOCTYPE r []>",
                              "<!DOCTYPE r SYSTEM 'none.dtd'>"}) {
    auto const crossing =
        TypeParam::crossing("\n" + std::string(doctype) + "<r/>", this->without_doctype());
    ASSERT_TRUE(crossing.has_value()) << doctype;
    EXPECT_EQ(crossing->text, limit_text("refuse_doctype: there is a DOCTYPE"));
    EXPECT_EQ(crossing->line, 2U);
  }
  EXPECT_EQ(TypeParam::crossing("<!-- <!DOCTYPE r> --><r><![CDATA[<!DOCTYPE r>]]></r>",
                                this->without_doctype()),
            std::nullopt);
}

TYPED_TEST_P(LimitsContract, RefuseADoctypeBeforeItsDeclarationsAreRead) {
  EXPECT_EQ(TypeParam::crossing("<!DOCTYPE r [ not well-formed", this->without_doctype()),
            (Crossing{1, 13, limit_text("refuse_doctype: there is a DOCTYPE")}));
}

TYPED_TEST_P(LimitsContract, RefuseAnExternalEntityWhereTheDocumentRefersToIt) {
  Canary const canary;
  std::string const xml =
      "<!DOCTYPE r [<!ENTITY e SYSTEM '" + canary.uri() + "'>]>\n<r><a/>&e;</r>";
  EXPECT_NO_THROW(TypeParam::read(xml, ReadLimits()));
  EXPECT_EQ(TypeParam::crossing(xml, this->without_external()),
            (Crossing{2, 11, limit_text("refuse_external: a reference to an external entity")}));
}

TYPED_TEST_P(LimitsContract, RefuseAnExternalParameterEntityWhereItIsReferredTo) {
  EXPECT_EQ(
      TypeParam::crossing("<!DOCTYPE r [<!ENTITY % p SYSTEM 'http://127.0.0.1:9/'>\n%p;]><r/>",
                          this->without_external()),
      (Crossing{2, 4, limit_text("refuse_external: a reference to an external entity")}));
}

TYPED_TEST_P(LimitsContract, RefuseAnExternalDtdSubset) {
  for (char const* doctype :
       {"<!DOCTYPE r SYSTEM 'none.dtd'>", "<!DOCTYPE r PUBLIC 'p' 'none.dtd'>",
        "<!DOCTYPE r SYSTEM 'none.dtd' [<!ENTITY e 'x'>]>"}) {
    auto const crossing =
        TypeParam::crossing(std::string(doctype) + "<r/>", this->without_external());
    ASSERT_TRUE(crossing.has_value()) << doctype;
    EXPECT_EQ(crossing->text, limit_text("refuse_external: the DTD has an external subset"));
  }
}

TYPED_TEST_P(LimitsContract, LetWhatIsExternalBeDeclaredAsLongAsNothingRefersToIt) {
  EXPECT_EQ(TypeParam::crossing(
                "<!DOCTYPE r [<!ENTITY e SYSTEM 'none.ent'><!ENTITY % p SYSTEM 'none.ent'>"
                "<!NOTATION n SYSTEM 'n'><!ENTITY u SYSTEM 'none.gif' NDATA n><!ENTITY i 'x'>]>"
                "<r>&i;</r>",
                this->without_external()),
            std::nullopt);
}

TYPED_TEST_P(LimitsContract, RefuseEncodingsThatAreNotUsual) {
  ReadLimits limits;
  limits.refuse_unusual_encodings = true;
  auto const declaring = [](std::string const& encoding) {
    return "<?xml version='1.0' encoding='" + encoding + "'?><r>+AGE-</r>";
  };
  for (char const* name :
       {"UTF-7", "utf-7", "unicode-1-1-utf-7", "ISO-2022-JP", "HZ-GB-2312", "SCSU", "UTF_8"}) {
    EXPECT_NO_THROW(TypeParam::read(declaring(name), ReadLimits())) << name;
  }
  for (char const* name : {"UTF-7", "utf-7", "unicode-1-1-utf-7", "ISO-2022-JP", "HZ-GB-2312",
                           "SCSU", "UTF_8", "GB_2312-80"}) {
    auto const crossing = TypeParam::crossing(declaring(name), limits);
    ASSERT_TRUE(crossing.has_value()) << name;
    EXPECT_EQ(crossing->text,
              limit_text("refuse_unusual_encodings: the declared encoding is not among the usual "
                         "ones"));
  }
  for (char const* name :
       {"UTF-8", "utf-8", "UTF8", "US-ASCII", "ascii", "ISO-8859-1", "iso-8859-15", "windows-1252",
        "KOI8-R", "EUC-JP", "GB18030", "gb2312", "GBK", "Big5", "Shift_JIS"}) {
    EXPECT_EQ(TypeParam::crossing(declaring(name), limits), std::nullopt) << name;
  }
  EXPECT_EQ(TypeParam::crossing("<r/>", limits), std::nullopt);
  EXPECT_EQ(TypeParam::crossing("<?xml version='1.0'?><r/>", limits), std::nullopt);
}

TYPED_TEST_P(LimitsContract, CountTheLevelsOfElements) {
  this->expect_just_within("<r><a/><b><c/></b><d/></r>", &ReadLimits::depth, 3,
                           "depth: more than 2 levels of elements", 1, 15);
  this->expect_just_within("<r>" + repeated(100, "<a/>") + "</r>", &ReadLimits::depth, 2,
                           "depth: more than 1 levels of elements", 1, 8);
}

TYPED_TEST_P(LimitsContract, CountTheAttributesOfAnElement) {
  this->expect_just_within("<r a='' b=''>\n<x a='' b='' c=''/><y/></r>", &ReadLimits::attributes, 3,
                           "attributes: more than 2 attributes on an element", 2, 20);
  this->expect_just_within("<r xmlns='urn:test:u' xmlns:p='urn:test:u' p:a=''/>",
                           &ReadLimits::attributes, 3,
                           "attributes: more than 2 attributes on an element", 1, 52);
  this->expect_just_within("<!DOCTYPE r [<!ATTLIST r a CDATA '' b CDATA ''>]><r/>",
                           &ReadLimits::attributes, 2,
                           "attributes: more than 1 attributes on an element", 1, 54);
}

TYPED_TEST_P(LimitsContract, CountTheNamespaceDeclarationsInForce) {
  this->expect_just_within(
      "<r xmlns:p='urn:test:u' a=''><a xmlns:q='urn:test:u'/><a xmlns:q='urn:test:u'/>"
      "\n<a xmlns:q='urn:test:u'><b xmlns:q=\"urn:test:v\"/></a></r>",
      &ReadLimits::namespaces, 3, "namespaces: more than 2 namespace declarations in force", 2, 50);
}

TYPED_TEST_P(LimitsContract, CountADeclarationOfTheDefaultNamespaceAmongThem) {
  this->expect_just_within(
      "<r xmlns='urn:test:u'><a xmlns='urn:test:v'/><a xmlns:p='urn:test:v'"
      " xmlns=''/></r>",
      &ReadLimits::namespaces, 3, "namespaces: more than 2 namespace declarations in force", 1, 80);
}

TYPED_TEST_P(LimitsContract, CountTheBytes) {
  std::string const xml = "<r><a/>" + std::string(3000, 't') + "</r>";
  std::uint64_t const size = xml.size();
  EXPECT_EQ(TypeParam::crossing(xml, this->with(&ReadLimits::bytes, size)), std::nullopt);
  for (std::uint64_t limit : {size - 1, std::uint64_t{1024}, std::uint64_t{1}, std::uint64_t{0}}) {
    auto const crossing = TypeParam::crossing(xml, this->with(&ReadLimits::bytes, limit));
    ASSERT_TRUE(crossing.has_value()) << limit;
    EXPECT_EQ(crossing->text, limit_text("bytes: more than " + std::to_string(limit) + " bytes"));
  }
}

TYPED_TEST_P(LimitsContract, CountTheDifferentNames) {
  this->expect_just_within("<r a=''>\n<a/><a b=''/><r a=''/><b/><c/></r>", &ReadLimits::names, 4,
                           "names: more than 3 different names", 2, 31);
  this->expect_just_within("<r xmlns:p='urn:test:u'><a/><p:a/><p:a p:a=''/></r>",
                           &ReadLimits::names, 5, "names: more than 4 different names", 1, 35);
}

TYPED_TEST_P(LimitsContract, CountTheNamesOfNamespacesAmongThem) {
  this->expect_just_within(
      "<r xmlns='urn:test:u'><r xmlns='urn:test:u'/><r xmlns='urn:test:v'/></r>",
      &ReadLimits::names, 4, "names: more than 3 different names", 1, 69);
}

TYPED_TEST_P(LimitsContract, MeasureNames) {
  this->expect_just_within("<r><last_shown/></r>", &ReadLimits::name, 10,
                           "name: more than 9 characters in a name", 1, 17);
  this->expect_just_within("<r>\n<a last_shown=''/></r>", &ReadLimits::name, 10,
                           "name: more than 9 characters in a name", 2, 19);
  this->expect_just_within("<?last_shown?><r/>", &ReadLimits::name, 10,
                           "name: more than 9 characters in a name", 1, 15);
  this->expect_just_within("<r><p:a xmlns:p='urn:test:u'/></r>", &ReadLimits::name, 7,
                           "name: more than 6 characters in a name", 1, 31);
}

TYPED_TEST_P(LimitsContract, MeasureTheTextOfAnElementInAllItsPieces) {
  char const* complaint = "text: more than 9 characters of text in an element";
  this->expect_just_within("<r>0123456789</r>", &ReadLimits::text, 10, complaint, 1, 14);
  this->expect_just_within("<r>01<a>0123456789</a>2&#x33;&lt;<![CDATA[567]]><!--c-->89</r>",
                           &ReadLimits::text, 10, complaint, 1, 19);
  this->expect_just_within("<r>01<a>0</a>2&#x33;&lt;<![CDATA[567]]><!--c-->8\xc3\xa9</r>",
                           &ReadLimits::text, 10, complaint, 1, 50);
  this->expect_just_within("<r>&#x1F600;&#x1F600;&#x1F600;&#x1F600;&#x1F600;</r>",
                           &ReadLimits::text, 10, complaint, 1, 49);
  this->expect_just_within("<!DOCTYPE r [<!ENTITY e '56789'>]><r>01234&e;</r>", &ReadLimits::text,
                           10, complaint, 1, 46);
}

TYPED_TEST_P(LimitsContract, MeasureCommentsAndInstructionsAsTexts) {
  this->expect_just_within("<r><!--0123456789--></r>", &ReadLimits::text, 10,
                           "text: more than 9 characters in a comment", 1, 21);
  this->expect_just_within("<r><?pi 0123456789?></r>", &ReadLimits::text, 10,
                           "text: more than 9 characters in a processing instruction", 1, 21);
}

TYPED_TEST_P(LimitsContract, DoNotAddUpTheTextsOfDifferentElements) {
  std::string const xml = "<r>" + repeated(100, "<a>0123456789</a>") + "</r>";
  EXPECT_EQ(TypeParam::crossing(xml, this->with(&ReadLimits::text, 10)), std::nullopt);
}

TYPED_TEST_P(LimitsContract, MeasureAttributeValuesWithTheirReferencesResolved) {
  char const* complaint = "attribute_value: more than 9 characters in an attribute value";
  this->expect_just_within("<r a='0' b='0123456789'/>", &ReadLimits::attribute_value, 10, complaint,
                           1, 26);
  this->expect_just_within("<r a='&#x30;&lt;&amp;3456789'/>", &ReadLimits::attribute_value, 10,
                           complaint, 1, 32);
  this->expect_just_within("<!DOCTYPE r [<!ENTITY e '01234'>]><r a='&e;&e;'/>",
                           &ReadLimits::attribute_value, 10, complaint, 1, 50);
  this->expect_just_within("<!DOCTYPE r [<!ATTLIST r a CDATA '0123456789'>]><r/>",
                           &ReadLimits::attribute_value, 10, complaint, 1, 53);
  this->expect_just_within("<r xmlns:p='urn:test:u'/>", &ReadLimits::attribute_value, 10, complaint,
                           1, 26);
}

TYPED_TEST_P(LimitsContract, CountWhatEntitiesBringToTexts) {
  // The tags of an element are 2 more than its name, and each reference is 100 more than the length
  // of its entity.
  this->expect_delivery("<!DOCTYPE r [<!ENTITY e '0123456789'>]><r>&e;&e;</r>", 3 + 2 * (110 + 10));
  this->expect_delivery("<!DOCTYPE r [<!ENTITY e '0123456789'><!ENTITY f '&e;&e;'>]><r>&f;</r>",
                        3 + 106 + 2 * (110 + 10));
}

TYPED_TEST_P(LimitsContract, CountReferencesThatBringNothing) {
  this->expect_delivery("<!DOCTYPE r [<!ENTITY e ''><!ENTITY f '&e;&e;&e;'>]><r>&f;&f;</r>",
                        3 + 2 * (109 + 3 * 100));
}

TYPED_TEST_P(LimitsContract, CountWhatEntitiesBringToAttributes) {
  this->expect_delivery("<!DOCTYPE r [<!ENTITY e '0123456789'>]><r a='&e;&e;'/>",
                        3 + 1 + 2 * (110 + 10));
  // Any of them may be to the longest.
  this->expect_delivery("<!DOCTYPE r [<!ENTITY e '0123456789'><!ENTITY f '&e;&e;'>]><r a='&f;'/>",
                        3 + 1 + 110 + 2 * (110 + 10));
}

TYPED_TEST_P(LimitsContract, CountWhatEntitiesBringInMarkup) {
  this->expect_delivery("<!DOCTYPE r [<!ENTITY e '<a/><a b=\"x\"/>'>]><r>&e;</r>",
                        3 + 114 + 3 + 3 + 2);
  this->expect_delivery("<!DOCTYPE r [<!ENTITY e '<!--123--><?pi 45?>'>]><r>&e;</r>",
                        3 + 119 + 3 + 4);
}

TYPED_TEST_P(LimitsContract, CountTheDefaultsOfADtd) {
  std::string const value(100, 'v');
  this->expect_delivery("<!DOCTYPE r [<!ATTLIST a b CDATA '" + value + "'>]><r><a/><a/><a/></r>",
                        3 + 3 * (3 + 1 + 100 + 500));
}

// What the parser reads an entity with is known by its size, which a text may have as well.
TYPED_TEST_P(LimitsContract, DoNotTakeATextOfAnyLengthForAnEntity) {
  constexpr std::size_t LENGTH = sizeof(xercesc::XMLReader) / sizeof(char16_t);
  for (std::size_t length = LENGTH - 48; length <= LENGTH + 8; ++length) {
    std::string const text(length, 'x');
    for (std::string const& xml : {"<r>" + text + "</r>", "<r a='" + text + "'/>",
                                   "<r><!--" + text + "--></r>", "<r><?a " + text + "?></r>"}) {
      ASSERT_EQ(TypeParam::crossing(xml, this->with(&ReadLimits::entity_depth, 0)), std::nullopt)
          << length << ' ' << xml.substr(0, 8);
    }
  }
}

TYPED_TEST_P(LimitsContract, TakeAnEntityOfManyElements) {
  ReadLimits limits = ReadLimits::untrusted();
  limits.refuse_doctype = false;
  EXPECT_EQ(
      TypeParam::crossing(
          "<!DOCTYPE r [<!ENTITY e '" + repeated(40000, "<a/>") + "'>]>" + "<r>&e;</r>", limits),
      std::nullopt);
}

TYPED_TEST_P(LimitsContract, CountReferencesWithinADtd) {
  this->expect_delivery("<!DOCTYPE r [<!ENTITY % p '<!-- -->'>%p;%p;%p;]><r/>", 3 * 108 + 3);
}

TYPED_TEST_P(LimitsContract, CompareWhatIsDeliveredWithTheBytesOfTheDocument) {
  std::string const begin = "<!DOCTYPE r [<!ENTITY e '0123456789'>]><r>", end = "</r>";
  std::string xml = begin + "&e;" + end;
  xml = begin + std::string(113 - xml.size(), '.') + "&e;" + end;
  // Of 113 bytes, 3 + the points + 110.
  std::uint64_t const delivered = 113 + (113 - begin.size() - 3 - end.size());
  ReadLimits limits = this->with(&ReadLimits::amplification, 2);
  EXPECT_EQ(TypeParam::crossing(xml, limits), std::nullopt);
  EXPECT_GT(delivered, 113U);
  limits.amplification = 1;
  EXPECT_EQ(TypeParam::crossing(xml, limits),
            (Crossing{1, 110,
                      limit_text("amplification: more than 1 characters for each byte that was "
                                 "read")}));
}

TYPED_TEST_P(LimitsContract, DoNotCountReferencesToCharactersNorPredefinedEntities) {
  ReadLimits limits = this->with(&ReadLimits::amplification, 1);
  EXPECT_EQ(TypeParam::crossing("<r>" + repeated(1000000, "&quot;") + "</r>", limits),
            std::nullopt);
  for (char const* piece :
       {"&#x22;", "&#000000034;", "&amp;&lt;&gt;&apos;", "<a b='&quot;&#34;'/>"}) {
    EXPECT_EQ(TypeParam::crossing("<r>" + repeated(50000, piece) + "</r>", limits), std::nullopt)
        << piece;
  }
}

TYPED_TEST_P(LimitsContract, LetDocumentsOfPlainTextBeAtAnAmplificationOfOne) {
  std::string const xml =
      "<?xml version='1.0'?><!--c--><?p i?>\n<r a='1' xmlns='urn:test:u'><a xmlns=''>text</a>"
      "<b/>\r\n<c><![CDATA[c]]></c></r>\n<!--c-->";
  EXPECT_EQ(TypeParam::crossing(xml, this->with(&ReadLimits::amplification, 1)), std::nullopt);
  EXPECT_EQ(TypeParam::crossing(xml, this->with(&ReadLimits::amplification, 0)), std::nullopt);
}

TYPED_TEST_P(LimitsContract, LetSmallDocumentsBeAmplifiedALot) {
  ReadLimits limits = ReadLimits::untrusted();
  limits.refuse_doctype = false;
  std::string const xml = "<!DOCTYPE r [<!ENTITY e '" + std::string(10000, 'x') + "'><!ENTITY f '" +
                          repeated(100, "&e;") + "'>]><r>" + repeated(3, "<a>&f;</a>") + "</r>";
  EXPECT_EQ(TypeParam::crossing(xml, limits), std::nullopt);
}

TYPED_TEST_P(LimitsContract, StopEntitiesThatAreDefinedByOneAnother) {
  ReadLimits limits = ReadLimits::untrusted();
  limits.refuse_doctype = false;
  // Less to read before it matters.
  limits.amplification_floor /= 10;
  std::string entities = "<!ENTITY e0 'lol'>";
  for (int i = 1; i < 10; ++i) {
    std::string const reference = "&e" + std::to_string(i - 1) + ";";
    entities += "<!ENTITY e" + std::to_string(i) + " '" + repeated(10, reference) + "'>";
  }
  for (char const* root : {"<r>&e9;</r>", "<r a='&e9;'/>"}) {
    auto const crossing = TypeParam::crossing("<!DOCTYPE r [" + entities + "]>" + root, limits);
    ASSERT_TRUE(crossing.has_value()) << root;
    EXPECT_EQ(crossing->text,
              limit_text("amplification: more than 100 characters for each byte that was read"));
  }
}

TYPED_TEST_P(LimitsContract, CountTheLevelsOfEntities) {
  std::string const doctype =
      "<!DOCTYPE r [<!ENTITY a 'x'><!ENTITY b 'x&a;x&a;'><!ENTITY c '&b;&b;'>]>";
  for (char const* root : {"<r>&c;&a;</r>", "<r a='&a;&c;'/>"}) {
    std::string const xml = doctype + root;
    SCOPED_TRACE(xml);
    EXPECT_EQ(TypeParam::crossing(xml, this->with(&ReadLimits::entity_depth, 3)), std::nullopt);
    auto const crossing = TypeParam::crossing(xml, this->with(&ReadLimits::entity_depth, 2));
    ASSERT_TRUE(crossing.has_value());
    EXPECT_EQ(crossing->text, limit_text("entity_depth: more than 2 levels of entities"));
  }
}

TYPED_TEST_P(LimitsContract, CountTheLevelsOfEntitiesInADtd) {
  std::string const xml =
      "<!DOCTYPE r [<!ENTITY % a '<!-- -->'><!ENTITY % b '&#37;a;&#37;a;'>%a;%b;%b;]><r/>";
  EXPECT_EQ(TypeParam::crossing(xml, this->with(&ReadLimits::entity_depth, 2)), std::nullopt);
  auto const crossing = TypeParam::crossing(xml, this->with(&ReadLimits::entity_depth, 1));
  ASSERT_TRUE(crossing.has_value());
  EXPECT_EQ(crossing->text, limit_text("entity_depth: more than 1 levels of entities"));
}

TYPED_TEST_P(LimitsContract, StopWorkThatBringsNothing) {
  ReadLimits limits = ReadLimits::untrusted();
  limits.refuse_doctype = false;
  // Less than the memory that a DomParser takes for the text of the DTD.
  limits.amplification_floor = 1000000;
  std::string const blanks(5000, ' ');
  for (std::string const& xml :
       {"<!DOCTYPE r [<!ENTITY e '<a" + blanks + "/>'>]><r>" + repeated(2000, "&e;") + "</r>",
        "<!DOCTYPE r [<!ENTITY % p '" + blanks + "'>" + repeated(2000, "%p;") + "]><r/>",
        "<!DOCTYPE r [<!ENTITY e '" + blanks + "'><!ATTLIST r a NMTOKENS #IMPLIED>]><r>" +
            repeated(20, "<r a='" + repeated(100, "&e;") + "'/>") + "</r>"}) {
    auto const crossing = TypeParam::crossing(xml, limits);
    ASSERT_TRUE(crossing.has_value()) << xml.substr(0, 40);
    EXPECT_EQ(crossing->text,
              limit_text("amplification: more than 100 characters for each byte that was read"))
        << xml.substr(0, 40);
  }
}

TYPED_TEST_P(LimitsContract, StopALongEntityThatIsReferredToManyTimes) {
  ReadLimits limits = ReadLimits::untrusted();
  limits.refuse_doctype = false;
  std::string const doctype = "<!DOCTYPE r [<!ENTITY e '" + std::string(70000, 'x') + "'>]>";
  auto const in_texts =
      TypeParam::crossing(doctype + "<r>" + repeated(14000, "<a>&e;</a>") + "</r>", limits);
  ASSERT_TRUE(in_texts.has_value());
  EXPECT_EQ(in_texts->text,
            limit_text("amplification: more than 100 characters for each byte that was read"));
  auto const in_value =
      TypeParam::crossing(doctype + "<r a='" + repeated(14000, "&e;") + "'/>", limits);
  ASSERT_TRUE(in_value.has_value());
  EXPECT_EQ(in_value->text,
            limit_text("markup_memory: more than 8388608 bytes of memory for a piece of markup"));
}

TYPED_TEST_P(LimitsContract, StopMarkupBeforeItHasBeenReadWhole) {
  std::string const a_lot(2000000, 'x');
  this->expect_too_much_memory("<r><!--" + a_lot + "--></r>");
  this->expect_too_much_memory("<r><?pi " + a_lot + "?></r>");
  this->expect_too_much_memory("<r><![CDATA[" + a_lot + "]]></r>");
  this->expect_too_much_memory("<r a='" + a_lot + "'/>");
  this->expect_too_much_memory("<!DOCTYPE r [<!ENTITY e '" + a_lot + "'>]><r/>");
}

TYPED_TEST_P(LimitsContract, StopNamesBeforeTheyHaveBeenReadWhole) {
  auto const crossing = TypeParam::crossing("<" + std::string(2000000, 'x'),
                                            this->with(&ReadLimits::markup_memory, 1048576));
  ASSERT_TRUE(crossing.has_value());
  EXPECT_LT(crossing->column, 1000000U);
}

TYPED_TEST_P(LimitsContract, StopAttributesBeforeAllHaveBeenRead) {
  std::string xml = "<r";
  for (int i = 0; i < 100000; ++i) xml += " a" + std::to_string(i) + "=''";
  auto const crossing = TypeParam::crossing(xml, this->with(&ReadLimits::markup_memory, 1048576));
  ASSERT_TRUE(crossing.has_value());
  EXPECT_LT(crossing->column, 500000U);
}

TYPED_TEST_P(LimitsContract, StopDeclarationsBeforeAllHaveBeenRead) {
  std::string xml = "<!DOCTYPE r [";
  for (int i = 0; i < 100000; ++i) xml += "<!ENTITY e" + std::to_string(i) + " 'x'>";
  auto const crossing = TypeParam::crossing(xml, this->with(&ReadLimits::markup_memory, 1048576));
  ASSERT_TRUE(crossing.has_value());
  EXPECT_LT(crossing->column, 1000000U);
}

TYPED_TEST_P(LimitsContract, DoNotTakeWhatHasBeenDeliveredForMemoryOfMarkup) {
  std::string const piece = "<a b='" + std::string(20000, 'v') + "'>" + std::string(20000, 't') +
                            "</a><!--" + std::string(20000, 'c') + "-->";
  EXPECT_EQ(TypeParam::crossing("<r>" + repeated(200, piece) + "</r>",
                                this->with(&ReadLimits::markup_memory, 1048576)),
            std::nullopt);
}

// Where that were refused, the parser would lose the decoder.
TYPED_TEST_P(LimitsContract, DoNotTakeWhatDecodesTheDocumentForMemoryOfMarkup) {
  for (char const* encoding : {"windows-1252", "ISO-8859-15", "GB18030"}) {
    std::string const begin = "<?xml version='1.0' encoding='" + std::string(encoding) + "'?>";
    for (std::uint64_t memory = 0; memory < 100000; memory += 1000) {
      auto const crossing = TypeParam::crossing(begin + "\n<r>\n</r>",
                                                this->with(&ReadLimits::markup_memory, memory));
      if (crossing.has_value()) {
        ASSERT_GT(crossing->line, 1U) << encoding << ' ' << memory;
      }
    }
  }
}

TYPED_TEST_P(LimitsContract, DoNotTakeWhatDecodesAnExternalEntityForMemoryOfMarkup) {
  std::string const begin = "<?xml version='1.0' encoding='ISO-8859-15'?>\n";
  Canary const text(begin + "<!-- -->");
  for (std::string const& declared : {"e SYSTEM '" + text.uri() + "'>]>\n<r>\n&e;</r>",
                                      "% e SYSTEM '" + text.uri() + "'>\n\n%e;]><r/>"}) {
    // From what the parser needs to come there to what is enough, the least of which decodes.
    for (std::uint64_t memory = 100000; memory < 600000; memory += 4000) {
      auto const crossing = TypeParam::crossing("<!DOCTYPE r [<!ENTITY " + declared,
                                                this->with(&ReadLimits::markup_memory, memory));
      if (crossing.has_value()) {
        ASSERT_GT(crossing->line, 1U) << memory;
      }
    }
  }
}

TYPED_TEST_P(LimitsContract, TakeTheTextThatTheParserCollectsForMarkup) {
  std::string const xml = "<r>" + std::string(3000000, 't') + "</r>";
  this->expect_too_much_memory(xml);
  EXPECT_EQ(TypeParam::crossing(xml, this->with(&ReadLimits::markup_memory, 7340032)),
            std::nullopt);
}

TYPED_TEST_P(LimitsContract, ForUntrustedDocumentsAreTheOnesThatAreDocumented) {
  ReadLimits const limits = ReadLimits::untrusted();
  EXPECT_TRUE(limits.refuse_doctype);
  EXPECT_TRUE(limits.refuse_external);
  EXPECT_TRUE(limits.refuse_unusual_encodings);
  EXPECT_EQ(limits.amplification, 100U);
  EXPECT_EQ(limits.amplification_floor, 8388608U);
  EXPECT_EQ(limits.entity_depth, 40U);
  EXPECT_EQ(limits.depth, 1024U);
  EXPECT_EQ(limits.attributes, 1024U);
  EXPECT_EQ(limits.namespaces, 256U);
  EXPECT_EQ(limits.bytes, 10000000U);
  EXPECT_EQ(limits.markup_memory, 8388608U);
  EXPECT_EQ(limits.names, 1200U);
  EXPECT_EQ(limits.name, 65536U);
  EXPECT_EQ(limits.text, 10000000U);
  EXPECT_EQ(limits.attribute_value, 500000U);
}

TYPED_TEST_P(LimitsContract, ForUntrustedDocumentsLetLargeOnesPass) {
  ReadLimits const limits = ReadLimits::untrusted();
  std::string attributes;
  for (int i = 0; i < 20; ++i) attributes += " xmlns:n" + std::to_string(i) + "='urn:test:u'";
  for (std::string const& xml :
       {"<r>" + repeated(1000000, "&quot;") + "</r>", "<r>" + repeated(1500000, "&#65;") + "</r>",
        "<r a='" + std::string(500000, 'v') + "'/>", "<r>" + std::string(8000000, 't') + "</r>",
        repeated(1024, "<r>") + repeated(1024, "</r>"), "<r" + attributes + "/>",
        "<r><![CDATA[" + std::string(1500000, 'c') + "]]></r>"}) {
    EXPECT_EQ(TypeParam::crossing(xml, limits), std::nullopt) << xml.substr(0, 30);
  }
}

TYPED_TEST_P(LimitsContract, LeaveMalformedDocumentsToTheParser) {
  for (char const* xml : {"", "<r>", "<r></a>", "<r a='1' a='2'/>", "<r>&u;</r>"}) {
    EXPECT_THROW(TypeParam::crossing(xml, ReadLimits::untrusted()), Orn::STPException) << xml;
  }
}

TYPED_TEST_P(LimitsContract, DoNotChangeWhatIsRead) {
  std::string const xml =
      "<!DOCTYPE r [<!ENTITY e 'x&amp;y'><!ATTLIST r d CDATA 'default'>]>"
      "<r xmlns:p='urn:test:u' p:a='1&e;'>text<p:b>&lt;</p:b><![CDATA[c]]><!--c--></r>";
  ReadLimits limits = ReadLimits::untrusted();
  limits.refuse_doctype = false;
  UString const seen = TypeParam::read(xml, limits);
  EXPECT_EQ(seen, TypeParam::read_without_limits(xml));
  EXPECT_FALSE(seen.empty());
}

REGISTER_TYPED_TEST_SUITE_P(
    LimitsContract, AreAllOffAtFirst, RefuseADoctypeWhereItStands,
    RefuseADoctypeBeforeItsDeclarationsAreRead, RefuseAnExternalEntityWhereTheDocumentRefersToIt,
    RefuseAnExternalParameterEntityWhereItIsReferredTo, RefuseAnExternalDtdSubset,
    LetWhatIsExternalBeDeclaredAsLongAsNothingRefersToIt, RefuseEncodingsThatAreNotUsual,
    CountTheLevelsOfElements, CountTheAttributesOfAnElement, CountTheNamespaceDeclarationsInForce,
    CountADeclarationOfTheDefaultNamespaceAmongThem, CountTheNamesOfNamespacesAmongThem,
    CountTheLevelsOfEntities, CountTheLevelsOfEntitiesInADtd, StopWorkThatBringsNothing,
    CountTheBytes, CountTheDifferentNames, MeasureNames, MeasureTheTextOfAnElementInAllItsPieces,
    MeasureCommentsAndInstructionsAsTexts, DoNotAddUpTheTextsOfDifferentElements,
    MeasureAttributeValuesWithTheirReferencesResolved, CountWhatEntitiesBringToTexts,
    CountReferencesThatBringNothing, CountWhatEntitiesBringToAttributes,
    CountWhatEntitiesBringInMarkup, CountTheDefaultsOfADtd, DoNotTakeATextOfAnyLengthForAnEntity,
    TakeAnEntityOfManyElements, CountReferencesWithinADtd,
    CompareWhatIsDeliveredWithTheBytesOfTheDocument,
    DoNotCountReferencesToCharactersNorPredefinedEntities,
    LetDocumentsOfPlainTextBeAtAnAmplificationOfOne, LetSmallDocumentsBeAmplifiedALot,
    StopEntitiesThatAreDefinedByOneAnother, StopALongEntityThatIsReferredToManyTimes,
    StopMarkupBeforeItHasBeenReadWhole, StopNamesBeforeTheyHaveBeenReadWhole,
    StopAttributesBeforeAllHaveBeenRead, StopDeclarationsBeforeAllHaveBeenRead,
    DoNotTakeWhatHasBeenDeliveredForMemoryOfMarkup,
    DoNotTakeWhatDecodesTheDocumentForMemoryOfMarkup,
    DoNotTakeWhatDecodesAnExternalEntityForMemoryOfMarkup,
    TakeTheTextThatTheParserCollectsForMarkup, ForUntrustedDocumentsAreTheOnesThatAreDocumented,
    ForUntrustedDocumentsLetLargeOnesPass, LeaveMalformedDocumentsToTheParser,
    DoNotChangeWhatIsRead);

}  // namespace tests

#endif

#include "vocabulary/Source.h"

#include <gmock/gmock.h>

#include <sstream>

#include "vocabulary/Failure.h"

namespace vocabulary {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

NameList names_in(std::string const& xml, SourceOptions const& options = {}) {
  NameList names;
  std::istringstream in(xml);
  read_source(in, "d.xml", options, names);
  return names;
}

/// Attributes with an @ in front; each with its line.
std::vector<std::string> listed(NameList const& names) {
  std::vector<std::string> lines;
  for (NameList::Entry const& entry : names.entries()) {
    lines.push_back((entry.is_attribute ? "@" : "") + to_string(entry.name) + " " +
                    std::to_string(entry.first.line));
  }
  return lines;
}

std::string failure(std::string const& xml, SourceOptions const& options = {}) {
  try {
    names_in(xml, options);
  } catch (Failure const& e) {
    return e.what();
  }
  return "there is none";
}

TEST(NamesOfADocument, AreThoseOfItsElementsAndAttributesAsTheyComeUp) {
  EXPECT_THAT(listed(names_in("<a xmlns='urn:a' xmlns:b='urn:b' id='1'>\n<b:c b:d='2'/>\n"
                              "<a/>text<b:d/>\n<e xmlns='' xml:lang='en'/></a>")),
              ElementsAre("{urn:a}a 1", "@id 1", "{urn:b}c 2", "@{urn:b}d 2", "e 4",
                          "@{http://www.w3.org/XML/1998/namespace}lang 4"));
}

TEST(NamesOfADocument, AreRememberedWithThePlaceWhereTheyFirstCameUp) {
  NameList names;
  for (char const* const file : {"one.xml", "two.xml"}) {
    std::istringstream in("<a/>");
    read_source(in, file, {}, names);
  }
  ASSERT_EQ(names.entries().size(), 1U);
  EXPECT_EQ(names.entries()[0].first.file, "one.xml");
}

TEST(NamesOfADocument, GoWithTheFirstPrefixOfTheirNamespace) {
  NameList const names =
      names_in("<b:a xmlns:b='urn:b'><c:d xmlns:c='urn:b'/><e xmlns='urn:e'/></b:a>");
  EXPECT_EQ(names.prefix_of(u"urn:b"), u"b");
  EXPECT_EQ(names.prefix_of(u"urn:e"), u"");
}

TEST(NamesOfADocument, AreReadInWhateverEncodingItHas) {
  EXPECT_THAT(listed(names_in("<?xml version='1.0' encoding='ISO-8859-1'?><caf\xe9/>")),
              ElementsAre("caf\xc3\xa9 1"));
}

TEST(NamesOfADocument, IncludeThoseOfEntitiesAndDefaultsInTheDocumentItself) {
  EXPECT_THAT(listed(names_in("<!DOCTYPE a [<!ENTITY e '<b/>'><!ATTLIST a c CDATA 'd'>]>\n"
                              "<a>&e;</a>")),
              ElementsAre("a 2", "@c 2", "b 2"));
}

TEST(NamesOfADocument, DoNotIncludeWhatItRefersTo) {
  EXPECT_THAT(listed(names_in("<!DOCTYPE a SYSTEM 'file:///etc/hostname' [\n"
                              "<!ENTITY e SYSTEM 'file:///etc/passwd'>\n"
                              "<!ENTITY % p SYSTEM 'http://127.0.0.1:9/p'>%p;]>\n"
                              "<a>&e;<b/></a>")),
              ElementsAre("a 4", "b 4"));
}

TEST(AMalformedDocument, IsRefusedWithItsPlace) {
  EXPECT_THAT(failure("<a>\n<b></a>"), StartsWith("d.xml:2:"));
  EXPECT_THAT(failure(""), StartsWith("d.xml:"));
  EXPECT_THAT(failure("<a:b/>"), StartsWith("d.xml:1:"));
}

TEST(ADocumentFromAStranger, IsRefusedWhenItIsTooDeep) {
  std::string deep;
  for (int i = 0; i < 1025; ++i) deep += "<a>";
  for (int i = 0; i < 1025; ++i) deep += "</a>";
  EXPECT_THAT(failure(deep), StartsWith("d.xml:1:"));
  EXPECT_THAT(failure(deep),
              EndsWith(": more than 1024 levels of elements (--trusted allows that)"));
  SourceOptions trusted;
  trusted.is_trusted = true;
  EXPECT_THAT(listed(names_in(deep, trusted)), ElementsAre("a 1"));
}

/// Entities that are defined by one another, ten times each.
std::string laughs(std::string const& begin, char const* sign, std::string const& end) {
  std::string document = "<!DOCTYPE a [" + begin;
  for (char level = 'b'; level != 'm'; ++level) {
    document += std::string("<!ENTITY ") + end + level + " '";
    for (int i = 0; i < 10; ++i)
      document += sign + std::string(1, static_cast<char>(level - 1)) + ";";
    document += "'>";
  }
  return document;
}

TEST(ADocumentFromAStranger, IsRefusedWhenItsEntitiesGrow) {
  std::string const entities = laughs("<!ENTITY a 'text'>", "&", "");
  std::string const complaint = "characters for each byte that was read (--trusted allows that)";
  EXPECT_THAT(failure(entities + "]><a>&l;</a>"), EndsWith(complaint));
  EXPECT_THAT(failure(entities + "]><a b='&l;'/>"), HasSubstr("--trusted allows that"));
  EXPECT_THAT(failure(laughs("<!ENTITY % a '<!--text-->'>", "&#37;", "% ") + "%l;]><a/>"),
              EndsWith(complaint));
}

/// Entities that are each named by the next one.
std::string chain(int count) {
  std::string document = "<!DOCTYPE a [<!ENTITY e0 '<b/>'>";
  for (int i = 1; i < count; ++i) {
    document += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
  }
  return document + "]><a>&e" + std::to_string(count - 1) + ";</a>";
}

TEST(ADocumentFromAStranger, IsRefusedWhenItsEntitiesAreTooDeep) {
  EXPECT_THAT(listed(names_in(chain(40))), ElementsAre("a 1", "b 1"));
  EXPECT_THAT(failure(chain(41)),
              EndsWith(": more than 40 levels of entities (--trusted allows that)"));
  SourceOptions trusted;
  trusted.is_trusted = true;
  EXPECT_THAT(listed(names_in(chain(41), trusted)), ElementsAre("a 1", "b 1"));
}

TEST(ADocumentFromAStranger, IsRefusedWhenItHasANameWithoutAnEnd) {
  EXPECT_THAT(failure("<a " + std::string(80U << 20U, 'b')), HasSubstr("--trusted allows that"));
}

std::string schema(std::string const& attributes, std::string const& content) {
  return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' " + attributes + ">" + content +
         "</xs:schema>";
}

constexpr char ORDER[] =
    "<xs:element name='order'><xs:complexType><xs:sequence>"
    "<xs:element name='item'/><xs:element name='note' form='unqualified'/>"
    "<xs:element name='total' form='qualified'/>"
    "</xs:sequence><xs:attribute name='id'/><xs:attribute name='key' form='qualified'/>"
    "</xs:complexType></xs:element><xs:attribute name='global'/>";

TEST(NamesOfASchema, AreTheGlobalAndTheQualifiedOnesInItsNamespace) {
  EXPECT_THAT(listed(names_in(schema("targetNamespace='u'", ORDER))),
              ElementsAre("{u}order 1", "item 1", "note 1", "{u}total 1", "@id 1", "@{u}key 1",
                          "@{u}global 1"));
}

TEST(NamesOfASchema, AreQualifiedByDefaultWhereItSaysSo) {
  EXPECT_THAT(listed(names_in(schema("targetNamespace='u' elementFormDefault='qualified' "
                                     "attributeFormDefault='qualified'",
                                     ORDER))),
              ElementsAre("{u}order 1", "{u}item 1", "note 1", "{u}total 1", "@{u}id 1",
                          "@{u}key 1", "@{u}global 1"));
}

TEST(NamesOfASchema, AreWithoutANamespaceWhenItHasNone) {
  EXPECT_THAT(listed(names_in(schema("elementFormDefault='qualified'", "<xs:element name='a'/>"))),
              ElementsAre("a 1"));
}

TEST(NamesOfASchema, IncludeThoseThatItRefersTo) {
  EXPECT_THAT(listed(names_in(schema("targetNamespace='u' xmlns:v='urn:v' xmlns='urn:d'",
                                     "<xs:group name='g'><xs:sequence xmlns:v='urn:inner'>"
                                     "<xs:element ref='v:a'/></xs:sequence></xs:group>"
                                     "<xs:complexType name='t'><xs:attribute ref='xml:lang'/>"
                                     "<xs:attribute ref='v:b'/></xs:complexType>"
                                     "<xs:group name='h'><xs:element ref='c'/></xs:group>"))),
              ElementsAre("{urn:inner}a 1", "@{http://www.w3.org/XML/1998/namespace}lang 1",
                          "@{urn:v}b 1", "{urn:d}c 1"));
}

TEST(NamesOfASchema, DoNotIncludeItsTypesGroupsAndDocumentation) {
  EXPECT_THAT(listed(names_in(schema("",
                                     "<xs:complexType name='t'/><xs:simpleType name='s'/>"
                                     "<xs:annotation><xs:documentation><xs:element name='shown'/>"
                                     "</xs:documentation></xs:annotation>"
                                     "<xs:element name='a'/><b name='c'/>"))),
              ElementsAre("a 1"));
}

TEST(NamesOfASchema, AreThoseThatItUsesWhenItIsReadAsADocument) {
  SourceOptions options;
  options.schemas_are_documents = true;
  EXPECT_THAT(listed(names_in(schema("", "<xs:element name='a'/>"), options)),
              ElementsAre("{http://www.w3.org/2001/XMLSchema}schema 1",
                          "{http://www.w3.org/2001/XMLSchema}element 1", "@name 1"));
}

TEST(NamesOfASchema, AreRefusedWhenTheyAreNone) {
  EXPECT_EQ(failure(schema("", "\n<xs:element name='a b'/>")),
            "d.xml:2:1: 'a b' is no name of an element or attribute");
  EXPECT_EQ(failure(schema("", "\n\n<xs:element ref='p:b'/>")),
            "d.xml:3:1: there is no namespace for the prefix 'p'");
}

TEST(AFile, IsRefusedWithTheReasonWhenItCannotBeRead) {
  NameList names;
  try {
    read_source("missing.xml", {}, names);
    FAIL() << "it is there";
  } catch (Failure const& e) {
    EXPECT_STREQ(e.what(), "missing.xml: No such file or directory");
  }
  EXPECT_THROW(read_source(".", {}, names), Failure);
  EXPECT_THAT(names.entries(), IsEmpty());
}

}  // namespace
}  // namespace vocabulary

#include "vocabulary/Constants.h"

#include <gtest/gtest.h>

namespace {

using vocabulary::Constants;

std::string of_namespace(std::u16string_view uri, std::u16string_view prefix = {}) {
  return Constants().of_namespace(uri, prefix);
}

TEST(AConstantOfANamespace, IsMadeOfThePrefix) {
  EXPECT_EQ(of_namespace(u"urn:oasis:names:CommonBasicComponents-2", u"cbc"), "ns_cbc");
}

TEST(AConstantOfANamespace, IsMadeOfTheUriWhenThereIsNoPrefixOrOneOfAProgram) {
  EXPECT_EQ(of_namespace(u"urn:example:orders"), "ns_orders");
  EXPECT_EQ(of_namespace(u"urn:example:orders", u"ns1"), "ns_orders");
  EXPECT_EQ(of_namespace(u"urn:example:orders", u"N12"), "ns_orders");
}

TEST(AConstantOfANamespace, IsMadeOfTheLastPartOfTheUriThatSaysSomething) {
  EXPECT_EQ(of_namespace(u"http://www.w3.org/2000/svg"), "ns_svg");
  EXPECT_EQ(of_namespace(u"http://example.org/parts/v1.2/"), "ns_parts");
  EXPECT_EQ(of_namespace(u"http://example.org/parts/ns#"), "ns_parts");
  EXPECT_EQ(of_namespace(u"http://www.opengis.net/kml/2.2"), "ns_kml");
  EXPECT_EQ(of_namespace(u"http://example.org/"), "ns_example_org");
  EXPECT_EQ(of_namespace(u"urn:1:2"), "ns_urn_1_2");
}

TEST(AConstantOfANamespace, IsAlwaysTheSameForThatOfXml) {
  EXPECT_EQ(of_namespace(u"http://www.w3.org/XML/1998/namespace"), "ns_xml");
}

TEST(AConstantOfANamespace, IsNumberedWhenItIsThere) {
  Constants constants;
  constants.take("ns_a");
  EXPECT_EQ(constants.of_namespace(u"urn:a", u""), "ns_a_2");
  EXPECT_EQ(constants.of_namespace(u"urn:b:a", u""), "ns_a_3");
}

TEST(AConstantOfAName, HasAnUnderscoreWhereCppOrAMacroHasTheWord) {
  Constants constants;
  EXPECT_EQ(constants.of_name(u"class", "ns_a"), "class_");
  EXPECT_EQ(constants.of_name(u"and-eq", "ns_a"), "and_eq_");
  EXPECT_EQ(constants.of_name(u"ID", "ns_a"), "ID_");
  EXPECT_EQ(constants.of_name(u"errno", "ns_a"), "errno_");
}

TEST(AConstantOfAName, HasTheWordOfItsNamespaceWhenAnotherHasTheName) {
  Constants constants;
  EXPECT_EQ(constants.of_name(u"a", "ns_one"), "a");
  EXPECT_EQ(constants.of_name(u"a", "ns_two"), "two_a");
  EXPECT_EQ(constants.of_name(u"a", ""), "plain_a");
  EXPECT_EQ(constants.of_name(u"a", "own_constant"), "own_constant_a");
}

TEST(AConstantOfAName, IsNumberedWhenThatIsThereAsWell) {
  Constants constants;
  EXPECT_EQ(constants.of_name(u"a-b", "ns_one"), "a_b");
  EXPECT_EQ(constants.of_name(u"a.b", "ns_one"), "one_a_b");
  EXPECT_EQ(constants.of_name(u"a_b", "ns_one"), "one_a_b_2");
  EXPECT_EQ(constants.of_name(u"a--b", "ns_one"), "one_a_b_3");
}

TEST(AConstantOfAName, IsUsableWhateverTheConstantOfItsNamespaceIs) {
  Constants constants;
  constants.take("a");
  EXPECT_EQ(constants.of_name(u"a", "ns_3"), "n_3_a");
  EXPECT_EQ(constants.of_name(u"a", "ns_x_"), "x_a");
  EXPECT_EQ(constants.of_name(u"a", "_ns"), "ns_a");
  constants.take("MAX_");
  EXPECT_EQ(constants.of_name(u"MAX", "ns_INT"), "INT_MAX_");
  constants.take("eq");
  EXPECT_EQ(constants.of_name(u"eq", "ns_and"), "and_eq_");
}

TEST(AConstantOfAName, IsNotThatOfANamespace) {
  Constants constants;
  EXPECT_EQ(constants.of_namespace(u"urn:a", u""), "ns_a");
  EXPECT_EQ(constants.of_name(u"ns-a", "ns_a"), "a_ns_a");
}

}  // namespace

#include "vocabulary/Identifier.h"

#include <gtest/gtest.h>

namespace {

using vocabulary::identifier_like;
using vocabulary::is_identifier;
using vocabulary::is_reserved;
using vocabulary::may_be_taken;

TEST(AnIdentifierLikeAName, IsTheNameWhereCppTakesIt) {
  EXPECT_EQ(identifier_like(u"order"), "order");
  EXPECT_EQ(identifier_like(u"LineItem2"), "LineItem2");
  EXPECT_EQ(identifier_like(u"with_underscore"), "with_underscore");
}

TEST(AnIdentifierLikeAName, HasOneUnderscoreForDashesAndDotsBetweenLetters) {
  EXPECT_EQ(identifier_like(u"mime-type"), "mime_type");
  EXPECT_EQ(identifier_like(u"a.b"), "a_b");
  EXPECT_EQ(identifier_like(u"a-.-__b"), "a_b");
}

TEST(AnIdentifierLikeAName, NeitherBeginsNorEndsWithAnUnderscore) {
  EXPECT_EQ(identifier_like(u"_Private"), "Private");
  EXPECT_EQ(identifier_like(u"-._open-._"), "open");
}

TEST(AnIdentifierLikeAName, HasOtherLettersByTheirNumbers) {
  EXPECT_EQ(identifier_like(u"caf\u00e9"), "caf_u00e9");
  EXPECT_EQ(identifier_like(u"na\u00efve"), "na_u00ef_ve");
  EXPECT_EQ(identifier_like(u"\u5024\u6bb5"), "u5024_u6bb5");
  EXPECT_EQ(identifier_like(u"\U00010000x"), "u10000_x");
}

TEST(AnIdentifierLikeAName, NeverBeginsWithADigit) { EXPECT_EQ(identifier_like(u"_2nd"), "n_2nd"); }

TEST(AnIdentifierLikeAName, IsThereForNamesWithoutLettersAndDigits) {
  EXPECT_EQ(identifier_like(u"_"), "name");
  EXPECT_EQ(identifier_like(u"_-."), "name");
}

TEST(Identifiers, AreOfLettersDigitsAndUnderscores) {
  EXPECT_TRUE(is_identifier("a"));
  EXPECT_TRUE(is_identifier("_a9_Z"));
  EXPECT_FALSE(is_identifier(""));
  EXPECT_FALSE(is_identifier("9a"));
  EXPECT_FALSE(is_identifier("a-b"));
  EXPECT_FALSE(is_identifier("caf\xc3\xa9"));
}

TEST(Identifiers, AreReservedWithTwoUnderscoresAnywhereAndOneBeforeACapital) {
  EXPECT_TRUE(is_reserved("a__b"));
  EXPECT_TRUE(is_reserved("__a"));
  EXPECT_TRUE(is_reserved("_A"));
  EXPECT_FALSE(is_reserved("_a"));
  EXPECT_FALSE(is_reserved("a_B"));
}

TEST(Identifiers, MayBeTakenWhenTheyHaveNoLowerCaseLetterOrAreKnownToBe) {
  EXPECT_TRUE(may_be_taken("NULL"));
  EXPECT_TRUE(may_be_taken("ID"));
  EXPECT_TRUE(may_be_taken("INT_MAX"));
  EXPECT_TRUE(may_be_taken("errno"));
  EXPECT_TRUE(may_be_taken("entries"));
  EXPECT_TRUE(may_be_taken("PRId64"));
  EXPECT_FALSE(may_be_taken("Id"));
  EXPECT_FALSE(may_be_taken("u00E9"));
}

}  // namespace

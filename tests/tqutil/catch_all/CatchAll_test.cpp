#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>

#include "tqutil/UtilExceptions.h"
#include "tqutil/Vocabulary.h"
#include "tqutil/XmlTag.h"

namespace letters {
#include "tqutil/vocabulary/constants.h"
#include "tests/tqutil/catch_all/Letters.def"
#include "tqutil/vocabulary/end.h"

static Orn::VocabularyEntry const entries[] = {
#include "tqutil/vocabulary/entries.h"
#include "tests/tqutil/catch_all/Letters.def"
#include "tqutil/vocabulary/end.h"
};
static Orn::Vocabulary const vocabulary("letters", entries);
}  // namespace letters

namespace {

using Orn::TagException;
using Orn::UString;
using Orn::Vocabulary;
using Orn::VocabularyEntry;
using Orn::XmlTag;
using testing::AllOf;
using testing::HasSubstr;

XmlTag::Id found(std::u16string_view uri, std::u16string_view name) {
  XmlTag wanted(UString(uri.data(), uri.size()), UString(name.data(), name.size()));
  XmlTag const& tag = XmlTag::lookup(wanted);
  EXPECT_EQ(&XmlTag::lookup(uri, name), &tag);
  return tag.id();
}

TEST(CatchAll, StandsForEachNameThatIsNotRegistered) {
  EXPECT_EQ(found(u"", u"unknown"), letters::anything);
  EXPECT_EQ(found(u"urn:letters", u"unknown"), letters::anything);
  EXPECT_EQ(found(u"urn:unknown", u"letter"), letters::anything);
  EXPECT_EQ(found(u"", u"letter"), letters::anything);
  EXPECT_EQ(found(u"urn:letters", u"plain"), letters::anything);
  EXPECT_EQ(found(u"", u""), letters::anything);
}

TEST(CatchAll, LeavesRegisteredNamesAlone) {
  EXPECT_EQ(found(u"urn:letters", u"letter"), letters::letter);
  EXPECT_EQ(found(u"", u"plain"), letters::plain);
  EXPECT_EQ(found(u"urn:letters:other", u"behind_it"), letters::behind_it);
}

TEST(CatchAll, IsATagWithANumberAndANameOfItsOwn) {
  EXPECT_EQ(found(u"urn:letters:other", u"anything"), letters::anything);
  XmlTag const& tag = XmlTag::lookup(letters::anything);
  EXPECT_EQ(&tag, &XmlTag::lookup(u"", u"unknown"));
  EXPECT_EQ(tag.id(), 2000);
  EXPECT_EQ(tag.ns_id(), letters::ns_other);
  EXPECT_EQ(tag.to_string(), u"{urn:letters:other}anything");
}

TEST(CatchAll, DoesNotStandForNumbers) {
  EXPECT_THROW(XmlTag::lookup(XmlTag::Id{4}), TagException);
  EXPECT_THROW(XmlTag::lookup(XmlTag::NO_TAG), TagException);
  EXPECT_THROW(XmlTag::ns_URI(XmlTag::NsId{4}), TagException);
}

TEST(CatchAll, MakesRoomForANameThatIsRegisteredLater) {
  EXPECT_EQ(found(u"", u"late"), letters::anything);
  VocabularyEntry const late[] = {{VocabularyEntry::TAG, 5, "late", 0, u"late"}};
  Vocabulary("late", late);
  EXPECT_EQ(found(u"", u"late"), 5);
}

TEST(CatchAllDeathTest, ASecondOneStopsTheProgram) {
  VocabularyEntry const late[] = {{VocabularyEntry::CATCH_ALL, 6, "second", 0, u"second"}};
  EXPECT_DEATH(Vocabulary("late", late), AllOf(HasSubstr("'second'"), HasSubstr("'anything'")));
}

}  // namespace

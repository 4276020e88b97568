#include "tqutil/UMessage.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <locale>
#include <string>
#include <type_traits>
#include <vector>

#include "tqutil/UtilExceptions.h"

namespace {

using namespace std::string_literals;
using Orn::UMessage;
using Orn::UString;
using Arg = UMessage::Arg;

char const* catalogue[] = {
    "demo 9",
    "DEMO0001E Nothing to fill in.",
    "DEMO0002E %s",
    "DEMO0003E %s has %d lines in %ld files.",
    "DEMO0004E msg: %d.",
    "DEMO0005E %s%s%s%s%s%s%s%s%s%s|%s",
    "DEMO0006E 100%% of %s%%d",
    "DEMO0007E caf\xC3\xA9 \xF0\x9F\x98\x80 %s",
    "DEMO0008E 50% of %x, 5%",
    "",
};

template <class... Args>
std::string text(int index, Args const&... args) {
  return UMessage(catalogue, index, args...).text().to_utf8();
}

UString wide(std::string const& utf8) { return UString::from_utf8(utf8); }

TEST(MessageArg, KnowsItsKind) {
  EXPECT_EQ(Arg().kind(), 0);
  EXPECT_EQ(Arg(std::int32_t{7}).kind(), 2);
  EXPECT_EQ(Arg(7L).kind(), 3);
  EXPECT_EQ(Arg(UString(u"x")).kind(), 8);
  EXPECT_EQ(Arg::nil.kind(), Arg::KIND_NIL);
}

TEST(MessageArg, MadeOfAKindAndAValueIsThatOfTheValueAlone) {
  EXPECT_EQ(Arg(2, Arg::arg_union_t(std::int32_t{1})).kind(), Arg::KIND_INT);
  EXPECT_EQ(Arg(2, Arg::arg_union_t(std::int32_t{1})).text(), u"1");
  EXPECT_EQ(Arg(3, Arg::arg_union_t(-5L)).kind(), Arg::KIND_LONG);
  EXPECT_EQ(Arg(3, Arg::arg_union_t(-5L)).text(), u"-5");
  EXPECT_EQ(Arg(8, Arg::arg_union_t(UString(u"x"))).kind(), Arg::KIND_TEXT);
  EXPECT_EQ(Arg(8, Arg::arg_union_t(UString(u"x"))).text(), u"x");
  EXPECT_EQ(Arg(0, Arg::arg_union_t()).text(), u"");
}

TEST(MessageArg, PrintsNumbersInDecimal) {
  using Int = std::numeric_limits<std::int32_t>;
  using Long = std::numeric_limits<long>;
  EXPECT_EQ(Arg(std::int32_t{0}).text(), u"0");
  EXPECT_EQ(Arg(Int::max()).text(), u"2147483647");
  EXPECT_EQ(Arg(Int::min()).text(), u"-2147483648");
  EXPECT_EQ(Arg(Long::max()).text(), wide(std::to_string(Long::max())));
  EXPECT_EQ(Arg(Long::min()).text(), wide(std::to_string(Long::min())));
}

TEST(MessageArg, PrintsTruthAsANumber) {
  EXPECT_EQ(Arg(std::int32_t{true}).text(), u"1");
  EXPECT_EQ(Arg(std::int32_t{false}).text(), u"0");
}

TEST(MessageArg, PrintsATextAsItIsAndNothingAsNothing) {
  EXPECT_EQ(Arg(UString(u"a\0%s\xD800", 5)).text(), UString(u"a\0%s\xD800", 5));
  EXPECT_EQ(Arg().text(), u"");
  EXPECT_EQ(Arg::nil.text(), u"");
}

TEST(MessageArg, IsAPolymorphicValue) {
  static_assert(std::has_virtual_destructor_v<Arg>);
  Arg argument(UString(u"x"));
  Arg const copy = argument;
  argument = Arg(3L);
  EXPECT_EQ(argument.kind(), Arg::KIND_LONG);
  EXPECT_EQ(argument.text(), u"3");
  EXPECT_EQ(copy.kind(), Arg::KIND_TEXT);
  EXPECT_EQ(copy.text(), u"x");
}

TEST(Message, BeginsWithItsIdentifier) { EXPECT_EQ(text(1), "DEMO0001E Nothing to fill in."); }

TEST(Message, PutsItsArgumentsInOrderInPlaceOfThePlaceholders) {
  EXPECT_EQ(text(3, Arg(UString(u"order")), Arg(std::int32_t{3}), Arg(12L), Arg::nil, Arg::nil,
                 Arg::nil, Arg::nil, Arg::nil, Arg::nil, Arg::nil),
            "DEMO0003E order has 3 lines in 12 files.");
}

TEST(Message, TakesTenArguments) {
  std::vector<Arg> args;
  for (std::int32_t i = 0; i < UMessage::MAX_ARGS; ++i) args.emplace_back(i);
  EXPECT_EQ(text(5, args[0], args[1], args[2], args[3], args[4], args[5], args[6], args[7], args[8],
                 args[9]),
            "DEMO0005E 0123456789|");
}

TEST(Message, PrintsEachArgumentByItsOwnKindWhateverThePlaceholderSays) {
  EXPECT_EQ(text(4, Arg(UString(u"no such file"))), "DEMO0004E msg: no such file.");
  EXPECT_EQ(text(4, Arg(std::numeric_limits<long>::min())),
            "DEMO0004E msg: " + std::to_string(std::numeric_limits<long>::min()) + ".");
  EXPECT_EQ(text(2, Arg(std::int32_t{-3})), "DEMO0002E -3");
}

TEST(Message, PrintsNothingWhereTheArgumentsHaveRunOut) {
  EXPECT_EQ(text(2), "DEMO0002E ");
  EXPECT_EQ(text(3, Arg(UString(u"order"))), "DEMO0003E order has  lines in  files.");
}

TEST(Message, LeavesOutArgumentsThatHaveNoPlaceholder) {
  EXPECT_EQ(text(1, Arg(UString(u"x")), Arg(3L)), "DEMO0001E Nothing to fill in.");
}

TEST(Message, CountsAnEmptyArgumentInFrontOfOthers) {
  EXPECT_EQ(text(3, Arg::nil, Arg(std::int32_t{3})), "DEMO0003E  has 3 lines in  files.");
}

TEST(Message, DoesNotLookForPlaceholdersInArguments) {
  EXPECT_EQ(text(2, Arg(UString(u"%s %d %%")), Arg(UString(u"x"))), "DEMO0002E %s %d %%");
}

TEST(Message, PrintsAPercentSignForTwo) {
  EXPECT_EQ(text(6, Arg(UString(u"x"))), "DEMO0006E 100% of x%d");
}

TEST(Message, PrintsAPercentSignThatBelongsToNoPlaceholder) {
  EXPECT_EQ(text(8, Arg(UString(u"x"))), "DEMO0008E 50% of %x, 5%");
}

TEST(Message, TakesTheCatalogueAsUtf8) {
  EXPECT_EQ(UMessage(catalogue, 7, Arg(UString(u"\u20ac"))).text(),
            u"DEMO0007E caf\u00e9 \U0001F600 \u20ac");
}

TEST(Message, MayBeEmpty) { EXPECT_EQ(text(9), ""); }

TEST(Message, OfTheWrongIndexSaysSoInsteadOfATextOfTheCatalogue) {
  for (int const index :
       {-1, 10, 11, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(text(index, Arg(UString(u"x"))),
              "Message " + std::to_string(index) + " of the catalogue 'demo 9'");
  }
}

TEST(Message, OfNoCatalogueSaysSo) {
  EXPECT_EQ(UMessage(nullptr, 3, Arg(UString(u"x"))).text(), u"Message 3 of no catalogue");
  EXPECT_EQ(UMessage::sprintf(nullptr, 0, Arg::nil), u"Message 0 of no catalogue");
}

TEST(Message, OfACatalogueWhoseHeaderTellsNoNumberMayHaveAnyIndex) {
  for (char const* const header : {"demo", "demo ", "demo x", "demo 0x"}) {
    char const* catalogue[] = {header, "DEMO0001E one", "DEMO0002E two"};
    EXPECT_EQ(UMessage(catalogue, 2).text(), u"DEMO0002E two") << header;
  }
}

TEST(Message, OfACatalogueWithoutAHeaderSaysSoInsteadOfTheHeader) {
  char const* catalogue[] = {nullptr, "DEMO0001E one"};
  EXPECT_EQ(UMessage(catalogue, 0).text(), u"Message 0 of no catalogue");
  EXPECT_EQ(UMessage(catalogue, 1).text(), u"DEMO0001E one");
}

TEST(Message, TellsWhatItIsMadeOf) {
  UMessage const message(catalogue, 2, Arg(UString(u"x")), Arg(7L));
  EXPECT_EQ(message.catalogue(), catalogue);
  EXPECT_EQ(message.index(), 2);
  EXPECT_EQ(message.arg(1).text(), u"x");
  EXPECT_EQ(message.arg(1).kind(), Arg::KIND_TEXT);
  EXPECT_EQ(message.arg(2).text(), u"7");
  EXPECT_EQ(message.arg(2).kind(), Arg::KIND_LONG);
}

TEST(Message, HasTheSharedEmptyArgumentInItsUnusedSlots) {
  UMessage const message(catalogue, 2, Arg(UString(u"x")));
  for (int const slot :
       {0, 2, 3, 10, 11, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(&message.arg(slot), &Arg::nil) << slot;
  }
}

TEST(Message, WithTenSlotsEqualsTheOneWithTwo) {
  Arg const& nil = Arg::nil;
  Arg const name(UString(u"order"));
  UMessage const message(catalogue, 3, name, nil, nil, nil, nil, nil, nil, nil, nil, nil);
  EXPECT_EQ(message.text(), UMessage(catalogue, 3, name).text());
  EXPECT_EQ(&message.arg(2), &Arg::nil);
}

TEST(Message, KeepsItsArgumentsAndItsCopiesDoToo) {
  UMessage const message = [] {
    UString name(u"a name too long for a small buffer");
    UMessage const original(catalogue, 2, Arg(name));
    name.clear();
    UMessage const copy = original;
    return copy;
  }();
  EXPECT_EQ(message.text(), u"DEMO0002E a name too long for a small buffer");
}

TEST(Message, SprintfGivesTheTextOfAnEntry) {
  EXPECT_EQ(UMessage::sprintf(catalogue, 1, Arg::nil), u"DEMO0001E Nothing to fill in.");
  EXPECT_EQ(UMessage::sprintf(catalogue, 2, Arg(5L)), u"DEMO0002E 5");
  EXPECT_EQ(UMessage::sprintf(catalogue, 99, Arg::nil), u"Message 99 of the catalogue 'demo 9'");
}

class Grouping : public std::numpunct<char> {
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(Message, DoesNotDependOnTheLocale) {
  std::locale const before = std::locale::global(std::locale(std::locale(), new Grouping));
  std::string const with_grouping = text(2, Arg(std::int32_t{1234567}));
  std::locale::global(before);
  EXPECT_EQ(with_grouping, "DEMO0002E 1234567");
}

}  // namespace

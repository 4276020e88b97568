#include "tqutil/STPException.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <typeinfo>
#include <vector>

namespace Orn {
class Resource {};
}  // namespace Orn

namespace {

using Orn::Resource;
using Orn::STPException;
using Orn::UMessage;
using Orn::UString;

char const* catalogue[] = {
    "demo 2",
    "DEMO0001E %s went wrong.",
    "DEMO0002E Nobody knows why.",
};

class DerivedException : public STPException {
 public:
  using STPException::STPException;
  DerivedException* clone() const override { return new DerivedException(*this); }
};

UMessage message(char16_t const* what) { return UMessage(catalogue, 1, UString(what)); }

template <class E = STPException>
E exception(char16_t const* what, STPException const* cause = nullptr) {
  return E(39, message(what), nullptr, cause, 2);
}

/// The class that an exception has, whatever it is known as.
std::type_info const& class_of(STPException const& e) { return typeid(e); }

std::unique_ptr<STPException> cloned(STPException const& e) {
  return std::unique_ptr<STPException>(e.clone());
}

TEST(StpException, TellsWhatItIsMadeOf) {
  Resource const resource;
  DerivedException const cause = exception<DerivedException>(u"This");
  STPException const e(-5, message(u"That"), &resource, &cause, 7);
  EXPECT_EQ(e.reason_code(), -5);
  EXPECT_EQ(e.message().catalogue(), catalogue);
  EXPECT_EQ(e.message().index(), 1);
  EXPECT_EQ(e.message().arg(1).text(), u"That");
  EXPECT_EQ(e.resource(), &resource);
  ASSERT_NE(e.cause(), nullptr);
  EXPECT_EQ(e.cause()->message().arg(1).text(), u"This");
  EXPECT_EQ(e.log_level(), 7);
}

TEST(StpException, NeedHaveNoResourceAndNoCause) {
  STPException const e = exception(u"That");
  EXPECT_EQ(e.resource(), nullptr);
  EXPECT_EQ(e.cause(), nullptr);
}

TEST(StpException, IsAStandardExceptionWithItsMessageInUtf8) {
  std::exception const& e = exception(u"Caf\u00e9");
  EXPECT_STREQ(e.what(), "DEMO0001E Caf\xC3\xA9 went wrong.");
  EXPECT_STREQ(STPException(1, UMessage(catalogue, 2), nullptr, nullptr, 2).what(),
               "DEMO0002E Nobody knows why.");
}

TEST(StpException, KeepsItsMessageWhenTheOriginalIsGone) {
  auto text = std::make_unique<UString>(u"A text too long for a small buffer");
  auto original = std::make_unique<UMessage>(catalogue, 1, *text);
  STPException const e(39, *original, nullptr, nullptr, 2);
  original.reset();
  text.reset();
  EXPECT_EQ(e.message().text(), u"DEMO0001E A text too long for a small buffer went wrong.");
}

TEST(StpException, CopiesCannotFail) {
  static_assert(std::is_nothrow_copy_constructible_v<STPException>);
  static_assert(std::is_nothrow_copy_assignable_v<STPException>);
  static_assert(std::is_nothrow_move_constructible_v<STPException>);
  static_assert(std::has_virtual_destructor_v<STPException>);
}

TEST(StpException, ACopyCarriesTheSameAndOutlivesTheOriginal) {
  Resource const resource;
  auto original = std::make_unique<STPException>(
      12, message(u"This"), &resource, cloned(exception<DerivedException>(u"That")).get(), 3);
  STPException const copy(*original);
  STPException assigned = exception(u"Something else");
  assigned = *original;
  original.reset();
  for (STPException const* e : {&copy, static_cast<STPException const*>(&assigned)}) {
    EXPECT_EQ(e->reason_code(), 12);
    EXPECT_STREQ(e->what(), "DEMO0001E This went wrong.");
    EXPECT_EQ(e->message().arg(1).text(), u"This");
    EXPECT_EQ(e->resource(), &resource);
    EXPECT_EQ(e->log_level(), 3);
    ASSERT_NE(e->cause(), nullptr);
    EXPECT_STREQ(e->cause()->what(), "DEMO0001E That went wrong.");
  }
}

TEST(StpException, MayBeAssignedToItself) {
  STPException e = exception(u"This");
  STPException const& same = e;
  e = same;
  EXPECT_STREQ(e.what(), "DEMO0001E This went wrong.");
}

TEST(StpException, LeavesAMovedFromObjectAsItWas) {
  STPException original = exception(u"This");
  STPException const moved(std::move(original));
  EXPECT_STREQ(original.what(), "DEMO0001E This went wrong.");
  EXPECT_STREQ(moved.what(), "DEMO0001E This went wrong.");
}

TEST(StpException, ClonesToItsOwnClass) {
  std::unique_ptr<STPException> const base = cloned(exception(u"This"));
  std::unique_ptr<STPException> const derived = cloned(exception<DerivedException>(u"That"));
  EXPECT_EQ(class_of(*base), typeid(STPException));
  EXPECT_STREQ(base->what(), "DEMO0001E This went wrong.");
  EXPECT_EQ(class_of(*derived), typeid(DerivedException));
  EXPECT_STREQ(derived->what(), "DEMO0001E That went wrong.");
  EXPECT_EQ(derived->reason_code(), 39);
  EXPECT_EQ(derived->log_level(), 2);
}

TEST(StpException, KeepsACopyOfItsCauseOfTheSameClass) {
  auto cause = std::make_unique<DerivedException>(exception<DerivedException>(u"This"));
  STPException const e = exception(u"That", cause.get());
  EXPECT_NE(e.cause(), cause.get());
  cause.reset();
  ASSERT_NE(e.cause(), nullptr);
  EXPECT_EQ(class_of(*e.cause()), typeid(DerivedException));
  EXPECT_STREQ(e.cause()->what(), "DEMO0001E This went wrong.");
}

TEST(StpException, KeepsTheCausesOfItsCause) {
  STPException const first = exception(u"First");
  STPException const second = exception(u"Second", &first);
  std::unique_ptr<STPException> const third = cloned(exception(u"Third", &second));
  ASSERT_NE(third->cause(), nullptr);
  ASSERT_NE(third->cause()->cause(), nullptr);
  EXPECT_STREQ(third->cause()->cause()->what(), "DEMO0001E First went wrong.");
  EXPECT_EQ(third->cause()->cause()->cause(), nullptr);
}

TEST(StpException, LetsItsCauseLiveAsLongAsACopyDoes) {
  auto e = std::make_unique<STPException>(
      exception(u"That", cloned(exception<DerivedException>(u"This")).get()));
  STPException const* const cause = e->cause();
  STPException const copy(*e);
  e.reset();
  EXPECT_EQ(copy.cause(), cause);
  EXPECT_STREQ(cause->what(), "DEMO0001E This went wrong.");
}

TEST(StpException, IsCaughtAsItsBasesAndAsItself) {
  auto const thrown = [] { throw exception<DerivedException>(u"This"); };
  EXPECT_THROW(thrown(), DerivedException);
  EXPECT_THROW(thrown(), STPException);
  EXPECT_THROW(thrown(), std::exception);
}

TEST(StpException, HasAReplacementForEachLoneSurrogateInWhat) {
  UString const lone(u"\xD800", 1);
  EXPECT_STREQ(STPException(39, UMessage(catalogue, 1, lone), nullptr, nullptr, 2).what(),
               "DEMO0001E \xEF\xBF\xBD went wrong.");
}

TEST(StpException, MayBeReadFromSeveralThreads) {
  STPException const e = exception(u"This");
  std::vector<std::thread> threads;
  std::vector<int> good(8);
  for (int& count : good) {
    threads.emplace_back([&] {
      for (int i = 0; i < 1000; ++i) {
        STPException const copy(e);
        count += copy.what() == std::string("DEMO0001E This went wrong.") &&
                 e.message().text() == u"DEMO0001E This went wrong.";
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(good, std::vector<int>(8, 1000));
}

}  // namespace

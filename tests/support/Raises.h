#ifndef TESTS_SUPPORT_RAISES_H
#define TESTS_SUPPORT_RAISES_H

#include <gtest/gtest.h>

#include <functional>
#include <typeinfo>
#include <vector>

#include "tqutil/STPException.h"

namespace tests {

/// What an exception is expected to carry, besides its class.
struct ExpectedMessage {
  char const** catalogue;
  int index;
  std::vector<Orn::UString> args;
  int reason;
  int level;
};

/// Success when `e` carries exactly that: message, arguments (and no more of them), reason code,
/// log level, no resource and no cause.
testing::AssertionResult carries(Orn::STPException const& e, ExpectedMessage const& expected);

/// Success when `call` throws exactly an `E` that carries the message `index` of the XML library's
/// catalogue with those arguments, reason code 39 and log level 2.
testing::AssertionResult raises(std::function<void()> const& call, std::type_info const& wanted,
                                int index, std::vector<Orn::UString> args = {});

/// The same with the arguments one by one.
template <class... Args>
testing::AssertionResult raises_with(std::function<void()> const& call,
                                     std::type_info const& wanted, int index, Args const&... args) {
  return raises(call, wanted, index, {Orn::UString(args)...});
}

/// Runs `call` and gives the exception it throws; fails the test when it throws none.
template <class E>
E caught(std::function<void()> const& call) {
  try {
    call();
  } catch (E const& e) {
    return e;
  }
  throw std::logic_error("the call raised nothing");
}

}  // namespace tests

/// EXPECT_RAISES(doc.close(), StateException, Catalogue::NOT_CLOSE_PENDING)
/// EXPECT_RAISES(e.match(a), StateException, Catalogue::TAG_MISMATCH, where, u"a", u"b")
#define EXPECT_RAISES(statement, Class, ...) \
  EXPECT_TRUE(                               \
      ::tests::raises_with([&] { static_cast<void>(statement); }, typeid(Class), __VA_ARGS__))

#endif

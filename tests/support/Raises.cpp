#include "tests/support/Raises.h"

#include "tqxml/foundation/Catalogue.h"

namespace tests {

using Orn::STPException;
using Orn::UMessage;

testing::AssertionResult carries(STPException const& e, ExpectedMessage const& expected) {
  UMessage const& message = e.message();
  if (message.catalogue() != expected.catalogue || message.index() != expected.index) {
    return testing::AssertionFailure() << "message " << message.index() << ": " << e.what();
  }
  for (int i = 1; i <= UMessage::MAX_ARGS; ++i) {
    auto const slot = static_cast<std::size_t>(i) - 1;
    Orn::UString const wanted = slot < expected.args.size() ? expected.args[slot] : Orn::UString();
    if (message.arg(i).text() != wanted) {
      return testing::AssertionFailure() << "argument " << i << " is \"" << message.arg(i).text()
                                         << "\", not \"" << wanted << '"';
    }
  }
  if (e.reason_code() != expected.reason || e.log_level() != expected.level) {
    return testing::AssertionFailure()
           << "reason code " << e.reason_code() << ", log level " << e.log_level();
  }
  if (e.resource() != nullptr) return testing::AssertionFailure() << "it has a resource";
  if (e.cause() != nullptr) return testing::AssertionFailure() << "it has a cause";
  return testing::AssertionSuccess();
}

testing::AssertionResult raises(std::function<void()> const& call, std::type_info const& wanted,
                                int index, std::vector<Orn::UString> args) {
  try {
    call();
  } catch (STPException const& e) {
    if (typeid(e) != wanted) {
      return testing::AssertionFailure() << "raised a " << typeid(e).name() << ": " << e.what();
    }
    return carries(e, {Orn::Catalogue::table(), index, std::move(args), 39, 2});
  } catch (std::exception const& e) {
    return testing::AssertionFailure() << "raised a " << typeid(e).name() << ": " << e.what();
  }
  return testing::AssertionFailure() << "raised nothing";
}

}  // namespace tests

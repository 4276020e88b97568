#include <gtest/gtest.h>

#include "fuzz/Input.h"
#include "fuzz/Target.h"
#include "tests/writer/WriterCalls.h"

// Makes the calls that the bytes stand for, to a document and to the model of one, and compares
// them after every call. The arguments are those of the tests with random calls, and texts of any
// code units besides.

namespace fuzz {
namespace {

using tests::Call;
using tests::Operation;

Call next_call(Input& input) {
  static tests::CallArguments const all;
  Call call{};
  call.operation = static_cast<Operation>(input.below(Operation::INC_STR + 1));
  // Two decisions a byte, so that a short input is a long sequence.
  std::size_t const choice = input.byte();
  call.flag = choice % 2 != 0;
  call.tag = all.tags[choice / 2 % all.tags.size()];
  call.ns = all.namespaces[choice / 2 % all.namespaces.size()];
  call.prefix = all.prefixes[choice / 16 % all.prefixes.size()];
  call.number = all.numbers[choice / 2 % all.numbers.size()];
  switch (call.operation) {
    case Operation::ADD_ELEM_TEXT:
    case Operation::ADD_ELEM_CDATA:
    case Operation::ADD_ATTR:
    case Operation::APPEND_ELEM_BODY:
    case Operation::ADD_COMMENT:
    case Operation::ADD_PROCESSING_INSTRUCTION:
    case Operation::ADD_XML_DECL: {
      std::size_t const text = input.byte();
      call.text = text < 200 ? all.texts[text % all.texts.size()] : input.units(text - 200);
      break;
    }
    default:
      break;
  }
  return call;
}

}  // namespace
}  // namespace fuzz

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  fuzz::Input input(data, size);
  tests::WriterComparison comparison;
  while (!input.at_end()) {
    testing::AssertionResult const same = comparison.after(fuzz::next_call(input));
    if (!same) fuzz::fail(same.message());
    if (input.below(32) == 31) comparison.go_on_with_a_copy();
  }
  return 0;
}

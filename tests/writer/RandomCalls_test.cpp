#include <gmock/gmock.h>

#include <random>
#include <set>

#include "tests/writer/WriterCalls.h"

namespace tests {
namespace {

class RandomCalls {
 public:
  explicit RandomCalls(unsigned int seed) : random_(seed) {}

  Call next() {
    // Weighted by repetition, so that documents grow before they are closed.
    static std::vector<Operation> const operations = {
        PUSH_ELEM,
        PUSH_ELEM,
        PUSH_ELEM,
        PUSH_ELEM,
        PUSH_ELEM,
        PUSH_ELEM,
        POP_ELEM,
        POP_ELEM,
        POP_ELEM,
        POP_ELEM,
        ADD_ELEM,
        ADD_ELEM,
        ADD_ELEM_TEXT,
        ADD_ELEM_TEXT,
        ADD_ELEM_CDATA,
        ADD_ATTR,
        ADD_ATTR,
        ADD_ATTR_NUMBER,
        ADD_ATTR_NUMBER,
        APPEND_ELEM_BODY,
        APPEND_ELEM_BODY,
        APPEND_ELEM_BODY,
        ADD_COMMENT,
        ADD_PROCESSING_INSTRUCTION,
        ADD_XML_DECL,
        ADD_NS,
        ADD_NS,
        ADD_NS_PREFIX,
        ADD_NS_PREFIX,
        CLOSE,
        STR,
        BYTE_ARRAY,
        INC_STR,
        START_DOC,
        START_DOC,
        SET_INDENTED_FORMAT,
    };
    static CallArguments const all;
    return {one_of(operations),   one_of(all.tags),    one_of(all.namespaces), one_of(all.texts),
            one_of(all.prefixes), one_of(all.numbers), random_() % 2 == 0};
  }

  std::size_t up_to(std::size_t limit) { return 1 + random_() % limit; }

 private:
  template <class T>
  T one_of(std::vector<T> const& choices) {
    return choices[random_() % choices.size()];
  }

  std::mt19937 random_;
};

TEST(RandomCalls, HaveTheOutcomesThatThePlainestWriterGivesThem) {
  std::set<std::string> refusals;
  std::set<std::uint32_t> states;
  for (unsigned int seed = 1; seed <= 3000; ++seed) {
    RandomCalls calls(seed);
    WriterComparison comparison;
    for (std::size_t left = calls.up_to(60); left > 0; --left) {
      ASSERT_TRUE(comparison.after(calls.next())) << "\nseed " << seed;
      if (calls.up_to(20) == 1) comparison.go_on_with_a_copy();
      refusals.insert(comparison.refusal().substr(0, comparison.refusal().find('(')));
      states.insert(comparison.state());
    }
  }
  EXPECT_THAT(states, testing::ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(refusals, testing::ElementsAre(
                            "", "IllegalArgException ZEMKA0693E", "StateException ZEMKA0690E",
                            "StateException ZEMKA0691E", "StateException ZEMKA0692E",
                            "StateException ZEMKA0694E", "StateException ZEMKA0695E",
                            "StateException ZEMKA0696E", "StateException ZEMKA0697E",
                            "StateException ZEMKA0698E", "StateException ZEMKA0699E",
                            "TagException TQUTL0001E", "TagException TQUTL0003E"));
}

}  // namespace
}  // namespace tests

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/ReaderTest.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Exceptions.h"

namespace tests {
namespace {

using Orn::DomParser;

bool reads_and_refuses(int i) {
  DomParser parser("<r a='" + std::to_string(i) + "'><b>x</b><c/></r>");
  DomParser::Elem root = parser.root();
  bool const read = root.tag() == tag::r && root.child(tag::b).data() == u"x" &&
                    root.next_attr().data().to_utf8() == std::to_string(i) &&
                    remaining_children(root) == Tags{tag::b, tag::c};
  parser.set_xml_doc_text("<r>");
  try {
    parser.root();
    return false;
  } catch (Orn::RuntimeException const&) {
    return read;
  }
}

TEST(DomParsers, InDifferentThreadsAreIndependent) {
  constexpr int rounds = 100;
  std::atomic<int> good{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&good] {
      for (int i = 0; i < rounds; ++i) good += reads_and_refuses(i) ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(good, 4 * rounds);
}

}  // namespace
}  // namespace tests

#ifndef TESTS_SUPPORT_READERTEST_H
#define TESTS_SUPPORT_READERTEST_H

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/TestTags.h"
#include "tqutil/UString.h"

namespace tests {

namespace tag = testtags;

using Tags = std::vector<Orn::XmlTag::Id>;
using Attributes = std::vector<std::pair<Orn::XmlTag::Id, Orn::UString>>;

/// Makes root handles of texts, so that a test is some XML and what is expected of it. The readers
/// live until the test has ended.
///
/// A `Reader` is made from a std::string, has the types `Elem` and `Attribute`, gives an `Elem` by
/// `root()`, and knows by what names messages call its handles: `ELEM` and `ATTRIBUTE`.
template <class Reader>
class ReaderTest : public testing::Test {
 protected:
  typename Reader::Elem root_of(std::string const& xml) {
    readers_.emplace_back(xml);
    return readers_.back().root();
  }

 private:
  std::deque<Reader> readers_;
};

/// The tags of the children that `next_child()` still gives.
template <class Elem>
Tags remaining_children(Elem& parent) {
  Tags tags;
  for (auto child = parent.next_child(); !child.is_nil(); child = parent.next_child()) {
    tags.push_back(child.tag());
  }
  return tags;
}

/// The tags and values of the attributes that `next_attr()` still gives.
template <class Elem>
Attributes remaining_attributes(Elem& element) {
  Attributes attributes;
  for (auto attr = element.next_attr(); !attr.is_nil(); attr = element.next_attr()) {
    attributes.emplace_back(attr.tag(), attr.data());
  }
  return attributes;
}

}  // namespace tests

#endif

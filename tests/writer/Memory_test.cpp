#include <gtest/gtest.h>

#include "tests/support/TestTags.h"
#include "tests/trees/FailingAllocations.h"
#include "tqutil/UString.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/writer/XmlDoc.h"

// In this program allocations are counted, and any of them can be made to fail.

namespace tests {
namespace {

using namespace testtags;
using Orn::StateException;
using Orn::UString;
using Orn::XmlDoc;

constexpr char16_t LONG_TEXT[] =
    u"a text <&> that is too long to be kept without a block of its own";

/// As deep, and in as many namespaces, as takes memory beside the text.
void write_much(XmlDoc& doc) {
  UString const text(LONG_TEXT);
  doc.set_indented_format();
  doc.start_doc(u_r);
  doc.add_ns(ns_v, u"a_prefix_that_is_too_long_for_any_small_buffer");
  doc.add_attr(v_a, XmlDoc::escape_attr(text));
  doc.add_attr(w_a, -2147483647L);
  doc.add_comment(text);
  doc.add_processing_instruction(text);
  for (int depth = 0; depth < 50; ++depth) doc.push_elem(depth % 2 == 0 ? a : w_e, depth == 7);
  doc.append_elem_body(text, true);
  doc.append_elem_body(XmlDoc::escape(text), false);
  doc.add_elem(v_d, text, true);
  doc.add_elem(v_d, text, false);
  doc.add_elem(u_z);
  doc.add_elem_CDATA(amp_a, text);
  XmlDoc::Elem tree(u_a);
  tree.add_elem(u_b, text, true);
  doc.add_elem(tree);
  for (int depth = 50; depth > 0; --depth) doc.pop_elem(depth % 2 == 1 ? a : w_e);
}

UString finished(XmlDoc& doc) {
  doc.close();
  UString const text = doc.str();
  EXPECT_EQ(UString::from_utf8(doc.byte_array()), text);
  return text;
}

class FailedAllocationInAWriter : public testing::Test {
 protected:
  /// Has everything made that is made once.
  FailedAllocationInAWriter() : whole_(whole()) {}

  static UString whole() {
    XmlDoc doc;
    write_much(doc);
    return finished(doc);
  }

  UString const whole_;
};

TEST_F(FailedAllocationInAWriter, LosesNothingAndTheDocumentCanBeAssignedTo) {
  XmlDoc sound;
  write_much(sound);
  int const failures = fail_each_allocation([&](auto const& raises) {
    XmlDoc doc;
    raises([&] { write_much(doc); });
    doc = sound;
    EXPECT_EQ(finished(doc), whole_);
  });
  EXPECT_GE(failures, 15);
}

TEST_F(FailedAllocationInAWriter, LosesNothingWhenTheDocumentIsGivenUp) {
  fail_each_allocation([](auto const& raises) {
    XmlDoc doc;
    raises([&] { write_much(doc); });
  });
}

TEST_F(FailedAllocationInAWriter, OfACopyLeavesTheOriginalAsItWas) {
  int const failures = fail_each_allocation([&](auto const& raises) {
    XmlDoc doc;
    write_much(doc);
    raises([&] { XmlDoc const copy(doc); });
    EXPECT_EQ(finished(doc), whole_);
  });
  EXPECT_GE(failures, 2);
}

TEST_F(FailedAllocationInAWriter, WhileItClosesAndIsAskedForItsTextLosesNothing) {
  int const failures = fail_each_allocation([](auto const& raises) {
    XmlDoc doc;
    write_much(doc);
    raises([&] { finished(doc); });
  });
  EXPECT_GE(failures, 3);
}

TEST_F(FailedAllocationInAWriter, WhileItsTextIsTakenInPiecesLosesNothing) {
  int const failures = fail_each_allocation([](auto const& raises) {
    XmlDoc doc;
    write_much(doc);
    raises([&] {
      doc.inc_str();
      doc.close();
      doc.inc_str();
    });
  });
  EXPECT_GE(failures, 2);
}

TEST_F(FailedAllocationInAWriter, WhileSomethingIsRefusedIsABadAllocAndTheDocumentIsAsItWas) {
  int const failures = fail_each_allocation([this](auto const& raises) {
    XmlDoc doc;
    write_much(doc);
    raises([&] {
      try {
        static_cast<void>(doc.str());
      } catch (StateException const&) {
      }
    });
    EXPECT_EQ(finished(doc), whole_);
  });
  EXPECT_GE(failures, 2);
}

}  // namespace
}  // namespace tests

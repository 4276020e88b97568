#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/writer/Documents.h"
#include "tests/writer/Snapshot.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::UString;
using Orn::XmlDoc;

/// One in each state, with something in every field.
std::vector<XmlDoc> documents() {
  XmlDoc started;
  started.add_ns(ns_v, u"v");
  started.add_comment(u"c");

  XmlDoc in_start_tag(u_r);
  in_start_tag.push_elem(v_a);

  XmlDoc in_text = after_partial_output();
  in_text.append_elem_body(u"t", true);
  in_text.add_elem(u_a);

  XmlDoc pending;
  pending.add_elem(u_r);

  XmlDoc closed = pending;
  closed.close();
  return {XmlDoc(), started, in_start_tag, in_text, pending, closed};
}

TEST(ACopy, HoldsWhatTheOriginalHolds) {
  for (XmlDoc const& doc : documents()) {
    XmlDoc const copy(doc);
    EXPECT_EQ(snapshot(copy), snapshot(doc));
  }
}

TEST(ACopy, ByAssignmentForgetsWhatWasThere) {
  for (XmlDoc const& doc : documents()) {
    for (XmlDoc target : documents()) {
      XmlDoc& result = target = doc;
      EXPECT_EQ(&result, &target);
      EXPECT_EQ(snapshot(target), snapshot(doc));
    }
  }
}

TEST(ACopy, OfADocumentToItselfChangesNothing) {
  for (XmlDoc doc : documents()) {
    XmlDoc const& same = doc;
    EXPECT_TRUE(leaves_alone(doc, [&] { doc = same; }));
  }
}

TEST(ACopy, GoesOnIndependently) {
  XmlDoc doc(u_r);
  doc.push_elem(u_a);
  XmlDoc copy(doc);

  copy.add_attr(v_a, u"v");
  EXPECT_TRUE(leaves_alone(copy, [&] {
    doc.add_attr(w_a, u"w");
    doc.pop_elem(u_a);
    doc.inc_str();
  }));

  copy.pop_elem(u_a);
  EXPECT_EQ(closed_text(copy), declared(u"<N1:r xmlns:N1=\"urn:test:u\" xmlns:N2=\"urn:test:v\">"
                                        u"<N1:a N2:a=\"v\"></N1:a></N1:r>"));
  EXPECT_EQ(closed_text(doc), u"</N1:r>");
}

TEST(ACopy, OfADrainedDocumentTakesTheEmptyText) {
  XmlDoc doc(u_r);
  doc.inc_str();
  XmlDoc copy(doc);
  copy.append_elem_body(UString(), true);
  copy.append_elem_body(UString(), false);
  EXPECT_EQ(out(copy), u"");
  copy.close();
  EXPECT_EQ(copy.str(), u"</N1:r>");
}

TEST(ACopy, IsIndentedWhenTheOriginalIs) {
  XmlDoc doc;
  doc.set_indented_format();
  XmlDoc copy(doc);
  copy.push_elem(u_r);
  XmlDoc assigned;
  assigned = copy;
  assigned.add_elem(u_a);
  EXPECT_EQ(out(assigned), declared(u"\n<N1:r>\n  <N1:a/>"));
}

TEST(ACopy, IsNotIndentedWhenTheOriginalIsNot) {
  XmlDoc doc;
  doc.set_indented_format();
  doc = XmlDoc();
  doc.push_elem(u_r);
  EXPECT_EQ(out(doc), declared(u"<N1:r"));
}

TEST(ACopy, OutlivesTheOriginal) {
  auto doc = std::make_unique<XmlDoc>(u_r);
  XmlDoc copy(*doc);
  doc.reset();
  EXPECT_EQ(closed_text(copy), declared(u"<N1:r xmlns:N1=\"urn:test:u\"></N1:r>"));
}

TEST(ADocument, MayBeDestroyedInAnyStateAndThroughItsBase) {
  EXPECT_TRUE(std::has_virtual_destructor_v<XmlDoc>);
  struct Derived : XmlDoc {
    explicit Derived(bool& gone) : gone_(gone) {}
    ~Derived() override { gone_ = true; }
    bool& gone_;
  };
  bool gone = false;
  std::unique_ptr<XmlDoc> doc = std::make_unique<Derived>(gone);
  doc->push_elem(u_r);
  doc.reset();
  EXPECT_TRUE(gone);
}

}  // namespace
}  // namespace tests

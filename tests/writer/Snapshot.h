#ifndef TESTS_WRITER_SNAPSHOT_H
#define TESTS_WRITER_SNAPSHOT_H

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <tuple>
#include <typeinfo>

#include "tests/support/Raises.h"
#include "tests/support/XmlDocTestAccess.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {

/// All that a document holds, except whether it is indented.
struct Snapshot {
  Orn::UString out;
  std::uint32_t state = 0;
  std::vector<Orn::XmlTag::Id> tags;
  bool start_tag_open = false;
  bool after_start_tag = true;
  Orn::XmlTag::Id root_tag = Orn::XmlTag::NO_TAG;
  std::uint32_t ns_counter = 0;
  std::uint32_t ns_insert_pos = 0;
  std::map<Orn::UString, std::set<Orn::UString>> ns_decls;

  auto fields() const {
    return std::tie(out, state, tags, start_tag_open, after_start_tag, root_tag, ns_counter,
                    ns_insert_pos, ns_decls);
  }
  bool operator==(Snapshot const& other) const { return fields() == other.fields(); }
};

inline std::ostream& operator<<(std::ostream& stream, Snapshot const& s) {
  return stream << "\n  out \"" << s.out << "\", state " << s.state << ", tags "
                << testing::PrintToString(s.tags) << ", start tag "
                << (s.start_tag_open ? "open" : "complete")
                << (s.after_start_tag ? ", after" : ", not after") << " a start tag, root "
                << s.root_tag << ", counter " << s.ns_counter << ", declarations go to "
                << s.ns_insert_pos << ", namespaces " << testing::PrintToString(s.ns_decls);
}

inline Snapshot snapshot(Orn::XmlDoc const& doc) {
  using Access = Orn::XmlDocTestAccess;
  return {Access::out(doc),
          Access::state(doc),
          Access::tags(doc),
          Access::start_tag_open(doc),
          Access::after_start_tag(doc),
          Access::root_tag(doc),
          Access::ns_counter(doc),
          Access::ns_insert_pos(doc),
          Access::ns_decls(doc)};
}

/// Success when `call` leaves `doc` exactly as it was.
inline testing::AssertionResult leaves_alone(Orn::XmlDoc const& doc,
                                             std::function<void()> const& call) {
  Snapshot const before = snapshot(doc);
  call();
  Snapshot const after = snapshot(doc);
  if (after == before) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "the document was " << before << "\nand is " << after;
}

/// Success when `call` raises a StateException with the argument-free message `index` and leaves
/// `doc` as it was.
inline testing::AssertionResult refuses(Orn::XmlDoc const& doc, std::function<void()> const& call,
                                        int index) {
  testing::AssertionResult raised = testing::AssertionSuccess();
  testing::AssertionResult const left =
      leaves_alone(doc, [&] { raised = raises(call, typeid(Orn::StateException), index); });
  return raised ? left : raised;
}

/// Success when `call` raises the TagException that names the tag `id`, and leaves `doc` as it was.
inline testing::AssertionResult does_not_know(Orn::XmlDoc const& doc,
                                              std::function<void()> const& call,
                                              Orn::XmlTag::Id id) {
  Orn::UString text;
  Orn::UString named;
  testing::AssertionResult const left = leaves_alone(doc, [&] {
    try {
      call();
    } catch (Orn::TagException const& e) {
      text = e.message().text();
      named = e.message().arg(1).text();
    }
  });
  if (text.find(u"TQUTL0001E", 0) != 0 || named.to_utf8() != std::to_string(id)) {
    return testing::AssertionFailure() << "raised \"" << text << '"';
  }
  return left;
}

}  // namespace tests

/// EXPECT_REFUSED(doc, doc.close(), Catalogue::NOT_CLOSE_PENDING)
#define EXPECT_REFUSED(doc, statement, index) \
  EXPECT_TRUE(::tests::refuses((doc), [&] { static_cast<void>(statement); }, (index)))

/// EXPECT_UNKNOWN_TAG(doc, doc.push_elem(unregistered), unregistered)
#define EXPECT_UNKNOWN_TAG(doc, statement, id) \
  EXPECT_TRUE(::tests::does_not_know((doc), [&] { static_cast<void>(statement); }, (id)))

#endif

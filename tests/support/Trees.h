#ifndef TESTS_SUPPORT_TREES_H
#define TESTS_SUPPORT_TREES_H

#include <algorithm>
#include <functional>
#include <ostream>
#include <utility>
#include <vector>

#include "tests/support/ElemTestAccess.h"
#include "tqxml/writer/XmlDoc.h"

namespace tests {

/// A tree in one line: `r(a=1 b=2)[x "text" y["more"]]`. The names must be registered.
inline Orn::UString outline(Orn::XmlDoc::Elem const& tree) {
  using Access = Orn::ElemTestAccess;
  auto const name = [](Orn::XmlTag::Id tag) { return Orn::XmlTag::lookup(tag).to_string(); };
  Orn::UString line = name(Access::tag(tree));
  char16_t const* separator = u"(";
  for (auto const& [id, value] : Access::attrs(tree)) {
    line.append(separator).append(name(id)).append(u"=").append(value);
    separator = u" ";
  }
  if (!Access::attrs(tree).empty()) line.append(u")");
  separator = u"[";
  for (std::size_t i = 0; i < Access::child_count(tree); ++i) {
    line.append(separator);
    if (auto const* const text = Access::text(tree, i); text != nullptr) {
      line.append(u"\"").append(*text).append(u"\"");
    } else {
      line.append(outline(*Access::elem(tree, i)));
    }
    separator = u" ";
  }
  return tree.empty() ? line : line.append(u"]");
}

/// A tree that shares nothing with `tree`, in which `change_head` has been at the tag and the
/// attributes of each element, and `change_text` at each text.
using Head = std::pair<Orn::XmlTag::Id, std::vector<Orn::XmlDoc::Elem::attr_t>>;
inline Orn::XmlDoc::Elem changed(
    Orn::XmlDoc::Elem const& tree, std::function<void(Head&)> const& change_head,
    std::function<void(Orn::UString&)> const& change_text = [](Orn::UString&) {}) {
  using Access = Orn::ElemTestAccess;
  Head head(Access::tag(tree), Access::attrs(tree));
  change_head(head);
  Orn::XmlDoc::Elem result(head.first);
  for (auto const& attr : head.second) result.add_attr(attr.id, attr.value);
  for (std::size_t i = 0; i < Access::child_count(tree); ++i) {
    if (auto const* const found = Access::text(tree, i); found != nullptr) {
      Orn::UString text = *found;
      change_text(text);
      result.add_body(text, false);
    } else {
      result.add_elem(changed(*Access::elem(tree, i), change_head, change_text));
    }
  }
  return result;
}

/// Trees compare their attributes in order, and readers give them in orders of their own.
inline Orn::XmlDoc::Elem with_sorted_attributes(Orn::XmlDoc::Elem const& tree) {
  return changed(tree, [](Head& head) {
    std::sort(head.second.begin(), head.second.end(),
              [](auto const& a, auto const& b) { return a.id < b.id; });
  });
}

inline Orn::XmlDoc::Elem with_reversed_attributes(Orn::XmlDoc::Elem const& tree) {
  return changed(tree, [](Head& head) { std::reverse(head.second.begin(), head.second.end()); });
}

/// Trees hold values as they are, and writing them takes values that have been made safe.
inline Orn::XmlDoc::Elem with_escaped_attributes(Orn::XmlDoc::Elem const& tree) {
  return changed(tree, [](Head& head) {
    for (auto& attr : head.second) attr.value = Orn::XmlDoc::escape_attr(attr.value);
  });
}

}  // namespace tests

namespace Orn {

/// For GoogleTest.
inline void PrintTo(XmlDoc::Elem const& tree, std::ostream* out) { *out << tests::outline(tree); }

}  // namespace Orn

#endif

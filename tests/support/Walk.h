#ifndef TESTS_SUPPORT_WALK_H
#define TESTS_SUPPORT_WALK_H

#include <utility>
#include <vector>

#include "tqutil/UString.h"

namespace tests {

/// Takes all attributes and all texts of the element and of those below it, each child dropped
/// before the next, and gives all of that as one text. Takes no stack for the depth.
template <class Elem>
Orn::UString walk(Elem root) {
  Orn::UString seen;
  std::vector<Elem> open;
  auto const enter = [&](Elem element) {
    for (auto attr = element.next_attr(); !attr.is_nil(); attr = element.next_attr()) {
      seen.append(attr.data());
    }
    open.push_back(std::move(element));
  };
  enter(std::move(root));
  while (!open.empty()) {
    Elem child = open.back().next_child();
    if (!child.is_nil()) {
      enter(std::move(child));
    } else {
      seen.append(open.back().data());
      open.pop_back();
    }
  }
  return seen;
}

}  // namespace tests

#endif

#ifndef TQXML_WRITER_ELEMCHILD_H
#define TQXML_WRITER_ELEMCHILD_H

#include <utility>
#include <variant>

#include "tqxml/writer/XmlDocElem.h"

namespace Orn {

/// A child of an element: a text or an element, owned in common by every element that lists it and
/// counted by hand, one reference a listing.
class XmlDoc::Elem::Child {
 public:
  explicit Child(UString text) : content_(std::move(text)) {}
  explicit Child(Elem elem) : content_(std::move(elem)) {}

  static void retain(Child* child) noexcept { ++child->refs_; }
  /// Ends the child with the last reference, and whatever only it was holding, without taking stack
  /// for the depth of the tree.
  static void release(Child* child) noexcept;

  /// Null for the other kind.
  UString const* text() const noexcept { return std::get_if<UString>(&content_); }
  Elem const* elem() const noexcept { return std::get_if<Elem>(&content_); }
  Elem* elem() noexcept { return std::get_if<Elem>(&content_); }

  /// Whether more than one element lists the child.
  bool is_shared() const noexcept { return refs_ > 1; }

 private:
  std::variant<UString, Elem> content_;
  unsigned int refs_ = 1;
  /// The next to end, in a child that is ending.
  Child* next_ = nullptr;
};

}  // namespace Orn

#endif

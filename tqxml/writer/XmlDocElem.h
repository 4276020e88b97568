#ifndef TQXML_WRITER_XMLDOCELEM_H
#define TQXML_WRITER_XMLDOCELEM_H

#include <cstddef>
#include <type_traits>
#include <vector>

#include "tqutil/UString.h"
#include "tqutil/XmlTag.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Export.h"
#include "tqxml/foundation/Ref.h"
#include "tqxml/sax/SaxParser.h"
#include "tqxml/writer/XmlDoc.h"

namespace Orn {

/// An element tree in memory: a tag, attributes in order, and children in order, each a piece of
/// text or an element.
///
///     XmlDoc::Elem order(orders::order);
///     order.add_attr(orders::id, 42L);
///     order.add_elem(orders::note, u"R&D", true);
///     XmlDoc::Elem& line = order.add_elem(orders::line, u"", false);
///     line.add_attr(orders::id, 1L);                   // changes the child inside of `order`
///     UString markup = order.str();                    // or: doc.add_elem(order, false)
///
/// Children are shared, not copied. A copy of an element has its own list of children, but the
/// children on it are the same objects, so copying costs the attributes and the direct children,
/// and a change made through a reference that `add_elem` returned is seen in every tree that holds
/// that child. Elements added to either list later are not shared. A tree must not be added or
/// assigned to an element inside of it: nothing would ever end the circle.
///
/// Names, text and markup are not checked; what is written later is what was put in. No operation
/// raises anything but std::bad_alloc, unless said otherwise, and then the element is as it was.
/// No operation takes stack for the depth of the tree.
///
/// Trees that share children belong to one thread at a time, together.
class TQXML_API XmlDoc::Elem {
 public:
  /// One attribute; the value as it will be written.
  struct attr_t {
    XmlTag::Id id;  ///< its name
    UString value;  ///< escaped by whoever put it there, if it had to be
  };

  /// An element without attributes and children.
  explicit Elem(XmlTag::Id tag);
  /// A tree of a parsed element, read from its beginning whatever the handle has been used for. The
  /// handle stays as it is. Raises what reading raises.
  ///
  /// Attributes come in the order in which that reader gives them, see its `next_attr`, with their
  /// references resolved and not escaped: the tree of `<a b="x &amp; y"/>` is written ill-formed.
  /// The text of an element without child elements becomes one text, escaped; where there are child
  /// elements all text is dropped, and so are comments and instructions.
  explicit Elem(DomParser::Elem const& source);
  /// A tree of what is left of an element that is being read, to its end: attributes and children
  /// that `next_attr`, `next_child` or another tree has taken are not in it. What is in it has been
  /// taken then. Otherwise as above.
  explicit Elem(SaxParser::Elem& source);

  /// A copy that shares the children.
  Elem(Elem const& other);
  /// Leaves `other` with its tag alone.
  Elem(Elem&& other) noexcept;
  /// As the constructors do. `other` may be an element inside of this one.
  Elem& operator=(Elem const& other);
  /// The same.
  Elem& operator=(Elem&& other) noexcept;
  /// Lets go of the children, which live on in the other trees that hold them.
  ~Elem();

  /// Whether there are no children. Attributes do not count.
  bool empty() const noexcept { return children.empty(); }

  /// Appends an attribute. The value must be safe to write, see `XmlDoc::escape_attr`. The same
  /// name may be added again.
  void add_attr(XmlTag::Id id, UString const& value);
  /// The same with a whole number in decimal. A wider integer is cut to a `long`.
  void add_attr(XmlTag::Id id, long value);
  /// A fraction would quietly be cut off.
  template <class Number, std::enable_if_t<std::is_floating_point_v<Number>, int> = 0>
  void add_attr(XmlTag::Id id, Number value) = delete;

  /// Appends a text, escaped by `XmlDoc::escape` here and now or as it is, so that it may hold
  /// markup. Texts are never joined; the empty one is not added.
  void add_body(UString const& text, bool escape);

  /// Appends a copy of `e`, and returns it. The reference is good as long as any tree holds that
  /// child.
  Elem& add_elem(Elem const& e);
  /// Appends an element with a text, as by `add_body`, and returns it.
  Elem& add_elem(XmlTag::Id tag, UString const& body, bool escape);

  /// Whether this tree is like the other: the same tag, the same attributes in the same order, the
  /// same number of children, and like children. Where all children on both sides are elements of
  /// one tag their order does not matter: each of this element's must be like one of the other's,
  /// which can serve for several, so that A, A is like A, B but A, B is not like A, A. Otherwise
  /// the children are compared in order. Texts are compared as stored, escaped or not. Takes time
  /// about linear in both trees when the lists are alike up to their order.
  bool operator==(Elem const& other) const;
  /// Whether they are not alike. It costs the same.
  bool operator!=(Elem const& other) const { return !(*this == other); }

  /// The markup of the tree as the root of a document of its own, with its namespace declarations
  /// and without XML declaration and indentation. Raises what writing raises.
  UString str() const;
  /// The markup of the children in order: texts as they are, elements as their `str()`.
  UString content() const;

 private:
  friend class XmlDoc;
  friend class ElemComparison;
  friend class ElemTestAccess;
  template <class Handle>
  friend class TreeBuilder;
  class TQXML_LOCAL Child;

  TQXML_LOCAL Elem& take_elem(Elem&& e);
  TQXML_LOCAL void take_unescaped(UString&& text);
  TQXML_LOCAL void take_text(UString&& text);
  TQXML_LOCAL UString const* only_text() const noexcept;

  XmlTag::Id tag;
  std::vector<attr_t> attrs;
  std::vector<Ref<Child>> children;
};

}  // namespace Orn

#endif

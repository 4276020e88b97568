#ifndef TQXML_WRITER_ELEMCOMPARISON_H
#define TQXML_WRITER_ELEMCOMPARISON_H

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "tqxml/writer/ElemChild.h"
#include "tqxml/writer/XmlDocElem.h"

namespace Orn {

/// Compares two element trees, as `XmlDoc::Elem::operator==` says, in time about linear in both.
///
/// The rule for lists of one tag, order apart, makes a direct search quadratic in a list and
/// exponential in depth. So trees are first sorted into classes, from the leaves up: two elements
/// are of one class when tag, attributes, number of children and the classes of their children
/// agree, where a list of one tag counts as the set of its children's classes. Members of one class
/// are alike, either way round, and whether two elements are alike depends on their classes alone.
/// Equal lists then compare by their numbers. Only what finds no partner of its own class is
/// searched for among the other classes, and answers about pairs of classes are remembered. Trees
/// that are alike child by child, in order, do not even need classes.
class ElemComparison {
 public:
  static bool alike(XmlDoc::Elem const& a, XmlDoc::Elem const& b);

 private:
  using Elem = XmlDoc::Elem;
  using Child = Elem::Child;
  using ClassId = std::uint32_t;

  /// What the members of a class have in common, and one of them to read it from.
  struct Class {
    UString const* text = nullptr;
    Elem const* elem = nullptr;
    /// All children are elements of one tag. `children` are then in ascending order, each once.
    bool homogeneous = false;
    std::vector<ClassId> children;

    bool operator==(Class const& other) const;
  };
  struct ClassHash {
    std::size_t operator()(Class const& wanted) const;
  };

  struct Unclassified {
    Child const* child;
    std::size_t next_child;
  };

  struct Pair {
    ClassId a;
    ClassId b;
    bool operator==(Pair const& other) const { return a == other.a && b == other.b; }
  };
  /// A question that is being looked into: how far its two lists of children have been matched, and
  /// how far the search for a partner of the next one has come.
  struct Question {
    Pair pair;
    std::size_t next_a = 0;
    std::size_t next_likely = 0;
    std::size_t next_b = 0;
  };
  enum class Answer { NO, YES, UNKNOWN };
  struct KnownAnswer {
    Pair pair;
    Answer answer;
  };

  static bool same_head(Elem const& a, Elem const& b);
  static bool same_in_order(Elem const& a, Elem const& b);

  ClassId classify(Elem const& root);
  ClassId class_of(Child const& child) const { return classes_of_children_.at(&child); }
  void classify_below(Elem const& root);
  ClassId class_of_text(UString const& text);
  ClassId class_of_elem(Elem const& elem);
  ClassId intern(Class found);

  bool answer(Pair pair);
  Answer known_answer(Pair pair) const;
  std::size_t place_of(Pair pair) const;
  Answer pursue(Question& question, Pair& next) const;
  Answer match_in_order(Question& question, Pair& next) const;
  Answer match_in_any_order(Question& question, Pair& next) const;
  Answer find_partner(Question& question, Pair& next) const;
  std::vector<ClassId> const& likely_partners(ClassId wanted) const;

  std::unordered_map<Class, ClassId, ClassHash> ids_;
  std::vector<Class const*> classes_;
  /// The classes that have each class among their children.
  std::vector<std::vector<ClassId>> parents_;
  std::unordered_map<Child const*, ClassId> classes_of_children_;
  /// What has been found out, each answer in the place that its pair leads to; a newer one pushes
  /// an older one out, so that memory does not grow with the number of questions.
  std::vector<KnownAnswer> answers_;
};

}  // namespace Orn

#endif

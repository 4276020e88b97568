#include "tqxml/writer/ElemComparison.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace Orn {
namespace {

// How many answers are remembered at least.
constexpr std::size_t LEAST_ANSWERS = 1024;

void mix(std::size_t& hash, std::size_t value) {
  hash ^= value + 0x9e3779b9U + (hash << 6U) + (hash >> 2U);
}

bool same_attributes(std::vector<XmlDoc::Elem::attr_t> const& a,
                     std::vector<XmlDoc::Elem::attr_t> const& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](XmlDoc::Elem::attr_t const& x, XmlDoc::Elem::attr_t const& y) {
                      return x.id == y.id && x.value == y.value;
                    });
}

}  // namespace

bool XmlDoc::Elem::operator==(Elem const& other) const {
  return ElemComparison::alike(*this, other);
}

bool ElemComparison::alike(Elem const& a, Elem const& b) {
  if (!same_head(a, b)) return false;
  if (same_in_order(a, b)) return true;
  ElemComparison comparison;
  ClassId const class_a = comparison.classify(a);
  ClassId const class_b = comparison.classify(b);
  return comparison.answer(Pair{class_a, class_b});
}

// All that two elements must agree in before their children are looked at.
bool ElemComparison::same_head(Elem const& a, Elem const& b) {
  return a.tag == b.tag && a.children.size() == b.children.size() &&
         same_attributes(a.attrs, b.attrs);
}

// Whether the trees agree child by child, all the way down; they are alike then. Gives up, with
// false, on distinct children that are both listed more than once, since the same two may meet
// again and again: without that, the walk is linear.
bool ElemComparison::same_in_order(Elem const& a, Elem const& b) {
  struct Step {
    Elem const* a;
    Elem const* b;
    std::size_t next_child;
  };
  std::vector<Step> path{Step{&a, &b, 0}};
  while (!path.empty()) {
    Step& step = path.back();
    if (step.next_child == step.a->children.size()) {
      path.pop_back();
      continue;
    }
    Child const& child_a = *step.a->children[step.next_child].get();
    Child const& child_b = *step.b->children[step.next_child].get();
    ++step.next_child;
    if (&child_a == &child_b) continue;
    if (child_a.is_shared() || child_b.is_shared()) return false;
    if (child_a.text() != nullptr && child_b.text() != nullptr) {
      if (*child_a.text() != *child_b.text()) return false;
    } else if (child_a.elem() != nullptr && child_b.elem() != nullptr) {
      if (!same_head(*child_a.elem(), *child_b.elem())) return false;
      path.push_back(Step{child_a.elem(), child_b.elem(), 0});
    } else {
      return false;
    }
  }
  return true;
}

bool ElemComparison::Class::operator==(Class const& other) const {
  if ((text == nullptr) != (other.text == nullptr)) return false;
  if (text != nullptr) return *text == *other.text;
  return children == other.children && same_head(*elem, *other.elem);
}

std::size_t ElemComparison::ClassHash::operator()(Class const& wanted) const {
  std::hash<UString> const hash_text;
  if (wanted.text != nullptr) return hash_text(*wanted.text);
  auto hash = static_cast<std::size_t>(wanted.elem->tag);
  mix(hash, wanted.elem->children.size());
  for (XmlDoc::Elem::attr_t const& attr : wanted.elem->attrs) {
    mix(hash, static_cast<std::size_t>(attr.id));
    mix(hash, hash_text(attr.value));
  }
  for (ClassId const child : wanted.children) mix(hash, child);
  return hash;
}

ElemComparison::ClassId ElemComparison::classify(Elem const& root) {
  classify_below(root);
  return class_of_elem(root);
}

// Finds the class of every child below `root`, each after its own children. A child that is listed
// many times is looked at once.
void ElemComparison::classify_below(Elem const& root) {
  std::vector<Unclassified> path;
  Elem const* current = &root;
  std::size_t next_child = 0;
  while (true) {
    if (next_child < current->children.size()) {
      Child const& child = *current->children[next_child++].get();
      if (classes_of_children_.count(&child) != 0) continue;
      if (child.text() != nullptr) {
        classes_of_children_.emplace(&child, class_of_text(*child.text()));
      } else {
        path.push_back(Unclassified{&child, next_child});
        current = child.elem();
        next_child = 0;
      }
    } else if (path.empty()) {
      return;
    } else {
      auto const [child, resume_at] = path.back();
      path.pop_back();
      classes_of_children_.emplace(child, class_of_elem(*child->elem()));
      current = path.empty() ? &root : path.back().child->elem();
      next_child = resume_at;
    }
  }
}

ElemComparison::ClassId ElemComparison::class_of_text(UString const& text) {
  Class found;
  found.text = &text;
  return intern(std::move(found));
}

ElemComparison::ClassId ElemComparison::class_of_elem(Elem const& elem) {
  Class found;
  found.elem = &elem;
  Elem const* const first = elem.children.empty() ? nullptr : elem.children[0]->elem();
  found.homogeneous = first != nullptr;
  for (Ref<Child> const& child : elem.children) {
    found.children.push_back(class_of(*child.get()));
    Elem const* const child_elem = child->elem();
    if (!found.homogeneous) continue;
    found.homogeneous = child_elem != nullptr && child_elem->tag == first->tag;
  }
  if (found.homogeneous) {
    std::sort(found.children.begin(), found.children.end());
    found.children.erase(std::unique(found.children.begin(), found.children.end()),
                         found.children.end());
  }
  return intern(std::move(found));
}

ElemComparison::ClassId ElemComparison::intern(Class found) {
  auto const next = static_cast<ClassId>(classes_.size());
  auto const [place, is_new] = ids_.try_emplace(std::move(found), next);
  if (!is_new) return place->second;
  classes_.push_back(&place->first);
  parents_.emplace_back();
  for (ClassId const child : place->first.children) parents_[child].push_back(next);
  return next;
}

// Looks into the question, and into those that it depends on, one inside the other in a list.
bool ElemComparison::answer(Pair pair) {
  Answer answer = known_answer(pair);
  if (answer != Answer::UNKNOWN) return answer == Answer::YES;
  answers_.assign(LEAST_ANSWERS + 2 * classes_.size(), KnownAnswer{pair, Answer::UNKNOWN});
  std::vector<Question> open{Question{pair}};
  while (!open.empty()) {
    Pair next{};
    answer = pursue(open.back(), next);
    if (answer == Answer::UNKNOWN) {
      open.push_back(Question{next});
      continue;
    }
    Pair const answered = open.back().pair;
    answers_[place_of(answered)] = KnownAnswer{answered, answer};
    open.pop_back();
  }
  return answer == Answer::YES;
}

// What can be said without looking at children, or has been found out. Only the latter is kept.
ElemComparison::Answer ElemComparison::known_answer(Pair pair) const {
  if (pair.a == pair.b) return Answer::YES;
  Class const& a = *classes_[pair.a];
  Class const& b = *classes_[pair.b];
  if (a.elem == nullptr || b.elem == nullptr) return Answer::NO;
  if (a.homogeneous != b.homogeneous || !same_head(*a.elem, *b.elem)) return Answer::NO;
  if (answers_.empty()) return Answer::UNKNOWN;
  KnownAnswer const& known = answers_[place_of(pair)];
  return known.pair == pair ? known.answer : Answer::UNKNOWN;
}

std::size_t ElemComparison::place_of(Pair pair) const {
  std::uint64_t const both = (std::uint64_t{pair.a} << 32U) | pair.b;
  return static_cast<std::size_t>((both * 0x9e3779b97f4a7c15U >> 32U) % answers_.size());
}

// Goes on with a question until it is answered or depends on one that is not, which is `next`.
ElemComparison::Answer ElemComparison::pursue(Question& question, Pair& next) const {
  return classes_[question.pair.a]->homogeneous ? match_in_any_order(question, next)
                                                : match_in_order(question, next);
}

ElemComparison::Answer ElemComparison::match_in_order(Question& question, Pair& next) const {
  std::vector<ClassId> const& a = classes_[question.pair.a]->children;
  std::vector<ClassId> const& b = classes_[question.pair.b]->children;
  for (; question.next_a < a.size(); ++question.next_a) {
    next = Pair{a[question.next_a], b[question.next_a]};
    Answer const answer = known_answer(next);
    if (answer != Answer::YES) return answer;
  }
  return Answer::YES;
}

ElemComparison::Answer ElemComparison::match_in_any_order(Question& question, Pair& next) const {
  std::vector<ClassId> const& a = classes_[question.pair.a]->children;
  for (; question.next_a < a.size(); ++question.next_a) {
    Answer const answer = find_partner(question, next);
    if (answer != Answer::YES) return answer;
    question.next_likely = 0;
    question.next_b = 0;
  }
  return Answer::YES;
}

// Looks for a partner of the next child: in its own class, then among those that have a child in
// common with it, then among all.
ElemComparison::Answer ElemComparison::find_partner(Question& question, Pair& next) const {
  ClassId const wanted = classes_[question.pair.a]->children[question.next_a];
  std::vector<ClassId> const& b = classes_[question.pair.b]->children;
  if (std::binary_search(b.begin(), b.end(), wanted)) return Answer::YES;
  std::vector<ClassId> const& likely = likely_partners(wanted);
  // Where that many are likely the search among all is no longer.
  std::size_t const likely_ones = likely.size() < b.size() ? likely.size() : 0;
  for (; question.next_likely < likely_ones; ++question.next_likely) {
    next = Pair{wanted, likely[question.next_likely]};
    if (!std::binary_search(b.begin(), b.end(), next.b)) continue;
    Answer const answer = known_answer(next);
    if (answer != Answer::NO) return answer;
  }
  for (; question.next_b < b.size(); ++question.next_b) {
    next = Pair{wanted, b[question.next_b]};
    Answer const answer = known_answer(next);
    if (answer != Answer::NO) return answer;
  }
  return Answer::NO;
}

// The classes that share with `wanted` the child that the fewest have.
std::vector<ElemComparison::ClassId> const& ElemComparison::likely_partners(ClassId wanted) const {
  std::vector<ClassId> const* likely = nullptr;
  for (ClassId const child : classes_[wanted]->children) {
    if (likely == nullptr || parents_[child].size() < likely->size()) likely = &parents_[child];
  }
  static std::vector<ClassId> const NONE;
  return likely == nullptr ? NONE : *likely;
}

}  // namespace Orn

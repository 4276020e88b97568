// Shows what element trees cost: a table of the processor time to compare, write and render trees
// of two sizes, one four times the other, and the ratio of the two, which is 4 for linear time, a
// little more for what sorts, and 16 for quadratic time; and one of the time to write a tree and to
// make the same calls by hand. Ends with 0 when no ratio of sizes reaches 10 and a tree takes less
// than twice the calls by hand.

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "tqutil/Vocabulary.h"
#include "tqxml/writer/XmlDoc.h"

namespace {

using Orn::UString;
using Orn::VocabularyEntry;
using Orn::XmlDoc;
using Orn::XmlTag;
using Elem = XmlDoc::Elem;

constexpr int small = 100000;
constexpr int large = 4 * small;
constexpr int repetitions = 7;
constexpr double far_from_quadratic = 10;
constexpr double twice = 2;

constexpr XmlTag::Id root{1};
constexpr XmlTag::Id item{2};
constexpr XmlTag::Id other_item{3};
constexpr XmlTag::Id number{4};

VocabularyEntry const entries[] = {
    {VocabularyEntry::NAMESPACE, 1, "ns", 0, u"urn:trees"},
    {VocabularyEntry::TAG, root, "root", 1, u"root"},
    {VocabularyEntry::TAG, item, "item", 1, u"item"},
    {VocabularyEntry::TAG, other_item, "other_item", 1, u"other_item"},
    {VocabularyEntry::TAG, number, "number", 1, u"number"},
};
Orn::Vocabulary const vocabulary("trees", entries);

/// An element with `n` children, all different, of one tag or of two in turn.
Elem list(int n, bool reversed = false, bool two_tags = false) {
  Elem tree(root);
  for (int i = 0; i < n; ++i) {
    int const which = reversed ? n - 1 - i : i;
    Elem& child = tree.add_elem(two_tags && which % 2 != 0 ? other_item : item, u"text", true);
    child.add_attr(number, long{which});
  }
  return tree;
}

/// One in which a child is unlike all of `list(n)`.
Elem list_with_another(int n) {
  Elem tree = list(n - 1, true);
  tree.add_elem(item, u"another text", true).add_attr(number, -1L);
  return tree;
}

/// `n` elements, each in the one before, with a text in the innermost.
Elem nested(int n, UString const& text) {
  Elem outermost(root);
  Elem* innermost = &outermost;
  for (int i = 1; i < n; ++i) innermost = &innermost->add_elem(Elem(item));
  innermost->add_body(text, true);
  return outermost;
}

template <class Work>
double seconds_for(Work work) {
  std::clock_t const begin = std::clock();
  work();
  return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

// A wrong answer is as good as no measurement.
void expect(bool right) {
  if (right) return;
  std::fprintf(stderr, "trees: a wrong answer\n");
  std::exit(2);
}

double seconds_to_compare(Elem const& a, Elem const& b, bool answer) {
  return seconds_for([&] { expect((a == b) == answer); });
}

void write_by_hand(XmlDoc& doc, int n) {
  doc.push_elem(root);
  UString const text(u"text");
  for (int i = 0; i < n; ++i) {
    doc.push_elem(item);
    doc.add_attr(number, UString::from_utf8(std::to_string(i)));
    doc.append_elem_body(text, false);
    doc.pop_elem(item);
  }
  doc.pop_elem(root);
}

struct Workload {
  char const* name;
  double (*seconds)(int n);
};

constexpr Workload workloads[] = {
    {"== of lists in the same order",
     [](int n) { return seconds_to_compare(list(n), list(n), true); }},
    {"== of lists in reversed order",
     [](int n) { return seconds_to_compare(list(n), list(n, true), true); }},
    {"== of lists with one difference",
     [](int n) { return seconds_to_compare(list(n), list_with_another(n), false); }},
    {"== of lists of two tags",
     [](int n) { return seconds_to_compare(list(n, false, true), list(n, false, true), true); }},
    {"== of deep trees",
     [](int n) { return seconds_to_compare(nested(n, u"1"), nested(n, u"1"), true); }},
    {"== of trees that differ deep down",
     [](int n) { return seconds_to_compare(nested(n, u"1"), nested(n, u"2"), false); }},
    {"copying and letting go of copies",
     [](int n) {
       Elem const tree = list(n);
       return seconds_for([&] { expect(!Elem(tree).empty()); });
     }},
    {"writing a list",
     [](int n) {
       Elem const tree = list(n);
       return seconds_for([&] { expect(!XmlDoc(tree).str().empty()); });
     }},
    {"writing a deep tree",
     [](int n) {
       Elem const tree = nested(n, u"1");
       return seconds_for([&] { expect(!XmlDoc(tree).str().empty()); });
     }},
    {"str()",
     [](int n) {
       Elem const tree = list(n);
       return seconds_for([&] { expect(!tree.str().empty()); });
     }},
    {"content()",
     [](int n) {
       Elem const tree = list(n);
       return seconds_for([&] { expect(!tree.content().empty()); });
     }},
};

/// The least time of several for each of two kinds of work. They take turns, so that a slow phase
/// of the machine meets both.
template <class First, class Second>
std::pair<double, double> best_times(First first, Second second) {
  std::pair<double, double> best(1e9, 1e9);
  for (int i = 0; i < repetitions; ++i) {
    best.first = std::min(best.first, first());
    best.second = std::min(best.second, second());
  }
  return best;
}

bool show(char const* name, std::pair<double, double> times, double limit) {
  double const ratio = times.second / times.first;
  bool const is_good = ratio < limit;
  std::printf("%-34s %9.4f s %9.4f s %7.2f%s\n", name, times.first, times.second, ratio,
              is_good ? "" : "  TOO MUCH");
  return is_good;
}

bool show_growth() {
  std::printf("%-34s %11d %11d %7s\n", "number of elements", small, large, "ratio");
  bool all_good = true;
  for (Workload const& workload : workloads) {
    auto const times = best_times([&] { return workload.seconds(small); },
                                  [&] { return workload.seconds(large); });
    all_good = show(workload.name, times, far_from_quadratic) && all_good;
  }
  return all_good;
}

bool show_price_of_a_tree() {
  Elem const tree = list(large);
  XmlDoc by_hand;
  XmlDoc by_tree;
  auto const times = best_times(
      [&] {
        by_hand = XmlDoc();
        return seconds_for([&] { write_by_hand(by_hand, large); });
      },
      [&] {
        by_tree = XmlDoc();
        return seconds_for([&] { by_tree.add_elem(tree, false); });
      });
  by_hand.close();
  by_tree.close();
  expect(by_hand.str() == by_tree.str());
  std::printf("\n%-34s %11s %11s %7s\n", "", "by hand", "as a tree", "ratio");
  return show("writing 400,000 elements", times, twice);
}

}  // namespace

int main() {
  // Large blocks come from the system afresh, whatever was measured before.
  mallopt(M_MMAP_THRESHOLD, 128 * 1024);

  std::printf("Processor time for element trees, best of %d, %d-bit build\n", repetitions,
              static_cast<int>(sizeof(void*) * 8));
  bool const grows_well = show_growth();
  bool const costs_little = show_price_of_a_tree();
  return grows_well && costs_little ? 0 : 1;
}

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <new>
#include <string>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "tests/sax/Source.h"
#include "tests/support/Raises.h"
#include "tests/support/SmallLimits.h"
#include "tests/support/TestTags.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/sax/SaxParser.h"

// In this program every allocation is counted, and any of them can be made to fail.

namespace {

/// How many allocations succeed before one fails; negative when none is to fail.
long before_failure = -1;
long allocations = 0;
long allocations_by_new = 0;
long blocks_in_use = 0;
std::size_t bytes_in_use = 0;
std::size_t most_bytes_in_use = 0;

bool fails_now() { return before_failure >= 0 && before_failure-- == 0; }

/// What Xerces asks for memory instead of its own manager, and with the same behaviour. Xerces
/// leaves its own objects behind, on purpose, when memory runs out: they can be swept up here.
class MemoryOfXerces : public xercesc::MemoryManager {
 public:
  xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

  void* allocate(XMLSize_t size) override {
    void* const memory = fails_now() ? nullptr : std::malloc(sizeof(Block) + size);
    if (memory == nullptr) throw xercesc::OutOfMemoryException();
    ++allocations;
    ++blocks_;
    auto* const block = new (memory) Block{&all_, all_.next, generation_};
    all_.next->previous = block;
    all_.next = block;
    return block + 1;
  }

  void deallocate(void* memory) override {
    if (memory == nullptr) return;
    --blocks_;
    Block* const block = static_cast<Block*>(memory) - 1;
    block->previous->next = block->next;
    block->next->previous = block->previous;
    std::free(block);
  }

  long blocks() const { return blocks_; }

  /// Blocks that are allocated from now on and have not been freed are so by `sweep_up`.
  void begin() { ++generation_; }
  void sweep_up() {
    for (Block* block = all_.next; block != &all_;) {
      Block* const next = block->next;
      if (block->generation == generation_) deallocate(block + 1);
      block = next;
    }
  }

 private:
  struct alignas(std::max_align_t) Block {
    Block* previous;
    Block* next;
    unsigned int generation;
  };

  unsigned int generation_ = 0;
  long blocks_ = 0;
  Block all_{&all_, &all_, 0};
};

MemoryOfXerces memory_of_xerces;

}  // namespace

// Not inlined, for the compiler is not to find malloc() and free() behind new and delete.
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* const block = fails_now() ? nullptr : std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  ++allocations;
  ++allocations_by_new;
  ++blocks_in_use;
  bytes_in_use += malloc_usable_size(block);
  most_bytes_in_use = std::max(most_bytes_in_use, bytes_in_use);
  return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
  if (block == nullptr) return;
  --blocks_in_use;
  bytes_in_use -= malloc_usable_size(block);
  std::free(block);
}

void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

namespace tests {
namespace {

namespace tag = testtags;
using Orn::Catalogue;
using Orn::ReadLimits;
using Orn::RuntimeException;
using Orn::SaxParser;
using Orn::StateException;
using Orn::STPException;
using Elem = SaxParser::Elem;

// Texts that are too long to be kept without a block of their own stand beside short ones.
std::string const document =
    "<?xml version='1.0'?><!DOCTYPE r [<!ENTITY e 'the text of an entity'>]>"
    "<r a='1' xmlns:p='urn:test:u' b='a value that is not short'><!-- comment -->"
    "<a c='2'>text<b>and &e; and more</b><![CDATA[and this]]></a><p:b/><?target data?>"
    "<c><d e='3'>x</d><e/>y</c></r>";

/// The elements of the document in its order, and their texts.
struct {
  Orn::XmlTag::Id tag;
  char16_t const* data;
} const contents[] = {
    {tag::r, u""},
    {tag::a, u"textand this"},
    {tag::b, u"and the text of an entity and more"},
    {tag::u_b, u""},
    {tag::c, u"y"},
    {tag::d, u"x"},
    {tag::e, u""},
};

/// The elements that a walk over the document has come by.
struct Findings {
  Elem elements[std::size(contents)];
  std::size_t count = 0;
};

void walk(Elem element, Findings& findings) {
  findings.elements[findings.count++] = element;
  for (auto attr = element.next_attr(); !attr.is_nil(); attr = element.next_attr()) attr.data();
  for (Elem child = element.next_child(); !child.is_nil(); child = element.next_child()) {
    walk(child, findings);
  }
  element.data();
}

template <class Call>
void expect_refusal(Call call) {
  try {
    call();
    ADD_FAILURE() << "nothing was refused";
  } catch (StateException const&) {
  }
}

void use_every_operation(Elem root, Findings& findings) {
  root.is_empty();
  root.child().data();
  root.child(tag::a).match(tag::a);
  root.opt_child(tag::c);
  expect_refusal([&] { root.match(tag::x); });
  expect_refusal([&] { root.child(tag::x); });
  expect_refusal([&] { root.check_is_empty(true); });
  expect_refusal([&] { Elem().tag(); });
  walk(root, findings);
  expect_refusal([&] { root.child(); });
}

/// The elements that were found have their texts, or are not complete and never will be.
void expect_readable(Findings const& findings) {
  for (std::size_t i = 0; i < findings.count; ++i) {
    EXPECT_EQ(findings.elements[i].tag(), contents[i].tag);
    try {
      EXPECT_EQ(findings.elements[i].data(), contents[i].data);
    } catch (StateException const& e) {
      EXPECT_EQ(e.message().index(), Catalogue::NOT_VALID_STREAM);
    }
  }
}

class Allocations : public testing::Test {
 protected:
  Allocations() {
    xercesc::XMLPlatformUtils::fgMemoryManager = &memory_of_xerces;
    // Has what is built on first use built.
    Source source(document);
    SaxParser parser(source);
    Findings findings;
    use_every_operation(parser.root(), findings);
    EXPECT_EQ(findings.count, std::size(contents));
    expect_readable(findings);
    EXPECT_THROW(parser.initialize(nullptr), RuntimeException);
  }
  ~Allocations() override { xercesc::XMLPlatformUtils::fgMemoryManager = usual_memory_; }

 private:
  xercesc::MemoryManager* usual_memory_ = xercesc::XMLPlatformUtils::fgMemoryManager;
};

TEST_F(Allocations, AreAllFreedInTheEnd) {
  long const blocks = blocks_in_use, xerces_blocks = memory_of_xerces.blocks();
  {
    Source source(document);
    SaxParser const parser(source);
    Findings findings;
    use_every_operation(parser.root(), findings);
    EXPECT_GT(blocks_in_use, blocks);
    EXPECT_GT(memory_of_xerces.blocks(), xerces_blocks);
  }
  EXPECT_EQ(blocks_in_use, blocks);
  EXPECT_EQ(memory_of_xerces.blocks(), xerces_blocks);
}

TEST_F(Allocations, AreAllFreedWhateverTheDocumentFailsOf) {
  for (std::string const& xml :
       {std::string(), std::string("<r><a b='1'></r>"), std::string("<r><a/><unknown/></r>"),
        std::string("<r><a c='1' unknown='2'/></r>"), std::string("<r></r>x"),
        std::string("<r>\xff"), document.substr(0, document.size() - 5)}) {
    long const blocks = blocks_in_use, xerces_blocks = memory_of_xerces.blocks();
    {
      Source source(xml);
      SaxParser parser;
      EXPECT_THROW(parser.initialize(&source).data(), STPException) << xml;
    }
    EXPECT_EQ(blocks_in_use, blocks) << xml;
    EXPECT_EQ(memory_of_xerces.blocks(), xerces_blocks) << xml;
  }
}

TEST_F(Allocations, AreAllFreedWhateverLimitIsCrossed) {
  for (std::string const& xml : documents_beyond_small_limits()) {
    SCOPED_TRACE(xml.substr(0, 60));
    long const blocks = blocks_in_use, xerces_blocks = memory_of_xerces.blocks();
    {
      Source source(xml);
      SaxParser parser(small_limits());
      EXPECT_THROW(parser.initialize(&source).data(), StateException);
      EXPECT_EQ(parser.error_text().find(u"ReadLimits::", 0), 0U) << parser.error_text();
    }
    EXPECT_EQ(blocks_in_use, blocks);
    EXPECT_EQ(memory_of_xerces.blocks(), xerces_blocks);
  }
}

TEST_F(Allocations, OfAChildThatWasTakenAreFreedWithItsLastHandle) {
  std::string xml = "<r>";
  for (int i = 0; i < 1000; ++i) {
    xml += "<a b='a value that is not short'><c>" + std::string(2000, 'x') + "</c><d/></a>";
  }
  Source source(xml + "</r>");
  SaxParser const parser(source);
  Elem root = parser.root();
  auto const read_child = [&] {
    Elem a = root.next_child();
    EXPECT_EQ(a.next_attr().tag(), tag::b);
    EXPECT_EQ(a.next_child().data().length(), 2000U);
    EXPECT_EQ(a.data(), u"");
  };
  read_child();
  long const blocks = blocks_in_use, xerces_blocks = memory_of_xerces.blocks();
  for (int i = 1; i < 1000; ++i) {
    read_child();
    ASSERT_EQ(blocks_in_use, blocks);
    ASSERT_EQ(memory_of_xerces.blocks(), xerces_blocks);
  }
}

TEST_F(Allocations, OfAChildThatWasDroppedWhileOpenAreFreedWithItsEndTag) {
  std::string xml = "<r>";
  for (int i = 0; i < 1000; ++i) xml += "<a><b><c/></b><b/></a>";
  Source source(xml + "</r>");
  SaxParser const parser(source);
  Elem root = parser.root();
  auto const drop_child = [&] { root.next_child().next_child().child(); };
  drop_child();
  long const blocks = blocks_in_use;
  for (int i = 1; i < 1000; ++i) {
    drop_child();
    ASSERT_EQ(blocks_in_use, blocks);
  }
}

TEST_F(Allocations, AreNotKeptForWhatIsReadOfAChildThatWasDropped) {
  for (std::string const item : {"<b c='a value that is not short'>x</b>", "text &amp; "}) {
    std::string xml = "<r><a>";
    for (int i = 0; i < 10000; ++i) xml += item;
    Source source(xml + "</a><d/></r>");
    SaxParser const parser(source);
    Elem root = parser.root();
    root.next_child();
    most_bytes_in_use = bytes_in_use;
    std::size_t const bytes = bytes_in_use;
    EXPECT_EQ(root.next_child().tag(), tag::d);
    EXPECT_LE(most_bytes_in_use, bytes + 4096) << item;
  }
}

TEST_F(Allocations, OfAnAttributeWithoutAParserAreFreedWithItsElementAndItsLastHandle) {
  Source source("<r><a b='a value that is not short'/></r>");
  SaxParser parser(source);
  Elem a = parser.root().next_child();
  SaxParser::Attribute b = a.next_attr();
  EXPECT_TRUE(parser.root().next_child().is_nil());
  parser = SaxParser();
  long const with_both = blocks_in_use;
  a = Elem();
  long const with_attribute = blocks_in_use;
  EXPECT_LT(with_attribute, with_both);
  EXPECT_EQ(b.data(), u"a value that is not short");
  b = SaxParser::Attribute();
  EXPECT_LT(blocks_in_use, with_attribute);
}

TEST_F(Allocations, OfTheParserAreFreedWithTheLastSaxParser) {
  Source source(document);
  long const xerces_blocks = memory_of_xerces.blocks();
  SaxParser parser(source);
  SaxParser copy(parser);
  Elem const root = parser.root();
  parser = SaxParser();
  EXPECT_GT(memory_of_xerces.blocks(), xerces_blocks);
  copy = parser;
  EXPECT_EQ(memory_of_xerces.blocks(), xerces_blocks);
  EXPECT_EQ(root.tag(), tag::r);
}

TEST_F(Allocations, AreNotMadeByCopyingHandlesAndParsers) {
  Source source(document);
  SaxParser const parser(source);
  Elem root = parser.root(), elem;
  SaxParser other;
  SaxParser::Attribute const a = root.next_attr();
  SaxParser::Attribute attribute;
  long const before = allocations;
  elem = root;
  other = parser;
  attribute = a;
  Elem(parser.root()).match(tag::r);
  SaxParser const copy(other);
  EXPECT_EQ(allocations, before);
}

TEST_F(Allocations, AreNotMadeForWhatIsTakenAndDroppedOneByOne) {
  constexpr int ITEMS = 2000;
  std::string xml = "<r>";
  for (int i = 0; i < ITEMS; ++i) {
    xml +=
        "<a b='a value that is not short' c='1'>a text that is not short<c>and another &amp; one"
        "<d/></c></a>";
  }
  Source source(xml + "</r>");
  SaxParser const parser(source);
  Elem root = parser.root();
  // With as many texts as it asks for that are too long for a UString without memory.
  auto const allocations_of = [&](bool with_texts) {
    long const before = allocations_by_new;
    Elem a = root.next_child();
    for (auto attr = a.next_attr(); !attr.is_nil(); attr = a.next_attr()) {
      attr.tag();
      if (with_texts) attr.data();
    }
    Elem c = a.next_child();
    c.next_child().is_empty();
    if (with_texts) c.data();
    a.next_child().is_nil();
    if (with_texts) a.data();
    return allocations_by_new - before;
  };
  for (int i = 0; i < 50; ++i) allocations_of(false);
  for (int i = 50; i < ITEMS; ++i) ASSERT_EQ(allocations_of(i % 2 == 0), i % 2 == 0 ? 3 : 0) << i;
  EXPECT_TRUE(root.next_child().is_nil());
}

template <class Call>
char const* outcome_of(Call call) {
  try {
    call();
    return "success";
  } catch (std::bad_alloc const&) {
    return "std::bad_alloc";
  } catch (STPException const&) {
    return "an exception of the library";
  } catch (...) {
    return "an exception from outside of the library";
  }
}

/// Reads the document with one allocation failing, `n` having succeeded. Returns whether it came to
/// that. `copied` is without a document.
bool fails_with_allocation(long n, SaxParser const& copied) {
  Source source(document);
  memory_of_xerces.begin();
  long const blocks = blocks_in_use;
  bool failed = false;
  {
    SaxParser parser(copied);
    Findings findings;
    before_failure = n;
    char const* const outcome =
        outcome_of([&] { use_every_operation(parser.initialize(&source), findings); });
    failed = before_failure < 0;
    before_failure = -1;
    EXPECT_STREQ(outcome, failed ? "std::bad_alloc" : "success");
    expect_readable(findings);
    if (findings.count > 0) {
      EXPECT_EQ(parser.root().tag(), tag::r);
    }
  }
  EXPECT_EQ(blocks_in_use, blocks);
  memory_of_xerces.sweep_up();
  return failed;
}

TEST_F(Allocations, ThatFailAreABadAllocAndLeaveNothingBehind) {
  long failures = 0;
  while (fails_with_allocation(failures, SaxParser())) {
    ASSERT_FALSE(HasFailure()) << "the allocation that failed was number " << failures;
    ++failures;
  }
  EXPECT_GT(failures, 100);
}

TEST_F(Allocations, ThatFailWithinLimitsAreABadAllocToo) {
  ReadLimits limits = ReadLimits::untrusted();
  limits.refuse_doctype = false;
  SaxParser const parser(limits);
  long failures = 0;
  while (fails_with_allocation(failures, parser)) {
    ASSERT_FALSE(HasFailure()) << "the allocation that failed was number " << failures;
    ++failures;
  }
  EXPECT_GT(failures, 100);
}

}  // namespace
}  // namespace tests

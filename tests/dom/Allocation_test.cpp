#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "tests/support/ReaderTest.h"
#include "tests/support/SmallLimits.h"
#include "tests/support/Walk.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/writer/XmlDoc.h"

// In this program any allocation can be made to fail. Blocks are counted, those of Xerces apart:
// when memory runs out it leaves its own objects behind on purpose.

namespace {

/// How many allocations succeed before one fails; negative when none is to fail.
long before_failure = -1;
long blocks_in_use = 0;
long blocks_of_xerces_in_use = 0;

bool fails_now() { return before_failure >= 0 && before_failure-- == 0; }

/// What Xerces asks for memory instead of its own manager, and with the same behaviour.
class MemoryOfXerces : public xercesc::MemoryManager {
 public:
  xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }
  void* allocate(XMLSize_t size) override {
    void* const block = fails_now() ? nullptr : std::malloc(size);
    if (block == nullptr) throw xercesc::OutOfMemoryException();
    ++blocks_of_xerces_in_use;
    return block;
  }
  void deallocate(void* block) override {
    if (block == nullptr) return;
    --blocks_of_xerces_in_use;
    std::free(block);
  }
};

MemoryOfXerces memory_of_xerces;

}  // namespace

// Not inlined, for the compiler is not to find malloc() and free() behind new and delete.
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* const block = fails_now() ? nullptr : std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  ++blocks_in_use;
  return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
  if (block == nullptr) return;
  --blocks_in_use;
  std::free(block);
}

void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

extern "C" char const* __lsan_default_suppressions() { return "leak:libxerces-c\n"; }

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::DomParser;
using Orn::ReadLimits;
using Orn::RuntimeException;
using Orn::UString;
using Orn::XmlDoc;
using testing::ElementsAre;
using testing::IsSubsetOf;

std::string const XML =
    "<!DOCTYPE r [<!ENTITY e 'v'>]>"
    "<r xmlns='urn:test:u' x='1'><a/>a text that is not short<![CDATA[c]]><b y='2'>&e;</b></r>";
std::string const OTHER_XML = "<r><!-- a text that is not short either --><a/></r>";

template <class Call>
char const* outcome_of(Call call) {
  try {
    call();
    return "success";
  } catch (std::bad_alloc const&) {
    return "std::bad_alloc";
  } catch (RuntimeException const& e) {
    bool const unrecognized = e.message().index() == Catalogue::UNRECOGNIZED_XERCES_EXCEPTION;
    return unrecognized ? "ZEMKA0676E" : "another message";
  } catch (...) {
    return "an exception from outside of the library";
  }
}

struct Outcomes {
  std::set<std::string> of_call;
  std::set<std::string> of_use;
};

/// Calls a new `Subject` and then uses it, again and again, each time with a later allocation
/// failing in the call, until none fails there.
template <class Subject>
Outcomes with_failing_allocations() {
  Outcomes outcomes;
  bool failed = true;
  for (long n = 0; failed; ++n) {
    char const *of_call, *of_use;
    long const blocks = blocks_in_use;
    {
      Subject subject;
      before_failure = n;
      of_call = outcome_of([&] { subject.call(); });
      failed = before_failure < 0;
      before_failure = -1;
      of_use = outcome_of([&] { subject.use(); });
    }
    EXPECT_EQ(blocks_in_use, blocks) << "the allocation that failed was number " << n;
    outcomes.of_call.insert(of_call);
    outcomes.of_use.insert(of_use);
  }
  return outcomes;
}

struct Walk {
  DomParser parser{XML};
  DomParser::Elem root = parser.root();

  void call() { use(); }
  void use() {
    EXPECT_EQ(root.data(), u"<a>a text that is not shortc<b>");
    EXPECT_EQ(DomParser::Elem(root).next_attr().data(), u"1");
    EXPECT_EQ(root.child(tag::u_b).next_attr().tag(), tag::y);
    EXPECT_TRUE(root.opt_child(tag::c).is_nil());
    EXPECT_FALSE(root.is_empty());
    EXPECT_EQ(root.next_child().tag(), tag::u_a);
    EXPECT_EQ(root.next_child().tag(), tag::u_b);
    EXPECT_TRUE(root.next_child().is_nil());
  }
};

class AllocationFailure : public testing::Test {
 protected:
  AllocationFailure() {
    xercesc::XMLPlatformUtils::fgMemoryManager = &memory_of_xerces;
    // Has what is built on first use built.
    Walk().call();
  }
  ~AllocationFailure() override { xercesc::XMLPlatformUtils::fgMemoryManager = usual_memory_; }

 private:
  xercesc::MemoryManager* usual_memory_ = xercesc::XMLPlatformUtils::fgMemoryManager;
};

struct Construction {
  std::optional<DomParser> parser;

  void call() { parser.emplace(XML); }
  void use() {
    call();
    EXPECT_EQ(parser->root().tag(), tag::u_r);
  }
};

TEST_F(AllocationFailure, InAConstructorIsAFailureThatCallersKnow) {
  Outcomes const outcomes = with_failing_allocations<Construction>();
  EXPECT_THAT(outcomes.of_call, IsSubsetOf({"success", "std::bad_alloc", "ZEMKA0676E"}));
  EXPECT_THAT(outcomes.of_use, ElementsAre("success"));
}

struct ConstructionFromWriter {
  XmlDoc doc{tag::u_r};
  std::optional<DomParser> parser;

  ConstructionFromWriter() { doc.close(); }
  void call() { parser.emplace(doc); }
  void use() {
    call();
    EXPECT_EQ(parser->root().tag(), tag::u_r);
  }
};

TEST_F(AllocationFailure, InTheConstructorFromAWriterIsAFailureThatCallersKnow) {
  Outcomes const outcomes = with_failing_allocations<ConstructionFromWriter>();
  EXPECT_THAT(outcomes.of_call, IsSubsetOf({"success", "std::bad_alloc", "ZEMKA0676E"}));
  EXPECT_THAT(outcomes.of_use, ElementsAre("success"));
}

struct Parse {
  DomParser parser{XML};

  void call() { parser.root(); }
  void use() {
    parser.set_xml_doc_text(OTHER_XML);
    EXPECT_EQ(parser.root().tag(), tag::r);
  }
};

TEST_F(AllocationFailure, InAParseIsAFailureThatCallersKnowAndTheNextTextIsParsed) {
  Outcomes const outcomes = with_failing_allocations<Parse>();
  EXPECT_THAT(outcomes.of_call, IsSubsetOf({"success", "std::bad_alloc", "ZEMKA0676E"}));
  EXPECT_THAT(outcomes.of_call, testing::Contains("ZEMKA0676E"));
  EXPECT_THAT(outcomes.of_use, ElementsAre("success"));
}

/// Asks a parser again that may have failed.
struct ParseAskedAgain {
  static std::string xml() {
    std::string xml = "<r>";
    for (int i = 0; i < 1000; ++i) xml += "<a b='1'>text</a>";
    return xml + "</r>";
  }
  /// Of each child its value, its text, and its start tag in the text of the root.
  static constexpr unsigned int WHOLE = 1000 * (1 + 4 + 3);

  DomParser parser{xml()};

  void call() { parser.root(); }
  void use() {
    DomParser::Elem const root = parser.root();
    if (root.is_nil()) {
      ++nils;
      return;
    }
    EXPECT_EQ(root.tag(), tag::r);
    unsigned int const seen = walk(root).length();
    EXPECT_LE(seen, WHOLE);
    ++(seen == WHOLE ? wholes : parts);
  }

  static inline int nils = 0, parts = 0, wholes = 0;
};

TEST_F(AllocationFailure, InAParseLeavesItsPartToThoseWhoAskAgainAndWithoutOneItIsParsedAnew) {
  Outcomes const outcomes = with_failing_allocations<ParseAskedAgain>();
  EXPECT_THAT(outcomes.of_use, ElementsAre("success"));
  EXPECT_GT(ParseAskedAgain::nils, 0);
  EXPECT_GT(ParseAskedAgain::parts, 0);
  // One is that without a failure.
  EXPECT_GT(ParseAskedAgain::wholes, 1);
}

struct ParseWithinLimits {
  static ReadLimits limits() {
    ReadLimits limits = ReadLimits::untrusted();
    limits.refuse_doctype = false;
    return limits;
  }

  DomParser parser{XML, limits()};

  void call() { parser.root(); }
  void use() {
    parser.set_xml_doc_text(OTHER_XML);
    EXPECT_EQ(parser.root().tag(), tag::r);
    parser.set_xml_doc_text("<?xml version='1.0' encoding='UTF-7'?><r/>");
    EXPECT_THROW(parser.root(), RuntimeException);
  }
};

TEST_F(AllocationFailure, InAParseWithinLimitsIsTheSameAndTheLimitsStay) {
  Outcomes const outcomes = with_failing_allocations<ParseWithinLimits>();
  EXPECT_THAT(outcomes.of_call, IsSubsetOf({"success", "std::bad_alloc", "ZEMKA0676E"}));
  EXPECT_THAT(outcomes.of_call, testing::Contains("ZEMKA0676E"));
  EXPECT_THAT(outcomes.of_use, ElementsAre("success"));
}

struct ConstructionWithLimits {
  std::optional<DomParser> parser;

  void call() { parser.emplace(OTHER_XML, ReadLimits::untrusted()); }
  void use() {
    call();
    EXPECT_EQ(parser->root().tag(), tag::r);
  }
};

TEST_F(AllocationFailure, InTheConstructorWithLimitsIsAFailureThatCallersKnow) {
  Outcomes const outcomes = with_failing_allocations<ConstructionWithLimits>();
  EXPECT_THAT(outcomes.of_call, IsSubsetOf({"success", "std::bad_alloc", "ZEMKA0676E"}));
  EXPECT_THAT(outcomes.of_use, ElementsAre("success"));
}

struct NewText {
  DomParser parser{XML};

  NewText() { parser.root(); }
  void call() { parser.set_xml_doc_text(OTHER_XML); }
  void use() {
    call();
    EXPECT_EQ(parser.root().tag(), tag::r);
  }
};

TEST_F(AllocationFailure, InTheSettingOfANewTextIsAFailureThatCallersKnow) {
  Outcomes const outcomes = with_failing_allocations<NewText>();
  EXPECT_THAT(outcomes.of_call, IsSubsetOf({"success", "std::bad_alloc", "ZEMKA0676E"}));
  EXPECT_THAT(outcomes.of_use, ElementsAre("success"));
}

using Allocations = AllocationFailure;

TEST_F(Allocations, AreAllFreedWhateverLimitIsCrossed) {
  for (std::string const& xml : documents_beyond_small_limits()) {
    SCOPED_TRACE(xml.substr(0, 60));
    long const blocks = blocks_in_use, xerces_blocks = blocks_of_xerces_in_use;
    {
      DomParser parser(xml, small_limits());
      try {
        parser.root();
        ADD_FAILURE() << "it was read";
      } catch (RuntimeException const& e) {
        EXPECT_EQ(e.message().arg(3).text().find(u"ReadLimits::", 0), 0U) << e.what();
      }
      EXPECT_GT(blocks_of_xerces_in_use, xerces_blocks);
    }
    EXPECT_EQ(blocks_in_use, blocks);
    EXPECT_EQ(blocks_of_xerces_in_use, xerces_blocks);
  }
}

TEST_F(AllocationFailure, InNavigationIsStdBadAlloc) {
  Outcomes const outcomes = with_failing_allocations<Walk>();
  EXPECT_THAT(outcomes.of_call, ElementsAre("std::bad_alloc", "success"));
  EXPECT_THAT(outcomes.of_use, ElementsAre("success"));
}

}  // namespace
}  // namespace tests

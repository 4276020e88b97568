#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/conformance/Child.h"
#include "tests/conformance/Examination.h"
#include "tests/conformance/Record.h"
#include "tests/conformance/TreeText.h"

// The runner finds nothing wrong unless something is, so what it finds things with is tested here.

namespace tests {

/// For GoogleTest.
void PrintTo(Reader const& reader, std::ostream* out) { *out << reader.name; }

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr ChildLimits AMPLE = {std::chrono::minutes(1), 1000L << 20U};

std::string const XML =
    "<!DOCTYPE r [<!ENTITY e 'v'>]>"
    "<r xmlns='urn:test:u' xmlns:p='urn:test:v' p:a='1' b='2'>\n<a>x</a>y<b c='3'/>&e;</r>";

std::u16string tree_of(void (*write)(TreeText& tree)) {
  TreeText tree;
  write(tree);
  return tree.text();
}

TEST(ATreeText, TellsTreesApart) {
  std::set<std::u16string> const texts = {
      tree_of([](TreeText& tree) {
        tree.start(u"", u"a");
        tree.end(u"");
      }),
      tree_of([](TreeText& tree) {
        tree.start(u"a", u"");
        tree.end(u"");
      }),
      tree_of([](TreeText& tree) {
        tree.start(u"", u"a");
        tree.end(u"\n");
      }),
      tree_of([](TreeText& tree) {
        tree.start(u"", u"a");
        tree.attribute(u"", u"b", u"");
        tree.end(u"");
      }),
      tree_of([](TreeText& tree) {
        tree.start(u"", u"a");
        tree.attribute(u"", u"b", u"0:\n>0:");
        tree.end(u"");
      }),
      tree_of([](TreeText& tree) {
        tree.start(u"", u"a");
        tree.start(u"", u"b");
        tree.end(u"");
        tree.end(u"");
      }),
  };
  EXPECT_EQ(texts.size(), 6U);
  std::set<std::string> digests;
  for (std::u16string const& text : texts) digests.insert(digest_of(text));
  EXPECT_EQ(digests.size(), 6U);
}

TEST(ATreeText, ShowsTheLineInWhichAnotherDiffers) {
  EXPECT_EQ(first_difference(u"one\ntwo\nthree\n", u"one\ntoo\nthree\n"), "'two' and not 'too'");
  EXPECT_EQ(first_difference(u"one\n", u"One\n"), "'one' and not 'One'");
  EXPECT_EQ(first_difference(u"one\n", u"one\ntwo\n"), "'' and not 'two'");
}

class AnExamination : public testing::TestWithParam<Reader> {
 protected:
  Examined examined_with(Reader const& reader) { return examined(reader, XML, nullptr, &twins_); }

 private:
  // Another one would use its numbers a second time.
  static DocumentNames names_;
  Twins twins_{names_};
};

DocumentNames AnExamination::names_;

TEST_P(AnExamination, FindsNothingWrongWithTheReader) {
  Examined const found = examined_with(GetParam());
  EXPECT_EQ(found.outcome, "accepted " + digest_of(found.reading.tree));
}

TEST_P(AnExamination, FindsAnotherTree) {
  Reader reader = GetParam();
  reader.read = [](std::string const& xml) {
    std::string other = xml;
    other.replace(other.find(">x<"), 3, ">z<");
    return read_by_sax_parser(other);
  };
  EXPECT_THAT(examined_with(reader).outcome, StartsWith("FAULTY: it reads '"));
}

TEST_P(AnExamination, FindsThatAReaderRefusesWhatXercesAccepts) {
  Reader reader = GetParam();
  reader.read = [](std::string const& xml) { return read_by_dom_parser(xml + "<"); };
  EXPECT_THAT(examined_with(reader).outcome,
              testing::AllOf(StartsWith("FAULTY: the reader says '"), HasSubstr("Xerces accepts")));
}

TEST_P(AnExamination, FindsThatAReaderAcceptsWhatXercesRefuses) {
  Reader reader = GetParam();
  reader.read_by_xerces = [](std::string const& xml, DocumentNames* names) {
    return read_by_xerces_sax(xml + "<", names);
  };
  EXPECT_THAT(examined_with(reader).outcome,
              StartsWith("FAULTY: the reader accepts it, Xerces says '"));
}

TEST_P(AnExamination, FindsAnotherReasonToRefuse) {
  Reader reader = GetParam();
  reader.read = [](std::string const& xml) { return read_by_dom_parser(xml + "<"); };
  reader.read_by_xerces = [](std::string const& xml, DocumentNames* names) {
    return read_by_xerces_dom(xml + "<!--", names);
  };
  EXPECT_THAT(examined_with(reader).outcome, StartsWith("FAULTY: the reader says '"));
}

TEST_P(AnExamination, FindsWhatIsLostOnTheWayBack) {
  Reader reader = GetParam();
  reader.fault_of_round_trip = [](std::string const&, Twins&) { return std::string("this"); };
  EXPECT_EQ(examined_with(reader).outcome, "FAULTY: on its way back: this");
}

INSTANTIATE_TEST_SUITE_P(OfBothReaders, AnExamination, testing::Values(DOM, SAX));

TEST(AJudgement, SaysWhatIsNotAsItMustBe) {
  EXPECT_EQ(judged("accepted 1", true), "accepted 1");
  EXPECT_EQ(judged("accepted 1", false), "wrongly accepted 1");
  EXPECT_EQ(judged("accepted 1", std::nullopt), "accepted 1");
  EXPECT_EQ(judged("refused 1:1 it", true), "wrongly refused 1:1 it");
  EXPECT_EQ(judged("refused 1:1 it", false), "refused 1:1 it");
  EXPECT_EQ(judged("FAULTY: it", true), "FAULTY: it");
}

TEST(ARecord, TellsWhatHasChanged) {
  Record before;
  before.add({"a", "valid", "accepted 1", "accepted 1"});
  before.add({"b", "valid", "accepted 2", "accepted 2"});
  before.add({"c", "valid", "accepted 3", "accepted 3"});
  Record after;
  after.add({"a", "valid", "accepted 1", "accepted 1"});
  after.add({"b", "valid", "accepted 2", "accepted 9"});
  after.add({"d", "valid", "accepted 4", "accepted 4"});
  std::ostringstream told;
  EXPECT_EQ(after.tell_changes(before, told), 3);
  EXPECT_EQ(told.str(),
            "  - b\tvalid\taccepted 2\taccepted 2\n"
            "  + b\tvalid\taccepted 2\taccepted 9\n"
            "  + d\tvalid\taccepted 4\taccepted 4\n"
            "  - c\tvalid\taccepted 3\taccepted 3\n");
  EXPECT_EQ(after.tell_changes(after, told), 0);
}

TEST(AChild, GivesWhatItsWorkGives) {
  ChildOutcome const outcome = in_child([] { return std::string(200000, 'x'); }, AMPLE);
  EXPECT_EQ(outcome.end, ChildOutcome::WELL);
  EXPECT_EQ(outcome.text, std::string(200000, 'x'));
}

TEST(AChild, ThatCrashesEndsBadly) {
  ChildOutcome const outcome = in_child(
      [] {
        std::signal(SIGSEGV, SIG_DFL);
        std::raise(SIGSEGV);
        return "";
      },
      AMPLE);
  EXPECT_EQ(outcome.end, ChildOutcome::BADLY);
}

TEST(AChild, ThatExitsEndsBadly) {
  ChildOutcome const outcome = in_child([]() -> std::string { std::_Exit(3); }, AMPLE);
  EXPECT_EQ(outcome.end, ChildOutcome::BADLY);
  EXPECT_EQ(outcome.text, "exit status 3");
}

TEST(AChild, ThatTakesTooLongIsStopped) {
  ChildLimits const limits = {std::chrono::milliseconds(50), AMPLE.bytes};
  ChildOutcome const outcome = in_child(
      []() -> std::string {
        for (unsigned int volatile i = 0;; i = i + 1) continue;
      },
      limits);
  EXPECT_EQ(outcome.end, ChildOutcome::AT_A_LIMIT);
  EXPECT_EQ(outcome.text, "time");
}

TEST(AChild, ThatTakesTooMuchMemoryIsStopped) {
  ChildLimits const limits = {AMPLE.time, 200L << 20U};
  ChildOutcome const outcome = in_child(
      []() -> std::string {
        std::vector<std::string> blocks;
        while (true) blocks.emplace_back(1U << 20U, 'x');
      },
      limits);
  EXPECT_EQ(outcome.end, ChildOutcome::AT_A_LIMIT);
  EXPECT_EQ(outcome.text, "memory");
}

/// Documents of a record whose outcome is not what is asked for.
std::vector<std::string> wrong_ones_in(std::string const& record) {
  std::vector<std::string> documents;
  std::string const path = std::string(RECORDS) + "/" + record;
  Record const recorded = Record::from_file(path);
  EXPECT_FALSE(recorded.lines().empty()) << path;
  for (Record::Line const& line : recorded.lines()) {
    if (starts_with(line.dom, WRONGLY) || starts_with(line.sax, WRONGLY)) {
      documents.push_back(line.key.substr(0, line.key.find(' ')));
    }
  }
  return documents;
}

TEST(TheDocumentation, ExplainsEachDocumentWhoseOutcomeIsNotWhatIsAskedFor) {
  std::ifstream file(CONFORMANCE_PAGE);
  std::string const page{std::istreambuf_iterator<char>(file), {}};
  for (char const* const record : {"sample-64.tsv", "sample-32.tsv", "real-64.tsv", "real-32.tsv",
                                   "attack-64.tsv", "attack-32.tsv"}) {
    for (std::string const& document : wrong_ones_in(record)) {
      EXPECT_THAT(page, HasSubstr("`" + document + "`"));
    }
  }
}

}  // namespace
}  // namespace tests

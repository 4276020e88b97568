#include "tqxml/foundation/verid.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <regex>
#include <string>
#include <vector>

namespace {

std::string line() {
  std::array<char, 128> buffer{};
  libtqxml_sprintf_verid(buffer.data());
  return buffer.data();
}

TEST(Verid, IsOneLineOfTheseParts) {
  std::regex const format(
      "libtqxml {25} [0-9]+\\.[0-9]+\\.[0-9]+\\.[0-9]+ "
      "\\((Mon|Tue|Wed|Thu|Fri|Sat|Sun) (Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) "
      "( [1-9]|[12][0-9]|3[01]) ([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9] [0-9]{4}\\)\n");
  EXPECT_TRUE(std::regex_match(line(), format)) << line();
}

TEST(Verid, BeginsWithTheNameIn33ColumnsAndABlank) {
  std::string const text = line();
  ASSERT_GT(text.size(), 34U);
  EXPECT_EQ(text.substr(0, 34), "libtqxml" + std::string(26, ' '));
  EXPECT_NE(text[34], ' ');
}

TEST(Verid, HasFourNumbersAsTheRelease) {
  std::array<unsigned int, 4> numbers{};
  int end = 0;
  std::string const text = line();
  ASSERT_EQ(std::sscanf(text.c_str() + 34, "%u.%u.%u.%u%n", &numbers[0], &numbers[1], &numbers[2],
                        &numbers[3], &end),
            4);
  EXPECT_EQ(text.substr(34 + static_cast<std::size_t>(end), 2), " (");
}

TEST(Verid, HasTheBuildTimeAsAsctimeGivesIt) {
  std::string const text = line();
  std::size_t const open = text.find('(');
  ASSERT_NE(open, std::string::npos);
  std::string const shown = text.substr(open + 1, 24);
  EXPECT_EQ(text.substr(open + 25), ")\n");

  std::tm parsed{};
  char const* const end = strptime(shown.c_str(), "%a %b %d %H:%M:%S %Y", &parsed);
  ASSERT_NE(end, nullptr) << shown;
  EXPECT_STREQ(end, "");
  // Gives the weekday that the date has.
  std::time_t const time = timegm(&parsed);
  std::tm fields{};
  gmtime_r(&time, &fields);
  std::array<char, 26> expected{};
  asctime_r(&fields, expected.data());
  EXPECT_EQ(shown + "\n", expected.data());
}

TEST(SprintfVerid, ReturnsTheNumberOfCharactersAndWritesNoMoreThanAZeroBehindThem) {
  std::vector<char> buffer(128, '~');
  int const count = libtqxml_sprintf_verid(buffer.data());
  ASSERT_GT(count, 0);
  ASSERT_LT(count, 128);
  auto const end = buffer.begin() + count;
  EXPECT_EQ(std::count(buffer.begin(), end, '\0'), 0);
  EXPECT_EQ(*end, '\0');
  EXPECT_EQ(std::count(end + 1, buffer.end(), '~'), 128 - count - 1);
}

TEST(SprintfVerid, WritesTheSameEachTime) { EXPECT_EQ(line(), line()); }

/// What is written to the standard output while this object lives.
class CapturedOutput {
 public:
  CapturedOutput() {
    std::fflush(stdout);
    dup2(fileno(file_), STDOUT_FILENO);
  }
  ~CapturedOutput() { restore(); }
  CapturedOutput(CapturedOutput const&) = delete;
  CapturedOutput& operator=(CapturedOutput const&) = delete;

  std::string text() {
    restore();
    std::rewind(file_);
    std::string bytes(1000, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file_));
    return bytes;
  }

 private:
  void restore() {
    if (saved_ == -1) return;
    std::fflush(stdout);
    dup2(saved_, STDOUT_FILENO);
    close(saved_);
    saved_ = -1;
  }

  std::FILE* file_ = std::tmpfile();
  int saved_ = dup(STDOUT_FILENO);
};

TEST(PrintVerid, WritesTheLineToTheStandardOutputAndReturnsTheSameCount) {
  CapturedOutput output;
  int const count = libtqxml_print_verid();
  std::string const text = output.text();
  EXPECT_EQ(text, line());
  EXPECT_EQ(count, static_cast<int>(text.size()));
}

TEST(PrintVerid, KeepsItsPlaceAmongWhatTheProgramPrints) {
  CapturedOutput output;
  std::printf("before\n");
  libtqxml_print_verid();
  std::printf("behind\n");
  EXPECT_EQ(output.text(), "before\n" + line() + "behind\n");
}

// Ends with 0 when the function says that it has failed.
[[noreturn]] void print_to_a_full_device() {
  if (std::freopen("/dev/full", "w", stdout) == nullptr) _exit(2);
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  _exit(libtqxml_print_verid() < 0 ? 0 : 1);
}

TEST(PrintVeridDeathTest, ReturnsANegativeNumberWhenThatFails) {
  EXPECT_EXIT(print_to_a_full_device(), testing::ExitedWithCode(0), "");
}

TEST(Verid, IsExportedByItsPlainNames) {
  EXPECT_EQ(dlsym(RTLD_DEFAULT, "libtqxml_sprintf_verid"),
            reinterpret_cast<void*>(&libtqxml_sprintf_verid));
  EXPECT_EQ(dlsym(RTLD_DEFAULT, "libtqxml_print_verid"),
            reinterpret_cast<void*>(&libtqxml_print_verid));
}

TEST(Verid, IsCallableThroughItsPlainName) {
  void* const symbol = dlsym(RTLD_DEFAULT, "libtqxml_sprintf_verid");
  ASSERT_NE(symbol, nullptr);
  int (*sprintf_verid)(char*) = nullptr;
  std::memcpy(&sprintf_verid, &symbol, sizeof symbol);
  std::array<char, 128> buffer{};
  EXPECT_EQ(sprintf_verid(buffer.data()), static_cast<int>(line().size()));
  EXPECT_EQ(buffer.data(), line());
}

}  // namespace

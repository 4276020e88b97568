#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "tqutil/UString.h"
#include "tqutil/UtilExceptions.h"
#include "tqutil/XmlTag.h"
#include "tqxml/foundation/Catalogue.h"

namespace {

using Orn::Catalogue;
using Orn::TagException;
using Orn::XmlTag;

// The cells of a row of a table: | one | two |
std::vector<std::string> cells_of(std::string const& line) {
  std::vector<std::string> cells;
  std::string const bar = " | ";
  std::size_t begin = 2;
  for (std::size_t end = 0; begin < line.size(); begin = end + bar.size()) {
    end = std::max(begin, std::min(line.find(bar, begin), line.size() - 2));
    cells.push_back(line.substr(begin, end - begin));
  }
  return cells;
}

bool begins_with(std::string const& line, std::string const& text) {
  return line.compare(0, text.size(), text) == 0;
}

// One message: its cells by the heads of their columns.
using Row = std::map<std::string, std::string>;

Row row_of(std::vector<std::string> const& heads, std::vector<std::string> const& cells) {
  Row row;
  for (std::size_t i = 0; i < std::min(heads.size(), cells.size()); ++i) row[heads[i]] = cells[i];
  return row;
}

// The messages in the tables of docs/messages.md by their identifiers. Rows begin with one, in
// backquotes, and the head of a table with the word.
std::map<std::string, Row> documented_messages() {
  std::map<std::string, Row> messages;
  std::vector<std::string> heads;
  std::ifstream file(std::string(TQ_DOCS_DIR) + "/messages.md");
  for (std::string line; std::getline(file, line);) {
    if (begins_with(line, "| Identifier |")) heads = cells_of(line);
    if (!begins_with(line, "| `")) continue;
    Row row = row_of(heads, cells_of(line));
    std::string const quoted = row["Identifier"];
    messages[quoted.substr(1, quoted.size() - 2)] = row;
  }
  return messages;
}

// The lines NAME = INDEX, of the enumeration in the header of the catalogue.
std::map<int, std::string> constants_of_the_catalogue() {
  std::map<int, std::string> constants;
  std::ifstream file(std::string(TQ_DOCS_DIR) + "/../tqxml/foundation/Catalogue.h");
  std::regex const constant(R"( *([A-Z_0-9]+) = (\d+),.*)");
  std::smatch parts;
  for (std::string line; std::getline(file, line);) {
    if (std::regex_match(line, parts, constant)) constants[std::stoi(parts[2])] = parts[1];
  }
  return constants;
}

// Each message of a catalogue: its identifier, one blank and the text.
void expect_documented(char const** catalogue, int count) {
  auto const documented = documented_messages();
  for (int i = 1; i <= count; ++i) {
    std::string const message = catalogue[i];
    std::size_t const blank = message.find(' ');
    auto const place = documented.find(message.substr(0, blank));
    ASSERT_NE(place, documented.end()) << message;
    EXPECT_EQ(place->second.at("Text"), message.substr(blank + 1));
  }
}

TEST(MessagesPage, HoldsEveryMessageOfTheXmlLibraryAsItIs) {
  expect_documented(Catalogue::table(), Catalogue::COUNT);
}

TEST(MessagesPage, HoldsEveryMessageOfTheUtilityLibraryAsItIs) {
  try {
    XmlTag::lookup(XmlTag::Id{-1});
    FAIL() << "the number is registered";
  } catch (TagException const& e) {
    ASSERT_STREQ(e.message().catalogue()[0], "tqutil 4");
    expect_documented(e.message().catalogue(), 4);
  }
}

TEST(MessagesPage, NamesTheConstantOfEveryMessageOfTheXmlLibrary) {
  auto const documented = documented_messages();
  auto const constants = constants_of_the_catalogue();
  ASSERT_EQ(constants.size(), static_cast<std::size_t>(Catalogue::COUNT));
  for (auto const& [index, constant] : constants) {
    std::string const message = Catalogue::table()[index];
    Row const& row = documented.at(message.substr(0, message.find(' ')));
    EXPECT_EQ(row.at("Constant"), '`' + constant + '`') << message;
  }
}

TEST(MessagesPage, SaysOfEveryMessageWhenItIsRaisedAndWhatToDo) {
  for (auto const& [id, row] : documented_messages()) {
    for (char const* head : {"When", "What to do"}) {
      auto const cell = row.find(head);
      ASSERT_NE(cell, row.end()) << id << " has no column " << head;
      EXPECT_FALSE(cell->second.empty()) << id << " says nothing about: " << head;
    }
  }
}

TEST(MessagesPage, HoldsNothingElse) {
  EXPECT_EQ(documented_messages().size(), static_cast<std::size_t>(Catalogue::COUNT) + 4);
}

}  // namespace

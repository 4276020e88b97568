#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>

#include "tqutil/UString.h"
#include "tqutil/UtilExceptions.h"
#include "tqutil/XmlTag.h"
#include "tqxml/foundation/Catalogue.h"

namespace {

using Orn::Catalogue;
using Orn::TagException;
using Orn::XmlTag;

// The messages in the table of docs/messages.md by their identifiers: rows that begin with
// | `IDENTIFIER` | text |
std::map<std::string, std::string> documented_messages() {
  std::map<std::string, std::string> messages;
  std::ifstream file(std::string(TQ_DOCS_DIR) + "/messages.md");
  std::string const begin = "| `";
  for (std::string line; std::getline(file, line);) {
    if (line.compare(0, begin.size(), begin) != 0) continue;
    std::size_t const id_end = line.find('`', begin.size());
    std::size_t const text_begin = line.find("| ", id_end) + 2;
    std::string const id = line.substr(begin.size(), id_end - begin.size());
    messages[id] = line.substr(text_begin, line.find(" |", text_begin) - text_begin);
  }
  return messages;
}

// Each message of a catalogue: its identifier, one blank and the text.
void expect_documented(char const** catalogue, int count) {
  auto const documented = documented_messages();
  for (int i = 1; i <= count; ++i) {
    std::string const message = catalogue[i];
    std::size_t const blank = message.find(' ');
    auto const place = documented.find(message.substr(0, blank));
    ASSERT_NE(place, documented.end()) << message;
    EXPECT_EQ(place->second, message.substr(blank + 1));
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

TEST(MessagesPage, HoldsNothingElse) {
  EXPECT_EQ(documented_messages().size(), static_cast<std::size_t>(Catalogue::COUNT) + 4);
}

}  // namespace

#include "tests/limits/HostileDocuments.h"

#include <fstream>
#include <functional>
#include <iterator>
#include <utility>

namespace tests {

/// Different ones of equal length, which tables of names without a salt put into one place: 38
/// times a character and the next one is the same for these.
std::vector<std::string> colliding_names(std::size_t pieces) {
  std::vector<std::string> names{""};
  for (std::size_t i = 0; i < pieces; ++i) {
    std::vector<std::string> longer;
    for (std::string const& name : names) {
      for (char const* piece : {"Az", "BT", "C."}) longer.push_back(name + piece);
    }
    names = std::move(longer);
  }
  return names;
}

namespace {

constexpr int A_LOT = 5000000;

std::string repeated(int times, std::function<std::string(int)> const& part) {
  std::string all;
  for (int i = 0; i < times; ++i) all += part(i);
  return all;
}

std::string repeated(int times, std::string const& part) {
  return repeated(times, [&part](int) { return part; });
}

std::string number(int i) { return std::to_string(i); }

/// Nine levels of entities, each of ten of the level below.
std::string bomb(std::string const& core, std::string const& root) {
  std::string const levels = repeated(9, [](int i) {
    return "<!ENTITY e" + number(i + 1) + " '" + repeated(10, "&e" + number(i) + ";") + "'>";
  });
  return "<!DOCTYPE r [<!ENTITY e0 '" + core + "'>" + levels + "]>" + root;
}

std::string for_each_name(std::string const& before, std::string const& behind) {
  std::string all;
  for (std::string const& name : colliding_names(10)) all += before + name + behind;
  return all;
}

std::string endless(std::string const& begin) { return begin + std::string(A_LOT, 'x'); }

}  // namespace

std::vector<Document> hostile_documents() {
  std::string const long_entity = "<!DOCTYPE r [<!ENTITY e '" + std::string(100000, 'x') + "'>]>";
  return {
      {"entities of entities", bomb("lol", "<r>&e9;</r>")},
      {"entities of entities, in an attribute", bomb("lol", "<r a='&e9;'/>")},
      {"entities of nothing", bomb("", "<r>&e9;</r>")},
      {"a long entity many times", long_entity + "<r>" + repeated(20000, "&e;") + "</r>"},
      {"a long entity many times, in an attribute",
       long_entity + "<r a='" + repeated(20000, "&e;") + "'/>"},
      {"a long default many times", "<!DOCTYPE r [<!ATTLIST a b CDATA '" +
                                        std::string(100000, 'x') + "'>]><r>" +
                                        repeated(20000, "<a/>") + "</r>"},
      {"an external entity", "<!DOCTYPE r [<!ENTITY e SYSTEM '/etc/passwd'>]><r>&e;</r>"},
      {"an external entity, over the network",
       "<!DOCTYPE r [<!ENTITY e SYSTEM 'http://127.0.0.1:9/'>]><r>&e;</r>"},
      {"an external parameter entity",
       "<!DOCTYPE r [<!ENTITY % p SYSTEM 'http://127.0.0.1:9/'>%p;]><r/>"},
      {"an external DTD", "<!DOCTYPE r SYSTEM 'http://127.0.0.1:9/'><r/>"},
      {"many declarations",
       "<!DOCTYPE r [" +
           repeated(100000, [](int i) { return "<!ENTITY e" + number(i) + " 'x'>"; }) + "]><r/>"},
      {"many levels", repeated(100000, "<a>") + repeated(100000, "</a>")},
      {"many levels that do not end", repeated(1000000, "<a>")},
      {"many attributes",
       "<r" + repeated(500000, [](int i) { return " a" + number(i) + "=''"; }) + "/>"},
      {"many namespaces on an element",
       "<r" + repeated(200000, [](int i) { return " xmlns:p" + number(i) + "='urn:x'"; }) + "/>"},
      {"many namespaces on many levels",
       repeated(
           1000,
           "<a" + repeated(100, [](int i) { return " xmlns:p" + number(i) + "='urn:x'"; }) + ">") +
           repeated(1000, "</a>")},
      {"many names",
       "<r>" + repeated(500000, [](int i) { return "<n" + number(i) + "/>"; }) + "</r>"},
      {"many names in one place", "<r>" + for_each_name("<", "/>") + "</r>"},
      {"many namespaces in one place", "<r>" + for_each_name("<a xmlns='", "'/>") + "</r>"},
      {"many attributes in one place", "<r " + for_each_name("", "='' ") + "/>"},
      {"a name without an end", endless("<")},
      {"an attribute's name without an end", endless("<r ")},
      {"an attribute without an end", endless("<r a='")},
      {"a comment without an end", endless("<r><!--")},
      {"an instruction without an end", endless("<r><?x ")},
      {"a CDATA section without an end", endless("<r><![CDATA[")},
      {"a DOCTYPE without an end", endless("<!DOCTYPE r PUBLIC '")},
      {"an unusual encoding", "<?xml version='1.0' encoding='UTF-7'?><r>+ADw-a/+AD4-</r>"},
  };
}

std::vector<Document> hostile_dtds() {
  std::string const blanks(100000, ' ');
  std::string const begin = "<!DOCTYPE r [";
  return {
      {"entities of entities", bomb("lol", "<r>&e9;</r>")},
      {"entities of entities, in an attribute", bomb("lol", "<r a='&e9;'/>")},
      {"entities of nothing", bomb("", "<r>&e9;</r>")},
      {"an entity with a tag of blanks",
       begin + "<!ENTITY e '<a" + blanks + "/>'>]><r>" + repeated(20000, "&e;") + "</r>"},
      {"a parameter entity of blanks",
       begin + "<!ENTITY % p '" + blanks + "'>" + repeated(20000, "%p;") + "]><r/>"},
      {"values of blanks", begin + "<!ENTITY e '" + blanks +
                               "'><!ATTLIST a b NMTOKENS #IMPLIED>]><r>" +
                               repeated(2000, "<a b='" + repeated(10, "&e;") + "'/>") + "</r>"},
      {"a chain of entities", begin + "<!ENTITY e0 'x'>" +
                                  repeated(12000,
                                           [](int i) {
                                             return "<!ENTITY e" + number(i + 1) + " 'x&e" +
                                                    number(i) + ";'>";
                                           }) +
                                  "]><r>&e12000;</r>"},
      {"many defaults on many elements",
       begin + "<!ATTLIST a" +
           repeated(1000, [](int i) { return " a" + number(i) + " CDATA ''"; }) + ">]><r>" +
           repeated(1000, "<a/>") + "</r>"},
      {"an entity with many levels", begin + "<!ENTITY e '" + repeated(100000, "<a>") +
                                         repeated(100000, "</a>") + "'>]><r>&e;</r>"},
  };
}

std::vector<Document> collected_documents(std::filesystem::path const& collection,
                                          std::string const& kind) {
  std::vector<Document> documents;
  std::ifstream table(collection / "expected.tsv");
  std::string name, its_kind, rest;
  while (std::getline(table, name, '\t') && std::getline(table, its_kind, '\t') &&
         std::getline(table, rest)) {
    if (its_kind != kind) continue;
    std::ifstream file(collection / "docs" / name, std::ios::binary);
    documents.push_back({name, {std::istreambuf_iterator<char>(file), {}}});
  }
  return documents;
}

}  // namespace tests

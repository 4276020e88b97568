#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "tests/conformance/Collections.h"
#include "tests/conformance/Examination.h"
#include "tests/conformance/Surroundings.h"

// conformance [--renew] CORPUS RECORDS [COLLECTION]
// Has both readers read the documents of the collections (all by default) in the folder CORPUS,
// prints how far they do what the parser under them does, and compares what they did with the
// records in the folder RECORDS; with --renew writes those. Ends with 77 when nothing is there.

namespace tests {
namespace {

namespace fs = std::filesystem;

constexpr int SKIPPED = 77;

using Outcome = std::string Record::Line::*;

struct Figures {
  int documents = 0, faulty = 0, accepted = 0, refused = 0, stopped = 0;
  int wrongly_accepted = 0, wrongly_refused = 0;
};

Figures figures_of(Record const& record, Outcome reader) {
  Figures figures;
  std::map<std::string, int*> const of_outcomes = {
      {FAULTY, &figures.faulty},
      {ACCEPTED, &figures.accepted},
      {REFUSED, &figures.refused},
      {"stopped", &figures.stopped},
      {WRONGLY + std::string(ACCEPTED), &figures.wrongly_accepted},
      {WRONGLY + std::string(REFUSED), &figures.wrongly_refused}};
  for (Record::Line const& line : record.lines()) {
    ++figures.documents;
    for (auto const& [start, number] : of_outcomes) {
      if (starts_with(line.*reader, start)) ++*number;
    }
  }
  return figures;
}

void print(char const* name, Figures const& f) {
  std::cout << name << "agrees with Xerces on " << f.documents - f.faulty - f.stopped << " of "
            << f.documents - f.stopped << ": " << f.accepted + f.wrongly_accepted << " accepted";
  if (f.wrongly_accepted != 0) std::cout << " (" << f.wrongly_accepted << " wrongly)";
  std::cout << ", " << f.refused + f.wrongly_refused << " refused";
  if (f.wrongly_refused != 0) std::cout << " (" << f.wrongly_refused << " wrongly)";
  if (f.stopped != 0) std::cout << "; " << f.stopped << " more stopped at a limit";
  std::cout << '\n';
}

/// Prints what is wrong with any line. Returns how many there are.
int faults_in(Record const& record) {
  int faults = 0;
  for (Record::Line const& line : record.lines()) {
    if (!starts_with(line.dom, FAULTY) && !starts_with(line.sax, FAULTY)) continue;
    ++faults;
    std::cout << "  ! " << line << '\n';
  }
  return faults;
}

using Read = Record (*)(fs::path const&, Record const&);

struct Collection {
  char const* name;
  char const* folder;
  Read read;
};

/// Names of the last stay in the registry.
constexpr Collection COLLECTIONS[] = {
    {"real", "real", read_real_documents},
    {"attack", "attack", read_attacks},
    {"sample", "xmlconf-sample", read_sample},
};

int compare(Record const& record, Record const& recorded, fs::path const& file) {
  int const changes = record.tell_changes(recorded, std::cout);
  if (changes == 0) {
    std::cout << "  all as recorded\n";
    return EXIT_SUCCESS;
  }
  std::cout << "  " << changes << " lines are not as recorded in " << file.string()
            << "; where they are right, tools/conformance --renew records them\n";
  return EXIT_FAILURE;
}

int run(Collection const& collection, fs::path const& corpus, fs::path const& records, bool renew) {
  std::cout << collection.name << '\n';
  fs::path const folder = corpus / collection.folder;
  if (!fs::exists(folder)) {
    std::cout << "  skipped: there is no " << folder.string() << '\n';
    return SKIPPED;
  }
  std::string const bits = std::to_string(8 * sizeof(void*));
  fs::path const file = records / (collection.name + ("-" + bits + ".tsv"));
  Record const recorded = Record::from_file(file.string());
  Record const record = collection.read(folder, recorded);
  print("  DomParser  ", figures_of(record, &Record::Line::dom));
  print("  SaxParser  ", figures_of(record, &Record::Line::sax));
  if (faults_in(record) != 0) return EXIT_FAILURE;
  if (!renew) return compare(record, recorded, file);
  record.to_file(file.string());
  std::cout << "  recorded\n";
  return EXIT_SUCCESS;
}

int main_of(std::vector<std::string> arguments) {
  bool const renew = !arguments.empty() && arguments.front() == "--renew";
  if (renew) arguments.erase(arguments.begin());
  if (arguments.size() != 2 && arguments.size() != 3) {
    std::cerr << "conformance [--renew] CORPUS RECORDS [COLLECTION]\n";
    return EXIT_FAILURE;
  }
  fs::path const corpus = fs::absolute(arguments[0]);
  fs::path const records = fs::absolute(arguments[1]);
  leave_the_network();
  int status = SKIPPED;
  for (Collection const& collection : COLLECTIONS) {
    if (arguments.size() == 3 && arguments[2] != collection.name) continue;
    int const outcome = run(collection, corpus, records, renew);
    if (outcome != SKIPPED && status != EXIT_FAILURE) status = outcome;
  }
  return status;
}

}  // namespace
}  // namespace tests

int main(int argc, char** argv) {
  try {
    return tests::main_of({argv + 1, argv + argc});
  } catch (std::exception const& e) {
    std::cerr << e.what() << '\n';
    return EXIT_FAILURE;
  }
}

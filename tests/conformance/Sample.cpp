#include <string>

#include "tests/conformance/CatchAll.h"
#include "tests/conformance/Collections.h"
#include "tests/conformance/Examination.h"
#include "tests/conformance/Files.h"

namespace tests {
namespace {

namespace fs = std::filesystem;

struct Case {
  std::string path, type, entities, ns, edition, id;
};

Case case_of(std::vector<std::string> const& row) {
  return {row[0], row[1], row[2], row[3], row[6], row[7]};
}

/// What the recommendations ask of a reader that processes namespaces and does not validate, and
/// that reads all entities. It takes the names of the fifth edition of XML 1.0, which the earlier
/// ones did not allow, so that their tests say nothing about it.
std::optional<bool> must_be_accepted_by_dom(Case const& c) {
  bool const is_of_earlier_editions = c.type == "not-wf" && c.edition == "1 2 3 4";
  if (c.type == "error" || is_of_earlier_editions) return std::nullopt;
  return c.type != "not-wf" && c.ns == "yes";
}

/// And of one that does not read the external subset, where what is malformed may stand.
std::optional<bool> must_be_accepted_by_sax(Case const& c) {
  bool const may_be_outside = c.entities == "parameter" || c.entities == "both";
  if (c.type == "not-wf" && may_be_outside) return std::nullopt;
  return must_be_accepted_by_dom(c);
}

}  // namespace

Record read_sample(fs::path const& folder, Record const& /*recorded*/) {
  enter_catch_all();
  DocumentNames names;
  Twins twins(names);
  fs::path const root = fs::canonical(folder / "xmlconf");
  Record record;
  for (std::vector<std::string> const& row : table_in(folder / "index.tsv", 8)) {
    Case const c = case_of(row);
    fs::path const path = root / c.path;
    fs::current_path(path.parent_path());
    std::string const xml = bytes_of(path);
    auto const outcome_of = [&](Reader const& reader, std::optional<bool> must_be_accepted) {
      std::string const outcome = examined(reader, xml, &names, &twins).outcome;
      return judged(without_place(outcome, root.string() + "/"), must_be_accepted);
    };
    record.add({c.path + " " + c.id, c.type, outcome_of(DOM, must_be_accepted_by_dom(c)),
                outcome_of(SAX, must_be_accepted_by_sax(c))});
  }
  return record;
}

}  // namespace tests

#include "tests/conformance/Examination.h"

#include "tests/conformance/TreeText.h"

namespace tests {
namespace {

std::string disagreement(Reading const& reader, Reading const& xerces) {
  if (reader.complaint != xerces.complaint) {
    auto const what = [](Reading const& reading) {
      return reading.accepted() ? "accepts it" : "says '" + reading.complaint + "'";
    };
    return "the reader " + what(reader) + ", Xerces " + what(xerces);
  }
  if (reader.tree != xerces.tree) return "it reads " + first_difference(reader.tree, xerces.tree);
  return "";
}

std::string faulty(std::string const& fault) { return FAULTY + (": " + fault); }

}  // namespace

Examined examined(Reader const& reader, std::string const& xml, DocumentNames* names,
                  Twins* round_trip_with) {
  Reading const xerces = reader.read_by_xerces(xml, names);
  Reading const reading = reader.read(xml);
  std::string const difference = disagreement(reading, xerces);
  if (!difference.empty()) return {faulty(difference), reading};
  if (!reading.accepted()) return {REFUSED + (" " + reading.complaint), reading};
  if (round_trip_with != nullptr) {
    std::string const fault = reader.fault_of_round_trip(xml, *round_trip_with);
    if (!fault.empty()) return {faulty("on its way back: " + fault), reading};
  }
  return {ACCEPTED + (" " + digest_of(reading.tree)), reading};
}

bool starts_with(std::string const& text, std::string const& start) {
  return text.compare(0, start.size(), start) == 0;
}

std::string judged(std::string const& outcome, std::optional<bool> must_be_accepted) {
  bool const accepted = starts_with(outcome, ACCEPTED);
  bool const refused = starts_with(outcome, REFUSED);
  bool const wrong = (accepted || refused) && accepted != must_be_accepted.value_or(accepted);
  return wrong ? WRONGLY + outcome : outcome;
}

std::string without_place(std::string text, std::string const& place) {
  for (std::size_t at = text.find(place); at != std::string::npos; at = text.find(place)) {
    text.erase(at, place.size());
  }
  return text;
}

}  // namespace tests

#ifndef TESTS_CONFORMANCE_EXAMINATION_H
#define TESTS_CONFORMANCE_EXAMINATION_H

#include <optional>
#include <string>

#include "tests/conformance/Reading.h"
#include "tests/conformance/RoundTrip.h"

namespace tests {

/// One reader of the library, the same of the parser under it, and its round trip.
struct Reader {
  char const* name;
  Reading (*read)(std::string const& xml);
  Reading (*read_by_xerces)(std::string const& xml, DocumentNames* names);
  std::string (*fault_of_round_trip)(std::string const& xml, Twins& twins);
};

constexpr Reader DOM = {"DomParser", read_by_dom_parser, read_by_xerces_dom,
                        fault_of_dom_round_trip};
constexpr Reader SAX = {"SaxParser", read_by_sax_parser, read_by_xerces_sax,
                        fault_of_sax_round_trip};

struct Examined {
  /// As it is recorded: "accepted" with the digest of the tree, "refused" with the reason, or how
  /// the reader is FAULTY.
  std::string outcome;
  Reading reading;
};

/// What a reader did with a document.
Examined examined(Reader const& reader, std::string const& xml, DocumentNames* names,
                  Twins* round_trip_with);

constexpr char ACCEPTED[] = "accepted";
constexpr char REFUSED[] = "refused";
/// What stands in front of one of these that is not as it should be.
constexpr char WRONGLY[] = "wrongly ";
/// A reader that does something else than the parser under it, or loses something on the way back.
constexpr char FAULTY[] = "FAULTY";

bool starts_with(std::string const& text, std::string const& start);

/// The outcome with a word in front where it is not what is asked for, if anything is.
std::string judged(std::string const& outcome, std::optional<bool> must_be_accepted);

/// Without what stands for the place of the files in this file system.
std::string without_place(std::string text, std::string const& place);

}  // namespace tests

#endif

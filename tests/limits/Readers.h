#ifndef TESTS_LIMITS_READERS_H
#define TESTS_LIMITS_READERS_H

#include <istream>
#include <optional>
#include <streambuf>
#include <string>
#include <utility>

#include "tests/support/Walk.h"
#include "tqutil/STPException.h"
#include "tqutil/Vocabulary.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/ReadLimits.h"
#include "tqxml/sax/SaxParser.h"

namespace tests {

// Hostile documents have any names.
inline Orn::VocabularyEntry const any_names[] = {
    {Orn::VocabularyEntry::NAMESPACE, 9001, "ns_any", 0, u"urn:test:any"},
    {Orn::VocabularyEntry::CATCH_ALL, 1130, "any", 9001, u"any"},
};
inline Orn::Vocabulary const any_vocabulary("any", any_names);

/// A reader under its name, and how it reads a document and gives all of its texts and values.
struct Reader {
  char const* name;
  Orn::UString (*read)(std::string&& text, Orn::ReadLimits const& limits);
};

inline Orn::UString read_by_dom(std::string&& text, Orn::ReadLimits const& limits) {
  Orn::DomParser parser(std::move(text), limits);
  return walk(parser.root());
}

/// A stream on the bytes themselves: a string stream would have a copy.
class BytesOf : public std::istream {
 public:
  explicit BytesOf(std::string& text) : std::istream(nullptr), buffer_(text) { rdbuf(&buffer_); }

 private:
  struct Buffer : std::streambuf {
    explicit Buffer(std::string& text) {
      setg(text.data(), text.data(), text.data() + text.size());
    }
  };

  Buffer buffer_;
};

inline Orn::UString read_by_sax(std::string&& text, Orn::ReadLimits const& limits) {
  BytesOf in(text);
  Orn::SaxParser const parser(in, limits);
  return walk(parser.root());
}

inline constexpr Reader READERS[] = {{"DomParser", read_by_dom}, {"SaxParser", read_by_sax}};

/// What the reader raises for the document; nothing when it accepts it.
inline std::optional<std::string> complaint_of(Reader const& reader, std::string text,
                                               Orn::ReadLimits const& limits) {
  try {
    reader.read(std::move(text), limits);
    return std::nullopt;
  } catch (Orn::STPException const& e) {
    return e.what();
  }
}

inline bool is_of_a_limit(std::optional<std::string> const& complaint) {
  return complaint.has_value() && complaint->find("ReadLimits::") != std::string::npos;
}

}  // namespace tests

#endif

#ifndef FUZZ_DOCUMENTS_H
#define FUZZ_DOCUMENTS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "fuzz/Input.h"
#include "tqxml/foundation/ReadLimits.h"

namespace fuzz {

/// The inputs of the targets that read: up to the first line feed, bytes that steer what is done;
/// behind it, the document. One input serves all of these targets.
struct SteeredDocument {
  SteeredDocument(std::uint8_t const* data, std::size_t size) : steering({}) {
    Input input(data, size);
    steering = Input(input.line('\n').substr(0, MOST_STEERING));
    document = input.rest();
  }

  Input steering;
  std::string document;

 private:
  /// What steers longer than this adds nothing but time.
  static constexpr std::size_t MOST_STEERING = 200;
};

/// Limits for one document in four, most of them small.
std::optional<Orn::ReadLimits> next_limits(Input& steering);

/// Whether the bytes have `word`, as they are or in an encoding of several bytes a character.
bool mentions(std::string const& document, std::string const& word);

/// Whether the document has an external DTD, which DomParser reads.
bool has_external_subset(std::string const& document);

}  // namespace fuzz

#endif

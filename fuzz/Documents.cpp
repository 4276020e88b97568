#include "fuzz/Documents.h"

#include <algorithm>
#include <random>
#include <vector>

#include "fuzz/Markup.h"
#include "fuzz/Target.h"

namespace {

std::string with_changed_bytes(std::string const& part, std::size_t max_size) {
  std::vector<std::uint8_t> bytes(part.begin(), part.end());
  bytes.resize(std::max<std::size_t>(max_size, 1));
  std::size_t const size = LLVMFuzzerMutate(bytes.data(), part.size(), bytes.size());
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

std::string without_zeros(std::string document) {
  document.erase(std::remove(document.begin(), document.end(), '\0'), document.end());
  return document;
}

std::size_t room_for(std::string const& other, std::size_t max_size) {
  return max_size > other.size() ? max_size - other.size() : 0;
}

void set_one(Orn::ReadLimits& limits, fuzz::Input& steering) {
  std::size_t const which = steering.below(15);
  std::uint64_t const value = steering.byte();
  switch (which) {
    case 0:
      limits.refuse_doctype = value % 2 != 0;
      break;
    case 1:
      limits.refuse_external = value % 2 != 0;
      break;
    case 2:
      limits.refuse_unusual_encodings = value % 2 != 0;
      break;
    case 3:
      limits.amplification = value / 16;
      limits.amplification_floor = value % 16 * 64;
      break;
    case 4:
      limits.depth = value;
      break;
    case 5:
      limits.attributes = value / 8;
      break;
    case 6:
      limits.namespaces = value / 8;
      break;
    case 7:
      limits.bytes = value * 16;
      break;
    case 8:
      limits.markup_memory = value * 1024;
      break;
    case 9:
      limits.names = value / 8;
      break;
    case 10:
      limits.name = value / 8;
      break;
    case 11:
      limits.text = value;
      break;
    case 12:
      limits.attribute_value = value / 4;
      break;
    case 13:
      limits.entity_depth = value / 16;
      break;
    default:
      limits.amplification_floor = value * 256;
  }
}

}  // namespace

std::optional<Orn::ReadLimits> fuzz::next_limits(Input& steering) {
  if (steering.below(4) != 3) return std::nullopt;
  Orn::ReadLimits limits = steering.flag() ? Orn::ReadLimits::untrusted() : Orn::ReadLimits();
  for (std::size_t n = 1 + steering.below(3); n > 0; --n) set_one(limits, steering);
  return limits;
}

bool fuzz::mentions(std::string const& document, std::string const& word) {
  return without_zeros(document).find(word) != std::string::npos;
}

bool fuzz::has_external_subset(std::string const& document) {
  std::string const bytes = without_zeros(document);
  std::size_t const type = bytes.find("<!DOCTYPE");
  if (type == std::string::npos) return false;
  std::string const declaration = bytes.substr(type, bytes.find_first_of("[>", type) - type);
  return declaration.find("SYSTEM") != std::string::npos ||
         declaration.find("PUBLIC") != std::string::npos;
}

// The document by its markup, the document byte by byte, or what steers.
std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                    unsigned int seed) {
  std::mt19937 random(seed);
  fuzz::Input input(data, size);
  std::string steering(input.line('\n'));
  std::string document(input.rest());
  switch (random() % 8) {
    case 0:
      return LLVMFuzzerMutate(data, size, max_size);
    case 1:
      document = with_changed_bytes(document, room_for(steering, max_size));
      break;
    case 2:
    case 3:
      steering = with_changed_bytes(steering, room_for(document, max_size));
      break;
    default:
      document = fuzz::with_changed_markup(document, random);
  }
  std::string const changed = steering + "\n" + document;
  if (changed.size() > max_size) return LLVMFuzzerMutate(data, size, max_size);
  std::copy(changed.begin(), changed.end(), data);
  return changed.size();
}

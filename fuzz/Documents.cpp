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

}  // namespace

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

#ifndef FUZZ_MARKUP_H
#define FUZZ_MARKUP_H

#include <random>
#include <string>

namespace fuzz {

/// Changes a document by whole pieces of markup: an element is repeated, removed, wrapped or
/// renamed, an attribute or a piece of content put in. Random bytes hardly ever leave a document
/// well-formed; this mostly does.
std::string with_changed_markup(std::string document, std::mt19937& random);

}  // namespace fuzz

#endif

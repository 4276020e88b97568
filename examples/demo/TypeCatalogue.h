#ifndef DEMO_TYPECATALOGUE_H
#define DEMO_TYPECATALOGUE_H

#include <string>
#include <vector>

#include "FileType.h"

namespace demo {

// A catalogue of file types:
//
//   <types:file-types xmlns:types="urn:example:file-types" ...>
//     <types:file-type types:id="image/png">
//       <types:title>PNG image</types:title>
//       <types:title xml:lang="de">PNG-Bild</types:title>
//       <types:pattern>*.png</types:pattern>
//     </types:file-type>
//   </types:file-types>

/// The catalogue of `types` as an indented XML document.
std::string write_catalogue(std::vector<FileType> const& types);

/// The types in a catalogue. Raises STPException when `text` is not well-formed, or no catalogue.
std::vector<FileType> read_catalogue(std::string const& text);

}  // namespace demo

#endif

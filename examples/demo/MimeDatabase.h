#ifndef DEMO_MIMEDATABASE_H
#define DEMO_MIMEDATABASE_H

#include <string>
#include <vector>

#include "FileType.h"

namespace demo {

/// The file types in the shared MIME database whose XML is `text`. Raises STPException when that is
/// not well-formed, or something else than such a database.
std::vector<FileType> read_mime_database(std::string const& text);

}  // namespace demo

#endif

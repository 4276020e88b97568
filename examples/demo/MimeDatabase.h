#ifndef DEMO_MIMEDATABASE_H
#define DEMO_MIMEDATABASE_H

#include <functional>
#include <istream>
#include <string>
#include <vector>

#include "FileType.h"

namespace demo {

/// The file types in the shared MIME database whose XML is `text`, which is read whole. Raises
/// STPException when that is not well-formed, or something else than such a database.
std::vector<FileType> read_mime_database(std::string const& text);

/// Calls `visit` for each file type of the database as soon as the stream has delivered it. Raises
/// STPException as above; for a document that is not well-formed it raises std::runtime_error, with
/// what the parser said and where.
void stream_mime_database(std::istream& in, std::function<void(FileType const&)> const& visit);

}  // namespace demo

#endif

#ifndef TESTS_LIMITS_HOSTILEDOCUMENTS_H
#define TESTS_LIMITS_HOSTILEDOCUMENTS_H

#include <filesystem>
#include <string>
#include <vector>

namespace tests {

struct Document {
  std::string name;
  std::string text;
};

/// Documents that ask for more than they should be given, each in another way.
std::vector<Document> hostile_documents();

/// The same of documents that do so with a DTD.
std::vector<Document> hostile_dtds();

/// Different names of equal length that tables of names without a salt put into one place, three to
/// the power of `pieces`.
std::vector<std::string> colliding_names(std::size_t pieces);

/// Those of a collection beside the source tree that are in the class `kind`: dangerous, wellformed
/// or not-wellformed. None when it is not there.
std::vector<Document> collected_documents(std::filesystem::path const& collection,
                                          std::string const& kind);

}  // namespace tests

#endif

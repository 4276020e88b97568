#ifndef DEMO_SUMMARY_H
#define DEMO_SUMMARY_H

#include <iosfwd>
#include <string>
#include <vector>

#include "FileType.h"

namespace demo {

/// How much there is of everything in a list of file types.
struct Counts {
  std::size_t types = 0;
  std::size_t patterns = 0;
  std::size_t titles = 0;
};

Counts count(std::vector<FileType> const& types);
std::ostream& operator<<(std::ostream& out, Counts const& counts);

/// Says on a few lines what is remarkable about the types.
void print_summary(std::ostream& out, std::vector<FileType> const& types);

/// Shows the first lines of a text.
void print_beginning(std::ostream& out, std::string const& text);

}  // namespace demo

#endif

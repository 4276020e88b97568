#ifndef VOCABULARY_COMMANDLINE_H
#define VOCABULARY_COMMANDLINE_H

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "vocabulary/Source.h"

namespace vocabulary {

/// What is wrong with the command line.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CommandLine {
  enum Task { PRINT, UPDATE, CHECK, HELP, VERSION };
  Task task = PRINT;
  /// UPDATE, CHECK: the vocabulary file.
  std::string file;
  std::vector<std::string> sources;
  std::vector<std::string> beside;
  std::optional<std::int32_t> first;
  SourceOptions source_options;
};

CommandLine parse_command_line(std::vector<std::string> const& arguments);

extern char const help[];

}  // namespace vocabulary

#endif

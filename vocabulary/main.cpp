#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "vocabulary/Addition.h"
#include "vocabulary/Check.h"
#include "vocabulary/CommandLine.h"
#include "vocabulary/DefFile.h"
#include "vocabulary/Failure.h"
#include "vocabulary/Source.h"

namespace vocabulary {

namespace {

enum Status { WELL = 0, NOT_WELL = 1, FAILED = 2 };

void print(std::vector<Complaint> const& complaints, char const* kind = "") {
  for (Complaint const& complaint : complaints) {
    std::cerr << complaint.place.file << ':' << complaint.place.line << ": " << kind
              << complaint.text << '\n';
  }
}

NameList names_of(CommandLine const& line) {
  NameList names;
  for (std::string const& source : line.sources) read_source(source, line.source_options, names);
  return names;
}

std::vector<DefFile> files_beside(CommandLine const& line) {
  std::vector<DefFile> files;
  for (std::string const& file : line.beside) files.push_back(read_def(file));
  return files;
}

bool are_well_made(DefFile const& file, std::vector<DefFile> const& beside) {
  std::vector<Complaint> complaints = complaints_about(file, beside);
  print(complaints);
  bool well = complaints.empty();
  for (DefFile const& other : beside) {
    complaints = complaints_about(other, {});
    print(complaints);
    well = well && complaints.empty();
  }
  return well;
}

/// Behind what is there, which stays as it is also when there is no room for more.
void append(std::string const& file, std::string const& text) {
  bool const is_new = !std::filesystem::exists(file);
  std::uintmax_t const length = is_new ? 0 : std::filesystem::file_size(file);
  std::ofstream out(file, std::ios::binary | std::ios::app);
  out << text << std::flush;
  if (out) return;
  std::string const reason = std::strerror(errno);
  out.close();
  std::error_code ignored;
  if (is_new) {
    std::filesystem::remove(file, ignored);
  } else {
    std::filesystem::resize_file(file, length, ignored);
  }
  throw Failure(file + ": " + reason);
}

std::string counted(std::size_t count, char const* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

int print_new(CommandLine const& line) {
  DefFile const nothing;
  std::vector<DefFile> const beside = files_beside(line);
  if (!are_well_made(nothing, beside)) return NOT_WELL;
  NameList const names = names_of(line);
  std::string const text = addition_to(nothing, beside, names, line.first).text;
  print(hidden_attributes(names, parse_def("<standard output>", text)), "note: ");
  std::cout << text << std::flush;
  if (!std::cout) throw Failure("<standard output>: " + std::string(std::strerror(errno)));
  return WELL;
}

int update(CommandLine const& line) {
  DefFile const file =
      std::filesystem::exists(line.file) ? read_def(line.file) : parse_def(line.file, "");
  std::vector<DefFile> const beside = files_beside(line);
  if (!are_well_made(file, beside)) return NOT_WELL;
  NameList const names = names_of(line);
  Addition const addition = addition_to(file, beside, names, line.first);
  if (!addition.text.empty()) append(line.file, addition.text);
  print(hidden_attributes(names, parse_def(line.file, file.text + addition.text)), "note: ");
  std::cout << line.file << ": " << counted(addition.namespaces, "namespace") << " and "
            << counted(addition.names, "name") << " added\n";
  return WELL;
}

int check(CommandLine const& line) {
  DefFile const file = read_def(line.file);
  std::vector<DefFile> const beside = files_beside(line);
  bool well = are_well_made(file, beside);
  NameList const names = names_of(line);
  print(hidden_attributes(names, file), "note: ");
  for (NameList::Entry const& missing : missing_names(names, file, beside)) {
    std::cerr << missing.first.file << ':' << missing.first.line << ": "
              << (missing.is_attribute ? "attribute " : "element ") << to_string(missing.name)
              << (missing.name.uri.empty() ? ", without a namespace, is not in " : " is not in ")
              << file.file << '\n';
    well = false;
  }
  return well ? WELL : NOT_WELL;
}

int run(CommandLine const& line) {
  switch (line.task) {
    case CommandLine::UPDATE:
      return update(line);
    case CommandLine::CHECK:
      return check(line);
    case CommandLine::HELP:
      std::cout << help;
      return WELL;
    case CommandLine::VERSION:
      std::cout << "tq-vocabulary " TQ_VOCABULARY_VERSION "\n";
      return WELL;
    default:
      return print_new(line);
  }
}

int run(std::vector<std::string> const& arguments) {
  try {
    CommandLine const line = parse_command_line(arguments);
    xercesc::XMLPlatformUtils::Initialize();
    return run(line);
  } catch (UsageError const& e) {
    std::cerr << "tq-vocabulary: " << e.what() << " (--help says more)\n";
  } catch (Failure const& e) {
    std::cerr << e.what() << '\n';
  } catch (xercesc::XMLException const&) {
    std::cerr << "tq-vocabulary: Xerces-C++ cannot be initialised\n";
  } catch (std::exception const& e) {
    std::cerr << "tq-vocabulary: " << e.what() << '\n';
  }
  return FAILED;
}

}  // namespace

}  // namespace vocabulary

int main(int argc, char* argv[]) {
  return vocabulary::run(std::vector<std::string>(argv + 1, argv + argc));
}

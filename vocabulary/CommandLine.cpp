#include "vocabulary/CommandLine.h"

#include "vocabulary/DefLiterals.h"

namespace vocabulary {

namespace {

class Parser {
 public:
  explicit Parser(std::vector<std::string> const& arguments) : arguments_(arguments) {}

  CommandLine parse() {
    bool options_are_over = false;
    while (next_ < arguments_.size()) {
      std::string const& argument = arguments_[next_++];
      if (options_are_over || argument == "-" || argument.substr(0, 1) != "-") {
        line_.sources.push_back(argument);
      } else if (argument == "--") {
        options_are_over = true;
      } else {
        option(argument);
      }
    }
    check();
    return line_;
  }

 private:
  void option(std::string const& name) {
    if (name == "--help" || name == "-h") {
      line_.task = CommandLine::HELP;
    } else if (name == "--version") {
      line_.task = CommandLine::VERSION;
    } else if (name == "--update") {
      begin(CommandLine::UPDATE, name);
    } else if (name == "--check") {
      begin(CommandLine::CHECK, name);
    } else if (name == "--beside") {
      line_.beside.push_back(value(name));
    } else if (name == "--first") {
      line_.first = number(name);
    } else if (name == "--as-documents") {
      line_.source_options.schemas_are_documents = true;
    } else if (name == "--trusted") {
      line_.source_options.is_trusted = true;
    } else {
      throw UsageError("there is no option '" + name + "'");
    }
  }

  void begin(CommandLine::Task task, std::string const& name) {
    if (!line_.file.empty()) throw UsageError("there can be one vocabulary file only");
    line_.file = value(name);
    line_.task = task;
  }

  std::string value(std::string const& name) {
    if (next_ == arguments_.size() || arguments_[next_].empty()) {
      throw UsageError(name + " needs a value");
    }
    return arguments_[next_++];
  }

  std::int32_t number(std::string const& name) {
    std::string const text = value(name);
    auto const number = number_of(text, false);
    if (!number) throw UsageError("'" + text + "' is not a number of 32 bits");
    return *number;
  }

  void check() const {
    bool const needs_sources =
        line_.task == CommandLine::PRINT || line_.task == CommandLine::UPDATE;
    if (needs_sources && line_.sources.empty()) {
      throw UsageError("name the documents or schemas to take names from");
    }
  }

  std::vector<std::string> const& arguments_;
  std::size_t next_ = 0;
  CommandLine line_;
};

}  // namespace

CommandLine parse_command_line(std::vector<std::string> const& arguments) {
  return Parser(arguments).parse();
}

char const help[] = R"(Usage: tq-vocabulary [OPTION...] SOURCE...
       tq-vocabulary --update FILE [OPTION...] SOURCE...
       tq-vocabulary --check FILE [OPTION...] [SOURCE...]

Makes a vocabulary file, lines TQ_NS and TQ_TAG, of the names of elements and attributes in SOURCE...:
XML documents, whose names are those that they use, and XML Schemas, whose names are those that they
declare; '-' is the standard input.

The first form prints a new vocabulary file. The others are:
  --update FILE      append what FILE lacks to it, with new numbers, and leave what it has as it is;
                     make FILE when it is not there
  --check FILE       look whether FILE is well made, and has all names of SOURCE...

Options:
  --beside FILE      another vocabulary of the same program: leave out the names that it has, and
                     use none of its numbers; may be given more than once
  --first NUMBER     take new numbers from the free ones from NUMBER on, rather than those behind
                     the greatest
  --as-documents     take the names that schemas use themselves, as of any other document
  --trusted          put no limit on depth, number and length of names, entities and markup
  --help, --version  print this, or the version

Whatever a document refers to, be it a DTD, an entity or another schema, is not read.

Exit status: 0 when all went well; 1 when FILE, or one beside it, is not well made, or --check found
names that it lacks; 2 when something could not be done, such as reading a malformed document. Then
nothing is written.
)";

}  // namespace vocabulary

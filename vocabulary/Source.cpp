#include "vocabulary/Source.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <new>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "tqxml/foundation/XercesText.h"
#include "vocabulary/ByteSource.h"
#include "vocabulary/Failure.h"
#include "vocabulary/NameParser.h"

namespace vocabulary {

namespace {

// What the guard says, without the names that are for programs.
std::string complaint(Orn::LimitCrossed const& crossed) {
  std::string const text = crossed.text.to_utf8();
  std::size_t const begin = text.find(": ") + 2;
  return text.substr(begin, text.find(';') - begin) + " (--trusted allows that)";
}

// A vocabulary file is no document; who names one as a source wants something else of it.
char const* hint(std::string const& file) {
  std::size_t const dot = file.rfind('.');
  bool const is_vocabulary = dot != std::string::npos && file.substr(dot) == ".def";
  return is_vocabulary ? " (a vocabulary file is given with --beside, --check or --update)" : "";
}

[[noreturn]] void fail_to_read(std::string const& file) {
  throw Failure(file + ": " + std::strerror(errno));
}

}  // namespace

void read_source(std::istream& in, std::string const& file, SourceOptions const& options,
                 NameList& names) {
  try {
    std::make_unique<NameParser>(file, options, names)->read(in);
  } catch (ReadFailed const&) {
    fail_to_read(file);
  } catch (Failure const& malformed) {
    throw Failure(malformed.what() + std::string(hint(file)));
  } catch (Orn::LimitCrossed const& crossed) {
    throw Failure(at(file, crossed.line, crossed.column) + complaint(crossed));
  } catch (xercesc::XMLException const& e) {
    throw Failure(file + ": " + to_utf8(Orn::view(e.getMessage())));
  } catch (xercesc::SAXException const& e) {
    throw Failure(file + ": " + to_utf8(Orn::view(e.getMessage())));
  } catch (xercesc::OutOfMemoryException const&) {
    throw std::bad_alloc();
  }
}

void read_source(std::string const& file, SourceOptions const& options, NameList& names) {
  if (file == "-") {
    read_source(std::cin, "<standard input>", options, names);
    return;
  }
  std::ifstream in(file, std::ios::binary);
  if (!in) fail_to_read(file);
  read_source(in, file, options, names);
}

}  // namespace vocabulary

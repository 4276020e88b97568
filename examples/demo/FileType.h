#ifndef DEMO_FILETYPE_H
#define DEMO_FILETYPE_H

#include <vector>

#include "tqutil/UString.h"

namespace demo {

/// What a file type is called in one language. English has no code.
struct Title {
  Orn::UString language;
  Orn::UString text;
};

/// A file type, such as image/png, with the patterns of the file names that it is known by.
struct FileType {
  Orn::UString id;
  std::vector<Title> titles;
  std::vector<Orn::UString> patterns;
};

inline bool operator==(Title const& a, Title const& b) {
  return a.language == b.language && a.text == b.text;
}

inline bool operator==(FileType const& a, FileType const& b) {
  return a.id == b.id && a.titles == b.titles && a.patterns == b.patterns;
}

}  // namespace demo

#endif

#ifndef TESTS_SUPPORT_SMALLLIMITS_H
#define TESTS_SUPPORT_SMALLLIMITS_H

#include <string>
#include <vector>

#include "tqxml/foundation/ReadLimits.h"

namespace tests {

inline Orn::ReadLimits small_limits() {
  Orn::ReadLimits limits;
  limits.amplification = 1;
  limits.depth = 5;
  limits.markup_memory = 500000;
  limits.bytes = 400000;
  return limits;
}

/// Documents that go beyond those, in each place where a parser may find out.
inline std::vector<std::string> documents_beyond_small_limits() {
  std::string attributes;
  for (int i = 0; i < 5000; ++i) attributes += " a" + std::to_string(i) + "=''";
  std::string const doctype = "<!DOCTYPE r [<!ENTITY e '0123456789'><!ENTITY f '&e;&e;&e;&e;'>]>";
  std::vector<std::string> documents{
      "<r><a><a><a><a><a>",
      doctype + "<r>&f;</r>",
      doctype + "<r a='&f;'/>",
      doctype.substr(0, doctype.size() - 2) + "<!ENTITY % p ''>%p;%p;%p;]><r/>",
      "<r>" + std::string(400000, ' '),
      "<r>" + std::string(400, ' ') + "<a" + attributes,
  };
  for (char const* begin : {"<", "<r><a ", "<r><a b='", "<r><!--", "<r><?x ", "<r><![CDATA[",
                            "<!DOCTYPE r [<!ENTITY e '", "<!DOCTYPE r PUBLIC '"}) {
    documents.push_back(begin + std::string(300000, 'x'));
  }
  return documents;
}

}  // namespace tests

#endif

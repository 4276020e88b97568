#include "tqxml/foundation/verid.h"

#include <cstdio>

#include "tqxml_release.h"

namespace {

constexpr char FORMAT[] = "%-*s %s (%s)\n";
constexpr int NAME_COLUMNS = 33;
constexpr char NAME[] = "libtqxml";

}  // namespace

int libtqxml_sprintf_verid(char* dst) {
  return std::sprintf(dst, FORMAT, NAME_COLUMNS, NAME, TQXML_RELEASE, TQXML_BUILD_TIME);
}

int libtqxml_print_verid(void) {
  return std::printf(FORMAT, NAME_COLUMNS, NAME, TQXML_RELEASE, TQXML_BUILD_TIME);
}

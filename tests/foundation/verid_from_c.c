/* Compiled as C, not run: the header must be as usable from C as from C++. */
#include "tqxml/foundation/verid.h"

int print_verid_twice(void);

int print_verid_twice(void) {
  char line[128];
  int (*print)(void) = libtqxml_print_verid;
  return libtqxml_sprintf_verid(line) + print();
}

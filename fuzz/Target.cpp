#include "fuzz/Target.h"

#include <cstdlib>
#include <iostream>

void fuzz::fail(std::string const& what) {
  std::cerr << "FOUND: " << what << std::endl;
  std::abort();
}

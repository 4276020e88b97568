#ifndef DEMO_NAMES_H
#define DEMO_NAMES_H

#include "tqutil/XmlTag.h"

/// The names of the documents that the demo reads and writes.
namespace demo::names {
#include "tqutil/vocabulary/constants.h"
#include "names.def"
#include "tqutil/vocabulary/end.h"
}  // namespace demo::names

#endif

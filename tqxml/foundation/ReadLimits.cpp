#include "tqxml/foundation/ReadLimits.h"

namespace Orn {

ReadLimits ReadLimits::untrusted() {
  ReadLimits limits;
  limits.refuse_doctype = true;
  limits.refuse_external = true;
  limits.refuse_unusual_encodings = true;
  limits.amplification = 100;
  limits.amplification_floor = 8'388'608;
  limits.entity_depth = 40;
  limits.depth = 1'024;
  limits.attributes = 1'024;
  limits.namespaces = 256;
  limits.bytes = 10'000'000;
  limits.markup_memory = 8'388'608;
  limits.names = 1'200;
  limits.name = 65'536;
  limits.text = 10'000'000;
  limits.attribute_value = 500'000;
  return limits;
}

}  // namespace Orn

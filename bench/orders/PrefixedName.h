#ifndef BENCH_ORDERS_PREFIXEDNAME_H
#define BENCH_ORDERS_PREFIXEDNAME_H

#include <string>

#include "tqutil/XmlTag.h"

namespace bench {

/// The name as it stands in the documents: "N1:order".
inline std::string prefixed_name(Orn::XmlTag::Id id) {
  Orn::XmlTag const& tag = Orn::XmlTag::lookup(id);
  return "N" + std::to_string(tag.ns_id()) + ":" + tag.simple_name().to_utf8();
}

}  // namespace bench

#endif

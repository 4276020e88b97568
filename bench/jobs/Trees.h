#ifndef BENCH_JOBS_TREES_H
#define BENCH_JOBS_TREES_H

#include <string>
#include <string_view>

#include "tqxml/writer/XmlDoc.h"

namespace bench {

Orn::XmlDoc::Elem tree_from_stream(std::string_view document);
Orn::XmlDoc::Elem tree_from_dom(std::string const& document);
std::string tree_to_document(Orn::XmlDoc::Elem const& tree);

}  // namespace bench

#endif

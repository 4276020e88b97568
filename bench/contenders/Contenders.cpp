#include "bench/contenders/Contenders.h"

namespace bench {

Contenders all_contenders() {
  Contenders contenders;
  add_tqxml(contenders);
  add_by_hand(contenders);
  add_xerces(contenders);
#ifdef TQXML_BENCH_LIBXML2
  add_libxml2(contenders);
#endif
#ifdef TQXML_BENCH_EXPAT
  add_expat(contenders);
#endif
#ifdef TQXML_BENCH_PUGIXML
  add_pugixml(contenders);
#endif
#ifdef TQXML_BENCH_TINYXML2
  add_tinyxml2(contenders);
#endif
#ifdef TQXML_BENCH_RAPIDXML
  add_rapidxml(contenders);
#endif
#ifdef TQXML_BENCH_QT
  add_qt(contenders);
#endif
  return contenders;
}

}  // namespace bench

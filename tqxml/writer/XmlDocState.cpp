#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Raise.h"
#include "tqxml/writer/XmlDoc.h"

namespace Orn {

void XmlDoc::next_state() {
  if (state == DOC_CLOSED) raise<StateException>(Catalogue::ALREADY_CLOSED);
  if (state > DOC_CLOSED) raise<StateException>(Catalogue::UNRECOGNIZED_STATE);
  ++state;
}

}  // namespace Orn

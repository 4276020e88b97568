#ifndef TQXML_SAX_LIMITEDPARSERIMPL_H
#define TQXML_SAX_LIMITEDPARSERIMPL_H

#include "tqxml/foundation/GuardedParser.h"
#include "tqxml/sax/ParserImpl.h"

namespace Orn {

/// A parser that is kept to limits. It may also never be started, and only remember them.
class SaxParser::LimitedParserImpl final : private ParserGuard,
                                           public GuardedParser<SaxParser::ParserImpl> {
 public:
  LimitedParserImpl(std::istream* in, ReadLimits const& limits)
      : ParserGuard(limits), GuardedParser(*this, in, &memory, &guard) {
    connect_doctype();
  }
};

}  // namespace Orn

#endif

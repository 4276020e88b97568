#ifndef TQXML_DOM_LIMITEDPARSER_H
#define TQXML_DOM_LIMITEDPARSER_H

#include <xercesc/parsers/XercesDOMParser.hpp>

#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/GuardedParser.h"

namespace Orn {

/// A parser that is kept to limits. It parses one text in its life.
class DomParser::LimitedParser final : private ParserGuard,
                                       public GuardedParser<xercesc::XercesDOMParser> {
 public:
  explicit LimitedParser(ReadLimits const& limits)
      : ParserGuard(limits), GuardedParser(*this, nullptr, &memory, nullptr) {}

  ReadLimits const& limits() const noexcept { return guard.limits(); }
  bool is_used() const noexcept { return used_; }

  /// Parses `source`, which has `length` bytes.
  void parse_whole(xercesc::InputSource const& source, std::size_t length) {
    used_ = true;
    guard.bytes(length);
    End const end{guard};
    parse(source);
  }

 private:
  /// The scanner no longer knows where it is.
  struct End {
    LimitGuard& guard;
    ~End() { guard.end(); }
  };

  bool used_ = false;
};

}  // namespace Orn

#endif

#ifndef TQXML_DOM_TAGCACHE_H
#define TQXML_DOM_TAGCACHE_H

#include <array>
#include <cstdint>
#include <xercesc/dom/DOMNode.hpp>

#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/XercesText.h"

namespace Orn {

/// The tags of the names of one document. The document keeps each name once, at a place where it
/// stays: the names that were seen last are found by their places, the others in the registry.
class DomParser::TagCache {
 public:
  /// Raises TagException for a name that the registry does not know.
  XmlTag::Id of(xercesc::DOMNode const& node) {
    Name const name{node.getNamespaceURI(), node.getLocalName()};
    Answer& answer = answers_[name.place() % answers_.size()];
    if (answer.tag == XmlTag::NO_TAG || answer.name != name) {
      answer = {name, lookup(name.ns_uri, name.local_name).id()};
    }
    return answer.tag;
  }

 private:
  struct Name {
    XMLCh const* ns_uri = nullptr;
    XMLCh const* local_name = nullptr;

    bool operator!=(Name const& other) const noexcept {
      return local_name != other.local_name || ns_uri != other.ns_uri;
    }
    /// Names stand as close to each other as their lengths allow.
    std::uintptr_t place() const noexcept {
      auto const address = reinterpret_cast<std::uintptr_t>(local_name);
      return (address >> 3U) ^ (address >> 10U);
    }
  };
  struct Answer {
    Name name;
    XmlTag::Id tag = XmlTag::NO_TAG;
  };

  std::array<Answer, 128> answers_;
};

}  // namespace Orn

#endif

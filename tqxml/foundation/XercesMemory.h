#ifndef TQXML_FOUNDATION_XERCESMEMORY_H
#define TQXML_FOUNDATION_XERCESMEMORY_H

#include <new>
#include <xercesc/util/OutOfMemoryException.hpp>

namespace Orn {

/// Gives what `call` gives. Memory that Xerces lacks is std::bad_alloc for our callers, who know
/// nothing of its own exception.
template <class Call>
auto with_xerces_memory(Call call) {
  try {
    return call();
  } catch (xercesc::OutOfMemoryException const&) {
    throw std::bad_alloc();
  }
}

}  // namespace Orn

#endif

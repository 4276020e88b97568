#ifndef TQXML_FOUNDATION_GUARDEDMEMORY_H
#define TQXML_FOUNDATION_GUARDEDMEMORY_H

#include <cstddef>
#include <xercesc/framework/MemoryManager.hpp>

#include "tqxml/foundation/LimitGuard.h"

namespace Orn {

/// The memory of a parser that is guarded. It comes from where that of every parser comes from, and
/// what an interrupted parser has left behind is given back with this object.
class GuardedMemory : public xercesc::MemoryManager {
 public:
  explicit GuardedMemory(LimitGuard& guard) : guard_(guard) {}
  GuardedMemory(GuardedMemory const&) = delete;
  GuardedMemory& operator=(GuardedMemory const&) = delete;
  ~GuardedMemory() override;

  void* allocate(XMLSize_t size) override;
  void deallocate(void* place) override;
  /// Exceptions may outlive the parser.
  xercesc::MemoryManager* getExceptionMemoryManager() override;

 private:
  /// All blocks form a ring. The one of this object is as aligned as Xerces aligns its objects.
  struct Link {
    Link* previous;
    Link* next;
  };
  /// In front of each block, and counted with it.
  struct alignas(std::max_align_t) Block : Link {
    std::size_t size;
  };

  LimitGuard& guard_;
  Link ring_{&ring_, &ring_};
};

}  // namespace Orn

#endif

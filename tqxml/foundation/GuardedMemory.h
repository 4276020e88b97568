#ifndef TQXML_FOUNDATION_GUARDEDMEMORY_H
#define TQXML_FOUNDATION_GUARDEDMEMORY_H

#include <cstddef>
#include <xercesc/framework/MemoryManager.hpp>

#include "tqxml/foundation/LimitGuard.h"
#include "tqxml/foundation/ParserMemory.h"

namespace Orn {

/// The memory of a parser that is guarded: as that of any other, and counted.
class GuardedMemory : public xercesc::MemoryManager {
 public:
  explicit GuardedMemory(LimitGuard& guard) : guard_(guard) {}
  GuardedMemory(GuardedMemory const&) = delete;
  GuardedMemory& operator=(GuardedMemory const&) = delete;

  void* allocate(XMLSize_t size) override;
  void deallocate(void* place) override;
  /// As that of ParserMemory.
  xercesc::MemoryManager* getExceptionMemoryManager() override;

 private:
  /// In front of each block, and counted with it.
  struct alignas(std::max_align_t) Block {
    std::size_t size;
    /// Whether it is what the parser reads the document or an entity with.
    bool is_reader;
  };

  bool is_reader(XMLSize_t size) const;

  LimitGuard& guard_;
  ParserMemory memory_;
  /// Of the block that was asked for last.
  XMLSize_t previous_size_ = 0;
};

}  // namespace Orn

#endif

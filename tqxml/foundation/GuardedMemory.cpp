#include "tqxml/foundation/GuardedMemory.h"

#include <limits>
#include <new>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace Orn {

namespace {

// Xerces makes a reader for every entity that it puts in, in text, in attribute values and in the
// DTD, and tells of those in text only. An object is as large as its class, with the manager of its
// memory in front.
bool is_reader_of_an_entity(XMLSize_t size) {
  XMLSize_t const reader_size =
      sizeof(xercesc::XMLReader) +
      xercesc::XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(xercesc::MemoryManager*));
  return size == reader_size;
}

}  // namespace

GuardedMemory::~GuardedMemory() {
  while (ring_.next != &ring_) deallocate(static_cast<Block*>(ring_.next) + 1);
}

void* GuardedMemory::allocate(XMLSize_t size) {
  if (is_reader_of_an_entity(size)) guard_.entity();
  if (size > std::numeric_limits<XMLSize_t>::max() - sizeof(Block)) {
    throw xercesc::OutOfMemoryException();
  }
  XMLSize_t const whole_size = sizeof(Block) + size;
  guard_.check_memory(whole_size);
  void* const place = xercesc::XMLPlatformUtils::fgMemoryManager->allocate(whole_size);
  guard_.take_memory(whole_size);
  auto* const block = new (place) Block{{ring_.previous, &ring_}, whole_size};
  block->previous->next = block;
  ring_.previous = block;
  return block + 1;
}

void GuardedMemory::deallocate(void* place) {
  if (place == nullptr) return;
  auto* const block = static_cast<Block*>(place) - 1;
  block->previous->next = block->next;
  block->next->previous = block->previous;
  guard_.give_back_memory(block->size);
  xercesc::XMLPlatformUtils::fgMemoryManager->deallocate(block);
}

xercesc::MemoryManager* GuardedMemory::getExceptionMemoryManager() {
  return xercesc::XMLPlatformUtils::fgMemoryManager;
}

}  // namespace Orn

#include "tqxml/foundation/GuardedMemory.h"

#include <limits>
#include <new>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace Orn {

namespace {

// Xerces makes a reader for the document and for every entity that it puts in, in text, in
// attribute values and in the DTD, and tells of those in text only. An object is as large as its
// class, with the manager of its memory in front.
bool is_reader(XMLSize_t size) {
  XMLSize_t const reader_size =
      sizeof(xercesc::XMLReader) +
      xercesc::XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(xercesc::MemoryManager*));
  return size == reader_size;
}

}  // namespace

void* GuardedMemory::allocate(XMLSize_t size) {
  bool const reads = is_reader(size);
  if (reads) guard_.entity();
  if (size > std::numeric_limits<XMLSize_t>::max() - sizeof(Block)) {
    throw xercesc::OutOfMemoryException();
  }
  XMLSize_t const whole_size = sizeof(Block) + size;
  guard_.check_memory(whole_size);
  void* const place = memory_.allocate(whole_size);
  guard_.take_memory(whole_size);
  if (reads) guard_.input_opened();
  return new (place) Block{whole_size} + 1;
}

void GuardedMemory::deallocate(void* place) {
  if (place == nullptr) return;
  auto* const block = static_cast<Block*>(place) - 1;
  guard_.give_back_memory(block->size);
  if (is_reader(block->size - sizeof(Block))) guard_.input_closed();
  memory_.deallocate(block);
}

xercesc::MemoryManager* GuardedMemory::getExceptionMemoryManager() {
  return memory_.getExceptionMemoryManager();
}

}  // namespace Orn

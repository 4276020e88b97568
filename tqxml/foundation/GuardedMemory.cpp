#include "tqxml/foundation/GuardedMemory.h"

#include <limits>
#include <new>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace Orn {

namespace {

// An object of Xerces has the manager of its memory in front.
template <class Object>
XMLSize_t size_of() {
  return sizeof(Object) + xercesc::XMLPlatformUtils::alignPointerForNewBlockAllocation(
                              sizeof(xercesc::MemoryManager*));
}

}  // namespace

// Xerces makes a reader for the document and for every entity that it puts in, in text, in
// attribute values and in the DTD, and tells of those in text only. A text can be as long as a
// reader is, but a reader comes when something is opened: an external entity, or the text of one
// that the document has itself, on which there is a stream right before.
bool GuardedMemory::is_reader(XMLSize_t size) const {
  return size == size_of<xercesc::XMLReader>() &&
         guard_.opens_input(previous_size_ == size_of<xercesc::BinMemInputStream>());
}

void* GuardedMemory::allocate(XMLSize_t size) {
  bool const reads = is_reader(size);
  previous_size_ = size;
  if (reads) guard_.entity();
  if (size > std::numeric_limits<XMLSize_t>::max() - sizeof(Block)) {
    throw xercesc::OutOfMemoryException();
  }
  XMLSize_t const whole_size = sizeof(Block) + size;
  guard_.check_memory(whole_size);
  void* const place = memory_.allocate(whole_size);
  guard_.take_memory(whole_size);
  if (reads) guard_.input_opened();
  return new (place) Block{whole_size, reads} + 1;
}

void GuardedMemory::deallocate(void* place) {
  if (place == nullptr) return;
  auto* const block = static_cast<Block*>(place) - 1;
  guard_.give_back_memory(block->size);
  if (block->is_reader) guard_.input_closed();
  memory_.deallocate(block);
}

xercesc::MemoryManager* GuardedMemory::getExceptionMemoryManager() {
  return memory_.getExceptionMemoryManager();
}

}  // namespace Orn

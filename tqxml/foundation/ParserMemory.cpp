#include "tqxml/foundation/ParserMemory.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define TQXML_ADDRESSES_ARE_SANITIZED
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define TQXML_ADDRESSES_ARE_SANITIZED
#endif
#ifdef TQXML_ADDRESSES_ARE_SANITIZED
#include <sanitizer/asan_interface.h>
#endif

namespace Orn {
namespace {

// Where addresses are sanitized, what nobody may touch is forbidden, as if each block had come by
// itself.
#ifdef TQXML_ADDRESSES_ARE_SANITIZED
void forbid(void* begin, std::size_t bytes) { ASAN_POISON_MEMORY_REGION(begin, bytes); }
void allow(void* begin, std::size_t bytes) { ASAN_UNPOISON_MEMORY_REGION(begin, bytes); }
#else
void forbid(void* /*begin*/, std::size_t /*bytes*/) {}
void allow(void* /*begin*/, std::size_t /*bytes*/) {}
#endif

}  // namespace

static_assert(alignof(ParserMemory) <= alignof(void*), "Xerces aligns its objects no more");

ParserMemory::~ParserMemory() {
  while (ring_.next != &ring_) {
    allow_whole_of(ring_.next);
    give_to_xerces(ring_.next);
  }
}

void* ParserMemory::allocate(XMLSize_t size) {
  if (size > MOST_STEPS * STEP) return take_large(size);
  void* const block = take_small(std::max<std::size_t>((size + STEP - 1) / STEP, 1));
  allow(block, size);
  return block;
}

void* ParserMemory::take_small(std::size_t steps) {
  if (Header* const waits = waiting_[steps]; waits != nullptr) {
    waiting_[steps] = waits->next;
    return waits + 1;
  }
  std::size_t const size = steps * STEP;
  if (static_cast<std::size_t>(end_ - begin_) < sizeof(Header) + size) {
    begin_ = static_cast<std::byte*>(take_from_xerces(PIECE));
    end_ = begin_ + PIECE;
    forbid(begin_, PIECE);
  }
  std::byte* const place = std::exchange(begin_, begin_ + sizeof(Header) + size);
  allow(place, sizeof(Header));
  return new (place) Header{size, nullptr} + 1;
}

void* ParserMemory::take_large(std::size_t size) {
  constexpr std::size_t MOST = std::numeric_limits<std::size_t>::max();
  if (size > MOST - sizeof(Header) - sizeof(FromXerces)) throw xercesc::OutOfMemoryException();
  return new (take_from_xerces(sizeof(Header) + size)) Header{size, nullptr} + 1;
}

void* ParserMemory::take_from_xerces(std::size_t bytes) {
  void* const taken =
      xercesc::XMLPlatformUtils::fgMemoryManager->allocate(sizeof(FromXerces) + bytes);
  auto* const link = new (taken) FromXerces{{&ring_, ring_.next}};
  link->next->previous = link;
  ring_.next = link;
  return link + 1;
}

void ParserMemory::give_to_xerces(Link* link) noexcept {
  link->previous->next = link->next;
  link->next->previous = link->previous;
  xercesc::XMLPlatformUtils::fgMemoryManager->deallocate(link);
}

// Who has the memory next finds nothing forbidden in it.
void ParserMemory::allow_whole_of(Link* link) noexcept {
  auto* const first = reinterpret_cast<Header*>(static_cast<FromXerces*>(link) + 1);
  // Behind the link of a piece is its first small block.
  if (first->size <= MOST_STEPS * STEP) allow(first, PIECE);
}

void ParserMemory::deallocate(void* block) {
  if (block == nullptr) return;
  Header* const header = static_cast<Header*>(block) - 1;
  if (header->size > MOST_STEPS * STEP) {
    give_to_xerces(reinterpret_cast<FromXerces*>(header) - 1);
    return;
  }
  forbid(block, header->size);
  header->next = std::exchange(waiting_[header->size / STEP], header);
}

xercesc::MemoryManager* ParserMemory::getExceptionMemoryManager() {
  return xercesc::XMLPlatformUtils::fgMemoryManager;
}

}  // namespace Orn

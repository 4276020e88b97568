#ifndef TQXML_FOUNDATION_PARSERMEMORY_H
#define TQXML_FOUNDATION_PARSERMEMORY_H

#include <array>
#include <cstddef>
#include <xercesc/framework/MemoryManager.hpp>

namespace Orn {

/// The memory of one parser, which ends with this object: what Xerces has forgotten is given back
/// as well.
///
/// Xerces makes a parser of some hundreds of small objects, and takes them all down again, which
/// for a short document is most of the work. Here small blocks are cut off large ones, and those
/// that are given back wait to be used again. What is larger comes and goes by itself. All of it is
/// from where Xerces has its own memory.
class ParserMemory final : public xercesc::MemoryManager {
 public:
  ParserMemory() noexcept = default;
  ParserMemory(ParserMemory const&) = delete;
  ParserMemory& operator=(ParserMemory const&) = delete;
  ~ParserMemory() override;

  /// A block that is aligned for any object. Raises xercesc::OutOfMemoryException, which is what
  /// Xerces knows, when memory runs out.
  void* allocate(XMLSize_t size) override;
  /// Null is nothing to give back.
  void deallocate(void* block) override;
  /// That of Xerces itself: an XMLException may outlive the parser. (A SAXException has its text in
  /// the memory of the parser all the same.)
  xercesc::MemoryManager* getExceptionMemoryManager() override;

 private:
  /// In front of each block.
  struct alignas(std::max_align_t) Header {
    /// Bytes behind the header, in a small block whole steps.
    std::size_t size;
    /// In a small block that waits, the next one that does.
    Header* next;
  };
  /// Blocks of the memory that all parsers share form a ring, from which they can be taken out
  /// again.
  struct Link {
    Link* previous;
    Link* next;
  };
  struct alignas(std::max_align_t) FromXerces : Link {};

  static constexpr std::size_t STEP = alignof(std::max_align_t);
  static constexpr std::size_t MOST_STEPS = 64;
  /// What is small is cut off so many bytes.
  static constexpr std::size_t PIECE = 16 * std::size_t{1024};

  void* take_small(std::size_t steps);
  void* take_large(std::size_t size);
  void* take_from_xerces(std::size_t bytes);
  static void give_to_xerces(Link* link) noexcept;
  static void allow_whole_of(Link* link) noexcept;

  /// By size in steps.
  std::array<Header*, MOST_STEPS + 1> waiting_{};
  /// What is left of the piece that small blocks are cut off.
  std::byte* begin_ = nullptr;
  std::byte* end_ = nullptr;
  /// No more aligned than the objects of Xerces, one of which this may be a part of.
  Link ring_{&ring_, &ring_};
};

/// What the class of a parser derives from first, so that the memory is there before the parser and
/// goes after it.
struct OwnsParserMemory {
  ParserMemory memory;
};

/// A parser with memory of its own.
template <class Parser>
class ParserWithMemory final : private OwnsParserMemory, public Parser {
 public:
  /// `first` is what the parser takes before its memory; of what it takes behind that it gets none.
  template <class First>
  explicit ParserWithMemory(First first) : Parser(first, &memory, nullptr) {}
};

}  // namespace Orn

#endif

#include "tqxml/foundation/ParserMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <utility>
#include <vector>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace {

using Orn::ParserMemory;

struct Block {
  unsigned char* begin;
  std::size_t size;
  unsigned char content;

  bool is_intact() const {
    return std::all_of(begin, begin + size, [this](unsigned char c) { return c == content; });
  }
};

Block take(ParserMemory& memory, std::size_t size, unsigned char content) {
  auto* const begin = static_cast<unsigned char*>(memory.allocate(size));
  std::memset(begin, content, size);
  return {begin, size, content};
}

bool is_aligned(void const* block) {
  return reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t) == 0;
}

TEST(ParserMemory, GivesBlocksOfAnySizeThatAreAlignedForAnyObject) {
  ParserMemory memory;
  for (std::size_t size = 0; size < 5000; ++size) {
    Block const block = take(memory, size, 1);
    ASSERT_NE(block.begin, nullptr) << size;
    ASSERT_TRUE(is_aligned(block.begin)) << size;
  }
}

TEST(ParserMemory, GivesABlockOfItsOwnEvenForNothing) {
  ParserMemory memory;
  EXPECT_NE(memory.allocate(0), memory.allocate(0));
}

TEST(ParserMemory, KeepsBlocksApartHoweverTheyComeAndGo) {
  std::mt19937 random(4711);
  ParserMemory memory;
  std::vector<Block> blocks;
  for (unsigned int step = 0; step < 20000; ++step) {
    if (blocks.empty() || random() % 5 < 3) {
      std::size_t const size = random() % 7 == 0 ? random() % 40000 : random() % 1100;
      blocks.push_back(take(memory, size, static_cast<unsigned char>(step)));
    } else {
      std::swap(blocks[random() % blocks.size()], blocks.back());
      ASSERT_TRUE(blocks.back().is_intact()) << step;
      memory.deallocate(blocks.back().begin);
      blocks.pop_back();
    }
  }
  for (Block const& block : blocks) ASSERT_TRUE(block.is_intact());
}

TEST(ParserMemory, UsesASmallBlockAgainForOneOfTheSameSize) {
  ParserMemory memory;
  void* const first = memory.allocate(100);
  memory.allocate(100);
  memory.deallocate(first);
  EXPECT_NE(memory.allocate(200), first);
  EXPECT_EQ(memory.allocate(100), first);
}

TEST(ParserMemory, TakesNullForNothing) {
  ParserMemory memory;
  memory.deallocate(nullptr);
  EXPECT_NE(memory.allocate(1), nullptr);
}

TEST(ParserMemory, ThatIsMoreThanThereIsIsRefusedInXercesWay) {
  ParserMemory memory;
  constexpr std::size_t MOST = std::numeric_limits<std::size_t>::max();
  EXPECT_THROW(memory.allocate(MOST), xercesc::OutOfMemoryException);
  EXPECT_THROW(memory.allocate(MOST - 20), xercesc::OutOfMemoryException);
}

TEST(ParserMemory, IsNotThatOfExceptionsWhichMayOutliveIt) {
  ParserMemory memory;
  EXPECT_EQ(memory.getExceptionMemoryManager(), xercesc::XMLPlatformUtils::fgMemoryManager);
}

// In the place of Xerces' own: writes all over what is given back.
class WritingMemory : public xercesc::MemoryManager {
 public:
  WritingMemory() { xercesc::XMLPlatformUtils::fgMemoryManager = this; }
  WritingMemory(WritingMemory const&) = delete;
  WritingMemory& operator=(WritingMemory const&) = delete;
  ~WritingMemory() override { xercesc::XMLPlatformUtils::fgMemoryManager = usual_; }

  void* allocate(XMLSize_t size) override {
    auto block = std::make_unique<unsigned char[]>(size);
    void* const begin = block.get();
    blocks_[begin] = {std::move(block), size};
    return begin;
  }
  void deallocate(void* begin) override {
    auto const found = blocks_.find(begin);
    ASSERT_NE(found, blocks_.end());
    std::memset(begin, 1, found->second.second);
    blocks_.erase(found);
  }
  xercesc::MemoryManager* getExceptionMemoryManager() override { return usual_; }

  std::size_t block_count() const { return blocks_.size(); }

 private:
  xercesc::MemoryManager* usual_ = xercesc::XMLPlatformUtils::fgMemoryManager;
  std::map<void*, std::pair<std::unique_ptr<unsigned char[]>, std::size_t>> blocks_;
};

TEST(ParserMemory, GivesAllBackAtItsEndForAnyUse) {
  WritingMemory xerces_memory;
  {
    ParserMemory memory;
    for (unsigned int size : {1U, 100U, 1000U, 5000U, 20000U, 1000U})
      memory.deallocate(memory.allocate(size));
    memory.allocate(100);
    memory.allocate(20000);
    EXPECT_GT(xerces_memory.block_count(), 1U);
  }
  EXPECT_EQ(xerces_memory.block_count(), 0U);
}

}  // namespace

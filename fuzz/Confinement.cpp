#include "fuzz/Confinement.h"

#include <sanitizer/lsan_interface.h>
#include <unicode/udata.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <list>
#include <new>
#include <string>
#include <string_view>
#include <unordered_set>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/Janitor.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLFileMgr.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLURL.hpp>

#include "fuzz/Target.h"

// Where there are no sanitizers.
#pragma weak __lsan_ignore_object

namespace fuzz {
namespace {

using xercesc::FileHandle;
using xercesc::MemoryManager;
using xercesc::XMLPlatformUtils;

constexpr XMLSize_t ALLOWANCE = XMLSize_t{48} << 20U;
constexpr XMLSize_t UNLIMITED = std::numeric_limits<XMLSize_t>::max();

/// Takes and gives memory as Xerces' own manager does, so that either may give back what the other
/// took.
class MeteredMemory : public MemoryManager {
 public:
  explicit MeteredMemory(MemoryManager* unmetered) : unmetered_(unmetered) {}

  void allow(XMLSize_t bytes) {
    left_ = bytes;
    exhausted_ = false;
    blocks_.clear();
  }
  bool is_exhausted() const { return exhausted_; }
  /// Whatever has not been given back since `allow` is no leak.
  void forget_blocks() const {
    if (__lsan_ignore_object == nullptr) return;
    for (void const* block : blocks_) __lsan_ignore_object(block);
  }

  MemoryManager* getExceptionMemoryManager() override { return unmetered_; }
  void* allocate(XMLSize_t size) override {
    if (exhausted_ || size > left_) {
      exhausted_ = true;
      throw xercesc::OutOfMemoryException();
    }
    left_ -= left_ == UNLIMITED ? 0 : size;
    void* const block = ::operator new(size);
    blocks_.insert(block);
    return block;
  }
  void deallocate(void* block) override {
    blocks_.erase(block);
    ::operator delete(block);
  }

 private:
  MemoryManager* const unmetered_;
  XMLSize_t left_ = UNLIMITED;
  bool exhausted_ = false;
  std::unordered_set<void const*> blocks_;
};

/// A file that is open: what has not been read of it.
struct File {
  std::string_view rest;
};

/// The files that there are, none of which is one.
class FilesInMemory : public xercesc::XMLFileMgr {
 public:
  FileHandle fileOpen(XMLCh const* path, bool to_write, MemoryManager* manager) override {
    xercesc::ArrayJanitor<char> const name(xercesc::XMLString::transcode(path, manager), manager);
    return fileOpen(name.get(), to_write, manager);
  }
  FileHandle fileOpen(char const* path, bool to_write, MemoryManager* /*manager*/) override {
    check(!to_write, "a file is opened to be written");
    std::string_view const name(path);
    if (name.find("dtd") != name.npos) {
      return open("<!ENTITY outer 'from outside'><!ATTLIST r x CDATA 'by default'>");
    }
    return name.find("ent") == name.npos ? nullptr : open("outside <a x='1'>text</a>");
  }
  FileHandle openStdIn(MemoryManager* /*manager*/) override {
    fail("the standard input stream is opened");
  }
  void fileClose(FileHandle file, MemoryManager* /*manager*/) override {
    open_.remove_if([file](File const& open) { return &open == file; });
  }
  void fileReset(FileHandle /*file*/, MemoryManager* /*manager*/) override {
    fail("a file is read again");
  }
  XMLFilePos curPos(FileHandle /*file*/, MemoryManager* /*manager*/) override { return 0; }
  XMLFilePos fileSize(FileHandle file, MemoryManager* /*manager*/) override {
    return static_cast<File*>(file)->rest.size();
  }
  XMLSize_t fileRead(FileHandle file, XMLSize_t most, XMLByte* to,
                     MemoryManager* /*manager*/) override {
    std::string_view& rest = static_cast<File*>(file)->rest;
    XMLSize_t const taken = std::min<XMLSize_t>(most, rest.size());
    std::memcpy(to, rest.data(), taken);
    rest.remove_prefix(taken);
    return taken;
  }
  void fileWrite(FileHandle /*file*/, XMLSize_t /*size*/, XMLByte const* /*bytes*/,
                 MemoryManager* /*manager*/) override {
    fail("a file is written");
  }
  XMLCh* getFullPath(XMLCh const* path, MemoryManager* manager) override {
    return xercesc::XMLString::replicate(path, manager);
  }
  XMLCh* getCurrentDirectory(MemoryManager* manager) override {
    return xercesc::XMLString::replicate(u"/", manager);
  }
  bool isRelative(XMLCh const* path, MemoryManager* /*manager*/) override { return *path != u'/'; }

  /// How many had not been closed.
  std::size_t close_all() {
    std::size_t const count = open_.size();
    open_.clear();
    return count;
  }

 private:
  FileHandle open(std::string_view text) {
    open_.push_front(File{text});
    return &open_.front();
  }

  std::list<File> open_;
};

class NoNetwork : public xercesc::XMLNetAccessor {
 public:
  XMLCh const* getId() const override { return u"none"; }
  xercesc::BinInputStream* makeNew(xercesc::XMLURL const& url,
                                   xercesc::XMLNetHTTPInfo const* /*info*/) override {
    throw xercesc::NetAccessorException(__FILE__, __LINE__,
                                        xercesc::XMLExcepts::NetAcc_TargetResolution, url.getHost(),
                                        nullptr, nullptr, nullptr, url.getMemoryManager());
  }
};

/// Puts all of them in place, for as long as the process lives. Xerces, which has been initialised
/// when the library was loaded, is never terminated, and does not need what it had before.
struct World {
  World() : memory(XMLPlatformUtils::fgMemoryManager) {
    XMLPlatformUtils::fgMemoryManager = &memory;
    XMLPlatformUtils::fgFileMgr = &files;
    XMLPlatformUtils::fgNetAccessor = &network;
    // Nor does the name of an encoding make ICU look for a file of its own.
    UErrorCode status = U_ZERO_ERROR;
    udata_setFileAccess(UDATA_NO_FILES, &status);
  }
  // What Xerces had is nobody's otherwise, and would be taken for a leak.
  xercesc::XMLFileMgr* const former_files = XMLPlatformUtils::fgFileMgr;
  xercesc::XMLNetAccessor* const former_network = XMLPlatformUtils::fgNetAccessor;
  MeteredMemory memory;
  FilesInMemory files;
  NoNetwork network;
};

World& world() {
  static auto& the_world = *new World;
  return the_world;
}

}  // namespace

Confinement::Confinement() { world().memory.allow(ALLOWANCE); }

// Xerces loses streams and files when memory runs out, which is known.
Confinement::~Confinement() {
  std::size_t const open = world().files.close_all();
  check(open == 0 || is_exhausted(), "a file stays open");
  if (is_exhausted()) world().memory.forget_blocks();
  world().memory.allow(UNLIMITED);
}

bool Confinement::is_exhausted() { return world().memory.is_exhausted(); }

}  // namespace fuzz

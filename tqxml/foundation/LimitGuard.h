#ifndef TQXML_FOUNDATION_LIMITGUARD_H
#define TQXML_FOUNDATION_LIMITGUARD_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/util/RefVectorOf.hpp>

#include "tqutil/UString.h"
#include "tqxml/foundation/ReadLimits.h"

namespace Orn {

/// What goes through the parser when a document has crossed a limit; each reader makes of it the
/// exception that it has for documents that cannot be read.
struct LimitCrossed {
  UString text;
  /// How far the parser had come, from 1.
  std::uint64_t line;
  std::uint64_t column;
};

/// Counts what a document asks for while it is read, and throws LimitCrossed when that is too much.
/// It is told of everything before it is kept anywhere.
class LimitGuard {
 public:
  explicit LimitGuard(ReadLimits const& limits) : limits_(limits) {}
  LimitGuard(LimitGuard const&) = delete;
  LimitGuard& operator=(LimitGuard const&) = delete;

  ReadLimits const& limits() const noexcept { return limits_; }

  /// From now on the parser scans, and `place` says where. Must be ended before the place is gone.
  void begin(xercesc::Locator const* place) noexcept;
  void end() noexcept { place_ = nullptr; }

  // Bytes, which are counted from before the beginning.

  /// How many of `wanted` bytes may be read, so that the first one too many is noticed.
  std::size_t bytes_to_read(std::size_t wanted) const noexcept;
  void bytes(std::uint64_t count);

  // What the parser reads from, the document or an entity.

  /// Whether this is a moment in which the parser opens the document, something external, or an
  /// entity of the document, for which it has just made a stream.
  bool opens_input(bool has_stream) const noexcept;
  void input_opened() noexcept;
  void input_closed() noexcept { --open_inputs_; }
  /// The document or something external has been opened, and its decoder may be about to be made.
  void expect_decoder() noexcept;

  // Memory of the parser, which is limited while it scans and has not delivered what it found.

  void check_memory(std::size_t more);
  void take_memory(std::size_t size) noexcept { memory_ += size; }
  void give_back_memory(std::size_t size) noexcept { memory_ -= size; }

  /// There while an event is delivered: what is taken then the reader keeps, and it is none of what
  /// comes next.
  class Delivery {
   public:
    explicit Delivery(LimitGuard& guard) noexcept : guard_(guard) { guard_.delivering_ = true; }
    Delivery(Delivery const&) = delete;
    Delivery& operator=(Delivery const&) = delete;
    ~Delivery() {
      guard_.delivering_ = false;
      guard_.settle();
    }

   private:
    LimitGuard& guard_;
  };

  /// There while entities are copied that have been delivered: more of what they bring, and none of
  /// what comes next.
  class Copying {
   public:
    explicit Copying(LimitGuard& guard) noexcept : guard_(guard) { guard_.copying_ = true; }
    Copying(Copying const&) = delete;
    Copying& operator=(Copying const&) = delete;
    ~Copying() { guard_.copying_ = false; }

   private:
    LimitGuard& guard_;
  };

  // Events of the parser, in the order of the document.

  /// `name` is what the document declares; empty when it declares none.
  void encoding(XMLCh const* name) const;
  void doctype(bool has_external_subset);
  /// Something external is about to be opened.
  void external_entity();
  /// An entity is declared, with so many characters.
  void entity_declared(std::uint64_t length) noexcept;
  /// A reference to an entity, wherever it stands, is about to be followed.
  void entity();
  /// It is one in content, to an entity of so many characters.
  void entity_in_content(std::uint64_t length) noexcept;
  void start_element(xercesc::XMLElementDecl const& decl,
                     xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes, std::size_t count,
                     unsigned int xmlns_uri_id);
  void end_element();
  void text(std::uint64_t length);
  void comment(XMLCh const* text);
  void instruction(XMLCh const* target, XMLCh const* text);

 private:
  struct Level {
    std::uint64_t text;
    std::uint64_t namespaces;
  };

  void settle() noexcept { settled_memory_ = memory_; }
  void attribute(xercesc::XMLAttr const& attribute);
  void declaration(xercesc::XMLAttr const& attribute);
  /// Of an element, an attribute or a namespace.
  void count_name(std::u16string_view name);
  /// Of an element or an attribute.
  void name(XMLCh const* qualified_name, std::uint64_t length);
  void name_length(std::uint64_t length) const;
  /// Of characters that the program sees, or that stand for work as these do.
  void deliver(std::uint64_t characters);
  void check(std::uint64_t amount, std::uint64_t limit, char const* limit_name,
             char const* what) const;
  [[noreturn]] void cross(char const* limit_name, std::string const& complaint) const;

  ReadLimits const limits_;
  /// Null while nothing is scanned.
  xercesc::Locator const* place_ = nullptr;
  std::uint64_t bytes_ = 0;
  std::uint64_t open_inputs_ = 0;
  std::uint64_t delivered_ = 0;
  /// Of the reference that came last, as long as it may turn out to be one in content.
  std::uint64_t reference_cost_ = 0;
  std::uint64_t longest_entity_ = 0;
  std::uint64_t memory_ = 0;
  std::uint64_t settled_memory_ = 0;
  bool opens_external_ = false;
  bool delivering_ = false;
  bool copying_ = false;
  /// As how many characters the block counts that copies are being made in.
  std::uint64_t copied_ = 0;
  std::uint64_t namespaces_ = 0;
  /// One for each open element.
  std::vector<Level> levels_;
  /// Those that there have been, when they are limited. Not hashed, for the names are chosen by who
  /// may want them to collide.
  std::set<std::u16string, std::less<>> names_;
};

}  // namespace Orn

#endif

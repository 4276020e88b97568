#ifndef TQUTIL_UMESSAGE_H
#define TQUTIL_UMESSAGE_H

#include <cstdint>
#include <variant>
#include <vector>

#include "tqutil/Export.h"
#include "tqutil/UString.h"

namespace Orn {

/// A message of a catalogue with its arguments, kept apart until the text is wanted.
///
///     char const* catalogue[] = {"demo 1", "DEMO0001E %s has %d lines."};
///     UMessage message(catalogue, 1, UString(u"order"), 3);
///     message.text();                                  // DEMO0001E order has 3 lines.
///
/// A catalogue is an array of zero-terminated UTF-8 strings: a header "NAME COUNT" and COUNT
/// messages. It is not copied and must outlive its messages. With another header it is up to the
/// caller to ask for messages that are there.
class TQUTIL_API UMessage {
 public:
  /// One argument of a message: nothing, a number or a text.
  class TQUTIL_API Arg {
   public:
    /// What an argument holds.
    enum Kind {
      KIND_NIL = 0,   ///< nothing
      KIND_INT = 2,   ///< a number of 32 bits
      KIND_LONG = 3,  ///< a `long`
      KIND_TEXT = 8,  ///< a UString
    };

    /// The value of an argument.
    class TQUTIL_API arg_union_t {
     public:
      /// Nothing.
      arg_union_t() noexcept = default;
      /// A number of 32 bits.
      arg_union_t(std::int32_t value) noexcept : value_(std::in_place_index<1>, value) {}
      /// A `long`.
      arg_union_t(long value) noexcept : value_(std::in_place_index<2>, value) {}
      /// A copy of a text.
      arg_union_t(UString const& value) : value_(std::in_place_index<3>, value) {}

     private:
      friend class Arg;
      std::variant<std::monostate, std::int32_t, long, UString> value_;
    };

    /// The empty argument.
    Arg() noexcept = default;
    /// A number of 32 bits.
    Arg(std::int32_t value) noexcept : Arg(KIND_INT, arg_union_t(value)) {}
    /// A `long`.
    Arg(long value) noexcept : Arg(KIND_LONG, arg_union_t(value)) {}
    /// A copy of a text.
    Arg(UString const& value) : Arg(KIND_TEXT, arg_union_t(value)) {}
    /// `kind` is one of the codes above and must be the kind of the value.
    Arg(int kind, arg_union_t const& value) : kind_(kind), value_(value) {}

    /// @{

    /// Copies are independent. What is left in an argument that was moved from is not specified.
    Arg(Arg const&) = default;
    Arg(Arg&&) noexcept = default;
    Arg& operator=(Arg const&) = default;
    Arg& operator=(Arg&&) noexcept = default;
    /// @}

    /// Lets go of the value.
    virtual ~Arg();

    /// One of the codes of `Kind`.
    int kind() const noexcept { return kind_; }
    /// The value as it stands in a message: empty for the empty argument, numbers in decimal.
    UString text() const;

    /// The shared empty argument, which fills the slots that a message does not use.
    static Arg const nil;

   private:
    int kind_ = KIND_NIL;
    arg_union_t value_;
  };

  /// The most arguments that a message takes.
  static constexpr int MAX_ARGS = 10;

  /// The message at `index` of `catalogue`, from 1 on (0 is the header). Copies the arguments.
  UMessage(char const** catalogue, int index, Arg const& a1 = Arg::nil, Arg const& a2 = Arg::nil);
  /// The same with up to ten arguments.
  UMessage(char const** catalogue, int index, Arg const& a1, Arg const& a2, Arg const& a3,
           Arg const& a4, Arg const& a5, Arg const& a6, Arg const& a7, Arg const& a8, Arg const& a9,
           Arg const& a10);

  /// What the constructor was given.
  char const** catalogue() const noexcept { return catalogue_; }
  /// What the constructor was given, also when there is no such message.
  int index() const noexcept { return index_; }
  /// The argument in slot `i`, from 1 to MAX_ARGS; `Arg::nil` for an unused slot and any other `i`.
  Arg const& arg(int i) const noexcept;

  /// The message with its identifier in front and its arguments in place. The placeholders \%s, \%d
  /// and \%ld take the arguments in order, each printed by its own kind whatever the placeholder
  /// says; where the arguments have run out nothing is printed. "%%" gives one "%". Without a
  /// catalogue, or with an index outside it, the text says so.
  UString text() const;

  /// The text of one catalogue entry with at most one argument.
  static UString sprintf(char const** catalogue, int index, Arg const& a);

 private:
  char const** catalogue_;
  int index_;
  /// The used slots: trailing empty arguments are not stored.
  std::vector<Arg> args_;
};

}  // namespace Orn

#endif

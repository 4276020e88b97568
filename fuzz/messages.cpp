#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/Input.h"
#include "fuzz/Target.h"
#include "tqutil/STPException.h"
#include "tqutil/UMessage.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/foundation/Catalogue.h"

// Renders a message of a catalogue that is made up, or of the library's own, with any arguments,
// and compares the text with what the plainest rendering gives.

namespace fuzz {
namespace {

using Orn::Catalogue;
using Orn::UMessage;
using Orn::UString;
using Arg = UMessage::Arg;

/// None for what cannot be had, since the catalogue is not in UTF-8.
using Text = std::optional<UString>;

/// An argument and what should be printed for it.
struct Argument {
  Arg arg;
  UString text;
};

UString decimal(long value) { return UString::from_utf8(std::to_string(value)); }

Argument next_argument(Input& input) {
  switch (input.below(4)) {
    case 0:
      return {Arg(), UString()};
    case 1: {
      std::uint32_t const high = input.byte();
      auto const value = static_cast<std::int32_t>(high << 24U | input.byte());
      return {Arg(value), decimal(value)};
    }
    case 2: {
      long const value =
          input.flag() ? std::numeric_limits<long>::min() + input.byte() : long{input.byte()} - 128;
      return {Arg(value), decimal(value)};
    }
    default: {
      UString const text = input.units(input.below(8));
      return {Arg(text), text};
    }
  }
}

Text decoded(char const* bytes) {
  try {
    return UString::from_utf8(bytes);
  } catch (Orn::EncodingException const&) {
    return std::nullopt;
  }
}

UString rendered(UString const& format, std::vector<Argument> const& arguments) {
  UString text;
  auto next = arguments.begin();
  for (unsigned int i = 0; i < format.length();) {
    UString const two = format.substr(i, 2);
    bool const is_long = format.substr(i, 3) == u"%ld";
    if (two == u"%%") {
      text.append(u"%");
      i += 2;
    } else if (is_long || two == u"%s" || two == u"%d") {
      if (next != arguments.end()) text.append(next++->text);
      i += is_long ? 3 : 2;
    } else {
      text.append(format[i++]);
    }
  }
  return text;
}

/// What is said of a message that there is not.
Text unknown(char const* name, int index) {
  Text text = decoded(name);
  if (!text) return text;
  return UString(u"Message ")
      .append(decimal(index))
      .append(u" of the catalogue '")
      .append(*text)
      .append(u"'");
}

Text text_of(UMessage const& message) {
  try {
    return message.text();
  } catch (Orn::EncodingException const&) {
    return std::nullopt;
  }
}

void compare(char const** catalogue, int count, int index, Input& input) {
  std::vector<Argument> arguments;
  for (std::size_t n = input.below(UMessage::MAX_ARGS + 1); n > 0; --n) {
    arguments.push_back(next_argument(input));
  }
  std::vector<Arg> all(UMessage::MAX_ARGS);
  std::transform(arguments.begin(), arguments.end(), all.begin(),
                 [](Argument const& argument) { return argument.arg; });
  UMessage const message(catalogue, index, all[0], all[1], all[2], all[3], all[4], all[5], all[6],
                         all[7], all[8], all[9]);
  Text expected = unknown(catalogue[0], index);
  if (index >= 0 && index <= count) {
    expected = decoded(catalogue[index]);
    if (expected) expected = rendered(*expected, arguments);
  }
  Text const text = text_of(message);
  check(text == expected, "a message has another text");
  check(text_of(UMessage(message)) == text, "a copy has another text");
  for (int i = 0; i <= UMessage::MAX_ARGS + 1; ++i) {
    bool const is_given = i >= 1 && static_cast<std::size_t>(i) <= arguments.size();
    check(message.arg(i).text() ==
              (is_given ? arguments[static_cast<std::size_t>(i) - 1].text : UString()),
          "an argument has another text");
  }
  if (!text) return;
  Orn::STPException const exception(1, message, nullptr, nullptr, 2);
  std::string const bytes = text->to_utf8();
  check(exception.what() == bytes.substr(0, bytes.find('\0')), "an exception has another text");
}

/// The lines of an input: the name of the catalogue and the messages, of which the header tells how
/// many there are.
void compare_made_up(Input& input) {
  Input lines(input.line('\0'));
  std::vector<std::string> texts{std::string(lines.line('\n'))};
  while (!lines.at_end()) texts.emplace_back(lines.line('\n'));
  int const count = static_cast<int>(texts.size()) - 1;
  texts[0] += " " + std::to_string(count);
  std::vector<char const*> catalogue;
  for (std::string const& text : texts) catalogue.push_back(text.c_str());
  while (!input.at_end()) {
    // One more than there are, and a negative one.
    int const index = static_cast<int>(input.below(static_cast<std::size_t>(count % 200) + 3)) - 1;
    compare(catalogue.data(), count, index, input);
  }
}

void run(Input input) {
  if (input.flag()) return compare_made_up(input);
  while (!input.at_end()) {
    compare(Catalogue::table(), Catalogue::COUNT, static_cast<int>(input.below(36)) - 1, input);
  }
}

}  // namespace
}  // namespace fuzz

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  fuzz::run(fuzz::Input(data, size));
  return 0;
}

#include <cstddef>
#include <memory>
#include <string>

#ifdef TQXML_BENCH_LIBXML2
#include <libxml/entities.h>
#include <libxml/xmlmemory.h>
#endif

#include "bench/contenders/XercesReaders.h"
#include "bench/jobs/Jobs.h"
#include "bench/orders/Names.h"
#include "bench/orders/OrderMaker.h"
#include "bench/orders/Orders.h"
#include "bench/orders/Views.h"
#include "tqxml/writer/XmlDoc.h"

namespace bench {
namespace {

using Orn::UString;
using Orn::XmlDoc;

constexpr std::size_t LENGTH = 1 << 20;
constexpr std::size_t PERCENTAGES[] = {0, 1, 20};

/// Letters, and that share of "&" and "<" among them.
Text make_text(std::size_t percentage) {
  Dice dice(static_cast<std::uint_fast32_t>(percentage + 1));
  std::string utf8(LENGTH, ' ');
  for (char& c : utf8) {
    bool const is_special = dice.below(100) < percentage;
    c = is_special ? "&<"[dice.below(2)] : static_cast<char>('a' + dice.below(26));
  }
  return {UString::from_utf8(utf8), utf8};
}

UString escape(Text const& text) { return XmlDoc::escape(text.utf16); }

#ifdef TQXML_BENCH_LIBXML2
struct FreeText {
  void operator()(xmlChar* text) const { xmlFree(text); }
};
using XmlText = std::unique_ptr<xmlChar, FreeText>;

XmlText escape_with_libxml2(Text const& text) {
  return XmlText(
      xmlEncodeSpecialChars(nullptr, reinterpret_cast<xmlChar const*>(text.utf8.c_str())));
}
#endif

/// Whether a reader gets the text back from what was made of it.
void check(Text const& text, std::string const& escaped, std::string const& who) {
  std::string const document =
      "<N1:orders xmlns:N1=\"urn:example:orders\">" + escaped + "</N1:orders>";
  Digest read;
  read_xerces_whole(document, order_names(), read);
  Digest right;
  right.start(orders);
  right.text(text.utf8);
  right.end();
  expect(read.value() == right.value(), who);
}

std::string name_of(char const* contender, std::size_t percentage) {
  return std::string("escape/") + contender + "/" + std::to_string(percentage) + "%";
}

template <class Escape>
void register_one(char const* contender, std::size_t percentage, Escape escape) {
  register_work(
      name_of(contender, percentage), [percentage] { return make_text(percentage); }, escape,
      [](Text const& text) { return text.utf8.size(); });
}

}  // namespace

void check_escape() {
  for (std::size_t const percentage : PERCENTAGES) {
    Text const text = make_text(percentage);
    check(text, escape(text).to_utf8(), name_of("tqxml", percentage));
#ifdef TQXML_BENCH_LIBXML2
    check(text, reinterpret_cast<char const*>(escape_with_libxml2(text).get()),
          name_of("libxml2", percentage));
#endif
  }
}

void register_escape() {
  for (std::size_t const percentage : PERCENTAGES) {
    register_one("tqxml", percentage, escape);
#ifdef TQXML_BENCH_LIBXML2
    register_one("libxml2", percentage, escape_with_libxml2);
#endif
  }
}

}  // namespace bench

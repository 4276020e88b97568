#include "bench/orders/Orders.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "bench/orders/Names.h"
#include "bench/orders/OrderMaker.h"
#include "tqutil/XmlTag.h"

namespace bench {
namespace {

using Orn::UString;
using Orn::XmlTag;

constexpr OrderMaker::Lengths SHORT_TEXTS{1, 3};

Text text_of(std::u16string const& text) {
  UString utf16(text.data(), text.size());
  std::string utf8 = utf16.to_utf8();
  return {std::move(utf16), std::move(utf8)};
}

/// Exactly two digits.
std::u16string two_digits(std::size_t number) {
  return {static_cast<char16_t>(u'0' + number / 10), static_cast<char16_t>(u'0' + number % 10)};
}

std::u16string decimal(std::size_t number) {
  std::string const digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

/// Latin, Greek, Chinese, and pairs of surrogates.
std::u16string beyond_ascii(Dice& dice, std::size_t count) {
  static constexpr char16_t const* CHARACTERS[] = {u"\u00e4", u"\u00f1", u"\u00e9", u"\u03bb",
                                                   u"\u03a9", u"\u4e2d", u"\u6587", u"\U0001f4e6"};
  std::u16string text;
  for (std::size_t i = 0; i < count; ++i) text += CHARACTERS[dice.below(std::size(CHARACTERS))];
  return text;
}

std::u16string letters(Dice& dice, std::size_t count) {
  std::u16string text;
  std::size_t word = 0;
  for (std::size_t i = 0; i < count; ++i) {
    // No blanks at the ends, nor two in a row: some readers would leave them out.
    bool const is_blank = word >= 2 && i + 1 < count && dice.one_in(6);
    word = is_blank ? 0 : word + 1;
    text += is_blank ? u' ' : static_cast<char16_t>(u'a' + dice.below(26));
  }
  return text;
}

/// In the place of another, so that the length stays.
void put_somewhere(Dice& dice, std::u16string& text, char16_t character) {
  text[dice.below(text.size())] = character;
}

std::size_t length_with_references(std::string const& text) {
  std::size_t length = text.size();
  for (char const c : text) {
    if (c == '&') length += std::string("amp;").size();
    if (c == '<') length += std::string("lt;").size();
  }
  return length;
}

std::size_t length_of_name(XmlTag::Id id) {
  return std::string("N1:").size() + XmlTag::lookup(id).simple_name().length();
}

std::size_t length_of_tags(XmlTag::Id id) {
  return std::string("<></>").size() + 2 * length_of_name(id);
}

}  // namespace

std::u16string OrderMaker::text() {
  std::size_t const count = lengths_.least + dice_.below(lengths_.most - lengths_.least + 1);
  std::size_t const foreign = dice_.one_in(16) ? std::min(1 + count / 8, count - 1) : 0;
  std::u16string text = letters(dice_, count - foreign);
  if (dice_.one_in(8)) put_somewhere(dice_, text, dice_.one_in(2) ? u'&' : u'<');
  return text.insert(dice_.below(text.size() + 1), beyond_ascii(dice_, foreign));
}

Order OrderMaker::next() {
  static constexpr char16_t const* STATES[] = {u"open", u"paid", u"shipped", u"returned"};
  std::u16string const date = u"20" + two_digits(dice_.below(25)) + u"-" +
                              two_digits(1 + dice_.below(12)) + u"-" +
                              two_digits(1 + dice_.below(28));
  Order made{{text_of(decimal(10000000 + made_)), text_of(date),
              text_of(STATES[dice_.below(std::size(STATES))])},
             {}};
  for (Text& field : made.fields) field = text_of(text());
  ++made_;
  return made;
}

std::size_t length_in_document(Order const& order_) {
  std::size_t length = length_of_tags(order);
  for (std::size_t i = 0; i < attribute_names.size(); ++i) {
    length += std::string(" =\"\"").size() + length_of_name(attribute_names[i]) +
              order_.attributes[i].utf8.size();
  }
  for (std::size_t i = 0; i < field_names.size(); ++i) {
    length += length_of_tags(field_names[i]) + length_with_references(order_.fields[i].utf8);
  }
  return length;
}

std::size_t length_around_orders() {
  return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>").size() + length_of_tags(orders) +
         2 * std::string(" xmlns:N1=\"\"").size() + XmlTag::ns_URI(ns_orders).length() +
         XmlTag::ns_URI(ns_parts).length();
}

Orders make_orders(std::size_t bytes) {
  OrderMaker usual;
  std::size_t length = length_around_orders();
  Orders made;
  Order next = usual.next();
  while ((length += length_in_document(next)) <= bytes) {
    made.push_back(std::move(next));
    next = usual.next();
  }
  if (made.empty()) made.push_back(OrderMaker(SHORT_TEXTS).next());
  return made;
}

}  // namespace bench

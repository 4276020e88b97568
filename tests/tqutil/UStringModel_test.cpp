#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>

#include "tqutil/UString.h"

// UString against std::u16string: the same random calls on both must give the same texts, answers
// and refusals.

namespace {

using Orn::UString;
using Unit = UString::unit_type;

constexpr char16_t alphabet[] = {u'a', u'b', u'\0', u'\u20ac', u'\xD83D', u'\xDE00', u'\xFFFF'};

UString text_of(std::u16string const& units) { return UString(units.data(), units.size()); }

UString::string_type standard(std::u16string const& units) { return {units.begin(), units.end()}; }

int sign(int comparison) { return (comparison > 0) - (comparison < 0); }

std::size_t wide(unsigned int n) { return n == UString::npos ? std::u16string::npos : n; }

unsigned int narrow(std::size_t pos) {
  return pos == std::u16string::npos ? UString::npos : static_cast<unsigned int>(pos);
}

template <class Call>
bool refused(Call call) {
  try {
    call();
    return false;
  } catch (std::out_of_range const&) {
    return true;
  }
}

class Comparison {
 public:
  explicit Comparison(unsigned int seed) : random_(seed) {}

  void step() {
    change();
    ASSERT_EQ(text_.length(), model_.size());
    ASSERT_EQ(text_.empty(), model_.empty());
    ASSERT_GE(text_.capacity(), text_.length());
    ASSERT_TRUE(std::equal(model_.c_str(), model_.c_str() + model_.size() + 1, text_.data()));
    ask();
  }

 private:
  unsigned int below(unsigned int limit) { return static_cast<unsigned int>(random_() % limit); }

  std::u16string piece() {
    std::u16string units(below(6), u' ');
    for (char16_t& c : units) c = alphabet[below(std::size(alphabet))];
    return units;
  }

  // Mostly inside the text, sometimes beyond its end.
  unsigned int position() { return below(text_.length() + 3); }
  unsigned int amount() { return below(10) == 0 ? UString::npos : below(8); }

  void change() {
    std::u16string const other = piece();
    unsigned int const pos = position();
    unsigned int const n = amount();
    switch (below(14)) {
      case 0:
        text_.append(text_of(other));
        model_.append(other);
        break;
      case 1:
        text_.append(standard(other).c_str());
        model_.append(other.c_str());
        break;
      case 2:
        text_.append(other.c_str());
        model_.append(other.c_str());
        break;
      case 3:
        text_.append(other.data(), other.size());
        model_.append(other);
        break;
      case 4:
        text_.append(static_cast<Unit>(alphabet[n % std::size(alphabet)]));
        model_.push_back(alphabet[n % std::size(alphabet)]);
        break;
      case 5:
        expect_alike([&] { text_.insert(pos, text_of(other)); },
                     [&] { model_.insert(pos, other); });
        break;
      case 6:
        expect_alike([&] { text_.replace(pos, n, text_of(other)); },
                     [&] { model_.replace(pos, wide(n), other); });
        break;
      case 7:
        expect_alike([&] { text_.erase(pos, n); }, [&] { model_.erase(pos, wide(n)); });
        break;
      case 8:
        expect_alike([&] { text_ = text_.substr(pos / 4, UString::npos); },
                     [&] { model_ = model_.substr(pos / 4); });
        break;
      case 9:
        text_ = UString(text_);
        break;
      case 10:
        text_.reserve(pos);
        break;
      case 11:
        change_by_itself(pos, n);
        break;
      case 12:
        text_.assign(text_of(model_));
        break;
      default:
        if (below(20) != 0) break;
        text_.clear();
        model_.clear();
    }
  }

  void change_by_itself(unsigned int pos, unsigned int n) {
    if (text_.length() > 200) return;
    text_.append(text_);
    model_.append(model_);
    expect_alike([&] { text_.insert(pos, text_); }, [&] { model_.insert(pos, model_); });
    expect_alike([&] { text_.replace(pos, n, text_); },
                 [&] { model_.replace(pos, wide(n), model_); });
  }

  template <class OnText, class OnModel>
  void expect_alike(OnText on_text, OnModel on_model) {
    EXPECT_EQ(refused(on_text), refused(on_model));
  }

  void ask() {
    std::u16string const other = piece();
    unsigned int const pos = position();
    char16_t const c = alphabet[below(std::size(alphabet))];
    EXPECT_EQ(text_.find(text_of(other), pos), narrow(model_.find(other, pos)));
    EXPECT_EQ(text_.find(static_cast<Unit>(c), pos), narrow(model_.find(c, pos)));
    EXPECT_EQ(sign(text_.compare(text_of(other))), sign(model_.compare(other)));
    EXPECT_EQ(sign(text_.compare(other.c_str())), sign(model_.compare(other.c_str())));
    EXPECT_EQ(text_ == text_of(other), model_ == other);
    EXPECT_EQ(text_ < text_of(other), model_ < other);
  }

  std::mt19937 random_;
  UString text_;
  std::u16string model_;
};

TEST(UStringModel, RandomCallsGiveWhatAStandardStringGives) {
  for (unsigned int seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    Comparison comparison(seed);
    for (int i = 0; i < 1000 && !testing::Test::HasFailure(); ++i) comparison.step();
  }
}

}  // namespace

#include "tqxml/foundation/UsualEncodings.h"

#include <algorithm>
#include <iterator>

namespace Orn {

namespace {

// In capitals. A list of those that are meant: the others go by too many names.
constexpr std::u16string_view BEGINNINGS[] = {
    u"UTF-8", u"UTF8",      u"UTF-16",      u"UTF-32",    u"ISO-10646-UCS-", u"US-ASCII",
    u"ASCII", u"ISO-8859-", u"WINDOWS-125", u"KOI8-",     u"EUC-",           u"GB2312",
    u"GBK",   u"GB18030",   u"BIG5",        u"SHIFT_JIS", u"EBCDIC-CP-"};

constexpr char16_t capital(char16_t unit) noexcept {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

bool begins_with(std::u16string_view name, std::u16string_view beginning) noexcept {
  return name.size() >= beginning.size() &&
         std::equal(beginning.begin(), beginning.end(), name.begin(),
                    [](char16_t wanted, char16_t unit) { return wanted == capital(unit); });
}

}  // namespace

bool is_usual_encoding(std::u16string_view name) noexcept {
  return name.empty() ||
         std::any_of(std::begin(BEGINNINGS), std::end(BEGINNINGS),
                     [name](auto beginning) { return begins_with(name, beginning); });
}

}  // namespace Orn

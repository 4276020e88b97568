#include "tqxml/writer/Escape.h"

#include <algorithm>
#include <string_view>

#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/UnitSearch.h"
#include "tqxml/writer/XmlDoc.h"

namespace Orn {
namespace {

using Unit = UString::unit_type;
using Entity = std::u16string_view;

// Tells the compiler how little there is to copy: "&quot;".
constexpr std::size_t LONGEST_ENTITY = 6;

// What a CDATA section adds to a text.
constexpr std::size_t CDATA_GROWTH = markup::CDATA_BEGIN.size() + markup::CDATA_END.size();

/// What must not stand in element content as it is.
struct Content {
  using Search = UnitSearch<u'&', u'<', u'>'>;

  /// The entity for the unit at `place`, or none where it can stay.
  static Entity entity(Unit const* begin, Unit const* place) {
    switch (*place) {
      case u'&':
        return u"&amp;";
      case u'<':
        return u"&lt;";
      default:
        return is_cdata_end(begin, place) ? Entity(u"&gt;") : Entity();
    }
  }

  static bool is_cdata_end(Unit const* begin, Unit const* place) {
    return place - begin >= 2 && place[-1] == u']' && place[-2] == u']';
  }
};

/// What must not stand in an attribute value.
struct AttributeValue {
  using Search = UnitSearch<u'&', u'<', u'"', u'\t', u'\n', u'\r'>;

  static Entity entity(Unit const* /*begin*/, Unit const* place) {
    switch (*place) {
      case u'&':
        return u"&amp;";
      case u'<':
        return u"&lt;";
      case u'"':
        return u"&quot;";
      case u'\t':
        return u"&#9;";
      case u'\n':
        return u"&#10;";
      default:
        return u"&#13;";
    }
  }
};

Unit const* begin_of(UString const& text) { return text.data(); }
Unit const* end_of(UString const& text) { return text.data() + text.length(); }

bool holds_cdata_end(UString const& text) {
  using Search = UnitSearch<u'>'>;
  Unit const* const end = end_of(text);
  Unit const* place = Search::find(begin_of(text), end);
  while (place != end && !Content::is_cdata_end(begin_of(text), place)) {
    place = Search::find(place + 1, end);
  }
  return place != end;
}

/// What entities would add to a text, in code units, as far as that matters: where a CDATA section
/// would not be longer it is only known that it is not, and whether one is possible.
struct Growth {
  std::size_t units = 0;
  bool may_wrap = true;
};

// Once a CDATA section would not be longer all that matters is whether one is possible.
Growth growth_with_entities(UString const& text, Unit const* first_special) {
  Growth growth;
  Unit const* const end = end_of(text);
  for (Unit const* place = first_special; place != end;
       place = Content::Search::find(place + 1, end)) {
    Entity const entity = Content::entity(begin_of(text), place);
    if (entity.empty()) continue;
    growth.units += entity.size() - 1;
    if (*place == u'>') growth.may_wrap = false;
    if (!growth.may_wrap || growth.units < CDATA_GROWTH) continue;
    if (!holds_cdata_end(text)) break;
    growth.may_wrap = false;
  }
  return growth;
}

// The two destinations differ only in how room is made.
void make_room(TextBuffer& dest, std::size_t units) { dest.make_room(units); }
void make_room(UString& dest, std::size_t units) {
  std::size_t const length = dest.length() + std::min<std::size_t>(units, UString::max_length);
  dest.reserve(static_cast<unsigned int>(std::min<std::size_t>(length, UString::npos)));
}

template <class Rules, class Dest>
void append_with_entities(Dest& dest, UString const& text, Unit const* first_special) {
  Unit const* const begin = begin_of(text);
  Unit const* const end = end_of(text);
  Unit const* copied = begin;
  auto const append_up_to = [&](Unit const* place) {
    dest.append(text, static_cast<unsigned int>(copied - begin),
                static_cast<unsigned int>(place - copied));
  };
  for (Unit const* place = first_special; place != end;
       place = Rules::Search::find(place + 1, end)) {
    Entity const entity = Rules::entity(begin, place);
    if (entity.empty()) continue;
    append_up_to(place);
    dest.append(entity.data(), std::min(entity.size(), LONGEST_ENTITY));
    copied = place + 1;
  }
  append_up_to(end);
}

template <class Dest>
void append_as_cdata(Dest& dest, UString const& text) {
  make_room(dest, text.length() + CDATA_GROWTH);
  dest.append(markup::CDATA_BEGIN.data(), markup::CDATA_BEGIN.size());
  dest.append(text);
  dest.append(markup::CDATA_END.data(), markup::CDATA_END.size());
}

template <class Dest>
void append_special(Dest& dest, UString const& text, Unit const* first_special) {
  Growth const growth = growth_with_entities(text, first_special);
  if (growth.may_wrap && growth.units >= CDATA_GROWTH) {
    append_as_cdata(dest, text);
  } else {
    make_room(dest, text.length() + growth.units);
    append_with_entities<Content>(dest, text, first_special);
  }
}

}  // namespace

// Most texts hold nothing special, and are copied while they are searched.
void append_escaped(TextBuffer& dest, UString const& text) {
  TextBuffer::Pen pen = dest.pen_for(text.length());
  Unit const* const first_special = pen.put_until<Content::Search>(text);
  if (first_special == end_of(text)) {
    dest.end_at(pen);
  } else {
    append_special(dest, text, first_special);
  }
}

bool put_if_plain(TextBuffer::Pen& pen, UString const& text) {
  return pen.put_until<Content::Search>(text) == end_of(text);
}

bool needs_escape(UString const& text) {
  return Content::Search::find(begin_of(text), end_of(text)) != end_of(text);
}

UString XmlDoc::escape(UString const& text) {
  Unit const* const first_special = Content::Search::find(begin_of(text), end_of(text));
  if (first_special == end_of(text)) return text;
  UString escaped;
  append_special(escaped, text, first_special);
  return escaped;
}

UString XmlDoc::escape_attr(UString const& value) {
  UString escaped;
  append_with_entities<AttributeValue>(
      escaped, value, AttributeValue::Search::find(begin_of(value), end_of(value)));
  return escaped;
}

}  // namespace Orn

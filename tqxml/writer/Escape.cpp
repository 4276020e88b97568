#include "tqxml/writer/Escape.h"

#include <algorithm>
#include <cstdint>

#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/XmlDoc.h"

namespace Orn {
namespace {

// What a CDATA section adds to a text: "<![CDATA[" and "]]>".
constexpr unsigned int CDATA_GROWTH = 9 + 3;

struct Entities {
  UString const amp{u"&amp;"};
  UString const lt{u"&lt;"};
  UString const gt{u"&gt;"};
  UString const quot{u"&quot;"};
  UString const tab{u"&#9;"};
  UString const line_feed{u"&#10;"};
  UString const carriage_return{u"&#13;"};
};

Entities const& entities() {
  static Entities const all;
  return all;
}

// Each of the two gives the entity that must stand for the unit at `i`, or null when the unit can
// stay.

UString const* entity_in_content(UString const& text, unsigned int i) {
  // Most units of most texts are above all those that matter.
  if (text[i] > u'>') return nullptr;
  switch (text[i]) {
    case u'&':
      return &entities().amp;
    case u'<':
      return &entities().lt;
    case u'>':
      return i >= 2 && text[i - 1] == u']' && text[i - 2] == u']' ? &entities().gt : nullptr;
    default:
      return nullptr;
  }
}

UString const* entity_in_attribute(UString const& text, unsigned int i) {
  switch (text[i]) {
    case u'&':
      return &entities().amp;
    case u'<':
      return &entities().lt;
    case u'"':
      return &entities().quot;
    case u'\t':
      return &entities().tab;
    case u'\n':
      return &entities().line_feed;
    case u'\r':
      return &entities().carriage_return;
    default:
      return nullptr;
  }
}

// What entities add to a text, in code units.
struct Growth {
  std::uint64_t units = 0;
  bool holds_cdata_end = false;
};

template <class EntityFor>
Growth growth_with_entities(UString const& text, EntityFor entity_for) {
  Growth growth;
  for (unsigned int i = 0; i < text.length(); ++i) {
    UString const* const entity = entity_for(text, i);
    if (entity == nullptr) continue;
    growth.units += entity->length() - 1;
    if (entity == &entities().gt) growth.holds_cdata_end = true;
  }
  return growth;
}

// Makes room once for what is to be appended. A length that no text can have is refused here.
void reserve_more(UString& dest, std::uint64_t units) {
  std::uint64_t const length = std::min<std::uint64_t>(dest.length() + units, UString::npos);
  dest.reserve(static_cast<unsigned int>(length));
}

template <class EntityFor>
void append_with_entities(UString& dest, UString const& text, Growth const& growth,
                          EntityFor entity_for) {
  reserve_more(dest, text.length() + growth.units);
  unsigned int copied = 0;
  for (unsigned int i = 0; i < text.length(); ++i) {
    UString const* const entity = entity_for(text, i);
    if (entity == nullptr) continue;
    dest.append(text, copied, i - copied).append(*entity);
    copied = i + 1;
  }
  dest.append(text, copied, UString::npos);
}

void append_as_cdata(UString& dest, UString const& text) {
  reserve_more(dest, std::uint64_t{text.length()} + CDATA_GROWTH);
  dest.append(markup::CDATA_BEGIN).append(text).append(markup::CDATA_END);
}

}  // namespace

void append_escaped(UString& dest, UString const& text) {
  Growth const growth = growth_with_entities(text, entity_in_content);
  if (growth.units == 0) {
    dest.append(text);
  } else if (!growth.holds_cdata_end && CDATA_GROWTH <= growth.units) {
    append_as_cdata(dest, text);
  } else {
    append_with_entities(dest, text, growth, entity_in_content);
  }
}

UString XmlDoc::escape(UString const& text) {
  UString escaped;
  append_escaped(escaped, text);
  return escaped;
}

UString XmlDoc::escape_attr(UString const& value) {
  UString escaped;
  append_with_entities(escaped, value, growth_with_entities(value, entity_in_attribute),
                       entity_in_attribute);
  return escaped;
}

}  // namespace Orn

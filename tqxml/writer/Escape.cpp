#include "tqxml/writer/Escape.h"

#include "tqxml/writer/MarkupText.h"
#include "tqxml/writer/XmlDoc.h"

namespace Orn {
namespace {

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

template <class EntityFor>
void append_with_entities(UString& dest, UString const& text, EntityFor entity_for) {
  unsigned int copied = 0;
  for (unsigned int i = 0; i < text.length(); ++i) {
    UString const* const entity = entity_for(text, i);
    if (entity == nullptr) continue;
    dest.append(text, copied, i - copied).append(*entity);
    copied = i + 1;
  }
  dest.append(text, copied, UString::npos);
}

// What entities would add to a text, in code units.
struct Growth {
  std::size_t units = 0;
  bool holds_cdata_end = false;
};

Growth growth_with_entities(UString const& text) {
  Growth growth;
  for (unsigned int i = 0; i < text.length(); ++i) {
    UString const* const entity = entity_in_content(text, i);
    if (entity == nullptr) continue;
    growth.units += entity->length() - 1;
    if (entity == &entities().gt) growth.holds_cdata_end = true;
  }
  return growth;
}

}  // namespace

void append_escaped(UString& dest, UString const& text) {
  Growth const growth = growth_with_entities(text);
  if (growth.units == 0) {
    dest.append(text);
  } else if (!growth.holds_cdata_end &&
             markup::CDATA_BEGIN.length() + markup::CDATA_END.length() <= growth.units) {
    dest.append(markup::CDATA_BEGIN).append(text).append(markup::CDATA_END);
  } else {
    append_with_entities(dest, text, entity_in_content);
  }
}

UString XmlDoc::escape(UString const& text) {
  UString escaped;
  append_escaped(escaped, text);
  return escaped;
}

UString XmlDoc::escape_attr(UString const& value) {
  UString escaped;
  append_with_entities(escaped, value, entity_in_attribute);
  return escaped;
}

}  // namespace Orn

#ifndef TQUTIL_XMLTAG_H
#define TQUTIL_XMLTAG_H

#include <cstdint>
#include <string_view>

#include "tqutil/Export.h"
#include "tqutil/UString.h"

namespace Orn {

/// One entry of the tag registry: an element or attribute name that programs may use.
///
///     XmlTag const& tag = XmlTag::lookup(orders::line);       // by number
///     XmlTag wanted(u"urn:example:orders", u"line");
///     XmlTag::Id id = XmlTag::lookup(wanted).id();            // by name
///
/// The registry is filled by vocabularies (tqutil/Vocabulary.h) while the program is loaded,
/// lives as long as the process, and may be read from any number of threads once loaded. Looking
/// up takes constant time and allocates nothing.
class TQUTIL_API XmlTag {
 public:
  /// The number of a tag. 0 means no tag; which others exist is up to the vocabularies.
  enum Id : std::int32_t {};
  /// The number of a namespace. 0 is no namespace, whose URI is the empty text.
  enum NsId : std::int32_t {};

  /// No tag. An XmlDoc takes it for the beginning of a document without a root, and in `pop_elem`
  /// for whichever element is open; no element or attribute has it.
  static constexpr Id NO_TAG{0};
  /// No namespace.
  static constexpr NsId NO_NS{0};

  /// A temporary tag to be looked up; its ids are 0.
  XmlTag(UString const& ns_uri, UString const& simple_name);

  /// The entry with that number. Raises TagException naming the number when there is none.
  static XmlTag const& lookup(Id id);
  /// The entry with the namespace URI and the simple name of `tag`; without such an entry the
  /// vocabularies' catch-all tag. Raises TagException naming both when there is neither. `tag`
  /// stays as it is.
  static XmlTag const& lookup(XmlTag& tag);
  /// The same for names that are at hand as plain UTF-16; no temporary tag is built.
  static XmlTag const& lookup(std::u16string_view ns_uri, std::u16string_view simple_name);
  /// The URI of a namespace. Raises TagException naming the number when there is none.
  static UString const& ns_URI(NsId ns);

  /// The number of the tag; NO_TAG for a temporary one.
  Id id() const noexcept { return id_; }
  /// The number of its namespace; NO_NS for a name without one, and for a temporary tag.
  NsId ns_id() const noexcept { return ns_id_; }
  /// The URI of its namespace, empty for none. Good as long as the tag, which is for an entry of
  /// the registry as long as the process.
  UString const& ns() const noexcept { return ns_; }
  /// The local name. Good as long as the tag.
  UString const& simple_name() const noexcept { return simple_name_; }

  /// `{URI}name` for messages; just `name` for a tag without a namespace.
  UString to_string() const;

 private:
  friend class Registry;
  TQUTIL_LOCAL XmlTag(Id id, NsId ns_id, UString const& ns_uri, UString const& simple_name);

  UString ns_;
  UString simple_name_;
  NsId ns_id_ = NO_NS;
  Id id_ = NO_TAG;
};

}  // namespace Orn

#endif

/// @file
/// Included before a vocabulary file to make its named constants; see Orn::Vocabulary. It has no
/// include guard, since every vocabulary includes it. What its macros make elsewhere is in
/// entries.h.

/// In the place of a namespace: a name that has none.
#define TQ_NO_NS ::Orn::XmlTag::NO_NS
/// A namespace: its number, the name of its constant, and its URI as a `u"..."` literal.
#define TQ_NS(number, name, uri) inline constexpr ::Orn::XmlTag::NsId name{number};
/// The name of elements or attributes: its number, the name of its constant, the constant of its
/// namespace or TQ_NO_NS, and the local name as a `u"..."` literal.
#define TQ_TAG(number, name, ns, local) inline constexpr ::Orn::XmlTag::Id name{number};
/// The tag that stands for all names that no vocabulary has; otherwise as TQ_TAG. A process may
/// have one.
#define TQ_CATCH_ALL(number, name, ns, local) TQ_TAG(number, name, ns, local)

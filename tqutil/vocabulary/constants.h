// Included before a vocabulary file to make its named constants; see tqutil/Vocabulary.h. It has
// no include guard, since every vocabulary includes it.
#define TQ_NO_NS ::Orn::XmlTag::NO_NS
#define TQ_NS(number, name, uri) inline constexpr ::Orn::XmlTag::NsId name{number};
#define TQ_TAG(number, name, ns, local) inline constexpr ::Orn::XmlTag::Id name{number};
#define TQ_CATCH_ALL(number, name, ns, local) TQ_TAG(number, name, ns, local)

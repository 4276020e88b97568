// Included before a vocabulary file to make the lines of its table; see tqutil/Vocabulary.h. It
// has no include guard, since every vocabulary includes it.
#define TQ_NO_NS ::Orn::XmlTag::NO_NS
#define TQ_NS(number, name, uri) {::Orn::VocabularyEntry::NAMESPACE, number, #name, 0, uri},
#define TQ_TAG(number, name, ns, local) {::Orn::VocabularyEntry::TAG, number, #name, ns, local},
#define TQ_CATCH_ALL(number, name, ns, local) \
  {::Orn::VocabularyEntry::CATCH_ALL, number, #name, ns, local},

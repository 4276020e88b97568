// Included behind a vocabulary file; see tqutil/Vocabulary.h.
#undef TQ_NO_NS
#undef TQ_NS
#undef TQ_TAG
#undef TQ_CATCH_ALL

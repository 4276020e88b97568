#include <cstdio>

#include "tqutil/Vocabulary.h"

static Orn::VocabularyEntry const entries[] = {
    {Orn::VocabularyEntry::TAG, 1, "here", 0, u"here"},
    {Orn::VocabularyEntry::TAG, 1, "there", 0, u"there"},
};
static Orn::Vocabulary const vocabulary("contradiction", entries);

int main() { std::puts("main has been reached"); }

#ifndef VOCABULARY_CHECK_H
#define VOCABULARY_CHECK_H

#include <vector>

#include "vocabulary/DefFile.h"
#include "vocabulary/Names.h"

namespace vocabulary {

/// What is wrong with the file: alone, or in one program with the others, which are not looked at
/// for their own sake. In the order of its lines.
std::vector<Complaint> complaints_about(DefFile const& file, std::vector<DefFile> const& beside);

/// The names of the list that neither the file nor the others have.
std::vector<NameList::Entry> missing_names(NameList const& names, DefFile const& file,
                                           std::vector<DefFile> const& beside);

/// What may surprise a reader: attributes whose number is so high that a SaxParser hides them.
std::vector<Complaint> hidden_attributes(NameList const& names, DefFile const& file);

}  // namespace vocabulary

#endif

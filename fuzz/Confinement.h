#ifndef FUZZ_CONFINEMENT_H
#define FUZZ_CONFINEMENT_H

namespace fuzz {

/// Keeps Xerces-C++ away from everything but the document while a document is read. There is one at
/// a time.
///
/// No file and no connection is opened. A system id stands for a text in memory: a DTD for a name
/// with "dtd" in it, content for one with "ent", and for any other there is nothing to be had.
///
/// What Xerces takes through its memory manager in all is limited, whether or not it gives it back.
/// It takes more than 160 KiB for each reference to an entity, so that entities that are made of
/// one another, on whose number the library sets no limit, end as memory that has run out does. The
/// limit is many times what documents of the length that the targets are given need otherwise.
class Confinement {
 public:
  Confinement();
  ~Confinement();
  Confinement(Confinement const&) = delete;
  Confinement& operator=(Confinement const&) = delete;

  /// Whether the limit has been reached. What was read until then is of no account.
  static bool is_exhausted();
};

}  // namespace fuzz

#endif

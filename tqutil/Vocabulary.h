#ifndef TQUTIL_VOCABULARY_H
#define TQUTIL_VOCABULARY_H

#include <cstddef>
#include <cstdint>

#include "tqutil/Export.h"

namespace Orn {

/// One line of a vocabulary file, as `tqutil/vocabulary/entries.h` makes it.
struct VocabularyEntry {
  /// What a line declares.
  enum Kind {
    NAMESPACE,  ///< a namespace, by TQ_NS
    TAG,        ///< a name, by TQ_TAG
    CATCH_ALL,  ///< the tag of names that are not registered, by TQ_CATCH_ALL
  };
  Kind kind;             ///< which of them this one is
  std::int32_t number;   ///< of the namespace or tag
  char const* name;      ///< of the constant, for messages
  std::int32_t ns;       ///< TAG, CATCH_ALL: the number of its namespace
  char16_t const* text;  ///< NAMESPACE: its URI; TAG, CATCH_ALL: the local name
};

/// Enters a vocabulary into the tag registry: the names that a product's documents use.
///
/// A vocabulary is written once, in a file of its own, say `orders.def`:
///
///     TQ_NS (1, ns_orders, u"urn:example:orders")      // number, constant, URI
///     TQ_TAG(1, order, ns_orders, u"order")            // number, constant, namespace, local name
///     TQ_TAG(2, lang,  TQ_NO_NS,  u"lang")             // a name without a namespace
///     TQ_CATCH_ALL(3, other, TQ_NO_NS, u"other")       // stands for all unregistered names
///
/// The last line is optional and holds for the whole process: it belongs into the vocabulary of a
/// program, never into that of a library. A header makes the named constants of it:
///
///     #include "tqutil/XmlTag.h"
///     namespace orders {
///     #include "tqutil/vocabulary/constants.h"
///     #include "orders.def"
///     #include "tqutil/vocabulary/end.h"
///     }
///
/// and one source file, linked into the program itself or into a shared library, the table:
///
///     #include "orders.h"
///     #include "tqutil/Vocabulary.h"
///     namespace orders {
///     static Orn::VocabularyEntry const entries[] = {
///     #include "tqutil/vocabulary/entries.h"
///     #include "orders.def"
///     #include "tqutil/vocabulary/end.h"
///     };
///     static Orn::Vocabulary const vocabulary("orders", entries);
///     }
///
/// Any number of vocabularies may be linked into one process. Numbers are the product's own,
/// explicit and stable; 0 is taken. A vocabulary uses the namespaces that it declares itself. Tags
/// numbered above 1141 are hidden from the attribute iteration of the streaming reader.
///
/// A number used twice, a name (namespace URI and local name) used twice, a second catch-all, a
/// number 0, an empty local name or a namespace that is not there stops the program while it is
/// loaded, with a message on the standard error stream that names the entries. Two namespaces may
/// have one URI.
///
/// A shared library that is loaded late may bring a vocabulary, provided that no other thread looks
/// tags up meanwhile and that it is not unloaded and loaded again.
class TQUTIL_API Vocabulary {
 public:
  /// Enters the lines of a table, which are copied. `name` is that of the vocabulary, for messages.
  /// Stops the program as said above.
  template <std::size_t N>
  Vocabulary(char const* name, VocabularyEntry const (&entries)[N])
      : Vocabulary(name, entries, N) {}
  /// The same for the first `count` lines of a table.
  Vocabulary(char const* name, VocabularyEntry const* entries, std::size_t count);
};

}  // namespace Orn

#endif

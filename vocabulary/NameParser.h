#ifndef VOCABULARY_NAMEPARSER_H
#define VOCABULARY_NAMEPARSER_H

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

#include "tqxml/foundation/GuardedParser.h"
#include "vocabulary/Names.h"
#include "vocabulary/SchemaNames.h"
#include "vocabulary/Source.h"

namespace vocabulary {

/// Whatever a document refers to is taken for empty.
class NothingElse : public xercesc::XMLEntityResolver {
 public:
  xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override;
};

/// Adds the names of one document or schema to a list, kept to limits.
class NameParser final : private Orn::ParserGuard, public Orn::GuardedParser<xercesc::SAXParser> {
 public:
  /// `file` is for messages.
  NameParser(std::string file, SourceOptions const& options, NameList& names);

  /// Raises Failure for a document that is malformed; what else can go wrong goes through it.
  void read(std::istream& in);

 private:
  using Attributes = xercesc::RefVectorOf<xercesc::XMLAttr>;
  struct Prefix {
    std::size_t depth;
    std::u16string prefix;
    std::u16string uri;
  };

  void startElement(xercesc::XMLElementDecl const& decl, unsigned int uri_id, XMLCh const* prefix,
                    Attributes const& attributes, XMLSize_t count, bool is_empty,
                    bool is_root) override;
  void endElement(xercesc::XMLElementDecl const& decl, unsigned int uri_id, bool is_root,
                  XMLCh const* prefix) override;
  void error(unsigned int code, XMLCh const* domain, ErrTypes type, XMLCh const* text,
             XMLCh const* system_id, XMLCh const* public_id, XMLFileLoc line,
             XMLFileLoc column) override;

  void read_document(NameView const& element, Attributes const& attributes, XMLSize_t count);
  void read_schema(NameView const& element, Attributes const& attributes, XMLSize_t count);
  void leave_element();
  void note_declaration(xercesc::XMLAttr const& attribute);
  void add(NameView const& name, NameList::Use use);

  std::uint64_t line() const;
  std::u16string_view uri(unsigned int id) const;
  std::u16string_view uri_of_prefix(std::u16string_view prefix) const;
  bool is_declaration(xercesc::XMLAttr const& attribute) const;
  [[noreturn]] void fail_here(std::string const& complaint) const;

  std::string const file_;
  bool const schemas_are_documents_;
  NameList& names_;
  xercesc::HandlerBase handler_;
  NothingElse nothing_else_;
  std::size_t depth_ = 0;
  /// There while a schema is read for the names that it declares.
  std::optional<SchemaNames> schema_;
  /// Those of the open elements of a schema.
  std::vector<Prefix> prefixes_;
};

/// The beginning of a message about that place.
std::string at(std::string const& file, std::uint64_t line, std::uint64_t column);

}  // namespace vocabulary

#endif

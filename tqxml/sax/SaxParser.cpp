#include "tqxml/sax/SaxParser.h"

#include <utility>

#include "tqxml/foundation/ParserMemory.h"
#include "tqxml/foundation/XercesMemory.h"
#include "tqxml/foundation/XercesStart.h"
#include "tqxml/sax/LimitedParserImpl.h"
#include "tqxml/sax/ParserImpl.h"

namespace Orn {
namespace {

bool const g_initialized_ok = start_xerces();

}  // namespace

SaxParser::SaxParser() { check_xerces_started(g_initialized_ok); }

SaxParser::SaxParser(std::istream& in) : SaxParser(&in) {}

SaxParser::SaxParser(std::istream* in) : SaxParser() { initialize(in); }

SaxParser::SaxParser(ReadLimits const& limits) : SaxParser() {
  impl_ = new_parser(nullptr, &limits);
}

SaxParser::SaxParser(std::istream& in, ReadLimits const& limits) : SaxParser(&in, limits) {}

SaxParser::SaxParser(std::istream* in, ReadLimits const& limits) : SaxParser() {
  start(in, &limits);
}

SaxParser::SaxParser(SaxParser const& other) = default;
SaxParser& SaxParser::operator=(SaxParser const& other) = default;
// Records that outlive the parser are told so before they are let go.
SaxParser::~SaxParser() { impl_.reset(); }

SaxParser::Elem SaxParser::initialize(std::istream* in) {
  start(in, impl_ == nullptr ? nullptr : impl_->limits());
  return root();
}

void SaxParser::start(std::istream* in, ReadLimits const* limits) {
  // The limits may be those of the parser that goes.
  std::shared_ptr<ParserImpl> fresh = new_parser(in, limits);
  root_ = Ref<ElemImpl>();
  impl_ = std::move(fresh);
  root_ = impl_->root();
}

std::unique_ptr<SaxParser::ParserImpl> SaxParser::new_parser(std::istream* in,
                                                             ReadLimits const* limits) {
  using Parser = std::unique_ptr<ParserImpl>;
  return with_xerces_memory([in, limits] {
    if (limits != nullptr) return Parser(std::make_unique<LimitedParserImpl>(in, *limits));
    return Parser(std::make_unique<ParserWithMemory<ParserImpl>>(in));
  });
}

SaxParser::Elem SaxParser::root() const { return Elem(root_); }

UString SaxParser::error_text() const {
  return impl_ == nullptr ? UString() : impl_->complaint().text;
}

std::uint64_t SaxParser::error_line() const {
  return impl_ == nullptr ? 0 : impl_->complaint().line;
}

std::uint64_t SaxParser::error_column() const {
  return impl_ == nullptr ? 0 : impl_->complaint().column;
}

}  // namespace Orn

#include "tqxml/foundation/Catalogue.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "tqutil/UMessage.h"

namespace {

using Orn::Catalogue;
using Orn::UMessage;
using Orn::UString;
using Arg = UMessage::Arg;

struct Message {
  Catalogue::Index index;
  char const* text;
};

Message const messages[] = {
    {Catalogue::UNABLE_TO_INITIALIZE_XERCES, "ZEMKA0672E Unable to initialize Xerces-c."},
    {Catalogue::XERCES_XML_EXCEPTION,
     "ZEMKA0673E Xerces XMLException: code: %d, line: %d, msg: %d."},
    {Catalogue::XERCES_DOM_EXCEPTION, "ZEMKA0674E Xerces DOMException: code: %d, msg: %s."},
    {Catalogue::XERCES_SAX_PARSE_EXCEPTION,
     "ZEMKA0675E Xerces SAXParseException: line: %ld, column: %ld, msg: %s."},
    {Catalogue::UNRECOGNIZED_XERCES_EXCEPTION,
     "ZEMKA0676E Unrecognized exception from Xerces while parsing XML."},
    {Catalogue::IS_EMPTY_MISMATCH,
     "ZEMKA0677E Internal Error: %s: Element '%s' is-empty mismatch; expected %d, got %d."},
    {Catalogue::MISSING_REQUIRED_CHILD,
     "ZEMKA0678E Internal Error: %s: Missing required child '%s' under '%s'."},
    {Catalogue::TAG_MISMATCH,
     "ZEMKA0679E Internal Error: %s: Tag Mismatch, expected '%s' got '%s'."},
    {Catalogue::NIL_ELEMENT, "ZEMKA0680E Internal Error: %s: nil element."},
    {Catalogue::NO_CHILDREN, "ZEMKA0681E Internal Error: %s: Element '%s' has no children."},
    {Catalogue::OPERATION_CHECK_IS_EMPTY, "ZEMKA0682E Elem::check_is_empty()"},
    {Catalogue::OPERATION_CHECK_IS_NIL, "ZEMKA0683E Elem::check_is_nil()"},
    {Catalogue::OPERATION_CHILD, "ZEMKA0684E Elem::child()"},
    {Catalogue::OPERATION_ELEM_MATCH, "ZEMKA0685E Elem::match()"},
    {Catalogue::OPERATION_ATTRIBUTE_MATCH, "ZEMKA0686E Attribute::match()"},
    {Catalogue::NIL_ATTRIBUTE, "ZEMKA0687E Internal Error: %s: nil attribute."},
    {Catalogue::ALREADY_CLOSED, "ZEMKA0688E Document had already been closed."},
    {Catalogue::UNRECOGNIZED_STATE, "ZEMKA0689E Document is in unrecognized state."},
    {Catalogue::ACTIVE_PUSHED_ELEMENTS, "ZEMKA0690E There are one or more active pushed elements."},
    {Catalogue::NOT_CLOSE_PENDING, "ZEMKA0691E Document is not in DOC_CLOSE_PENDING state."},
    {Catalogue::NO_OPEN_ELEMENT_FOR_ATTRIBUTE,
     "ZEMKA0692E Document must have open element(s) to add an attribute."},
    {Catalogue::CDATA_TERMINATOR_IN_TEXT,
     "ZEMKA0693E CDATA text contains termination string, '%s' for arg: '%s' with value: '%s'"},
    {Catalogue::NO_OPEN_ELEMENT_FOR_BODY,
     "ZEMKA0694E Document must have open element(s) to add an element text body."},
    {Catalogue::POPPED_ELEMENT_MISMATCH, "ZEMKA0695E Popped element doesn't match active element."},
    {Catalogue::START_TAG_DISALLOWED, "ZEMKA0696E Document state disallows adding a start tag."},
    {Catalogue::CLOSE_NOT_CALLED, "ZEMKA0697E XmlDoc::close() hasn't been called."},
    {Catalogue::NAMESPACE_AFTER_OUTPUT,
     "ZEMKA0698E Namespace cannot be added after partial output."},
    {Catalogue::NOT_STARTED, "ZEMKA0699E Document must be started in order to get output."},
    {Catalogue::BAD_READ, "ZEMKA0700E Bad read on XML input stream"},
    {Catalogue::NOT_VALID_STREAM, "ZEMKA0701E Not valid XML stream"},
    {Catalogue::OPT_CHILD_AFTER_NEXT_CHILD,
     "ZEMKA0702E SaxParser::Elem::opt_child() illegally called after call to next_child"},
    {Catalogue::CHILD_AFTER_NEXT_CHILD,
     "ZEMKA0703E SaxParser::Elem::child() illegally called after call to next_child"},
    {Catalogue::PARSER_ERROR, "ZEMKA0704E %s"},
};

TEST(Catalogue, BeginsWithItsNameAndTheNumberOfMessages) {
  EXPECT_STREQ(Catalogue::table()[0], "tqxml 33");
  EXPECT_EQ(Catalogue::COUNT, 33);
}

TEST(Catalogue, HasExactlyTheseMessagesInThisOrder) {
  ASSERT_EQ(std::size(messages), 33U);
  int expected_index = 1;
  for (auto const& [index, text] : messages) {
    EXPECT_EQ(index, expected_index++) << text;
    EXPECT_STREQ(Catalogue::table()[index], text);
  }
}

TEST(Catalogue, NumbersItsMessagesFrom672OnAsErrors) {
  for (int index = 1; index <= Catalogue::COUNT; ++index) {
    std::string const identifier = "ZEMKA0" + std::to_string(671 + index) + "E ";
    EXPECT_EQ(std::string(Catalogue::table()[index]).substr(0, 11), identifier);
  }
}

TEST(Catalogue, IsTheSameTableEachTime) {
  char const** const table = Catalogue::table();
  EXPECT_EQ(Catalogue::table(), table);
}

TEST(Catalogue, HasOnlyMessagesThatAreRenderedAsTheyStandWhenTheyHaveNoPlaceholder) {
  for (auto const& [index, text] : messages) {
    if (std::strchr(text, '%') != nullptr) continue;
    EXPECT_EQ(UMessage(Catalogue::table(), index).text(), UString::from_utf8(text));
  }
}

TEST(Catalogue, EndsWithItsLastMessage) {
  EXPECT_EQ(UMessage::sprintf(Catalogue::table(), 34, Arg::nil),
            u"Message 34 of the catalogue 'tqxml 33'");
}

TEST(Catalogue, RendersATextInPlaceOfANumber) {
  UString const parser_text(u"could not open file");
  Arg const& nil = Arg::nil;
  UMessage const message(Catalogue::table(), Catalogue::XERCES_XML_EXCEPTION, Arg(std::int32_t{17}),
                         Arg(std::int32_t{230}), Arg(parser_text), nil, nil, nil, nil, nil, nil,
                         nil);
  EXPECT_EQ(message.text(),
            u"ZEMKA0673E Xerces XMLException: code: 17, line: 230, msg: could not open file.");
}

TEST(Catalogue, RendersNumbersOfBothKinds) {
  Arg const& nil = Arg::nil;
  UMessage const parse_error(Catalogue::table(), Catalogue::XERCES_SAX_PARSE_EXCEPTION, Arg(3L),
                             Arg(14L), Arg(UString(u"unterminated start tag 'r'")), nil, nil, nil,
                             nil, nil, nil, nil);
  EXPECT_EQ(parse_error.text(),
            u"ZEMKA0675E Xerces SAXParseException: line: 3, column: 14, msg: unterminated start "
            u"tag 'r'.");
  UMessage const dom_error(Catalogue::table(), Catalogue::XERCES_DOM_EXCEPTION,
                           Arg(std::int32_t{5}), Arg(UString(u"invalid character")));
  EXPECT_EQ(dom_error.text(), u"ZEMKA0674E Xerces DOMException: code: 5, msg: invalid character.");
}

TEST(Catalogue, RendersItsOperationNamesWithTheirIdentifiers) {
  struct {
    Catalogue::Index index;
    char16_t const* text;
  } const operations[] = {
      {Catalogue::OPERATION_CHECK_IS_EMPTY, u"ZEMKA0682E Elem::check_is_empty()"},
      {Catalogue::OPERATION_CHECK_IS_NIL, u"ZEMKA0683E Elem::check_is_nil()"},
      {Catalogue::OPERATION_CHILD, u"ZEMKA0684E Elem::child()"},
      {Catalogue::OPERATION_ELEM_MATCH, u"ZEMKA0685E Elem::match()"},
      {Catalogue::OPERATION_ATTRIBUTE_MATCH, u"ZEMKA0686E Attribute::match()"},
  };
  for (auto const& [index, text] : operations) {
    EXPECT_EQ(UMessage::sprintf(Catalogue::table(), index, Arg::nil), text);
  }
}

TEST(Catalogue, RendersAnOperationNameInsideAnotherMessage) {
  UString const where =
      UMessage::sprintf(Catalogue::table(), Catalogue::OPERATION_CHECK_IS_EMPTY, Arg::nil);
  Arg const& nil = Arg::nil;
  UMessage const message(Catalogue::table(), Catalogue::IS_EMPTY_MISMATCH, Arg(where),
                         Arg(UString(u"{urn:x}a")), Arg(std::int32_t{true}),
                         Arg(std::int32_t{false}), nil, nil, nil, nil, nil, nil);
  EXPECT_EQ(message.text(),
            u"ZEMKA0677E Internal Error: ZEMKA0682E Elem::check_is_empty(): Element '{urn:x}a' "
            u"is-empty mismatch; expected 1, got 0.");
}

}  // namespace

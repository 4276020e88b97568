#include <gmock/gmock.h>

#include <random>
#include <sstream>

#include "tests/support/TestTags.h"
#include "tests/writer/Snapshot.h"
#include "tests/writer/WriterModel.h"

namespace tests {
namespace {

using namespace testtags;
using Orn::IllegalArgException;
using Orn::StateException;
using Orn::STPException;
using Orn::TagException;
using Orn::UMessage;
using Orn::UString;
using Orn::XmlDoc;
using Orn::XmlTag;

enum Operation {
  SET_INDENTED_FORMAT,
  START_DOC,
  PUSH_ELEM,
  POP_ELEM,
  ADD_ELEM,
  ADD_ELEM_TEXT,
  ADD_ELEM_CDATA,
  ADD_ATTR,
  ADD_ATTR_NUMBER,
  APPEND_ELEM_BODY,
  ADD_COMMENT,
  ADD_PROCESSING_INSTRUCTION,
  ADD_XML_DECL,
  ADD_NS,
  ADD_NS_PREFIX,
  CLOSE,
  STR,
  BYTE_ARRAY,
  INC_STR,
};

/// An operation with more arguments than any takes.
struct Call {
  Operation operation;
  XmlTag::Id tag;
  XmlTag::NsId ns;
  UString text;
  UString prefix;
  long number;
  bool flag;
};

std::ostream& operator<<(std::ostream& stream, Call const& call) {
  return stream << "operation " << call.operation << ", tag " << call.tag << ", namespace "
                << call.ns << ", text \"" << call.text << "\", prefix \"" << call.prefix
                << "\", number " << call.number << ", flag " << call.flag;
}

UString as_units(std::string const& bytes) {
  UString text;
  for (char byte : bytes)
    text.append(static_cast<unsigned short>(static_cast<unsigned char>(byte)));
  return text;
}

/// What the call gives back, as text.
template <class Writer>
UString perform(Writer& writer, Call const& call) {
  switch (call.operation) {
    case SET_INDENTED_FORMAT:
      return writer.set_indented_format(), UString();
    case START_DOC:
      return writer.start_doc(call.tag), UString();
    case PUSH_ELEM:
      return as_units(std::to_string(writer.push_elem(call.tag, call.flag)));
    case POP_ELEM:
      return writer.pop_elem(call.tag), UString();
    case ADD_ELEM:
      return writer.add_elem(call.tag, call.flag), UString();
    case ADD_ELEM_TEXT:
      return writer.add_elem(call.tag, call.text, call.flag), UString();
    case ADD_ELEM_CDATA:
      return writer.add_elem_CDATA(call.tag, call.text), UString();
    case ADD_ATTR:
      return writer.add_attr(call.tag, call.text), UString();
    case ADD_ATTR_NUMBER:
      return writer.add_attr(call.tag, call.number), UString();
    case APPEND_ELEM_BODY:
      return writer.append_elem_body(call.text, call.flag), UString();
    case ADD_COMMENT:
      return writer.add_comment(call.text), UString();
    case ADD_PROCESSING_INSTRUCTION:
      return writer.add_processing_instruction(call.text), UString();
    case ADD_XML_DECL:
      return writer.add_xml_decl(call.text), UString();
    case ADD_NS:
      return writer.add_ns(call.ns), UString();
    case ADD_NS_PREFIX:
      return writer.add_ns(call.ns, call.prefix), UString();
    case CLOSE:
      return writer.close(), UString();
    case STR:
      return writer.str();
    case BYTE_ARRAY:
      return as_units(writer.byte_array());
    case INC_STR:
      return writer.inc_str();
  }
  throw std::logic_error("no such operation");
}

std::string class_of(STPException const& e) {
  if (typeid(e) == typeid(StateException)) return "StateException";
  if (typeid(e) == typeid(IllegalArgException)) return "IllegalArgException";
  if (typeid(e) == typeid(TagException)) return "TagException";
  return typeid(e).name();
}

/// As a Refusal of the model has it: the identifier and the arguments.
std::string message_of(STPException const& e) {
  std::string text = e.message().text().substr(0, 10).to_utf8();
  for (int i = 1; e.message().arg(i).kind() != UMessage::Arg::KIND_NIL; ++i) {
    text += "(" + e.message().arg(i).text().to_utf8() + ")";
  }
  return text;
}

std::string class_for(std::string const& message) {
  if (message.compare(0, 5, "TQUTL") == 0) return "TagException";
  return message.compare(0, 10, "ZEMKA0693E") == 0 ? "IllegalArgException" : "StateException";
}

struct Answer {
  UString text;
  std::string refusal;
  bool operator==(Answer const& other) const {
    return text == other.text && refusal == other.refusal;
  }
};

std::ostream& operator<<(std::ostream& stream, Answer const& answer) {
  if (!answer.refusal.empty()) return stream << answer.refusal;
  return stream << '"' << answer.text << '"';
}

Answer answer_of(XmlDoc& doc, Call const& call) {
  try {
    return {perform(doc, call), ""};
  } catch (STPException const& e) {
    return {UString(), class_of(e) + " " + message_of(e)};
  }
}

Answer answer_of(WriterModel& model, Call const& call) {
  try {
    return {perform(model, call), ""};
  } catch (WriterModel::Refusal const& refusal) {
    return {UString(), class_for(refusal.message) + " " + refusal.message};
  }
}

class RandomCalls {
 public:
  explicit RandomCalls(unsigned int seed) : random_(seed) {}

  Call next() {
    // Weighted by repetition, so that documents grow before they are closed.
    static std::vector<Operation> const operations = {
        PUSH_ELEM,
        PUSH_ELEM,
        PUSH_ELEM,
        PUSH_ELEM,
        PUSH_ELEM,
        PUSH_ELEM,
        POP_ELEM,
        POP_ELEM,
        POP_ELEM,
        POP_ELEM,
        ADD_ELEM,
        ADD_ELEM,
        ADD_ELEM_TEXT,
        ADD_ELEM_TEXT,
        ADD_ELEM_CDATA,
        ADD_ATTR,
        ADD_ATTR,
        ADD_ATTR_NUMBER,
        ADD_ATTR_NUMBER,
        APPEND_ELEM_BODY,
        APPEND_ELEM_BODY,
        APPEND_ELEM_BODY,
        ADD_COMMENT,
        ADD_PROCESSING_INSTRUCTION,
        ADD_XML_DECL,
        ADD_NS,
        ADD_NS,
        ADD_NS_PREFIX,
        ADD_NS_PREFIX,
        CLOSE,
        STR,
        BYTE_ARRAY,
        INC_STR,
        START_DOC,
        START_DOC,
        SET_INDENTED_FORMAT,
    };
    static std::vector<XmlTag::Id> const tags = {
        u_r, u_r, u_r, u_a, u_a, u_b, u_z, v_a, v_a, v_b, w_a, a, XmlTag::NO_TAG, unregistered};
    static std::vector<XmlTag::NsId> const namespaces = {
        ns_u, ns_v, ns_w, ns_u_again, ns_amp, XmlTag::NO_NS, XmlTag::NsId(9999)};
    static std::vector<UString> const texts = {
        UString(), u"t",      u" ",          u"a<b",         u"&&&",
        u"&&",     u"]]>",    u"<]]>",       u"x]]",         u"\"'>",
        u"\u00e9", u"\u2028", u"\U0001F600", u"\xD800 lone", UString(u"zero\0", 5)};
    static std::vector<UString> const prefixes = {UString(), u"x", u"A",      u"N1",
                                                  u"N2",     u"M", u"N\u00e9"};
    static std::vector<long> const numbers = {0L, 1L, -1L, 42L, -2147483647L, 2147483647L};
    return {one_of(operations), one_of(tags),    one_of(namespaces), one_of(texts),
            one_of(prefixes),   one_of(numbers), random_() % 2 == 0};
  }

  std::size_t up_to(std::size_t limit) { return 1 + random_() % limit; }

 private:
  template <class T>
  T one_of(std::vector<T> const& all) {
    return all[random_() % all.size()];
  }

  std::mt19937 random_;
};

/// Makes both writers do the same and compares them after every call.
class Comparison {
 public:
  testing::AssertionResult after(Call const& call) {
    history_ << "\n  " << call;
    Answer const expected = answer_of(model_, call);
    Answer const actual = answer_of(doc_, call);
    refusal_ = actual.refusal;
    if (!(actual == expected)) {
      return testing::AssertionFailure() << actual << ", not " << expected << calls();
    }
    Snapshot const wanted = model_.snapshot();
    Snapshot const found = snapshot(doc_);
    if (found == wanted) return testing::AssertionSuccess();
    return testing::AssertionFailure() << found << "\nnot " << wanted << calls();
  }

  void go_on_with_a_copy() {
    history_ << "\n  copied";
    XmlDoc const copy(doc_);
    doc_ = XmlDoc(u_a);
    doc_ = copy;
  }

  /// The refusal of the last call, empty when it succeeded.
  std::string const& refusal() const { return refusal_; }
  std::uint32_t state() const { return Orn::XmlDocTestAccess::state(doc_); }

 private:
  std::string calls() const { return "\nafter" + history_.str(); }

  XmlDoc doc_;
  WriterModel model_;
  std::ostringstream history_;
  std::string refusal_;
};

TEST(RandomCalls, HaveTheOutcomesThatThePlainestWriterGivesThem) {
  std::set<std::string> refusals;
  std::set<std::uint32_t> states;
  for (unsigned int seed = 1; seed <= 3000; ++seed) {
    RandomCalls calls(seed);
    Comparison comparison;
    for (std::size_t left = calls.up_to(60); left > 0; --left) {
      ASSERT_TRUE(comparison.after(calls.next())) << "\nseed " << seed;
      if (calls.up_to(20) == 1) comparison.go_on_with_a_copy();
      refusals.insert(comparison.refusal().substr(0, comparison.refusal().find('(')));
      states.insert(comparison.state());
    }
  }
  EXPECT_THAT(states, testing::ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(refusals, testing::ElementsAre(
                            "", "IllegalArgException ZEMKA0693E", "StateException ZEMKA0690E",
                            "StateException ZEMKA0691E", "StateException ZEMKA0692E",
                            "StateException ZEMKA0694E", "StateException ZEMKA0695E",
                            "StateException ZEMKA0696E", "StateException ZEMKA0697E",
                            "StateException ZEMKA0698E", "StateException ZEMKA0699E",
                            "TagException TQUTL0001E", "TagException TQUTL0003E"));
}

}  // namespace
}  // namespace tests

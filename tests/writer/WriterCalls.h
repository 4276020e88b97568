#ifndef TESTS_WRITER_WRITERCALLS_H
#define TESTS_WRITER_WRITERCALLS_H

#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include "tests/support/TestTags.h"
#include "tests/writer/Snapshot.h"
#include "tests/writer/WriterModel.h"

// Calls of a writer as values, so that they can be chosen at random or by the bytes of an input,
// and made to the real writer and to the model of it.

namespace tests {

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
  Orn::XmlTag::Id tag;
  Orn::XmlTag::NsId ns;
  Orn::UString text;
  Orn::UString prefix;
  long number;
  bool flag;
};

inline std::ostream& operator<<(std::ostream& stream, Call const& call) {
  return stream << "operation " << call.operation << ", tag " << call.tag << ", namespace "
                << call.ns << ", text \"" << call.text << "\", prefix \"" << call.prefix
                << "\", number " << call.number << ", flag " << call.flag;
}

inline Orn::UString as_units(std::string const& bytes) {
  Orn::UString text;
  for (char byte : bytes)
    text.append(static_cast<unsigned short>(static_cast<unsigned char>(byte)));
  return text;
}

/// What the call gives back, as text.
template <class Writer>
Orn::UString perform(Writer& writer, Call const& call) {
  switch (call.operation) {
    case SET_INDENTED_FORMAT:
      return writer.set_indented_format(), Orn::UString();
    case START_DOC:
      return writer.start_doc(call.tag), Orn::UString();
    case PUSH_ELEM:
      return as_units(std::to_string(writer.push_elem(call.tag, call.flag)));
    case POP_ELEM:
      return writer.pop_elem(call.tag), Orn::UString();
    case ADD_ELEM:
      return writer.add_elem(call.tag, call.flag), Orn::UString();
    case ADD_ELEM_TEXT:
      return writer.add_elem(call.tag, call.text, call.flag), Orn::UString();
    case ADD_ELEM_CDATA:
      return writer.add_elem_CDATA(call.tag, call.text), Orn::UString();
    case ADD_ATTR:
      return writer.add_attr(call.tag, call.text), Orn::UString();
    case ADD_ATTR_NUMBER:
      return writer.add_attr(call.tag, call.number), Orn::UString();
    case APPEND_ELEM_BODY:
      return writer.append_elem_body(call.text, call.flag), Orn::UString();
    case ADD_COMMENT:
      return writer.add_comment(call.text), Orn::UString();
    case ADD_PROCESSING_INSTRUCTION:
      return writer.add_processing_instruction(call.text), Orn::UString();
    case ADD_XML_DECL:
      return writer.add_xml_decl(call.text), Orn::UString();
    case ADD_NS:
      return writer.add_ns(call.ns), Orn::UString();
    case ADD_NS_PREFIX:
      return writer.add_ns(call.ns, call.prefix), Orn::UString();
    case CLOSE:
      return writer.close(), Orn::UString();
    case STR:
      return writer.str();
    case BYTE_ARRAY:
      return as_units(writer.byte_array());
    case INC_STR:
      return writer.inc_str();
  }
  throw std::logic_error("no such operation");
}

inline std::string class_of(Orn::STPException const& e) {
  if (typeid(e) == typeid(Orn::StateException)) return "StateException";
  if (typeid(e) == typeid(Orn::IllegalArgException)) return "IllegalArgException";
  if (typeid(e) == typeid(Orn::TagException)) return "TagException";
  return typeid(e).name();
}

/// As a Refusal of the model has it: the identifier and the arguments.
inline std::string message_of(Orn::STPException const& e) {
  std::string text = e.message().text().substr(0, 10).to_utf8();
  for (int i = 1; e.message().arg(i).kind() != Orn::UMessage::Arg::KIND_NIL; ++i) {
    text += "(" + e.message().arg(i).text().to_utf8() + ")";
  }
  return text;
}

inline std::string class_for(std::string const& message) {
  if (message.compare(0, 5, "TQUTL") == 0) return "TagException";
  return message.compare(0, 10, "ZEMKA0693E") == 0 ? "IllegalArgException" : "StateException";
}

struct Answer {
  Orn::UString text;
  std::string refusal;
  bool operator==(Answer const& other) const {
    return text == other.text && refusal == other.refusal;
  }
};

inline std::ostream& operator<<(std::ostream& stream, Answer const& answer) {
  if (!answer.refusal.empty()) return stream << answer.refusal;
  return stream << '"' << answer.text << '"';
}

inline Answer answer_of(Orn::XmlDoc& doc, Call const& call) {
  try {
    return {perform(doc, call), ""};
  } catch (Orn::STPException const& e) {
    return {Orn::UString(), class_of(e) + " " + message_of(e)};
  }
}

inline Answer answer_of(WriterModel& model, Call const& call) {
  try {
    return {perform(model, call), ""};
  } catch (WriterModel::Refusal const& refusal) {
    return {Orn::UString(), class_for(refusal.message) + " " + refusal.message};
  }
}

/// What the arguments of calls are chosen from.
struct CallArguments {
  std::vector<Orn::XmlTag::Id> tags = {
      testtags::u_r, testtags::u_r, testtags::u_r,       testtags::u_a,         testtags::u_a,
      testtags::u_b, testtags::u_z, testtags::v_a,       testtags::v_a,         testtags::v_b,
      testtags::w_a, testtags::a,   Orn::XmlTag::NO_TAG, testtags::unregistered};
  std::vector<Orn::XmlTag::NsId> namespaces = {
      testtags::ns_u,   testtags::ns_v,     testtags::ns_w,         testtags::ns_u_again,
      testtags::ns_amp, Orn::XmlTag::NO_NS, Orn::XmlTag::NsId(9999)};
  std::vector<Orn::UString> texts = {
      Orn::UString(), u"t",      u" ",          u"a<b",         u"&&&",
      u"&&",          u"]]>",    u"<]]>",       u"x]]",         u"\"'>",
      u"\u00e9",      u"\u2028", u"\U0001F600", u"\xD800 lone", Orn::UString(u"zero\0", 5)};
  std::vector<Orn::UString> prefixes = {Orn::UString(), u"x", u"A", u"N1", u"N2", u"M", u"N\u00e9"};
  std::vector<long> numbers = {0L, 1L, -1L, 42L, -2147483647L, 2147483647L};
};

/// Makes both writers do the same and compares them after every call.
class WriterComparison {
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
    Orn::XmlDoc const copy(doc_);
    doc_ = Orn::XmlDoc(testtags::u_a);
    doc_ = copy;
  }

  /// The refusal of the last call, empty when it succeeded.
  std::string const& refusal() const { return refusal_; }
  std::uint32_t state() const { return Orn::XmlDocTestAccess::state(doc_); }

 private:
  std::string calls() const { return "\nafter" + history_.str(); }

  Orn::XmlDoc doc_;
  WriterModel model_;
  std::ostringstream history_;
  std::string refusal_;
};

}  // namespace tests

#endif

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/agreement/RandomDocument.h"
#include "tests/support/Raises.h"
#include "tests/support/RandomTries.h"
#include "tqutil/UtilExceptions.h"
#include "tqxml/dom/DomParser.h"
#include "tqxml/foundation/Catalogue.h"
#include "tqxml/foundation/Exceptions.h"
#include "tqxml/foundation/ReadLimits.h"
#include "tqxml/sax/SaxParser.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::DomParser;
using Orn::ReadLimits;
using Orn::RuntimeException;
using Orn::SaxParser;
using Orn::StateException;
using Orn::UMessage;
using Orn::UString;
using Orn::XmlTag;

constexpr XmlTag::Id all_tags[] = {tag::a,   tag::b,   tag::c,   tag::d,   tag::x,  tag::u_a,
                                   tag::u_b, tag::u_c, tag::v_a, tag::v_d, tag::w_e};

Node const* first_with(XmlTag::Id tag, std::vector<Node const*> const& nodes) {
  for (Node const* node : nodes) {
    if (node->tag == tag) return node;
  }
  return nullptr;
}

template <class Elem>
void expect_children_by_tag(Elem& element, Node const& node, Reader reader) {
  auto const children = node.children(reader);
  for (XmlTag::Id const wanted : all_tags) {
    Node const* const child = first_with(wanted, children);
    EXPECT_EQ(element.opt_child(wanted).is_nil(), child == nullptr);
    if (child == nullptr) {
      EXPECT_RAISES(element.child(wanted), StateException, Catalogue::MISSING_REQUIRED_CHILD,
                    u"ZEMKA0684E Elem::child()", XmlTag::lookup(wanted).to_string(),
                    XmlTag::lookup(node.tag).to_string());
    } else {
      EXPECT_EQ(element.child(wanted).tag(), wanted);
      EXPECT_EQ(element.child(wanted).data(), child->data(reader));
    }
  }
}

void expect_first_child(SaxParser::Elem& element, std::vector<Node const*> const& children) {
  SaxParser::Elem const child = element.child();
  ASSERT_EQ(child.is_nil(), children.empty());
  if (!children.empty()) {
    EXPECT_EQ(child.tag(), children.front()->tag);
  }
}

void expect_first_child(DomParser::Elem& element, std::vector<Node const*> const& children) {
  if (children.empty()) {
    EXPECT_RAISES(element.child(), StateException, Catalogue::NO_CHILDREN,
                  u"ZEMKA0684E Elem::child()", XmlTag::lookup(element.tag()).to_string());
  } else {
    EXPECT_EQ(element.child().tag(), children.front()->tag);
  }
}

/// What a walk asks of an element before it takes the children.
struct Questions {
  bool empty, data, first_child, children_by_tag;
};

template <class Elem>
void expect_answers(Elem& element, Node const& node, Reader reader, Questions const& questions) {
  ASSERT_EQ(element.tag(), node.tag);
  if (questions.empty) {
    EXPECT_EQ(element.is_empty(), node.is_empty(reader));
  }
  if (questions.first_child) expect_first_child(element, node.children(reader));
  if (questions.children_by_tag) expect_children_by_tag(element, node, reader);
  if (questions.data) {
    EXPECT_EQ(element.data(), node.data(reader));
  }
}

Attributes sorted(Attributes attributes) {
  std::sort(attributes.begin(), attributes.end());
  return attributes;
}

/// Compares an element, and all below it, as it is shown by either reader and as it was made.
class Comparison {
 public:
  explicit Comparison(unsigned int seed) : engine_(seed) {}

  void compare(SaxParser::Elem streamed, DomParser::Elem held, Node const& node) {
    Questions const questions{coin(), coin(), coin(), coin()};
    expect_answers(streamed, node, Reader::STREAMING, questions);
    expect_answers(held, node, Reader::DOM, questions);
    compare_attributes(streamed, held, node);
    compare_children(streamed, held, node);
    EXPECT_EQ(streamed.data(), node.data(Reader::STREAMING));
    EXPECT_EQ(held.data(), node.data(Reader::DOM));
  }

 private:
  bool coin() { return engine_() % 2 == 0; }

  static void compare_attributes(SaxParser::Elem& streamed, DomParser::Elem& held,
                                 Node const& node) {
    Attributes const of_streamed = remaining_attributes(streamed);
    EXPECT_EQ(of_streamed, Attributes(node.attributes.rbegin(), node.attributes.rend()));
    EXPECT_EQ(sorted(of_streamed), sorted(remaining_attributes(held)));
  }

  void compare_children(SaxParser::Elem& streamed, DomParser::Elem& held, Node const& node) {
    auto const in_stream = node.children(Reader::STREAMING), in_dom = node.children(Reader::DOM);
    auto next_in_dom = in_dom.begin();
    for (Node const* child : in_stream) {
      SaxParser::Elem const of_streamed = streamed.next_child();
      ASSERT_FALSE(of_streamed.is_nil());
      if (next_in_dom != in_dom.end() && *next_in_dom == child) {
        DomParser::Elem const of_held = held.next_child();
        ASSERT_FALSE(of_held.is_nil());
        compare(of_streamed, of_held, *child);
        ++next_in_dom;
      } else {
        expect_element_of_entity(of_streamed, *child);
      }
    }
    EXPECT_TRUE(streamed.next_child().is_nil());
    EXPECT_TRUE(held.next_child().is_nil());
  }

  static void expect_element_of_entity(SaxParser::Elem streamed, Node const& node) {
    EXPECT_EQ(streamed.tag(), node.tag);
    EXPECT_EQ(remaining_attributes(streamed), node.attributes);
    EXPECT_EQ(streamed.data(), node.data(Reader::STREAMING));
  }

  std::mt19937 engine_;
};

TEST(BothReaders, AgreeOnRandomDocuments) {
  for (unsigned int seed = 0; seed < random_tries(2000); ++seed) {
    RandomDocument const document(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::istringstream in(document.xml());
    SaxParser const streaming(in);
    DomParser dom(document.xml());
    Comparison(seed).compare(streaming.root(), dom.root(), document.root());
    ASSERT_FALSE(HasFailure()) << document.xml();
  }
}

/// Reads everything, and tells why that is not possible: place and wording.
std::vector<UString> complaint_of_streaming(std::string const& xml) {
  std::istringstream in(xml);
  SaxParser parser;
  try {
    parser.initialize(&in).data();
  } catch (StateException const& e) {
    EXPECT_EQ(e.message().index(), Catalogue::NOT_VALID_STREAM);
    return {UMessage::Arg(static_cast<long>(parser.error_line())).text(),
            UMessage::Arg(static_cast<long>(parser.error_column())).text(), parser.error_text()};
  }
  return {};
}

std::vector<UString> complaint_of_dom(std::string const& xml) {
  try {
    DomParser(xml).root();
  } catch (RuntimeException const& e) {
    EXPECT_EQ(e.message().index(), Catalogue::XERCES_SAX_PARSE_EXCEPTION);
    return {e.message().arg(1).text(), e.message().arg(2).text(), e.message().arg(3).text()};
  }
  return {};
}

TEST(BothReaders, TakeAZeroByteBehindTheRootForTheEnd) {
  for (std::string const behind : {"", "<r/>", "<", "x"}) {
    std::string const xml = "<r/>" + std::string(1, '\0') + behind;
    EXPECT_TRUE(complaint_of_streaming(xml).empty()) << behind;
    EXPECT_TRUE(complaint_of_dom(xml).empty()) << behind;
  }
}

TEST(BothReaders, RefuseWhatIsNoTextBehindThatEndAsFarAsTheyHaveFetchedIt) {
  auto const document = [](std::size_t length) {
    return "<r/>" + std::string(1, '\0') + std::string(length, ' ') + "\xCF ";
  };
  EXPECT_FALSE(complaint_of_streaming(document(500)).empty());
  EXPECT_FALSE(complaint_of_dom(document(500)).empty());
  EXPECT_TRUE(complaint_of_streaming(document(5000)).empty());
  EXPECT_FALSE(complaint_of_dom(document(5000)).empty());
  EXPECT_TRUE(complaint_of_dom(document(500'000)).empty());
}

TEST(BothReaders, ComplainOfTheSamePlaceInTheSameWords) {
  for (std::string const xml : {"",
                                "\n",
                                "x",
                                "<r",
                                "<r>",
                                "<r><a></r>",
                                "<r>\n<a>\n</b></r>",
                                "<r/>\n<r/>",
                                "<r></r>x",
                                "<r>&u;</r>",
                                "<r a='1' a='2'/>",
                                "<r a=1/>",
                                "<r>\x01</r>",
                                "<r>]]></r>",
                                "<r><!-- -- --></r>",
                                "<p:r/>",
                                "<r p:a=''/>",
                                "<r xmlns:p=''/>",
                                "<?xml version='2.0'?><r/>",
                                "<?xml version='1.0' encoding='nonsense'?><r/>",
                                "<!DOCTYPE r [<!ENTITY e SYSTEM 'no-such-file.ent'>]><r>&e;</r>"}) {
    SCOPED_TRACE(xml);
    std::vector<UString> const complaint = complaint_of_dom(xml);
    EXPECT_EQ(complaint.size(), 3U);
    EXPECT_EQ(complaint_of_streaming(xml), complaint);
  }
}

TEST(BothReaders, DifferInWhatTheTreeRefusesAndTheScannerTakes) {
  for (std::string const xml : {
           "<?xml version='1.5'?><r/>",
           "<!DOCTYPE r [<!ATTLIST r :a CDATA 'v'>]><r/>",
           "<r><?\xf0\x9f\x98\x80 x?></r>",
           "<!DOCTYPE \xf0\x9f\x98\x80><r/>",
           "<!DOCTYPE r [<!ENTITY \xf0\x9f\x98\x80 'x'>]><r/>",
           "<!DOCTYPE r [<!NOTATION \xf0\x9f\x98\x80 SYSTEM 'x'>]><r/>",
       }) {
    SCOPED_TRACE(xml);
    EXPECT_EQ(complaint_of_streaming(xml), std::vector<UString>());
    try {
      DomParser(xml).root();
      ADD_FAILURE() << "it is not refused";
    } catch (RuntimeException const& e) {
      EXPECT_EQ(e.message().index(), Catalogue::XERCES_DOM_EXCEPTION);
    }
  }
}

TEST(BothReaders, DifferInWhetherAnEmptyCdataSectionIsSomething) {
  std::string const xml = "<r><![CDATA[]]></r>";
  std::istringstream in(xml);
  EXPECT_TRUE(SaxParser(in).root().is_empty());
  EXPECT_FALSE(DomParser(xml).root().is_empty());
}

/// Documents of references that make too much of their own bytes, and of bytes that make up for it.
class ManyReferences : public testing::Test {
 protected:
  ManyReferences() {
    limits_.refuse_doctype = false;
    // Less to read before it matters.
    limits_.amplification_floor /= 10;
    for (int i = 0; i < 900; ++i) references_ += "&e;";
  }

  static std::string document(std::string const& content) {
    return "<!DOCTYPE r [<!ENTITY e '" + std::string(1000, 'x') + "'>]><r>" + content + "</r>";
  }
  bool is_held(std::string const& xml) const {
    try {
      return !DomParser(xml, limits_).root().is_nil();
    } catch (RuntimeException const& e) {
      EXPECT_TRUE(is_of_amplification(e.message().arg(3).text())) << e.what();
      return false;
    }
  }
  bool is_streamed(std::string const& xml) const {
    std::istringstream in(xml);
    SaxParser parser(limits_);
    try {
      EXPECT_EQ(parser.initialize(&in).data().length(), 900'000U);
      return true;
    } catch (StateException const& e) {
      EXPECT_TRUE(is_of_amplification(parser.error_text())) << e.what();
      return false;
    }
  }

  std::string references_;
  std::string const bytes_ = "<b>" + std::string(20'000, 'y') + "</b>";

 private:
  static bool is_of_amplification(UString const& complaint) {
    return complaint.find(u"ReadLimits::amplification:", 0) == 0;
  }

  ReadLimits limits_ = ReadLimits::untrusted();
};

TEST_F(ManyReferences, WithoutManyBytesAreRefusedByBothReaders) {
  EXPECT_FALSE(is_held(document(references_)));
  EXPECT_FALSE(is_streamed(document(references_)));
}

TEST_F(ManyReferences, BehindManyBytesAreReadByBothReaders) {
  EXPECT_TRUE(is_held(document(bytes_ + references_)));
  EXPECT_TRUE(is_streamed(document(bytes_ + references_)));
}

TEST_F(ManyReferences, InFrontOfManyBytesAreReadByTheReaderThatKnowsOfThem) {
  EXPECT_TRUE(is_held(document(references_ + bytes_)));
  EXPECT_FALSE(is_streamed(document(references_ + bytes_)));
}

/// `xml` without one of its characters. What cannot be decoded is found sooner by the reader that
/// has all the bytes at hand, so that a character of several bytes stays whole.
std::string damaged(std::string xml, unsigned int seed) {
  std::mt19937 engine(seed);
  std::size_t place = engine() % xml.size();
  while (static_cast<unsigned char>(xml[place]) >= 0x80) --place;
  return xml.erase(place, 1);
}

TEST(BothReaders, AgreeOnWhichRandomDocumentsAreMalformed) {
  unsigned int malformed = 0, well_formed = 0;
  for (unsigned int seed = 0; seed < random_tries(2000); ++seed) {
    std::string const xml = damaged(RandomDocument(seed).xml(), seed);
    std::vector<UString> complaint;
    try {
      complaint = complaint_of_streaming(xml);
    } catch (Orn::TagException const&) {
      // A name was damaged, which is all that a streaming reader sees of the document then.
      continue;
    }
    EXPECT_EQ(complaint_of_dom(xml), complaint) << xml;
    ++(complaint.empty() ? well_formed : malformed);
  }
  EXPECT_GT(malformed, random_tries(500));
  EXPECT_GT(well_formed, random_tries(250));
}

}  // namespace
}  // namespace tests

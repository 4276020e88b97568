#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <istream>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include "tests/sax/SaxReader.h"
#include "tests/sax/Source.h"
#include "tests/support/Raises.h"
#include "tqxml/foundation/Catalogue.h"

namespace tests {
namespace {

using Orn::Catalogue;
using Orn::RuntimeException;
using Orn::SaxParser;
using Orn::StateException;
using Orn::UString;
using Elem = SaxParser::Elem;

// A document that uses every construct, in two parts between which padding may stand.
std::string const head = "<?xml version='1.0' encoding='UTF-8' standalone='no'?>\n";
std::string const body =
    "<!-- before --><?before i?>\n"
    "<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST c d CDATA 'default'><!NOTATION n SYSTEM 'n'>\n"
    "<!ENTITY % p '<!ENTITY e \"v&#x26;amp;w\">'>%p;<!ENTITY f '<b>in &e;</b>'><?inside?>]>\n"
    "<r a='1' xmlns:u='urn:test:u' b=\"&lt;&e;&#xe9;\">text &amp; more\r\n"
    "<!-- comment --><u:a u:c='\xc3\xa9'>\xe2\x82\xac\xf0\x9f\x98\x80</u:a><?target data?>"
    "<a xmlns='urn:test:v'><d/><b></b></a>&f;<![CDATA[<cdata> & ]]]]><![CDATA[>]]>\n"
    "<c>&#65;&#x1F600;<x><y>deep</y></x></c><z> </z>]]&gt;</r>\n"
    "<!-- behind --><?behind i?>\n";

/// One element as far as it has been read.
struct Seen {
  Elem element;
  Orn::XmlTag::Id tag;
  Attributes attributes;
  bool ended;
  UString data;
};

/// Reads an element and all below it, the element last.
void read_all(Elem element, std::vector<Seen>& seen) {
  seen.push_back({element, element.tag(), remaining_attributes(element), false, UString()});
  std::size_t const place = seen.size() - 1;
  for (Elem child = element.next_child(); !child.is_nil(); child = element.next_child()) {
    read_all(child, seen);
  }
  seen[place].data = element.data();
  seen[place].ended = true;
}

void read_all(std::istream& source, std::vector<Seen>& seen) {
  SaxParser parser;
  try {
    read_all(parser.initialize(&source), seen);
  } catch (...) {
    EXPECT_EQ(parser.root().is_nil(), seen.empty());
    throw;
  }
}

void expect_readable(std::vector<Seen>& seen) {
  for (Seen& one : seen) {
    EXPECT_EQ(one.element.tag(), one.tag);
    EXPECT_TRUE(one.element.next_attr().is_nil());
    if (one.ended) {
      EXPECT_EQ(one.element.data(), one.data);
      EXPECT_TRUE(one.element.next_child().is_nil());
    }
  }
}

void expect_no_more(std::vector<Seen>& seen) {
  for (Seen& one : seen) {
    if (one.ended) continue;
    for (int i = 0; i < 2; ++i) {
      EXPECT_RAISES(one.element.data(), StateException, Catalogue::NOT_VALID_STREAM);
      EXPECT_RAISES(one.element.next_child(), StateException, Catalogue::NOT_VALID_STREAM);
    }
  }
}

TEST(AStream, ThatIsWholeGivesEveryConstruct) {
  Source source(head + body);
  std::vector<Seen> seen;
  read_all(source, seen);
  Tags tags;
  for (Seen const& one : seen) tags.push_back(one.tag);
  EXPECT_EQ(tags, (Tags{tag::r, tag::u_a, tag::v_a, tag::v_d, tag::v_b, tag::b, tag::c, tag::x,
                        tag::y, tag::z}));
  EXPECT_EQ(seen[0].data, u"text & more\n<cdata> & ]]>\n]]>");
  EXPECT_EQ(seen[0].attributes, (Attributes{{tag::b, u"<v&w\u00e9"}, {tag::a, u"1"}}));
  EXPECT_EQ(seen[1].data, u"\u20ac\U0001F600");
  EXPECT_EQ(seen[5].data, u"in v&w");
  EXPECT_EQ(seen[6].data, u"A\U0001F600");
  EXPECT_EQ(seen[6].attributes, (Attributes{{tag::d, u"default"}}));
  expect_readable(seen);
}

/// The first bytes of the document up to `cut` in its body, padded so that they end where a piece
/// of the stream does; a stream that fails there does so when all before has been delivered.
std::string cut_at(std::size_t cut) {
  std::string document = head + "<!--";
  constexpr std::size_t piece = SaxParser::MAX_READ;
  document.append(2 * piece - (document.size() + 3 + cut) % piece, '.');
  return document.append("-->").append(body, 0, cut);
}

/// Where the root has ended and only what may be missing follows.
std::size_t const end_of_root = body.find("</r>") + 4;

void expect_failure_of(
    std::istream& source,
    std::function<testing::AssertionResult(std::function<void()> const&)> const& fails) {
  std::vector<Seen> seen;
  EXPECT_TRUE(fails([&] { read_all(source, seen); }));
  expect_readable(seen);
  expect_no_more(seen);
}

template <class E>
testing::AssertionResult throws(std::function<void()> const& call) {
  try {
    call();
  } catch (E const&) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "nothing was thrown";
}

testing::AssertionResult raises_not_valid_stream(std::function<void()> const& call) {
  return raises(call, typeid(StateException), Catalogue::NOT_VALID_STREAM);
}

testing::AssertionResult raises_bad_read(std::function<void()> const& call) {
  return raises(call, typeid(RuntimeException), Catalogue::BAD_READ);
}

TEST(AStream, ThatEndsAtAnyByteIsMalformed) {
  for (std::size_t cut = 0; cut < end_of_root; ++cut) {
    SCOPED_TRACE(cut);
    Source source(cut_at(cut));
    expect_failure_of(source, raises_not_valid_stream);
    Source unpadded(head + body.substr(0, cut));
    expect_failure_of(unpadded, raises_not_valid_stream);
  }
  for (std::size_t cut = 0; cut < head.size(); ++cut) {
    SCOPED_TRACE(cut);
    Source source(head.substr(0, cut));
    expect_failure_of(source, raises_not_valid_stream);
  }
}

TEST(AStream, ThatEndsAtAnyByteBehindTheRootIsWholeUnlessSomethingIsCutInTwo) {
  std::size_t const comment = body.find("<!-- behind");
  std::size_t const instruction = body.find("<?behind");
  std::size_t const last = body.find("?>", instruction) + 2;
  for (std::size_t cut = end_of_root; cut <= body.size(); ++cut) {
    SCOPED_TRACE(cut);
    Source source(cut_at(cut));
    std::vector<Seen> seen;
    if (cut <= comment || cut == instruction || cut >= last) {
      EXPECT_NO_THROW(read_all(source, seen));
    } else {
      EXPECT_TRUE(raises_not_valid_stream([&] { read_all(source, seen); }));
      EXPECT_EQ(seen.at(0).element.data(), u"text & more\n<cdata> & ]]>\n]]>");
    }
    expect_readable(seen);
  }
}

TEST(AStream, ThatGoesBadAtAnyByteIsABadReadAfterWhatCameBefore) {
  std::size_t most = 0;
  for (std::size_t cut = 0; cut <= body.size(); ++cut) {
    SCOPED_TRACE(cut);
    std::string const document = cut_at(cut);
    Source source(document);
    source.break_at(document.size());
    std::vector<Seen> seen;
    EXPECT_TRUE(raises_bad_read([&] { read_all(source, seen); }));
    EXPECT_TRUE(source.bad());
    EXPECT_GE(seen.size(), most);
    most = seen.size();
    expect_readable(seen);
    if (cut < end_of_root) expect_no_more(seen);
  }
  EXPECT_EQ(most, 10U);
}

TEST(AStream, ThatThrowsAtAnyByteHasItsExceptionPassedOn) {
  for (std::size_t cut = 0; cut < end_of_root; ++cut) {
    SCOPED_TRACE(cut);
    std::string const document = cut_at(cut);
    Source source(document);
    source.break_at(document.size());
    source.exceptions(std::ios_base::badbit);
    expect_failure_of(source, throws<SourceBroke>);
  }
}

TEST(AStream, ThatThrowsAtItsEndHasItsExceptionPassedOn) {
  for (std::size_t cut = 0; cut < end_of_root; ++cut) {
    SCOPED_TRACE(cut);
    Source source(cut_at(cut));
    source.exceptions(std::ios_base::failbit);
    expect_failure_of(source, throws<std::ios_base::failure>);
  }
}

/// A stream that gives one byte at a time, up to `end`, where it breaks if it is told to.
class Trickle : public std::istream {
 public:
  explicit Trickle(std::string const& bytes, std::size_t end = std::string::npos,
                   bool breaks = false)
      : std::istream(nullptr), buffer_(bytes.substr(0, end), breaks) {
    rdbuf(&buffer_);
  }

 private:
  class Buffer : public std::streambuf {
   public:
    Buffer(std::string bytes, bool breaks) : bytes_(std::move(bytes)), breaks_(breaks) {}

   protected:
    int_type underflow() override {
      if (place_ == bytes_.size()) {
        if (breaks_) throw SourceBroke();
        return traits_type::eof();
      }
      char* const byte = &bytes_[place_++];
      setg(byte, byte, byte + 1);
      return traits_type::to_int_type(*byte);
    }

   private:
    std::string bytes_;
    bool breaks_;
    std::size_t place_ = 0;
  };

  Buffer buffer_;
};

void expect_all_of_the_document(std::istream& stream) {
  Source source(head + body);
  std::vector<Seen> expected;
  read_all(source, expected);
  std::vector<Seen> seen;
  read_all(stream, seen);
  ASSERT_EQ(seen.size(), expected.size());
  for (std::size_t i = 0; i < seen.size(); ++i) {
    EXPECT_EQ(seen[i].tag, expected[i].tag);
    EXPECT_EQ(seen[i].attributes, expected[i].attributes);
    EXPECT_EQ(seen[i].data, expected[i].data);
  }
}

TEST(AStream, ThatGivesOneByteAtATimeGivesTheSameDocument) {
  Trickle stream(head + body);
  expect_all_of_the_document(stream);
}

TEST(AStream, ThatGivesOneByteAtATimeAndEndsAnywhereIsMalformed) {
  for (std::size_t end = 0; end < head.size() + end_of_root; ++end) {
    SCOPED_TRACE(end);
    Trickle stream(head + body, end);
    expect_failure_of(stream, raises_not_valid_stream);
  }
}

TEST(AStream, ThatGivesOneByteAtATimeAndGoesBadAnywhereIsABadRead) {
  for (std::size_t end = 0; end < head.size() + body.size(); ++end) {
    SCOPED_TRACE(end);
    Trickle stream(head + body, end, true);
    expect_failure_of(stream, raises_bad_read);
  }
}

TEST(AStream, ThatGivesOneByteAtATimeAndThrowsAnywhereHasItsExceptionPassedOn) {
  for (std::size_t end = 0; end < head.size() + body.size(); ++end) {
    SCOPED_TRACE(end);
    Trickle stream(head + body, end, true);
    stream.exceptions(std::ios_base::badbit);
    expect_failure_of(stream, throws<SourceBroke>);
  }
}

/// A stream whose first delivery is shorter than what was asked for, which is its end.
class Shortcoming : public std::istream {
 public:
  Shortcoming(std::string const& bytes, std::size_t first)
      : std::istream(nullptr), buffer_(bytes, first) {
    rdbuf(&buffer_);
  }

 private:
  class Buffer : public std::stringbuf {
   public:
    Buffer(std::string const& bytes, std::size_t first)
        : std::stringbuf(bytes), left_(static_cast<std::streamsize>(first)) {}

   protected:
    std::streamsize xsgetn(char* to, std::streamsize wanted) override {
      return std::stringbuf::xsgetn(to, std::min(wanted, std::exchange(left_, wanted)));
    }

   private:
    std::streamsize left_;
  };

  Buffer buffer_;
};

TEST(AStream, ThatDeliversLessThanWasAskedForHasEnded) {
  for (std::size_t first = 0; first < end_of_root; ++first) {
    SCOPED_TRACE(first);
    Shortcoming stream(head + body, head.size() + first);
    expect_failure_of(stream, raises_not_valid_stream);
  }
}

TEST(AStream, CanBeAbandonedAtAnyByte) {
  std::vector<Seen> seen;
  for (std::size_t cut = 0; cut < end_of_root; ++cut) {
    seen.clear();
    {
      std::string const document = cut_at(cut);
      Source source(document);
      source.break_at(document.size());
      source.exceptions(std::ios_base::badbit);
      SaxParser parser;
      EXPECT_THROW(read_all(parser.initialize(&source), seen), SourceBroke);
    }
    expect_readable(seen);
    expect_no_more(seen);
  }
}

}  // namespace
}  // namespace tests

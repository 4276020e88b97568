#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "tests/dom/DomReader.h"
#include "tests/sax/SaxReader.h"
#include "tests/support/Trees.h"
#include "tqutil/UtilExceptions.h"
#include "tqutil/Vocabulary.h"
#include "tqxml/foundation/Exceptions.h"

// Takes documents from beside the source tree through document, tree, document and tree.
//
// The names in them are registered as they come, and for each a twin with the same local name in a
// namespace of ours, since the writer writes no name without a namespace and no namespace whose URI
// needs escaping so that a reader would take it. Trees are written with the twins. So a round trip
// shows that everything that a tree holds survives, but for the URIs of the namespaces, the order
// of attributes, which each reader turns around in its own way, and the difference between the two
// line ends in text, which no document can express unescaped.

namespace tests {
namespace {

namespace fs = std::filesystem;
using Orn::RuntimeException;
using Orn::STPException;
using Orn::TagException;
using Orn::UString;
using Orn::Vocabulary;
using Orn::VocabularyEntry;
using Orn::XmlDoc;
using Orn::XmlTag;
using Elem = XmlDoc::Elem;

class Names {
 public:
  void enter(std::u16string const& uri, std::u16string const& name) {
    std::int32_t const id = number_of(uri, name);
    if (twins_.count(id) != 0) return;
    std::u16string const digits = decimal(ns_numbers_.at(uri));
    twins_[id] = number_of(u"urn:twin:" + digits, name);
  }

  /// The same tree in our namespaces.
  Elem with_twins(Elem const& tree) const {
    return changed(tree, [this](Head& head) {
      head.first = twins_.at(head.first);
      for (auto& attr : head.second) attr.id = twins_.at(attr.id);
    });
  }

 private:
  static std::u16string decimal(int number) {
    std::string const digits = std::to_string(number);
    return {digits.begin(), digits.end()};
  }

  XmlTag::Id number_of(std::u16string const& uri, std::u16string const& name) {
    int const ns = ns_number_of(uri);
    try {
      return XmlTag::lookup(uri, name).id();
    } catch (TagException const&) {
    }
    // From -1 downwards: the streaming reader hides attributes with large numbers.
    VocabularyEntry const entry[] = {
        {VocabularyEntry::TAG, --last_tag_, "tag", ns, kept_.emplace_back(name).c_str()}};
    Vocabulary("corpus", entry);
    return XmlTag::Id(last_tag_);
  }

  int ns_number_of(std::u16string const& uri) {
    auto const [place, is_new] = ns_numbers_.try_emplace(uri, last_ns_ - 1);
    if (is_new) {
      VocabularyEntry const entry[] = {
          {VocabularyEntry::NAMESPACE, --last_ns_, "ns", 0, kept_.emplace_back(uri).c_str()}};
      Vocabulary("corpus", entry);
    }
    return place->second;
  }

  int last_tag_ = 0;
  int last_ns_ = 0;
  std::map<std::u16string, int> ns_numbers_;
  std::map<int, XmlTag::Id> twins_;
  std::deque<std::u16string> kept_;
};

Names names;

struct Findings {
  bool well_formed = true;
  /// Whether content comes from entities.
  bool has_entities = false;
};

/// Enters every name of a document, as the parser under the readers gives them.
class NameCollector : public xercesc::DefaultHandler {
 public:
  void startElement(XMLCh const* uri, XMLCh const* name, XMLCh const*,
                    xercesc::Attributes const& attributes) override {
    names.enter(uri, name);
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
      names.enter(attributes.getURI(i), attributes.getLocalName(i));
    }
  }
  void error(xercesc::SAXParseException const&) override { findings.well_formed = false; }
  void fatalError(xercesc::SAXParseException const&) override { findings.well_formed = false; }
  void startEntity(XMLCh const*) override { findings.has_entities = true; }

  Findings findings;
};

/// What the parser under the readers finds in a document, whose names are in the registry then.
Findings findings_in(std::string const& xml) {
  std::unique_ptr<xercesc::SAX2XMLReader> const parser(
      xercesc::XMLReaderFactory::createXMLReader());
  parser->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, true);
  parser->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
  NameCollector collector;
  parser->setContentHandler(&collector);
  parser->setErrorHandler(&collector);
  parser->setLexicalHandler(&collector);
  xercesc::MemBufInputSource const source(reinterpret_cast<XMLByte const*>(xml.data()), xml.size(),
                                          "document");
  try {
    parser->parse(source);
  } catch (...) {
    collector.findings.well_formed = false;
  }
  return collector.findings;
}

std::string bytes_of(fs::path const& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The document without the external part of its DTD, which one reader would look for, in vain or
/// on the network, and the other would not.
std::string without_external_subset(std::string xml) {
  std::size_t const declaration = xml.find("<!DOCTYPE");
  if (declaration == std::string::npos) return xml;
  std::size_t const end = xml.find_first_of("[>", declaration);
  std::size_t const id = std::min(xml.find("SYSTEM", declaration), xml.find("PUBLIC", declaration));
  return id < end ? xml.erase(id, end - id) : xml;
}

/// Line ends in text as every reader gives them.
Elem with_line_feeds(Elem const& tree) {
  return changed(
      tree, [](Head&) {},
      [](UString& text) {
        UString normalised;
        for (unsigned int i = 0; i < text.length(); ++i) {
          bool const carriage_return = text[i] == '\r';
          if (carriage_return && text[i + 1] == '\n') continue;
          normalised.append(carriage_return ? static_cast<unsigned short>('\n') : text[i]);
        }
        text = normalised;
      });
}

template <class Reader>
Elem tree_of(std::string const& xml) {
  Reader reader(xml);
  typename Reader::Elem root = reader.root();
  return Elem(root);
}

void expect_equal(Elem const& a, Elem const& b) {
  EXPECT_TRUE(a == b) << a.str() << "\n" << b.str();
  EXPECT_TRUE(b == a);
}

/// Whether the tree came from a document of XML 1.1, for the writer's are of 1.0.
bool holds_control_characters(Elem const& tree) {
  bool found = false;
  auto const look = [&found](UString const& text) {
    for (unsigned int i = 0; i < text.length(); ++i) {
      found = found || (text[i] < ' ' && text[i] != '\t' && text[i] != '\n' && text[i] != '\r');
    }
  };
  auto const look_at_values = [&look](Head& head) {
    for (auto const& attr : head.second) look(attr.value);
  };
  changed(tree, look_at_values, look);
  return found;
}

/// From document to tree to document to tree.
template <class Reader>
void expect_round_trip(std::string const& xml) {
  Elem const tree = names.with_twins(tree_of<Reader>(xml));
  std::string const written = XmlDoc(with_escaped_attributes(tree)).byte_array();
  if (holds_control_characters(tree)) {
    EXPECT_THROW(tree_of<Reader>(written), STPException);
    return;
  }
  expect_equal(with_sorted_attributes(tree_of<Reader>(written)),
               with_sorted_attributes(with_line_feeds(tree)));
}

/// The trees of both readers: the same but for the order of attributes.
void expect_agreement(std::string const& xml) {
  expect_equal(with_sorted_attributes(tree_of<DomReader>(xml)),
               with_sorted_attributes(tree_of<SaxReader>(xml)));
}

template <class Call>
void expect_no_exception(Call call) {
  try {
    call();
  } catch (std::exception const& e) {
    ADD_FAILURE() << e.what();
  }
}

struct Outcome {
  int well_formed = 0;
  int ill_formed = 0;
};

// Its version is 1.7, which the document model does not know.
bool is_refused_by_dom(fs::path const& path) {
  return path.parent_path().filename() == "errata-4e" && path.filename() == "008.xml";
}

Outcome take_through(std::vector<fs::path> const& paths) {
  Outcome outcome;
  for (fs::path const& path : paths) {
    SCOPED_TRACE(path);
    std::string const xml = without_external_subset(bytes_of(path));
    Findings const findings = findings_in(xml);
    ++(findings.well_formed ? outcome.well_formed : outcome.ill_formed);
    if (!findings.well_formed) continue;
    expect_no_exception([&] { expect_round_trip<SaxReader>(xml); });
    if (is_refused_by_dom(path)) {
      EXPECT_THROW(tree_of<DomReader>(xml), RuntimeException);
      continue;
    }
    expect_no_exception([&] { expect_round_trip<DomReader>(xml); });
    // What comes from entities is seen by one reader only.
    if (!findings.has_entities) expect_no_exception([&] { expect_agreement(xml); });
  }
  return outcome;
}

fs::path const CORPUS_ROOT = CORPUS;

std::vector<fs::path> documents_in(fs::path const& directory) {
  std::set<fs::path> const documents{".xml", ".gc", ".kml", ".svg", ".xsl"};
  std::vector<fs::path> paths;
  for (auto const& entry : fs::recursive_directory_iterator(directory)) {
    if (documents.count(entry.path().extension()) != 0) paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

class RealDocuments : public testing::TestWithParam<char const*> {};

TEST_P(RealDocuments, AreTheSameTreeAfterTheyWereWrittenAndReadAgain) {
  fs::path const directory = CORPUS_ROOT / "real" / GetParam();
  if (!fs::exists(directory)) GTEST_SKIP() << "there is no " << directory;
  Outcome const outcome = take_through(documents_in(directory));
  EXPECT_GT(outcome.well_formed, 9 * outcome.ill_formed);
}

INSTANTIATE_TEST_SUITE_P(Corpus, RealDocuments,
                         testing::Values("cldr", "cyclonedx", "feeds", "genericode", "kml",
                                         "mime-info", "svg", "ubl", "xmldsig", "xslt"),
                         [](testing::TestParamInfo<char const*> const& info) {
                           std::string name = info.param;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

TEST(ConformanceDocuments, AreTheSameTreeAfterTheyWereWrittenAndReadAgain) {
  fs::path const directory = CORPUS_ROOT / "xmlconf-sample" / "xmlconf";
  if (!fs::exists(directory)) GTEST_SKIP() << "there is no " << directory;
  Outcome const outcome = take_through(documents_in(directory));
  EXPECT_GT(outcome.well_formed, 500);
}

/// Those that every reader must accept and that take no more than others.
std::vector<fs::path> harmless_documents(fs::path const& directory) {
  std::vector<fs::path> paths;
  std::ifstream table(directory / "expected.tsv");
  std::string file, kind, rest;
  while (std::getline(table, file, '\t') && std::getline(table, kind, '\t') &&
         std::getline(table, rest)) {
    if (kind == "wellformed") paths.push_back(directory / "docs" / file);
  }
  return paths;
}

TEST(StrangeDocuments, AreTheSameTreeAfterTheyWereWrittenAndReadAgain) {
  fs::path const directory = CORPUS_ROOT / "attack";
  if (!fs::exists(directory)) GTEST_SKIP() << "there is no " << directory;
  Outcome const outcome = take_through(harmless_documents(directory));
  EXPECT_GT(outcome.well_formed, 40);
}

}  // namespace
}  // namespace tests

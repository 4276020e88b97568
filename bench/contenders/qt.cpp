#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/contenders/Contenders.h"
#include "bench/contenders/EventWalk.h"
#include "bench/contenders/Pieces.h"
#include "bench/contenders/QualifiedNames.h"
#include "bench/orders/NameIndex.h"

namespace bench {
namespace {

/// Names as Qt wants them, made once a program.
struct Names {
  QString const order = QString::fromLatin1(ORDER_NAME);
  std::array<QString, 3> const attributes = strings(ATTRIBUTE_NAMES);
  std::array<QString, 6> const fields = strings(FIELD_NAMES);

  template <std::size_t N>
  static std::array<QString, N> strings(std::array<char const*, N> const& texts) {
    std::array<QString, N> made;
    for (std::size_t i = 0; i < N; ++i) made[i] = QString::fromLatin1(texts[i]);
    return made;
  }
};

Names const& names() {
  static Names const made;
  return made;
}

/// Without a copy.
QString qt_string(Text const& text) {
  return QString::fromRawData(reinterpret_cast<QChar const*>(text.utf16.data()),
                              static_cast<qsizetype>(text.utf16.length()));
}

void write_order(QXmlStreamWriter& writer, Order const& record) {
  writer.writeStartElement(names().order);
  for (std::size_t i = 0; i < record.attributes.size(); ++i) {
    writer.writeAttribute(names().attributes[i], qt_string(record.attributes[i]));
  }
  for (std::size_t i = 0; i < record.fields.size(); ++i) {
    writer.writeTextElement(names().fields[i], qt_string(record.fields[i]));
  }
  writer.writeEndElement();
}

std::string write(Orders const& records) {
  QByteArray bytes;
  QXmlStreamWriter writer(&bytes);
  writer.writeStartDocument();
  writer.writeStartElement(QString::fromLatin1(ROOT_NAME));
  for (NamespaceDeclaration const& each : NAMESPACE_DECLARATIONS) {
    writer.writeAttribute(QString::fromLatin1(each.name), QString::fromLatin1(each.uri));
  }
  for (Order const& record : records) write_order(writer, record);
  writer.writeEndDocument();
  return bytes.toStdString();
}

std::u16string_view view(QStringView text) {
  return {text.utf16(), static_cast<std::size_t>(text.size())};
}

/// An element or an attribute.
template <class Named>
Orn::XmlTag::Id id_of(Named const& named) {
  return order_names().find(view(named.namespaceUri()), view(named.name()));
}

/// Without a copy: good as long as the view.
QByteArray qt_bytes(std::string_view bytes) {
  return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

template <class Sink>
class Parser {
 public:
  explicit Parser(Sink& sink) : walk_(sink) {}

  /// Reports what is complete.
  void parse(std::string_view piece) {
    reader_.addData(qt_bytes(piece));
    while (!reader_.atEnd()) tell(reader_.readNext());
    if (reader_.hasError() && reader_.error() != QXmlStreamReader::PrematureEndOfDocumentError) {
      throw std::runtime_error(reader_.errorString().toStdString());
    }
  }

  void finish() const {
    if (reader_.hasError()) throw std::runtime_error(reader_.errorString().toStdString());
  }

 private:
  void tell(QXmlStreamReader::TokenType token) {
    switch (token) {
      case QXmlStreamReader::StartElement:
        tell_start();
        break;
      case QXmlStreamReader::Characters:
        walk_.characters(view(reader_.text()));
        break;
      case QXmlStreamReader::EndElement:
        walk_.end();
        break;
      default:
        break;
    }
  }

  void tell_start() {
    walk_.start(id_of(reader_));
    QXmlStreamAttributes const attributes = reader_.attributes();
    for (QXmlStreamAttribute const& each : attributes) {
      walk_.attribute(id_of(each), view(each.value()));
    }
  }

  EventWalk<Sink, char16_t> walk_;
  QXmlStreamReader reader_;
};

/// There is no tree to be had without more of Qt than its core: the tokens of a document that is
/// given at once.
struct Whole {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    Parser<Sink> parser(sink);
    parser.parse(document);
    parser.finish();
  }
};

struct Stream {
  template <class Sink>
  static void read(std::string_view document, Sink& sink) {
    Parser<Sink> parser(sink);
    Pieces pieces(document);
    for (std::string_view piece = pieces.next(); !piece.empty(); piece = pieces.next()) {
      parser.parse(piece);
    }
    parser.finish();
  }
};

}  // namespace

void add_qt(Contenders& contenders) {
  contenders.writers.push_back({"qt", write});
  contenders.whole_readers.push_back({"qt", read_with<Whole>()});
  contenders.stream_readers.push_back({"qt", read_with<Stream>()});
}

}  // namespace bench

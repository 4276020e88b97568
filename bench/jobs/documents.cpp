#include <string>

#include "bench/contenders/XercesReaders.h"
#include "bench/jobs/Jobs.h"
#include "bench/jobs/Samples.h"
#include "bench/orders/Tell.h"

namespace bench {
namespace {

std::string name_of(char const* job, char const* contender, Size const& size) {
  return std::string(job) + "/" + contender + "/" + size.name;
}

std::uint64_t told(Orders const& records) {
  Digest digest;
  tell(records, digest);
  return digest.value();
}

std::uint64_t read_by_xerces(std::string_view document) {
  Digest digest;
  read_xerces_whole(document, order_names(), digest);
  return digest.value();
}

void check_readers(char const* job, std::vector<Reader> const& readers, Size const& size) {
  Sample const& is = sample(size);
  std::uint64_t const right = told(is.records);
  for (Reader const& reader : readers) {
    expect(reader.read.digest(is.document).value() == right, name_of(job, reader.name, size));
  }
}

void check_writers(std::vector<Writer> const& writers, Size const& size) {
  Sample const& is = sample(size);
  std::uint64_t const right = told(is.records);
  for (Writer const& writer : writers) {
    expect(read_by_xerces(writer.write(is.records)) == right, name_of("write", writer.name, size));
  }
}

template <class Work>
void register_for(std::string const& name, Size const& size, Work work) {
  register_work(
      name, [&size]() -> Sample const& { return sample(size); }, work,
      [](Sample const& made) { return made.document.size(); });
}

void register_readers(char const* job, std::vector<Reader> const& readers, Size const& size) {
  for (Reader const& reader : readers) {
    register_for(name_of(job, reader.name, size), size,
                 [reader](Sample const& made) { return reader.read.tally(made.document).sum(); });
  }
}

void register_writers(std::vector<Writer> const& writers, Size const& size) {
  for (Writer const& writer : writers) {
    register_for(name_of("write", writer.name, size), size,
                 [writer](Sample const& made) { return writer.write(made.records); });
  }
  // What no writer can do without: the bytes in memory of their own.
  register_for(name_of("write", "copy", size), size, [](Sample const& made) {
    return std::string(made.document.data(), made.document.size());
  });
}

}  // namespace

void check_documents(Contenders const& contenders) {
  for (Size const& size : SIZES) {
    if (size.bytes > LARGEST_CHECKED) continue;
    check_writers(contenders.writers, size);
    check_readers("read_whole", contenders.whole_readers, size);
    check_readers("read_stream", contenders.stream_readers, size);
  }
}

void register_documents(Contenders const& contenders) {
  for (Size const& size : SIZES) {
    register_writers(contenders.writers, size);
    register_readers("read_whole", contenders.whole_readers, size);
    register_readers("read_stream", contenders.stream_readers, size);
  }
}

}  // namespace bench

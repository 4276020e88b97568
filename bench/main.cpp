// Times this library beside others that write and read XML. Before that it makes sure that all of
// them do the same, and ends with status 1 when one of them does not.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

#include "bench/contenders/Contenders.h"
#include "bench/jobs/Jobs.h"

namespace bench {

void expect(bool right, std::string const& who) {
  if (!right) throw std::runtime_error(who + " gives another result than the others");
}

namespace {

void check_all(Contenders const& contenders) {
  check_documents(contenders);
  check_escape();
  check_utf8();
  check_trees();
  check_growth();
}

void register_all(Contenders const& contenders) {
  register_documents(contenders);
  register_escape();
  register_utf8();
  register_trees();
  register_growth();
}

bool is_all_the_same(Contenders const& contenders) {
  try {
    check_all(contenders);
    return true;
  } catch (std::exception const& e) {
    std::fprintf(stderr, "tqxml_bench: %s\n", e.what());
    return false;
  }
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  bench::Contenders const contenders = bench::all_contenders();
  if (!bench::is_all_the_same(contenders)) return 1;
  bench::register_all(contenders);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

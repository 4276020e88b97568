// tqxml_bench [--check | --checked] [--benchmark_...]
// Times this library beside others that write and read XML. Before that it makes sure that all of
// them do the same, and ends with status 1 when one of them does not.
//   --check    does only that
//   --checked  does not do it again: it has been done, and leaves its traces in the memory in which
//              the others are measured

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
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

/// Whether the first argument is `option`, which is taken away then.
bool take_option(int& argc, char** argv, char const* option) {
  if (argc < 2 || std::strcmp(argv[1], option) != 0) return false;
  std::rotate(argv + 1, argv + 2, argv + argc);
  --argc;
  return true;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  bool const check_only = bench::take_option(argc, argv, "--check");
  bool const checked = bench::take_option(argc, argv, "--checked");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  bench::Contenders const contenders = bench::all_contenders();
  if (!checked && !bench::is_all_the_same(contenders)) return 1;
  if (check_only) return 0;
  bench::register_all(contenders);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

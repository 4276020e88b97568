#ifndef BENCH_JOBS_JOBS_H
#define BENCH_JOBS_JOBS_H

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "bench/contenders/Contenders.h"

namespace bench {

// Each kind of work has two functions. `check` throws std::runtime_error, which says what differs,
// unless all who take part do the same; `register` makes the benchmarks known.

void check_documents(Contenders const& contenders);
void register_documents(Contenders const& contenders);

void check_escape();
void register_escape();

void check_utf8();
void register_utf8();

void check_trees();
void register_trees();

void check_growth();
void register_growth();

/// Throws std::runtime_error for `who` unless it holds.
void expect(bool right, std::string const& who);

/// The benchmark `job/contender/size` that calls `work(made)` again and again. `make()` is called
/// before the time counts, and `work(made)` once, for what is slow the first time. `bytes(made)` is
/// how much one call deals with.
template <class Make, class Work, class Bytes>
void register_work(std::string const& name, Make make, Work work, Bytes bytes) {
  auto const run = [=](benchmark::State& state) {
    decltype(auto) made = make();
    benchmark::DoNotOptimize(work(made));
    for (auto _ : state) benchmark::DoNotOptimize(work(made));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(bytes(made)));
  };
  benchmark::RegisterBenchmark(name.c_str(), run)->Unit(benchmark::kMicrosecond);
}

}  // namespace bench

#endif

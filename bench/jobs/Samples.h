#ifndef BENCH_JOBS_SAMPLES_H
#define BENCH_JOBS_SAMPLES_H

#include <array>
#include <cstddef>
#include <string>

#include "bench/orders/Orders.h"

namespace bench {

struct Size {
  char const* name;
  std::size_t bytes;
};

inline constexpr std::array<Size, 5> SIZES{{
    {"300B", 300},
    {"3KiB", 3 << 10},
    {"64KiB", 64 << 10},
    {"1MiB", 1 << 20},
    {"16MiB", 16 << 20},
}};

/// What is compared before anything is timed is no larger than this.
inline constexpr std::size_t LARGEST_CHECKED = 1 << 20;

/// The records of a size, and the document that this library writes of them.
struct Sample {
  Orders records;
  std::string document;
};

/// Made when first asked for.
Sample const& sample(Size const& size);

}  // namespace bench

#endif

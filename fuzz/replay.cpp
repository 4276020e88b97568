#include <sanitizer/common_interface_defs.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>
#include <vector>

#include "fuzz/Target.h"

// The main program of a target where there is no fuzzer: runs each input that it is given, and then
// a number of inputs that come of those by mutations, the same ones every time.
//
//   fuzz_dom [--mutations N] [--max-size BYTES] [--found DIR] FILE_OR_FOLDER...
//
// An input on which the target fails is put into DIR.

#pragma weak __sanitizer_set_death_callback
#pragma weak LLVMFuzzerCustomMutator

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

std::mt19937 engine;
std::size_t below(std::size_t limit) { return engine() % limit; }

struct Options {
  unsigned long mutations = 0;
  std::size_t max_size = 4096;
  fs::path found = ".";
  std::vector<fs::path> inputs;
};

// What is needed when the process is already dying.
Bytes const* current = nullptr;
std::string found_path;

void keep_current() {
  if (current == nullptr) return;
  std::ofstream(found_path, std::ios::binary)
      .write(reinterpret_cast<char const*>(current->data()),
             static_cast<std::streamsize>(current->size()));
  std::cerr << "The input is in " << found_path << std::endl;
  current = nullptr;
}

void keep_current_and_abort(int signal) {
  keep_current();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void run(Bytes const& input) {
  current = &input;
  // On the heap and of that size, so that reading beyond it is seen.
  Bytes const exact(input.begin(), input.end());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
  current = nullptr;
}

Bytes mutated(Bytes bytes, std::size_t max_size) {
  std::size_t const size = std::min(bytes.size(), max_size);
  bytes.resize(max_size);
  std::size_t const new_size = LLVMFuzzerCustomMutator != nullptr
                                   ? LLVMFuzzerCustomMutator(bytes.data(), size, bytes.size(),
                                                             static_cast<unsigned>(engine()))
                                   : LLVMFuzzerMutate(bytes.data(), size, bytes.size());
  bytes.resize(new_size);
  return bytes;
}

Bytes read(fs::path const& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path.string() + " cannot be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Bytes> read_all(std::vector<fs::path> const& inputs) {
  std::vector<fs::path> files;
  for (fs::path const& input : inputs) {
    if (fs::is_directory(input)) {
      std::copy(fs::directory_iterator(input), {}, std::back_inserter(files));
    } else {
      files.push_back(input);
    }
  }
  std::sort(files.begin(), files.end());
  std::vector<Bytes> all;
  std::transform(files.begin(), files.end(), std::back_inserter(all), read);
  return all;
}

Options parsed(std::vector<std::string> const& arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    bool const has_value = i + 1 < arguments.size();
    if (arguments[i] == "--mutations" && has_value) {
      options.mutations = std::stoul(arguments[++i]);
    } else if (arguments[i] == "--max-size" && has_value) {
      options.max_size = std::stoul(arguments[++i]);
    } else if (arguments[i] == "--found" && has_value) {
      options.found = arguments[++i];
    } else {
      options.inputs.emplace_back(arguments[i]);
    }
  }
  return options;
}

void replay(std::string const& program, Options const& options) {
  fs::create_directories(options.found);
  found_path = (options.found / (program + "-" + std::to_string(getpid()))).string();
  std::vector<Bytes> const inputs = read_all(options.inputs);
  if (inputs.empty()) throw std::runtime_error("there are no inputs");
  for (Bytes const& input : inputs) run(input);
  for (unsigned long i = 0; i < options.mutations; ++i) {
    Bytes input = inputs[i % inputs.size()];
    for (std::size_t times = 1 + below(4); times > 0; --times) {
      input = mutated(std::move(input), options.max_size);
    }
    run(input);
  }
  std::cout << program << ": " << inputs.size() << " inputs and " << options.mutations
            << " mutations of them\n";
}

}  // namespace

// Bytes put in, taken out, changed and repeated: there is no fuzzer to do better.
std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size) {
  std::size_t const place = below(size + 1);
  std::size_t const length = below(std::min<std::size_t>(size - place, 16) + 1);
  switch (below(4)) {
    case 0:
      if (size == max_size) break;
      std::memmove(data + place + 1, data + place, size - place);
      data[place] = static_cast<std::uint8_t>(engine());
      return size + 1;
    case 1:
      std::memmove(data + place, data + place + length, size - place - length);
      return size - length;
    case 2:
      if (size + length > max_size) break;
      std::memmove(data + place + length, data + place, size - place);
      return size + length;
    default:
      break;
  }
  if (size == 0) return 0;
  data[below(size)] ^= static_cast<std::uint8_t>(1U << below(8));
  return size;
}

int main(int argc, char** argv) {
  if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(keep_current);
  std::signal(SIGABRT, keep_current_and_abort);
  try {
    replay(fs::path(argv[0]).filename().string(), parsed({argv + 1, argv + argc}));
    return EXIT_SUCCESS;
  } catch (std::exception const& e) {
    std::cerr << argv[0] << ": " << e.what() << '\n';
    return EXIT_FAILURE;
  }
}

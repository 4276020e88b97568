#include "tests/conformance/Child.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace tests {
namespace {

using Clock = std::chrono::steady_clock;

/// A child that uses no processor time for so long, waiting for something, hangs.
constexpr auto MOST_WAITING = std::chrono::minutes(4);
constexpr int POLL_MILLISECONDS = 5;

/// Of processor time.
void end_after(std::chrono::milliseconds time) {
  itimerval timer{};
  timer.it_value.tv_sec = static_cast<time_t>(time / std::chrono::seconds(1));
  timer.it_value.tv_usec =
      static_cast<suseconds_t>(time % std::chrono::seconds(1) / std::chrono::microseconds(1));
  setitimer(ITIMER_PROF, &timer, nullptr);
}

[[noreturn]] void be_child(std::function<std::string()> const& work, std::chrono::milliseconds time,
                           int out) {
  end_after(time);
  rlimit const no_core{0, 0};
  setrlimit(RLIMIT_CORE, &no_core);
  dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
  std::string const text = work();
  std::FILE* const file = fdopen(out, "w");
  bool const written =
      std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fclose(file) == 0;
  // What looks for leaks does so now.
  std::exit(written ? EXIT_SUCCESS : EXIT_FAILURE);
}

long memory_of(pid_t child) {
  std::ifstream statm("/proc/" + std::to_string(child) + "/statm");
  long size = 0;
  long resident = 0;
  statm >> size >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

/// Reads what the child writes until it has ended, or kills it. Gives why it was killed, if it was.
char const* listen(pid_t child, int in, long most_memory, std::string& text) {
  Clock::time_point const start = Clock::now();
  char piece[65536];
  while (true) {
    pollfd waiting{in, POLLIN, 0};
    if (poll(&waiting, 1, POLL_MILLISECONDS) > 0) {
      ssize_t const size = read(in, piece, sizeof piece);
      if (size <= 0) return nullptr;
      text.append(piece, static_cast<std::size_t>(size));
    }
    char const* const reason = memory_of(child) > most_memory        ? "memory"
                               : Clock::now() - start > MOST_WAITING ? "hangs"
                                                                     : nullptr;
    if (reason != nullptr) {
      kill(child, SIGKILL);
      return reason;
    }
  }
}

ChildOutcome outcome_of(int status, char const* killed_for, std::string const& text) {
  if (killed_for != nullptr) {
    bool const hung = std::string(killed_for) == "hangs";
    return {hung ? ChildOutcome::BADLY : ChildOutcome::AT_A_LIMIT, killed_for};
  }
  if (WIFSIGNALED(status)) {
    int const signal = WTERMSIG(status);
    if (signal == SIGPROF) return {ChildOutcome::AT_A_LIMIT, "time"};
    return {ChildOutcome::BADLY, "signal " + std::to_string(signal)};
  }
  if (WEXITSTATUS(status) != EXIT_SUCCESS) {
    return {ChildOutcome::BADLY, "exit status " + std::to_string(WEXITSTATUS(status))};
  }
  return {ChildOutcome::WELL, text};
}

}  // namespace

ChildOutcome in_child(std::function<std::string()> const& work, ChildLimits const& limits) {
  // What is in the buffers would be written twice.
  std::fflush(nullptr);
  std::cout.flush();
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe for a child process");
  pid_t const child = fork();
  if (child == -1) throw std::runtime_error("no child process");
  if (child == 0) {
    close(ends[0]);
    be_child(work, limits.time, ends[1]);
  }
  close(ends[1]);
  std::string text;
  char const* const killed_for = listen(child, ends[0], limits.bytes, text);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return outcome_of(status, killed_for, text);
}

}  // namespace tests

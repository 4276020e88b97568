# shellcheck shell=bash
# What the tools share; they source this file and then run in the root of the source tree.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit
# shellcheck disable=SC2034
logs=build/logs
tool=tools/$(basename "$0")

fail() {
  echo "$tool: $*" >&2
  exit 1
}

# logged LOG COMMAND...: appends what the command prints to the log, and shows nothing of it.
logged() {
  local log=$1
  shift
  mkdir -p "$(dirname "$log")"
  echo "+ $*" >>"$log"
  "$@" >>"$log" 2>&1 </dev/null
}

# show_tail LOG LINES: without the lines of steps and tests that went well, among which failures are
# lost.
show_tail() {
  echo "--- the end of $1:"
  local well='^ *[0-9]+/[0-9]+ Test +#.* Passed |^ +Start +[0-9]+: '
  well+='|^\[[0-9]+/[0-9]+\] (Building|Linking|Creating|Recording|Re-checking) |^-- '
  { grep -v -E "$well" "$1" || true; } | tail -n "$2"
  echo "---"
}

# configure_and_build LOG PRESET [TARGET...]
configure_and_build() {
  local log=$1 preset=$2
  shift 2
  logged "$log" cmake --preset "$preset" &&
    logged "$log" cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}

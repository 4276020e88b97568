# shellcheck shell=bash
# What the outside programs are to print; for scripts that have a function fail.

# run_consumer COMMAND...
run_consumer() {
  local output
  output=$("$@") || fail "$* failed"
  echo "$output"
  [[ $output == *"<N1:note>R&amp;D</N1:note></N1:order>"* && $output == *libtqxml* ]] ||
    fail "$* printed something else"
}

# run_utility COMMAND...: it uses names and texts, and not the library beside them. The last word is the
# program.
run_utility() {
  local output
  output=$("$@") || fail "$* failed"
  echo "$output"
  [[ $output == "{urn:example:orders}note"*TQUTL0002E* ]] || fail "$* printed something else"
  if readelf -d "${*: -1}" | grep -F NEEDED | grep -F libtqxml; then
    fail "${*: -1} asks for libtqxml"
  fi
}

# shellcheck shell=bash
# Where the packages of this Debian system come from, for tools that fetch those of another
# architecture. They source this file and define fail.

release_codename() {
  local codename
  codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
  [[ -n $codename ]] || fail "/etc/os-release names no release"
  echo "$codename"
}

# Writes each of the system's sources for the suite and component main as a file of its own. Of
# which architecture they are for is left out.
list_sources() {
  local suite=$1 found=$2 file count=100
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [[ -f $file ]] || continue
    while read -r line; do
      count=$((count + 1))
      echo "$line" >"$found/$count.list"
    done < <(one_line_sources "$suite" "$file")
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    [[ -f $file ]] || continue
    count=$((count + 100))
    deb822_sources "$suite" "$file" "$found/$count"
  done
}

# deb [options] URI suite component...; an option arch= would keep i386 out.
one_line_sources() {
  local suite=$1 file=$2
  sed -n 's/^[[:space:]]*deb[[:space:]]\{1,\}//p' "$file" |
    awk -v suite="$suite" '
      {
        options = ""
        if (match($0, /^\[[^]]*\][[:space:]]*/)) {
          options = substr($0, 1, RLENGTH)
          $0 = substr($0, RLENGTH + 1)
          gsub(/arch=[^] ]*/, "", options)
        }
        sub(/#.*/, "")
        for (i = 3; i <= NF; i++) if ($2 == suite && $i == "main") print "deb", options $1, suite, "main"
      }'
}

# Stanzas of fields; a line that begins with a blank goes on with the field before it.
deb822_sources() {
  local suite=$1 file=$2 prefix=$3
  awk -v suite="$suite" -v prefix="$prefix" '
    function has(list, word,    words, n, i) {
      n = split(list, words, /[[:space:]]+/)
      for (i = 1; i <= n; i++) if (words[i] == word) return 1
      return 0
    }
    function finish() {
      if (has(types, "deb") && has(suites, suite) && has(components, "main") && enabled != "no") {
        file = prefix "-" ++count ".sources"
        print "Types: deb\nSuites: " suite "\nComponents: main" kept > file
        close(file)
      }
      types = suites = components = enabled = kept = ""
    }
    /^#/ { next }
    /^[[:space:]]*$/ { finish(); field = ""; next }
    {
      if ($0 !~ /^[[:space:]]/) {
        field = tolower(substr($0, 1, index($0, ":") - 1))
        value = substr($0, index($0, ":") + 1)
        first = 1
      } else {
        value = $0
        first = 0
      }
      if (field == "types") types = types " " value
      else if (field == "suites") suites = suites " " value
      else if (field == "components") components = components " " value
      else if (field == "enabled") enabled = tolower(value) ~ /no|false|0/ ? "no" : "yes"
      else if (field != "architectures") kept = kept "\n" $0
    }
    END { finish() }' "$file"
}

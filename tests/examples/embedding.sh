#!/usr/bin/env bash
# Runs the embedding example twice over a folder of modules, some of which end the process that opens them.
# Usage: embedding.sh PROGRAM MODULE… -- EFFECT BANNED EXPECTED PARAMETER
# EFFECT must play at first as EXPECTED (a pattern), BANNED modules must end up banned, and in the second run its first
# parameter begins as the first run has left it, as PARAMETER. Exit status 77 when a module isn't there.
set -euo pipefail
program=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/files" "$work/plug-ins"
while [[ $1 != -- ]]; do
  if [[ ! -e $1 ]]; then
    printf '%s is not installed.\n' "$1"
    exit 77
  fi
  cp -r "$1" "$work/plug-ins/"
  shift
done
shift

# VST 2.x plug-ins are searched for in no folder: those of this machine are none of the test's business.
cat >"$work/files/AudioPluginManagerSettings.xml" <<'END'
<proplist version="1">
  <unsigned key="version">2</unsigned>
  <int key="num_tech_infos">1</int>
  <list key="tech_info0"><int key="tech_type">2</int><int key="num_directories">0</int></list>
</proplist>
END
export VST3_PATH=$work/plug-ins

# What plug-ins leave behind at their end is theirs.
export HOME=$work ASAN_OPTIONS=${ASAN_OPTIONS:-}:detect_leaks=0

# run PATTERN…: plays the effect; the output must match each pattern.
run() {
  local out pattern
  out=$("$program" "$work/files" "$effect" 2>"$work/errors") || {
    cat "$work/errors"
    exit 1
  }
  printf '%s\n' "$out"
  for pattern in "$@"; do
    grep -qE -e "$pattern" <<<"$out" || { printf 'missing: %s\n' "$pattern" && exit 1; }
  done
}

effect=$1
run "^$2 modules are banned" "^$1, .*$3"
run "^$2 modules are banned" "^$1, first parameter $4,"

if "$program" "$work/files" Nobody 2>"$work/errors"; then
  printf 'an effect that is not there was played\n'
  exit 1
fi
grep -q '^embedding: no effect is called Nobody$' "$work/errors"

#!/usr/bin/env bash
# Shows the editor of a plug-in for a second, on a display of its own. Exit status 77 when either isn't there.
# Usage: editor_window.sh PROGRAM PLUG-IN
set -euo pipefail
if [[ ! -e $2 ]] || ! command -v Xvfb >/dev/null; then
  printf '%s or Xvfb is not installed.\n' "$2"
  exit 77
fi
work=$(mktemp -d)
export HOME=$work ASAN_OPTIONS=${ASAN_OPTIONS:-}:detect_leaks=0
mkfifo "$work/number"
Xvfb -displayfd 3 -noreset -screen 0 1280x1024x24 3>"$work/number" 2>/dev/null &
trap 'kill %1; rm -rf "$work"' EXIT
read -r number <"$work/number"

DISPLAY=:$number "$1" "$2" 1 | tee "$work/out"
grep -qE '^The editor is open, [1-9][0-9]+ by [1-9][0-9]+ pixels\.$' "$work/out"
! env -u DISPLAY "$1" "$2" 1 2>"$work/errors"
grep -q 'there is no display' "$work/errors"

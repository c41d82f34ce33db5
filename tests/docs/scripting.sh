#!/usr/bin/env bash
# Compares the list in docs/scripting.md with what the program says of its script interface.
# Usage: scripting.sh VYNHOST PAGE [--write]
# --write puts what the program says behind the mark in the page.
set -euo pipefail
program=$1 page=$2
mark='^<!-- From here on: vynhost script --list --markdown '
HOME=$(mktemp -d)
export HOME
trap 'rm -rf "$HOME"' EXIT
{
  sed "/$mark/q" "$page"
  printf '\n'
  "$program" script --list --markdown
} >"$HOME/page"
if [[ ${3:-} == --write ]]; then
  cat "$HOME/page" >"$page"
fi
grep -q "$mark" "$page"
diff -u "$page" "$HOME/page"

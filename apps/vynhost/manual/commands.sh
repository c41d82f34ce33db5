#!/bin/sh
# commands.sh VYNHOST: asks the program for the help of each of its commands and prints it as a table, from which the
# manual page and the shells' completions are made. Fields are separated by tabs; COMMAND is empty for the program:
#   C  COMMAND  USAGE     DESCRIPTION
#   A  COMMAND  NAME      KIND      DESCRIPTION                                what stands by itself
#   O  COMMAND  SPELLING  ARGUMENT  KIND  RANGE  DEFAULT  RULES  DESCRIPTION
# KIND is none, file, dir, plugin, other, or "words" with the words behind it; no field is empty, "-" stands for nothing.
set -eu
program=$1
here=$(dirname "$0")

# describe [COMMAND…]: that command, and all below it.
describe() (
    help=$("$program" "$@" --help)
    printf '%s\n' "$help" | awk -v command="$*" -f "$here/commands.awk"
    for below in $(printf '%s\n' "$help" | awk '/^Subcommands:/ { inside = 1; next } inside && /^  [a-z]/ { print $1 }'); do
        describe "$@" "$below"
    done
)

describe

#!/bin/sh
# exports.sh LIBRARY [NM]: fails when the library exports a name that lies outside our namespaces. Weak names of the
# standard library and of Boost, which every program brings along, are left alone.
set -eu

library=$1
nm=${2:-nm}

# What a name begins with: a table, a guard, a thunk or something inside a function, then the name itself.
kind='(T[VTIS]|TC|GV|GR|Th?n?[0-9]+_|Tv[0-9]+_n?[0-9]+_|Z)*'
ours="^[A-Za-z] _Z${kind}N[VKrRO]*(18vynaudiofilterhost|7vyncore|12vynscripting|13vynmediatypes|13vynaccelerate)"
standard="^[WVu] _Z${kind}(N[VKrRO]*)?(S[tabdios]|5boost|9__gnu_cxx)"

names=$("$nm" -D --defined-only "$library" | awk '{ print $(NF - 1), $NF }')
if ! printf '%s\n' "$names" | grep -Eq "$ours"; then
    echo "$library exports nothing of ours" >&2
    exit 1
fi
if strangers=$(printf '%s\n' "$names" | grep -Ev "$ours|$standard"); then
    echo "$library exports what lies outside our namespaces:" >&2
    printf '%s\n' "$strangers" >&2
    exit 1
fi

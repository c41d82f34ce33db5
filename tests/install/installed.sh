#!/bin/sh
# installed.sh SOURCES BUILD MODULE: installs the build tree into a folder of its own, builds the examples that lie there
# against it, with CMake and with pkg-config, and runs them on the plug-in module. Fails with the first thing that is not
# as a user needs it. CMAKE, CXX, NM and LAUNCHER name the tools.
set -eu
sources=$1
build=$2
module=$3
name=vynaudiofilterhost
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

fail() {
    echo "$*" >&2
    exit 1
}

# equal WHAT FOUND EXPECTED
equal() { [ "$2" = "$3" ] || fail "$1 is \"$2\" instead of \"$3\""; }

# dynamic FILE TAG: what the file's dynamic section says under that tag.
dynamic() { readelf -d "$1" | sed -n "s/.*($2).*\[\(.*\)\]$/\1/p"; }

check_library() {
    equal "the own name of the library" "$(dynamic "$library" SONAME)" "lib$name.so.0"
    equal "the search path of the library" "$(dynamic "$library" RUNPATH)" ""
    equal "the search path of vynhost" "$(dynamic "$prefix/bin/vynhost" RUNPATH)" ""
    sh "$sources/tests/api/exports.sh" "$library" "$NM"
}

# One source with all of them: a header that is missing can't come from the tree.
check_headers() {
    (cd "$prefix/include" && find . -name '*.h' | sort | sed 's|^\./\(.*\)|#include "\1"|') >"$work/all.cpp"
    count=$(wc -l <"$work/all.cpp")
    [ "$count" -gt 80 ] || fail "only $count headers are installed"
    $CXX -std=c++20 -fsyntax-only -I"$prefix/include" "$work/all.cpp"
}

# The page and the completions tell of every option of every command.
check_manual() {
    sh "$sources/apps/vynhost/manual/commands.sh" "$prefix/bin/vynhost" >"$work/commands"
    page=$prefix/share/man/man1/vynhost.1
    completions="$prefix/share/bash-completion/completions/vynhost $prefix/share/zsh/vendor-completions/_vynhost"
    sed -n 's/^O\t[^\t]*\t\([^\t]*,\)*--\([^\t]*\)\t.*/\2/p' "$work/commands" | sort -u >"$work/options"
    [ "$(wc -l <"$work/options")" -gt 20 ] || fail "vynhost tells of hardly an option"
    while read -r option; do
        for file in $completions; do
            grep -q -e "--$option\b" "$file" || fail "$file knows no --$option"
        done
        grep -q -e "-l $option\b" "$prefix/share/fish/vendor_completions.d/vynhost.fish" || fail "fish knows no --$option"
        sed 's/\\-/-/g' "$page" | grep -q -e "--$option\b" || fail "the manual page knows no --$option"
    done <"$work/options"
    awk -F'\t' '$1 == "C" && $2 !~ /[ -]/ { print $2 }' "$work/commands" | while read -r command; do
        grep -q "^\.SS $command$" "$page" || fail "the manual page knows no $command"
    done
    bash -n "$prefix/share/bash-completion/completions/vynhost"
}

# heard PROGRAM: the example plays the fixture, which passes on what it gets.
heard() { equal "what $1 says" "$("$1" "$module")" "Peak 0.50 in, 0.50 out."; }

check_cmake() {
    "$CMAKE" -S "$examples" -B "$work/built" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$CXX" \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$LAUNCHER" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >"$work/log" || fail "$(cat "$work/log")"
    if grep -F "$sources/" "$work/built/compile_commands.json"; then
        fail "the examples are built against the tree"
    fi
    "$CMAKE" --build "$work/built" --parallel 2 >"$work/log" || fail "$(cat "$work/log")"
    heard "$work/built/first_program"
}

check_pkg_config() {
    flags=$(PKG_CONFIG_PATH="$libraries/pkgconfig" pkg-config --cflags --libs $name)
    # shellcheck disable=SC2086
    $CXX -std=c++20 "$examples/first_program.cpp" $flags -o "$work/first_program"
    heard "$work/first_program"
}

"$CMAKE" --install "$build" --prefix "$prefix" >"$work/log"
library=$(find "$prefix" -name "lib$name.so")
check_library
libraries=$(dirname "$library")
LD_LIBRARY_PATH=$libraries
export LD_LIBRARY_PATH
cp -r "$prefix/share/doc/lib$name/examples" "$work/examples"
examples=$work/examples
check_headers
check_manual
check_cmake
check_pkg_config
echo "$count headers, $(wc -l <"$work/options") options, examples built and run."

#!/usr/bin/env bash
# tools/lint.sh format | fix | tidy: checks the layout of our code, lays it out, or runs clang-tidy
# on the program (needs build/dev; the tests would take as long again).
set -euo pipefail
cd "$(dirname "$0")/.."

# layout FILE: the file as it should be. Braces around a single statement go first, in a run of its
# own: clang-format 14 breaks the lines of lambdas in another way while it removes braces.
layout() {
    clang-format-14 --style="file:$without_braces" <"$1" --assume-filename="$1" |
        clang-format-14 --assume-filename="$1"
}

# check FILE: shows where the file differs.
check() {
    layout "$1" | diff -u --label "$1" --label "$1 laid out" "$1" -
}

# fix FILE
fix() {
    local text
    text=$(layout "$1" && echo .)
    [ "$text" = "$(cat "$1" && echo .)" ] || printf '%s' "${text%.}" >"$1"
}

# each COMMAND: runs it for every source, several at a time.
each() {
    without_braces=$(mktemp)
    trap 'rm -f "$without_braces"' EXIT
    sed 's/^Language:.*/&\nRemoveBracesLLVM: true/' .clang-format >"$without_braces"
    export without_braces
    export -f layout check fix
    find src shells tests fuzz benchmarks -name '*.h' -o -name '*.cpp' -o -name '*.mm' |
        xargs -P "$(nproc)" -I{} bash -c "$1 {}"
}

case "${1:-}" in
    format) each check ;;
    fix) each fix ;;
    tidy)
        # GCC's own warnings are in the compile commands, and clang does not know them.
        run-clang-tidy-14 -quiet -p build/dev -j "$(nproc)" \
            -extra-arg=-Wno-unknown-warning-option \
            "^$PWD/(src|shells)/.*\.cpp$"
        ;;
    *)
        echo "usage: tools/lint.sh format | fix | tidy" >&2
        exit 2
        ;;
esac

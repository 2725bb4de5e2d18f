#!/bin/sh
# Checks the macOS shell on a machine without a Mac, with tools/macos-check.
#
#   macos_check.sh typecheck
#       Type-checks every source of shells/macos, tests/macos and tests/macos_standins.
#   macos_check.sh libcxx VERSION
#       Type-checks those of shells/macos with clang++-VERSION and its libc++, as a Mac has it.
#   macos_check.sh test PROGRAM LIBRARY...
#       Builds PROGRAM from shells/macos, tests/macos, tests/macos_standins and the core's LIBRARYs, and
#       runs its tests.
#   macos_check.sh sanitized PROGRAM
#       The same with the core's sources, and with the address and undefined behaviour sanitizers.
#   macos_check.sh faults LIBRARY...
#       Tests those tests: each fault of tools/macos-check/faults/shell.json, seeded into a copy of a
#       source, has to be caught by one of them.
#   macos_check.sh self-test
#       Tests tools/macos-check itself.
#
# Exit status: 0 good, 1 findings or failures, 77 the check cannot be made here.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
tool=$root/tools/macos-check
cd "$root"

skip() {
    echo "==================================================================" >&2
    echo "SKIPPED, the macOS shell is NOT checked: $*" >&2
    echo "==================================================================" >&2
    exit 77
}

command -v node > /dev/null || skip "node is not installed (Debian: nodejs npm)"
command -v clang++ > /dev/null || skip "clang is not installed (Debian: clang)"
# Fetches two packages the first time, then answers from its cache.
node "$tool/lib/cache.mjs" > /dev/null || skip "its packages cannot be fetched"

# The shell with the warnings of cmake/KestrelFlags.cmake, with which a Mac builds it.
typecheck_shell() {
    # shellcheck disable=SC2046 # a word for each source; no name holds a space
    "$tool/typecheck" --prefix KST -I src -I . -Wpedantic -Wshadow -Wconversion -Wsign-conversion \
        -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference -Wformat=2 \
        -Wimplicit-fallthrough $(find shells/macos -name '*.mm' | sort)
}

libcxx() {
    clang=clang++-$1
    headers=/usr/lib/llvm-$1/include/c++/v1
    command -v "$clang" > /dev/null || skip "$clang is not installed (Debian 12: clang-$1)"
    [ -d "$headers" ] || skip "its library is not installed (Debian 12: libc++-$1-dev)"
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
    # One program without arguments: that is what the tool takes for a compiler.
    printf '#!/bin/sh\nexec %s -stdlib=libc++ -nostdinc++ -isystem %s "$@"\n' "$clang" "$headers" \
        > "$folder/clang"
    chmod +x "$folder/clang"
    MACOS_CHECK_CLANG=$folder/clang typecheck_shell
}

typecheck() {
    status=0
    typecheck_shell || status=$?
    "$tool/typecheck" -I src -I . tests/macos/*.mm tests/macos_standins/*.mm || status=$?
    return "$status"
}

# The run tool brings a main function of its own.
sources() {
    find shells/macos tests/macos tests/macos_standins -name '*.mm' ! -name main.mm | sort
}
flags='-I src -I . -Wall -Wextra -Werror -lgmock -lsimdjson -lutf8proc'

# build SOURCE|LIBRARY...
build() {
    # shellcheck disable=SC2046,SC2086 # a word for each; no name holds a space
    "$tool/run" --gtest $sanitize "$program" $(sources) "$@" -- $flags || {
        status=$?
        [ "$status" -ne 2 ] || skip "what the run tool needs is not installed"
        exit 1
    }
}

run() {
    home=$(mktemp -d)
    trap 'rm -rf "$home"' EXIT
    # GNUstep keeps much until the end, which is no leak of ours. Its pasteboard server, which dies
    # with the display of the program that started it, is found through a file in TEMP.
    HOME=$home TEMP=$home ASAN_OPTIONS=detect_leaks=0 timeout 300 xvfb-run -a "$program"
}

case ${1:-} in
typecheck) typecheck ;;
libcxx) libcxx "$2" ;;
test)
    program=$2
    sanitize=
    shift 2
    build "$@"
    run
    ;;
faults)
    shift
    # shellcheck disable=SC2046,SC2086 # a word for each; no name holds a space
    "$tool/seed-faults" "$tool/faults/shell.json" $(sources) "$@" -- $flags || {
        status=$?
        [ "$status" -ne 3 ] || skip "what the run tool needs is not installed"
        exit 1
    }
    ;;
self-test) timeout 1100 "$tool/self-test" ;;
sanitized)
    program=$2
    sanitize=--sanitize
    # shellcheck disable=SC2046 # a word for each source
    build $(find src -name '*.cpp')
    run
    ;;
*)
    sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2
    exit 2
    ;;
esac

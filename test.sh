#!/usr/bin/env bash
# Builds Kestrel and runs its tests.
#   ./test.sh         everything that the development build tests, the running program included
#   ./test.sh --all   also the tests that take minutes or further packages, the build with clang and
#                     sanitizers and its unit tests, the code's layout and clang-tidy
# The last line is "N passed, N failed, N skipped"; each step of --all that is not a test program
# counts as one test. The exit status is 0 only when something passed and nothing failed.
set -uo pipefail
cd "$(dirname "$0")"

all=no
case "${1:-}" in
    "") ;;
    --all) all=yes ;;
    *) echo "usage: ./test.sh [--all]" >&2; exit 2 ;;
esac
jobs=$(nproc)
passed=0 failed=0 skipped=0
failures=()

finish() {
    for name in "${failures[@]}"; do
        echo "failed: $name"
    done
    echo "$passed passed, $failed failed, $skipped skipped"
    [ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
    exit
}

# step NAME COMMAND...: one test that is a command.
step() {
    local name=$1 start=$SECONDS
    shift
    echo "== $name"
    if "$@"; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        failures+=("$name")
    fi
    echo "== $name: $((SECONDS - start)) s"
}

# need NAME COMMAND...: what the rest cannot do without, and no test itself.
need() {
    local name=$1
    shift
    echo "== $name"
    if ! "$@"; then
        failed=$((failed + 1))
        failures+=("$name")
        finish
    fi
}

# run_tests PRESET CTEST_OPTIONS...: all tests of a build, each counted.
run_tests() {
    local preset=$1 report=$PWD/build/$1/tests.xml start=$SECONDS counts status=0
    shift
    rm -f "$report"
    echo "== tests of $preset"
    ctest --preset "$preset" -j "$jobs" --output-junit "$report" "$@" </dev/null || status=$?
    counts=$(tools/count_tests.py "$report") || counts="0 1 0"
    read -r good bad left <<<"$counts"
    # ctest also fails for what is not in the report: a time-out at its end, no tests at all.
    if [ $status -ne 0 ] && [ "$bad" -eq 0 ]; then
        bad=1
    fi
    passed=$((passed + good)) failed=$((failed + bad)) skipped=$((skipped + left))
    if [ "$bad" -gt 0 ]; then
        failures+=("$bad tests of $preset")
    fi
    echo "== tests of $preset: $((SECONDS - start)) s"
}

build() {
    cmake --preset "$1" && cmake --build --preset "$1" -j "$jobs"
}

groups=(build run test desktop macos)
if ! command -v node >/dev/null || ! command -v npm >/dev/null; then
    groups+=(node)
fi
quick=(--label-exclude '^long$')
if [ $all = yes ]; then
    groups+=(lint long)
    quick=()
fi
need "packages" tools/setup.sh "${groups[@]}"
need "build" build dev
run_tests dev "${quick[@]}"
step "every named edge case was tested" \
    tools/check_edge_cases.py build/dev --report build/dev/tests.xml

if [ $all = yes ]; then
    step "clang-format" tools/lint.sh format
    step "clang-tidy" tools/lint.sh tidy
    step "build with clang and sanitizers" build asan
    run_tests asan --label-exclude 'desktop|check|macos'
fi
finish

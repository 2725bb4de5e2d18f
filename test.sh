#!/usr/bin/env bash
# Builds Kestrel and runs its tests.
#   ./test.sh         everything that the development build tests, the running program included
#   ./test.sh --all   also the tests that take minutes or further packages, the builds with sanitizers
#                     and their tests, the code's layout and clang-tidy
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
reports=()

# Each failure is told again at the end, where it is found without looking through the whole.
finish() {
    [ "$failed" -eq 0 ] || tools/count_tests.py --failures "${reports[@]}"
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

# later NAME COMMAND...: a step that begins when the ones before it have ended, and runs only while a
# processor is idle otherwise: tests mostly wait. `collect NAME` waits for it and counts it.
laters=()
later() {
    mkdir -p build/later
    rm -f "build/later/$1."*
    laters+=("$(printf '%q ' "$@")")
}
run_laters() {
    local command start
    for command in "${laters[@]}"; do
        eval "set -- $command"
        start=$SECONDS
        if "${@:2}" >"build/later/$1.log" 2>&1; then
            echo "passed $((SECONDS - start))" >"build/later/$1.new"
        else
            echo "failed $((SECONDS - start))" >"build/later/$1.new"
        fi
        mv "build/later/$1.new" "build/later/$1.result"
    done
}
start_laters() {
    set -m
    (chrt --idle --pid 0 "$BASHPID" >/dev/null; run_laters) </dev/null &
    set +m
    laters_pid=$!
    trap 'kill -- "-$laters_pid" 2>/dev/null' EXIT
}
collect() {
    local result seconds
    echo "== $1"
    while [ ! -e "build/later/$1.result" ] && kill -0 "$laters_pid" 2>/dev/null; do
        sleep 0.5
    done
    read -r result seconds <"build/later/$1.result" || result=failed
    if [ "$result" = passed ]; then
        passed=$((passed + 1))
    else
        cat "build/later/$1.log"
        failed=$((failed + 1))
        failures+=("$1")
    fi
    echo "== $1: ${seconds:-?} s"
    [ "$result" = passed ]
}

# run_tests PRESET CTEST_OPTIONS...: all tests of a build, each counted.
run_tests() {
    local preset=$1 report=$PWD/build/$1/tests.xml start=$SECONDS counts status=0
    shift
    rm -f "$report"
    echo "== tests of $preset"
    # One test more than there are processors: those of the desktop mostly wait.
    ctest --preset "$preset" -j $((jobs + 1)) --output-junit "$report" "$@" </dev/null || status=$?
    counts=$(tools/count_tests.py "$report") || counts="0 1 0"
    read -r good bad left <<<"$counts"
    # ctest also fails for what is not in the report: a time-out at its end, no tests at all.
    if [ $status -ne 0 ] && [ "$bad" -eq 0 ]; then
        bad=1
    fi
    passed=$((passed + good)) failed=$((failed + bad)) skipped=$((skipped + left))
    if [ "$bad" -gt 0 ]; then
        failures+=("$bad tests of $preset")
        [ ! -e "$report" ] || reports+=("$report")
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
    groups+=(lint long gnome cinnamon plasma)
    quick=()
fi
need "packages" tools/setup.sh "${groups[@]}"
need "build" build dev
if [ $all = yes ]; then
    later asan-build build asan
    later tsan-build build tsan
    later clang-tidy tools/lint.sh tidy
    start_laters
fi
run_tests dev "${quick[@]}"
step "every named edge case was tested" \
    tools/check_edge_cases.py build/dev --report build/dev/tests.xml

if [ $all = yes ]; then
    step "clang-format" tools/lint.sh format
    for preset in asan tsan; do
        collect $preset-build && run_tests $preset --label-exclude 'long|check|macos'
    done
    collect clang-tidy
fi
finish

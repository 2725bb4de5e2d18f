#!/usr/bin/env bash
# Builds Kestrel and runs its tests.
#   ./test.sh         everything that the development build tests, the running program included
#   ./test.sh --all   also the tests that take minutes or further packages, the builds with sanitizers
#                     and their tests, the code's layout and clang-tidy (tests/all)
# The last line is "N passed, N failed, N skipped"; each step of --all that is not a test program
# counts as one test. The exit status is 0 only when something passed and nothing failed.
set -uo pipefail
cd "$(dirname "$0")"

groups=(build run test desktop macos)
if ! command -v node >/dev/null || ! command -v npm >/dev/null; then
    groups+=(node)
fi
# One test more than there are processors: those of the desktop mostly wait.
tests=(-j "$(($(nproc) + 1))" --label-exclude '^long$')
cases=(--left-out long)
case "${1:-}" in
    "") ;;
    --all)
        groups+=(lint long libcxx gnome cinnamon plasma packages)
        # One more yet, which takes only the time that the processors are idle.
        tests=(-j "$(($(nproc) + 2))" --build-config all)
        cases=()
        ;;
    *) echo "usage: ./test.sh [--all]" >&2; exit 2 ;;
esac
report=build/dev/tests.xml

# Each failure is told again at the end, where it is found without looking through the whole.
finish() {
    exec tools/count_tests.py "$@" "$report"
}

rm -f build/*/tests.xml
tools/setup.sh "${groups[@]}" || finish --failed packages
cmake --preset dev && cmake --build --preset dev -j "$(nproc)" || finish --failed build

outcomes=()
ctest --preset dev "${tests[@]}" --output-junit "$PWD/$report" </dev/null ||
    outcomes+=(--run-failed ctest)
if tools/check_edge_cases.py build/dev --report "$report" "${cases[@]}"; then
    outcomes+=(--passed "every named edge case was tested")
else
    outcomes+=(--failed "every named edge case was tested")
fi
finish "${outcomes[@]}"

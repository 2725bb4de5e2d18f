#!/usr/bin/env bash
# tools/lint.sh format | tidy: the layout of our code, or clang-tidy on the program (needs
# build/dev; the tests would take as long again).
set -euo pipefail
cd "$(dirname "$0")/.."

folders=()
for folder in src shells tests fuzz benchmarks; do
    if [ -d $folder ]; then
        folders+=("$folder")
    fi
done

case "${1:-}" in
    format)
        find "${folders[@]}" -name '*.h' -o -name '*.cpp' -o -name '*.mm' |
            xargs clang-format-14 --dry-run -Werror
        ;;
    tidy)
        # GCC's own warnings are in the compile commands, and clang does not know them.
        run-clang-tidy-14 -quiet -p build/dev -j "$(nproc)" \
            -extra-arg=-Wno-unknown-warning-option \
            "^$PWD/(src|shells)/.*\.cpp$"
        ;;
    *)
        echo "usage: tools/lint.sh format|tidy" >&2
        exit 2
        ;;
esac

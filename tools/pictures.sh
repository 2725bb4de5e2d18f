#!/usr/bin/env bash
# Takes the pictures of README.md and of packaging/metainfo_links.xml.in anew, with the tour, and
# puts small copies into docs/pictures. Needs Debian's pngquant and optipng. Look at each afterwards.
set -euo pipefail
cd "$(dirname "$0")/.."

for tool in pngquant optipng; do
    command -v "$tool" >/dev/null || { echo "$tool is not installed" >&2; exit 1; }
done
names=(popover-light popover-dark settings form)
for name in "${names[@]}"; do
    rm -f "build/tour/$name.png"
done
./run.sh --tour
mkdir -p docs/pictures
for name in "${names[@]}"; do
    pngquant --force --strip --speed 1 --quality 80-100 --output "docs/pictures/$name.png" 256 \
        "build/tour/$name.png"
    optipng -quiet -o5 "docs/pictures/$name.png"
done
ls -l docs/pictures

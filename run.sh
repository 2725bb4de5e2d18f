#!/usr/bin/env bash
# Builds Kestrel and starts it: in this session, or, where there is no display, on a virtual
# desktop, where it is led through a whole journey (screenshots in build/tour/).
# With --tour the journey is made although there is a display.
set -euo pipefail
cd "$(dirname "$0")"

tour=no
case "${1:-}" in
    "") ;;
    --tour) tour=yes ;;
    *) echo "usage: ./run.sh [--tour]" >&2; exit 2 ;;
esac
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    tour=yes
fi

groups=(build run)
if [ $tour = yes ]; then
    groups+=(desktop)
fi
tools/setup.sh "${groups[@]}"
cmake --preset release
cmake --build --preset release -j "$(nproc)"

program=build/release/shells/linux/kestrel
if [ $tour = no ]; then
    exec "$program"
fi
exec /usr/bin/python3 tests/desktop/tour.py "$program" build/tour

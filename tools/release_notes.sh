#!/bin/sh
# Prints what CHANGELOG.md says of a version: tools/release_notes.sh 1.2.3
# The exit status is 1 when it says nothing.
set -eu
cd "$(dirname "$0")/.."

notes=$(awk -v version="$1" '/^## / { inside = $2 == version; next } inside' CHANGELOG.md)
if [ -z "$notes" ]; then
    echo "CHANGELOG.md says nothing of version $1" >&2
    exit 1
fi
printf '%s\n' "$notes" | sed '/./,$!d'

#!/usr/bin/env bash
# Makes of the checked-out commit what a release consists of.
#
#   packaging/make_release.sh FOLDER [RELEASE...]
#
# FOLDER, which is made and has to be empty, gets
#   kestrel-VERSION.tar.gz                 the source; the same bytes from every clone
#   kestrel_VERSION_RELEASE_ARCH.deb       the package for each release of Debian that is named, built
#                                          and tried by clean_room.sh, which needs root and a network
#   CHANGES.md                             what CHANGELOG.md says of the version
#   SHA256SUMS                             of archive and packages, for sha256sum --check
# and nothing when the places that tell the version differ or the working tree has changes.
set -euo pipefail

fail() {
    echo "$*" >&2
    exit 1
}

[ $# -gt 0 ] || {
    echo "usage: packaging/make_release.sh FOLDER [RELEASE...]" >&2
    exit 2
}
folder=$(realpath -m "$1")
shift
cd "$(dirname "$0")/.."
tools/check_versions.py || fail "the version is not told alike"
[ -z "$(git status --porcelain --untracked-files=no)" ] || fail "there are changes not committed"
[ -z "$(ls -A "$folder" 2>/dev/null)" ] || fail "$folder is not empty"
version=$(sed -n 's/^  VERSION //p' CMakeLists.txt)

mkdir -p "$folder"
notes=$(tools/release_notes.sh "$version") || fail "CHANGELOG.md says nothing of $version"
printf '%s\n' "$notes" >"$folder/CHANGES.md"

# The times in the archive are the commit's; gzip is told to add neither time nor name.
git -c tar.umask=0022 archive --format=tar --prefix="kestrel-$version/" HEAD |
    gzip --no-name -9 >"$folder/kestrel-$version.tar.gz"

if [ $# -gt 0 ]; then
    logs=$(mktemp -d)
    trap 'rm -rf "$logs"' EXIT
    KESTREL_OUTPUT=$logs packaging/clean_room.sh package "$@" || fail "the packages are not made"
    find "$logs" -name 'kestrel_*.deb' -exec cp -t "$folder" {} +
    [ "$(find "$folder" -name '*.deb' | wc -l)" -eq $# ] || fail "not one package for each of: $*"
fi

cd "$folder"
sha256sum kestrel[-_]* >SHA256SUMS
cat SHA256SUMS

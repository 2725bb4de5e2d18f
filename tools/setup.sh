#!/usr/bin/env bash
# Installs the Debian packages of the groups that are named: tools/setup.sh build test desktop
# Asks dpkg first, so that it is silent, quick and needs no network when nothing is missing.
# KESTREL_SKIP_SETUP=1 leaves the system alone, for those who bring the packages themselves.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

if [ "${KESTREL_SKIP_SETUP:-}" = 1 ]; then
    exit 0
fi
wanted=()
for group in "$@"; do
    mapfile -t -O "${#wanted[@]}" wanted < <(
        sed -n "s/^$group: *//p" "$here/debian-packages" | tr -s ' ' '\n')
done

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    cat >&2 <<TEXT
Kestrel is built with the packages of Debian 12 or 13, and this system has no apt-get. Install
these or their counterparts (of a|b either), then run this again with KESTREL_SKIP_SETUP=1:
  ${wanted[*]}
TEXT
    exit 1
fi

# The packages among those named that the system has, installed or not.
available() {
    LC_ALL=C apt-cache policy "$@" 2>/dev/null |
        sed -n -e 's/:$//' -e '/^[^ ]/h' -e '/^  Candidate: (none)/d' -e '/^  Candidate/{g;p}'
}

# choose A|B: the first that is available; the first of all where the system knows none, as before
# the first look at its index of packages.
choose() {
    local names known name
    IFS='|' read -ra names <<<"$1"
    known=$(available "${names[@]}")
    for name in "${names[@]}"; do
        if grep -qxF "$name" <<<"$known"; then
            echo "$name"
            return
        fi
    done
    echo "${names[0]}"
}

mapfile -t names < <(printf '%s\n' "${wanted[@]}" | tr '|' '\n')
# dpkg-query fails when it does not know one of the packages; the others are listed all the same.
installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${names[@]}" 2>/dev/null || true)
is_installed() {
    grep -qxF "installed $1" <<<"$installed"
}

find_missing() {
    local package
    missing=()
    for package in "${wanted[@]}"; do
        # Asking for the alternatives takes longer than all the rest.
        if [[ $package == *"|"* ]] && ! is_installed "${package%%|*}"; then
            package=$(choose "$package")
        fi
        is_installed "${package%%|*}" || missing+=("${package%%|*}")
    done
}

find_missing
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "Missing packages, and neither root nor sudo to install them: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
install() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}" </dev/null
}

echo "Installing ${missing[*]}"
# The package index may be new enough, old or absent: fetch it only where installing needs it.
if ! install >/dev/null 2>&1; then
    "${as_root[@]}" apt-get update -q </dev/null || true
    find_missing
    if ! install; then
        echo "Could not install all of: ${missing[*]}" >&2
        exit 1
    fi
fi

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
Kestrel is built with Debian 12's packages, and this system has no apt-get. Install these or
their counterparts, then run this again with KESTREL_SKIP_SETUP=1:
  ${wanted[*]}
TEXT
    exit 1
fi

missing=()
# dpkg-query fails when it does not know one of the packages; the others are listed all the same.
installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null || true)
for package in "${wanted[@]}"; do
    grep -qxF "installed $package" <<<"$installed" || missing+=("$package")
done
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
    if ! install; then
        echo "Could not install all of: ${missing[*]}" >&2
        exit 1
    fi
fi

#!/usr/bin/env bash
# Shows in new minimal systems that Kestrel's packages and its two commands work there.
#
#   packaging/clean_room.sh package RELEASE...     (bookworm, trixie)
#       Builds the Debian package of HEAD in one such system, with the unit tests, and checks it with
#       lintian. Installs it in another one by apt, with what it recommends, runs debian/tests there
#       and purges it, after which the list of its user has to be what it was.
#       KESTREL_OUTPUT=FOLDER receives the packages, by release: kestrel_0.2.0_trixie_amd64.deb
#   packaging/clean_room.sh twice RELEASE...
#       Builds it twice, in folders of different names from files of different times, and compares.
#   packaging/clean_room.sh commands RELEASE...
#       Runs ./test.sh and ./run.sh of HEAD in one.
#
# The package's home is the repository that KESTREL_HOMEPAGE names, or else an address that nobody has.
#
# Each has a log, clean-room-package-trixie.log for instance, in KESTREL_OUTPUT or else in build/; the
# last lines here and there say what was shown. Needs root, mmdebstrap, a network and 5 GB below
# /var/tmp or KESTREL_ROOMS=FOLDER; KESTREL_MIRROR=URL names another mirror of Debian. Exit status:
# 0 all was shown, 1 something was not, 77 it cannot run here.
#
# A system is a folder with mounts and processes in namespaces of its own: when the command in it has
# ended or its time is up, nothing of it runs or is mounted any more.
# shellcheck disable=SC2317 # what runs is chosen by its name
set -euo pipefail
cd "$(dirname "$0")/.."

mirror=${KESTREL_MIRROR:-http://deb.debian.org/debian}
output=${KESTREL_OUTPUT:-build}
homepage=${KESTREL_HOMEPAGE:-https://kestrel.example}
person=person                     # who uses the program in the second system
kept=/home/$person/.local/share   # and where their list is

usage() {
    echo "usage: packaging/clean_room.sh package|twice|commands RELEASE..." >&2
    exit 2
}

skip() {
    echo "skipped: $1"
    exit 77
}

# make_system FOLDER RELEASE
make_system() {
    timeout 900 mmdebstrap --quiet --mode=root --variant=minbase "$2" "$1" "$mirror" ||
        return 1
    # No service is started in it, and apt asks nobody.
    printf '#!/bin/sh\nexit 101\n' >"$1/usr/sbin/policy-rc.d"
    chmod +x "$1/usr/sbin/policy-rc.d"
    cp -L /etc/resolv.conf "$1/etc/resolv.conf"
    printf '127.0.0.1 localhost\n' >"$1/etc/hosts"
    inside "$1" 600 apt-get update -q
}

# inside FOLDER LIMIT COMMAND...: runs a command in the system, for at most so many seconds. The folder
# becomes the root of the namespace's mounts: in one that chroot alone has made the kernel gives nobody
# a user namespace, which some tests need.
inside() {
    local root=$1 limit=$2
    shift 2
    # shellcheck disable=SC2016 # the inner shell is to expand it
    timeout --kill-after=30 "$limit" unshare --mount --pid --ipc --fork --kill-child sh -eu -c '
        mount --bind "$1" "$1"
        cd "$1"
        shift
        mount -t proc proc proc
        mount -t tmpfs -o mode=755 devices dev
        for device in null zero full random urandom tty; do
            : >"dev/$device"
            mount --bind "/dev/$device" "dev/$device"
        done
        mkdir dev/pts dev/shm
        mount -t devpts -o newinstance,ptmxmode=0666,mode=620,gid=5 devpts dev/pts
        ln -s pts/ptmx dev/ptmx
        ln -s /proc/self/fd dev/fd
        mount -t tmpfs -o mode=1777 shm dev/shm
        pivot_root . .
        umount --lazy .
        cd /
        exec env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"
    ' clean-room "$root" "$@" </dev/null
}

# step WHAT COMMAND...: runs it into the log; what failed ends this release.
step() {
    local what=$1 begin=$SECONDS
    shift
    printf '\n==== %s\n' "$what" >>"$log"
    if "$@" >>"$log" 2>&1; then
        shown+=("$what ($((SECONDS - begin)) s)")
        return 0
    fi
    shown+=("FAILED: $what")
    tail -n 40 "$log" >&2
    return 1
}

export_sources() {
    mkdir -p "$1"
    git archive HEAD | tar -x -C "$1"
}

install_in() {
    local root=$1
    shift
    inside "$root" 1800 apt-get install -y -q --no-install-recommends "$@"
}

# The packages are apt's own choice: those of the Build-Depends in debian/control.
build_dependencies() {
    install_in "$1" build-essential lintian && inside "$1" 1800 apt-get build-dep -y -q /build/kestrel
}

build_package() {
    # As anybody: neither the build nor its tests may need root.
    # shellcheck disable=SC2016 # the inner shell is to expand it
    inside "$1" 3600 env KESTREL_HOMEPAGE="$homepage" sh -euc '
        useradd --create-home builder && chown -R builder /build && cd /build/kestrel &&
        runuser -u builder -- env DEB_BUILD_OPTIONS="parallel=$(nproc)" \
            dpkg-buildpackage --unsigned-source --unsigned-changes --build=full'
}

# Debian 12's lintian takes the version of Debian's policy that Debian 13's asks for as too new.
lint_package() {
    inside "$1" 600 sh -euc 'cd /build && runuser -u builder -- lintian --pedantic \
        --display-info --tag-display-limit 0 --fail-on error,warning,info,pedantic \
        --suppress-tags newer-standards-version kestrel_*.changes'
}

install_package() {
    local deb
    deb=$(basename "$1"/build/kestrel_*.deb)
    cp "$1/build/$deb" "$2/root/"
    inside "$2" 1800 apt-get install -y -q "/root/$deb"
}

# What the tests need stands in debian/tests/control; the package is installed already. autopkgtest
# removes nothing for it, and in Debian 12 the luit that came with xterm does not bear x11-utils.
test_package() {
    install_in "$1" autopkgtest apt-utils x11-utils || return 1
    inside "$1" 300 sh -euc "useradd --create-home $person && mkdir -p $kept &&
        chown -R $person: /home/$person" || return 1
    inside "$1" 1800 autopkgtest --user="$person" --no-built-binaries \
        --env="KESTREL_KEPT_DATA=$kept/kept" /root/kestrel -- null
}

checksum_of_list() {
    sha256sum "$1$kept/kept/kestrel/launcherItems"
}

purge_package() {
    local before after
    before=$(checksum_of_list "$1") || return 1
    inside "$1" 600 apt-get purge -y -q kestrel || return 1
    if inside "$1" 60 sh -c 'ls -d /usr/bin/kestrel /usr/share/*/*[kK]estrel* \
        /usr/share/dbus-1/services/app.kestrel.*' 2>/dev/null; then
        echo "the package has left these behind"
        return 1
    fi
    after=$(checksum_of_list "$1") || return 1
    echo "the list before and after: $before, $after"
    [ "$before" = "$after" ]
}

keep_package() {
    local deb version
    for deb in "$1"/build/*.deb; do
        version=$(basename "$deb")
        cp "$deb" "$output/${version%_*}_${release}_${version##*_}"
    done
}

package() {
    local builder=$folder/$release-build user=$folder/$release-user
    step "a minimal system of $release to build in" make_system "$builder" "$release" &&
        step "the sources of $(git describe --always HEAD) in it" \
            export_sources "$builder/build/kestrel" &&
        step "what the package is built with, by apt" build_dependencies "$builder" &&
        step "the package, built with its unit tests" build_package "$builder" &&
        step "lintian has nothing to say, however pedantic" lint_package "$builder" &&
        step "a second minimal system of $release" make_system "$user" "$release" &&
        step "the package installed by apt, with what it needs" \
            install_package "$builder" "$user" &&
        step "the sources of its test" export_sources "$user/root/kestrel" &&
        step "autopkgtest: the installed program on a virtual panel" test_package "$user" &&
        step "purged; the user's list is what it was" purge_package "$user" &&
        step "the packages in $output" keep_package "$builder"
}

# build_binary SYSTEM NAME: the package alone, without tests, from a folder of that name.
build_binary() {
    # shellcheck disable=SC2016 # the inner shell is to expand it
    inside "$1" 3600 env KESTREL_HOMEPAGE="$homepage" SOURCES="/build/$2/kestrel" sh -euc '
        cd "$SOURCES" && find . -exec touch {} + && DEB_BUILD_OPTIONS="nocheck parallel=$(nproc)" \
            dpkg-buildpackage --unsigned-source --unsigned-changes --build=binary'
}

compare_packages() {
    (cd "$1/build/first" && sha256sum -- *.deb | tee /dev/stderr) |
        (cd "$1/build/another/folder" && sha256sum --check --strict)
}

export_twice() {
    export_sources "$1/build/first/kestrel" && export_sources "$1/build/another/folder/kestrel"
}

twice() {
    local root=$folder/$release-twice
    step "a minimal system of $release to build in" make_system "$root" "$release" &&
        step "the sources of $(git describe --always HEAD) in it" \
            export_sources "$root/build/kestrel" &&
        step "what the package is built with, by apt" build_dependencies "$root" &&
        step "the same sources in two folders" export_twice "$root" &&
        step "the package" build_binary "$root" first &&
        step "the package once more" build_binary "$root" another/folder &&
        step "both are the same, byte for byte" compare_packages "$root"
}

# All that they need the commands install. Without git the tests that ask it are skipped.
commands() {
    local root=$folder/$release-commands
    step "a minimal system of $release" make_system "$root" "$release" &&
        step "the sources of $(git describe --always HEAD) in it" \
            export_sources "$root/root/kestrel" &&
        step "./test.sh" inside "$root" 7200 sh -c 'cd /root/kestrel && ./test.sh' &&
        step "./run.sh" inside "$root" 3600 sh -c 'cd /root/kestrel && ./run.sh'
}

case "${1:-}" in
    package | twice | commands) what=$1 ;;
    *) usage ;;
esac
shift
[ $# -gt 0 ] || usage
[ "$(id -u)" -eq 0 ] || skip "only root can make a system of its own"
command -v mmdebstrap >/dev/null || skip "mmdebstrap is not installed"
unshare --mount --pid --ipc --fork true 2>/dev/null || skip "this machine gives no namespaces"

mkdir -p "$output"
output=$(cd "$output" && pwd)
folder=$(mktemp -d -p "${KESTREL_ROOMS:-/var/tmp}" kestrel-clean-room.XXXXXX)
trap 'rm -rf --one-file-system "$folder"' EXIT
status=0
summary=()
for release in "$@"; do
    log=$output/clean-room-$what-$release.log
    : >"$log"
    shown=()
    $what || status=1
    printf '\n==== %s of %s\n' "$what" "$release" >>"$log"
    printf '%s\n' "${shown[@]}" >>"$log"
    summary+=("$release:" "${shown[@]/#/    }")
    rm -rf --one-file-system "${folder:?}/$release-"*
done
printf '%s\n' "${summary[@]}"
exit $status

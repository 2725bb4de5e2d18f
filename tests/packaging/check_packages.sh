#!/bin/sh
# Checks of what Kestrel's packages are made from, with the tools of their systems.
# Usage: check_packages.sh WHAT ARGUMENT...
# Exit status: 0 good, 1 bad, 77 the tool that could tell is not installed.
set -eu

fail() {
    echo "$*" >&2
    exit 1
}

need() {
    for tool in "$@"; do
        command -v "$tool" > /dev/null || { echo "$tool is not installed" >&2; exit 77; }
    done
}

make_folder() {
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
}

# manual PAGE: mandoc and groff have nothing to say, but that a page it names is not installed.
manual() {
    need mandoc groff
    remarks=$(mandoc -T lint -W all "$1" 2>&1 |
        grep -v -e 'referenced manual not found' -e 'outdated mandoc.db' || true)
    [ -z "$remarks" ] || fail "$remarks"
    remarks=$(groff -mdoc -T utf8 -ww -b "$1" 2>&1 > /dev/null)
    [ -z "$remarks" ] || fail "$remarks"
}

# debian SOURCE-TREE: lintian has nothing to say of the source package, however pedantic.
debian() {
    need git dpkg-source lintian
    git -C "$1" rev-parse --git-dir > /dev/null 2>&1 ||
        { echo "the files of the source are not known without git" >&2; exit 77; }
    make_folder
    mkdir "$folder/kestrel"
    (cd "$1" && git ls-files -z | xargs -0 cp --parents -P -t "$folder/kestrel")
    cd "$folder"
    output=$(dpkg-source --build kestrel 2>&1) || fail "$output"
    case $output in
        *warning:*) fail "$output" ;;
    esac
    lintian --allow-root --pedantic --display-info --tag-display-limit 0 \
        --fail-on error,warning,info,pedantic --suppress-tags newer-standards-version ./*.dsc
}

# rpm SPECIFICATION: it is read, and rpmlint has nothing to say.
rpm() {
    need rpmspec rpmlint
    rpmspec --parse "$1" > /dev/null
    output=$(rpmlint -r "${1%.spec}.rpmlintrc" "$1") || fail "$output"
    case $output in
        *" 0 errors, 0 warnings"*) ;;
        *) fail "$output" ;;
    esac
}

# rpm_files SPECIFICATION CMAKE BUILD-DIRECTORY: it names each file that is installed, and no other.
rpm_files() {
    need rpmspec
    make_folder
    DESTDIR=$folder "$2" --install "$3" --prefix /usr > /dev/null
    # The program itself is of another directory of the build.
    mkdir -p "$folder/usr/bin"
    : > "$folder/usr/bin/kestrel"
    rpmspec --parse "$1" | sed -n '/^%files/,/^%changelog/s,^/,/,p' > "$folder/patterns"
    [ -s "$folder/patterns" ] || fail "no files in $1"
    while read -r pattern; do
        # shellcheck disable=SC2086 # a pattern of files
        set -- "$folder"$pattern
        [ -e "$1" ] || fail "%files: $pattern is not installed"
        for file in "$@"; do
            rm -f "$file"
        done
    done < "$folder/patterns"
    rest=$(cd "$folder" && find usr ! -type d)
    [ -z "$rest" ] || fail "%files does not name $rest"
}

# arch PKGBUILD: bash and makepkg read it, and shellcheck has nothing to say.
arch() {
    need makepkg shellcheck
    bash -n "$1"
    # makepkg reads the fields and sets the folders.
    shellcheck --shell=bash --exclude=SC2034,SC2154 "$1"
    make_folder
    cp "$1" "$folder/PKGBUILD"
    # It runs for anybody but root, and asks for pacman, which this needs nothing of.
    set -- env HOME="$folder" PACMAN=true makepkg --printsrcinfo
    if [ "$(id -u)" -eq 0 ]; then
        chown -R nobody "$folder"
        set -- runuser -u nobody -- "$@"
    fi
    output=$(cd "$folder" && "$@" 2>&1) || fail "$output"
    case $output in
        *"pkgname = kestrel"*) ;;
        *) fail "$output" ;;
    esac
}

# scripts FILE...
scripts() {
    need shellcheck
    shellcheck "$@"
}

what=$1
shift
"$what" "$@"

#!/bin/sh
# Checks of what is installed beside the program. Usage: check.sh WHAT PATH...
# Exit status: 0 good, 1 bad, 77 the tool that could tell is not installed.
set -eu

fail() {
    echo "$*" >&2
    exit 1
}

need() {
    command -v "$1" > /dev/null || { echo "$1 is not installed" >&2; exit 77; }
}

# desktop_entry CMAKE BUILD-DIRECTORY: the entry as it is installed.
desktop_entry() {
    need desktop-file-validate
    prefix=$(mktemp -d)
    trap 'rm -rf "$prefix"' EXIT
    "$1" --install "$2" --prefix "$prefix" > /dev/null
    output=$(desktop-file-validate "$prefix"/share/applications/*.desktop 2>&1) || fail "$output"
    [ -z "$output" ] || fail "$output"
}

# metainfo FILE: a build that is not told where it is published from may lack a home page.
metainfo() {
    need appstreamcli
    report=$(appstreamcli validate --no-net "$1") && return
    wrong=$(echo "$report" | grep '^[EW]:' | grep -v ' url-homepage-missing$') || true
    echo "$report" | grep -q '^[EW]:' || fail "$report"
    [ -z "$wrong" ] || fail "$wrong"
}

# metainfo_of_a_release CMAKE DIRECTORY VERSION: with addresses, and with pictures of the directory's
# neighbour docs that are as large as the page says.
metainfo_of_a_release() {
    need appstreamcli
    page=$(mktemp -d)
    trap 'rm -rf "$page"' EXIT
    page_file=$page/app.kestrel.Kestrel.metainfo.xml
    "$1" -D KESTREL_HOMEPAGE=https://example.org/kestrel -D PROJECT_VERSION="$3" \
        -D KESTREL_METAINFO="$page_file" -P "$2/metainfo.cmake"
    appstreamcli validate --no-net --explain "$page_file"
    grep -q '<release version="'"$3"'"' "$page_file" || fail "version $3 is not among the releases"
    sed -n 's,.*width="\([0-9]*\)" height="\([0-9]*\)">.*/v'"$3"'/\(.*\)</image>,\1 \2 \3,p' \
        "$page_file" > "$page/pictures"
    [ "$(wc -l < "$page/pictures")" -eq 4 ] || fail "there are not four pictures"
    while read -r width height picture; do
        # The size stands in the first chunk of a PNG file, 16 bytes from its beginning.
        found=$(od -An -j16 -N8 -tu4 --endian=big "$2/../$picture" | tr -s ' ')
        [ "$found" = " $width $height" ] || fail "$picture is of$found and not $width $height"
    done < "$page/pictures"
}

# drawings DIRECTORY...: each file is well-formed and has a square view box, as the code that
# draws it into a square expects.
drawings() {
    need xmllint
    list=$(mktemp)
    trap 'rm -f "$list"' EXIT
    find "$@" -name '*.svg' > "$list"
    [ -s "$list" ] || fail "no drawing in $*"
    while read -r file; do
        box=$(xmllint --nonet --xpath 'string(/*[local-name()="svg"]/@viewBox)' "$file") ||
            fail "$file is not well-formed"
        # shellcheck disable=SC2086 # the four numbers are four words
        set -- $box
        [ $# -eq 4 ] || fail "$file: the view box is '$box'"
        [ "$1 $2 $3" = "0 0 $4" ] || fail "$file: the view box '$box' is not a square at 0 0"
    done < "$list"
}

# resources FILE.qrc DIRECTORY...: the list names every drawing of the directories.
resources() {
    list=$1
    shift
    for directory in "$@"; do
        for file in "$directory"/*.svg; do
            [ -e "$file" ] || fail "no drawing in $directory"
            entry=$(basename "$directory")/$(basename "$file")
            grep -qF ">$entry</file>" "$list" || fail "$list does not name $entry"
        done
    done
}

# translations DIRECTORY: every language has the same texts, and each of them is translated.
translations() {
    need xmllint
    reference=
    for file in "$1"/*.ts; do
        [ -e "$file" ] || fail "no translation in $1"
        texts=$(xmllint --nonet --xpath '//message/source/text()' "$file") ||
            fail "$file has no texts"
        [ "${reference:=$texts}" = "$texts" ] || fail "$file has other texts than its siblings"
        missing=$(xmllint --nonet --xpath \
            'count(//message[not(translation[not(@type) and normalize-space()])])' "$file")
        [ "$missing" = 0 ] || fail "$file leaves $missing texts untranslated"
    done
}

# install CMAKE BUILD-DIRECTORY: everything lands where desktops look for it, and the entry and the
# service file name the executable under the prefix chosen at installation.
install() {
    prefix=$(mktemp -d)
    trap 'rm -rf "$prefix"' EXIT
    "$1" --install "$2" --prefix "$prefix" > /dev/null
    id=app.kestrel.Kestrel
    for file in "applications/$id.desktop" "metainfo/$id.metainfo.xml" \
        "icons/hicolor/scalable/apps/$id.svg" \
        "icons/hicolor/22x22/apps/$id-symbolic.svg" \
        "icons/hicolor/symbolic/apps/$id-symbolic.svg"; do
        [ -s "$prefix/share/$file" ] || fail "share/$file is missing"
    done
    service=$prefix/share/dbus-1/services/$id.service
    grep -qx "Name=$id" "$service" || fail "the service file does not name $id"
    for file in "$service" "$prefix/share/applications/$id.desktop"; do
        grep -qx "Exec=$prefix/bin/kestrel" "$file" ||
            fail "$file starts $(grep '^Exec=' "$file")"
    done
}

what=$1
shift
"$what" "$@"

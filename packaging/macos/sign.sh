#!/bin/sh
# Signs Kestrel.app for the hardened runtime. On a Mac only.
#
#   sign.sh APP
#       For this Mac alone, without an account. The list then stays on this Mac: the entitlements
#       of iCloud are left out, because a program that claims them without a profile is not started.
#   sign.sh APP IDENTITY TEAM PROFILE
#       With a certificate ("Apple Development: ...", or "Developer ID Application: ..." for other
#       Macs, which notarize.sh then needs), the team's ten characters and a provisioning profile
#       for app.kestrel.Kestrel with iCloud documents and key-value storage.
set -eu

case $# in
1) app=$1 identity=- profile='' ;;
4) app=$1 identity=$2 team=$3 profile=$4 ;;
*)
    sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2
    exit 2
    ;;
esac

here=$(dirname "$0")
embedded=$app/Contents/embedded.provisionprofile
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if [ -z "$profile" ]; then
    python3 "$here/entitlements.py" > "$work/entitlements"
    rm -f "$embedded"
    timestamp=--timestamp=none
else
    security cms -D -i "$profile" -o "$work/profile"
    python3 "$here/entitlements.py" "$app" "$team" "$work/profile" > "$work/entitlements"
    cp "$profile" "$embedded"
    timestamp=--timestamp
fi
codesign --force --options runtime "$timestamp" --entitlements "$work/entitlements" \
    --sign "$identity" "$app"
codesign --verify --strict --verbose=2 "$app"

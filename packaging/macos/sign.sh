#!/bin/sh
# Signs Kestrel.app for the hardened runtime. On a Mac only.
#
#   sign.sh APP
#       For this Mac alone, without an account. The list then stays on this Mac: the iCloud
#       entitlement is left out, because a program that claims it without a profile is not started.
#   sign.sh APP IDENTITY TEAM PROFILE
#       With a certificate ("Apple Development: ..."), the team's ten characters and a provisioning
#       profile for app.kestrel.Kestrel that allows the iCloud key-value store.
set -eu

case $# in
1) app=$1 identity=- team='' ;;
4) app=$1 identity=$2 team=$3 profile=$4 ;;
*)
    sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2
    exit 2
    ;;
esac

bundle=$(/usr/libexec/PlistBuddy -c 'Print :CFBundleIdentifier' "$app/Contents/Info.plist")
entitlements=$(mktemp)
trap 'rm -f "$entitlements"' EXIT
# What Xcode replaces by itself when it signs.
sed -e "s/\$(TeamIdentifierPrefix)/$team./" -e "s/\$(CFBundleIdentifier)/$bundle/" \
    "$(dirname "$0")/Kestrel.entitlements" > "$entitlements"
if [ -z "$team" ]; then
    /usr/libexec/PlistBuddy \
        -c 'Delete :com.apple.developer.ubiquity-kvstore-identifier' "$entitlements"
else
    cp "$profile" "$app/Contents/embedded.provisionprofile"
fi
codesign --force --options runtime --entitlements "$entitlements" --sign "$identity" "$app"
codesign --verify --strict --verbose=2 "$app"

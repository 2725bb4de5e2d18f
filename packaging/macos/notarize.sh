#!/bin/sh
# Has a disk image with a signed Kestrel.app notarised by Apple, so that other Macs open it without
# asking. On a Mac only.
#
#   notarize.sh IMAGE IDENTITY KEYCHAIN_PROFILE
#       IDENTITY is the "Developer ID Application: ..." that sign.sh signed the bundle with;
#       KEYCHAIN_PROFILE the name that `xcrun notarytool store-credentials NAME` was given.
set -eu

if [ $# -ne 3 ]; then
    sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2
    exit 2
fi
image=$1 identity=$2 keychain_profile=$3

codesign --force --timestamp --sign "$identity" "$image"
# It succeeds, too, when Apple refuses the image: what it says decides.
answer=$(xcrun notarytool submit "$image" --keychain-profile "$keychain_profile" --wait)
printf '%s\n' "$answer"
if ! printf '%s\n' "$answer" | grep -q '^ *status: Accepted$'; then
    echo "notarize.sh: not accepted; xcrun notarytool log ID --keychain-profile" \
        "$keychain_profile says why" >&2
    exit 1
fi
xcrun stapler staple "$image"
spctl --assess --type open --context context:primary-signature --verbose=2 "$image"

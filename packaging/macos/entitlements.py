#!/usr/bin/env python3
"""Writes the entitlements that Kestrel.app is signed with to standard output.

    entitlements.py
        For this Mac alone, without an account: what needs no profile.
    entitlements.py APP TEAM PROFILE
        For a team's certificate. PROFILE is the provisioning profile as a property list; it must
        allow everything that is claimed, since the system ends a program that claims more.

All of them stand in Kestrel.entitlements, which Xcode reads too. The list needs the key-value store
alone, but whether somebody is signed in is told only to a program with a container for documents:
without one `ubiquityIdentityToken` is reported to be always nil.
"""

import datetime
import plistlib
import sys
from pathlib import Path

# What a profile must allow; everything else may be claimed by any program.
RESTRICTED = "com.apple.developer."
APPLICATION = "com.apple.application-identifier"
TEAM = "com.apple.developer.team-identifier"
ENVIRONMENT = "com.apple.developer.icloud-container-environment"


def read(path):
    return plistlib.loads(Path(path).read_bytes())


def replaced(value, variables):
    """The value with the names that Xcode replaces by itself."""
    if isinstance(value, list):
        return [replaced(element, variables) for element in value]
    if isinstance(value, str):
        for name, text in variables.items():
            value = value.replace(f"$({name})", text)
    return value


def for_this_mac(entitlements):
    return {key: value for key, value in entitlements.items() if not key.startswith(RESTRICTED)}


def for_team(entitlements, bundle, team, profile):
    variables = {"CFBundleIdentifier": bundle, "TeamIdentifierPrefix": f"{team}."}
    claimed = {key: replaced(value, variables) for key, value in entitlements.items()}
    # Xcode adds these by itself.
    claimed[APPLICATION] = f"{team}.{bundle}"
    claimed[TEAM] = team
    # A profile for every Mac reaches the containers of the users, any other those for development.
    if profile.get("ProvisionsAllDevices") and ENVIRONMENT in profile["Entitlements"]:
        claimed[ENVIRONMENT] = "Production"
    return claimed


def allows(allowed, value):
    """Whether a profile's value covers a claimed one. It may be a list, and end in an asterisk."""
    if isinstance(value, list):
        return all(allows(allowed, element) for element in value)
    if isinstance(allowed, list):
        return any(allows(element, value) for element in allowed)
    if isinstance(allowed, str) and allowed.endswith("*") and isinstance(value, str):
        return value.startswith(allowed[:-1])
    return allowed == value


def fault(claimed, profile):
    """Why the system would end a program with these entitlements and this profile; or None."""
    if profile["ExpirationDate"] < datetime.datetime.now():
        return f"the profile expired on {profile['ExpirationDate']:%Y-%m-%d}"
    allowed = profile["Entitlements"]
    for key, value in claimed.items():
        if key != APPLICATION and not key.startswith(RESTRICTED):
            continue
        if key not in allowed:
            return f"the profile does not allow {key}"
        if not allows(allowed[key], value):
            return f"the profile allows {allowed[key]!r} as {key}, and {value!r} is needed"
    return None


def main():
    entitlements = read(Path(__file__).with_name("Kestrel.entitlements"))
    if len(sys.argv) == 1:
        claimed = for_this_mac(entitlements)
    elif len(sys.argv) == 4:
        try:
            bundle = read(Path(sys.argv[1], "Contents", "Info.plist"))["CFBundleIdentifier"]
            profile = read(sys.argv[3])
            claimed = for_team(entitlements, bundle, sys.argv[2], profile)
            problem = fault(claimed, profile)
        except (OSError, KeyError, plistlib.InvalidFileException) as error:
            problem = f"the bundle or the profile cannot be read: {error}"
        if problem:
            sys.exit(f"entitlements.py: {problem}")
    else:
        sys.exit(__doc__)
    plistlib.dump(claimed, sys.stdout.buffer)


if __name__ == "__main__":
    main()

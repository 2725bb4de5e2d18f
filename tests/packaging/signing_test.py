#!/usr/bin/env python3
"""Tests of packaging/macos/sign.sh and notarize.sh with stand-ins for the Mac's programs, which
write down what they are asked for."""
import datetime
import os
import pathlib
import plistlib
import subprocess
import sys
import tempfile
import unittest

FOLDER = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "macos"
TEAM = "TEAMID1234"
BUNDLE = "app.kestrel.Kestrel"
CONTAINER = f"iCloud.{BUNDLE}"
IDENTITY = "Developer ID Application: Somebody (TEAMID1234)"
AUTOMATION = {"com.apple.security.automation.apple-events": True}
CLAIMED = {
    **AUTOMATION,
    "com.apple.application-identifier": f"{TEAM}.{BUNDLE}",
    "com.apple.developer.icloud-container-identifiers": [CONTAINER],
    "com.apple.developer.icloud-services": ["CloudDocuments"],
    "com.apple.developer.team-identifier": TEAM,
    "com.apple.developer.ubiquity-container-identifiers": [CONTAINER],
    "com.apple.developer.ubiquity-kvstore-identifier": f"{TEAM}.{BUNDLE}",
}
# As a portal writes it: what may be chosen is a list, or ends in an asterisk.
ALLOWED = {
    "com.apple.application-identifier": f"{TEAM}.{BUNDLE}",
    "com.apple.developer.icloud-container-environment": ["Production", "Development"],
    "com.apple.developer.icloud-container-identifiers": [CONTAINER],
    "com.apple.developer.icloud-services": "*",
    "com.apple.developer.team-identifier": TEAM,
    "com.apple.developer.ubiquity-container-identifiers": [CONTAINER],
    "com.apple.developer.ubiquity-kvstore-identifier": f"{TEAM}.*",
}
# Logs its name and arguments, one each line, and keeps a copy of the entitlements.
RECORDER = """#!/bin/sh
{{ printf '%s' "{name}"; printf ' [%s]' "$@"; echo; }} >> "$RECORD/log"
for argument; do
    case $previous in
    --entitlements) cp "$argument" "$RECORD/entitlements" ;;
    -i) input=$argument ;;
    -o) output=$argument ;;
    esac
    previous=$argument
done
{action}
"""
ACTIONS = {"codesign": "", "security": 'cp "$input" "$output"', "spctl": "",
           "xcrun": 'if [ "$1" = notarytool ]; then echo "  id: 1"; echo "  status: $STATUS"; fi'}


class SigningTest(unittest.TestCase):
    """`app` is a bundle with no more in it than signing looks at."""

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.app = self.folder / "A folder" / "Kestrel.app"
        (self.app / "Contents").mkdir(parents=True)
        info = {"CFBundleIdentifier": BUNDLE}
        (self.app / "Contents" / "Info.plist").write_bytes(plistlib.dumps(info))
        self.embedded = self.app / "Contents" / "embedded.provisionprofile"
        tools = self.folder / "tools"
        tools.mkdir()
        for name, action in ACTIONS.items():
            tool = tools / name
            tool.write_text(RECORDER.format(name=name, action=action), encoding="ascii")
            tool.chmod(0o755)
        (tools / "python3").symlink_to(sys.executable)
        self.environment = {**os.environ, "PATH": f"{tools}:/usr/bin:/bin",
                            "RECORD": str(self.folder), "STATUS": "Accepted"}

    def run_script(self, name, *arguments):
        return subprocess.run([FOLDER / name, *arguments], env=self.environment, text=True,
                              capture_output=True, check=False, timeout=30)

    def sign(self, *arguments):
        return self.run_script("sign.sh", self.app, *arguments)

    def sign_as_team(self, allowed, days=100, team=TEAM, **more):
        """Signs with a profile that allows that, for so many days yet."""
        until = datetime.datetime.now() + datetime.timedelta(days=days)
        profile = self.folder / "a profile"
        profile.write_bytes(plistlib.dumps(
            {"Entitlements": allowed, "ExpirationDate": until, **more}))
        return self.sign(IDENTITY, team, profile)

    def log(self):
        log = self.folder / "log"
        return log.read_text(encoding="utf-8").splitlines() if log.exists() else []

    def entitlements(self):
        return plistlib.loads((self.folder / "entitlements").read_bytes())

    def assert_refused(self, done, reason):
        self.assertNotEqual(done.returncode, 0)
        self.assertEqual(done.stderr, f"entitlements.py: {reason}\n")
        self.assertFalse(any(line.startswith("codesign") for line in self.log()), self.log())
        self.assertFalse(self.embedded.exists())

    def test_signature_for_this_mac_claims_nothing_that_needs_a_profile(self):
        done = self.sign()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.entitlements(), AUTOMATION)
        sign, verify = self.log()
        self.assertTrue(sign.startswith("codesign [--force] [--options] [runtime] "
                                        "[--timestamp=none] [--entitlements] ["), sign)
        self.assertTrue(sign.endswith(f"] [--sign] [-] [{self.app}]"), sign)
        self.assertEqual(verify, f"codesign [--verify] [--strict] [--verbose=2] [{self.app}]")

    def test_signature_for_this_mac_takes_an_older_profile_away(self):
        self.embedded.write_text("of a team", encoding="ascii")
        self.assertEqual(self.sign().returncode, 0)
        self.assertFalse(self.embedded.exists())

    def test_signature_of_a_team_claims_what_its_profile_allows(self):
        done = self.sign_as_team(ALLOWED)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.entitlements(), CLAIMED)
        self.assertTrue(self.embedded.exists())
        decode, sign, _ = self.log()
        self.assertTrue(decode.startswith(f"security [cms] [-D] [-i] [{self.folder}/a profile]"))
        self.assertIn(" [--timestamp] ", sign)
        self.assertTrue(sign.endswith(f"] [--sign] [{IDENTITY}] [{self.app}]"), sign)

    def test_profile_for_every_mac_claims_the_containers_of_the_users(self):
        done = self.sign_as_team(ALLOWED, ProvisionsAllDevices=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        environment = {"com.apple.developer.icloud-container-environment": "Production"}
        self.assertEqual(self.entitlements(), {**CLAIMED, **environment})

    def test_profile_that_allows_less_is_refused(self):
        for key in CLAIMED.keys() - AUTOMATION.keys():
            with self.subTest(key):
                less = {k: v for k, v in ALLOWED.items() if k != key}
                self.assert_refused(self.sign_as_team(less), f"the profile does not allow {key}")

    def test_profile_of_another_program_or_team_is_refused(self):
        key = "com.apple.application-identifier"
        other = {**ALLOWED, key: f"{TEAM}.another.program"}
        self.assert_refused(self.sign_as_team(other), f"the profile allows '{TEAM}.another."
                            f"program' as {key}, and '{TEAM}.{BUNDLE}' is needed")
        done = self.sign_as_team(ALLOWED, team="OTHERTEAM1")
        self.assertIn("and 'OTHERTEAM1.", done.stderr)
        self.assert_refused(done, done.stderr.removeprefix("entitlements.py: ").rstrip("\n"))

    def test_profile_without_documents_is_refused(self):
        key = "com.apple.developer.icloud-services"
        done = self.sign_as_team({**ALLOWED, key: ["CloudKit"]})
        self.assert_refused(done, f"the profile allows ['CloudKit'] as {key}, "
                            "and ['CloudDocuments'] is needed")

    def test_profile_that_is_over_is_refused(self):
        day = datetime.datetime.now() - datetime.timedelta(days=2)
        self.assert_refused(self.sign_as_team(ALLOWED, days=-2),
                            f"the profile expired on {day:%Y-%m-%d}")

    def test_what_is_no_profile_is_refused_in_one_sentence(self):
        profile = self.folder / "no profile"
        profile.write_text("no property list", encoding="ascii")
        done = self.sign(IDENTITY, TEAM, profile)
        self.assertNotEqual(done.returncode, 0)
        self.assertRegex(done.stderr, r"^entitlements.py: the bundle or the profile cannot be read")
        self.assertEqual(done.stderr.count("\n"), 1, done.stderr)

    def test_wrong_usage_tells_the_right_one(self):
        for done in (self.run_script("sign.sh"), self.sign(IDENTITY), self.sign("a", "b", "c", "d"),
                     self.run_script("notarize.sh", "image")):
            self.assertEqual(done.returncode, 2)
            self.assertRegex(done.stderr, r"\n  (sign|notarize)\.sh [A-Z]+")
        self.assertEqual(self.log(), [])

    def notarize(self):
        return self.run_script("notarize.sh", "Kestrel 1.dmg", IDENTITY, "a name")

    def test_notarised_image_is_signed_submitted_stapled_and_assessed(self):
        done = self.notarize()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.log(), [
            f"codesign [--force] [--timestamp] [--sign] [{IDENTITY}] [Kestrel 1.dmg]",
            "xcrun [notarytool] [submit] [Kestrel 1.dmg] [--keychain-profile] [a name] [--wait]",
            "xcrun [stapler] [staple] [Kestrel 1.dmg]",
            "spctl [--assess] [--type] [open] [--context] [context:primary-signature] "
            "[--verbose=2] [Kestrel 1.dmg]"])

    def test_image_that_is_not_accepted_is_not_stapled(self):
        self.environment["STATUS"] = "Invalid"
        done = self.notarize()
        self.assertEqual(done.returncode, 1)
        self.assertIn("not accepted", done.stderr)
        self.assertEqual(len(self.log()), 2)


if __name__ == "__main__":
    unittest.main()

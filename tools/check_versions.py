#!/usr/bin/env python3
"""Checks that everything that tells Kestrel's version tells the same one.

    tools/check_versions.py [SOURCE_TREE]

The build's version is the one that counts. Of a list of releases the newest is compared, and of git
the tag v1.2.3 where one points at the checked-out commit.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
VERSION = r"(\d+\.\d+\.\d+)"
BUILD = "CMakeLists.txt"

# The first line of each file that tells a version.
PLACES = {
    BUILD: rf"^  VERSION {VERSION}$",
    "packaging/app.kestrel.Kestrel.metainfo.xml": rf'<release version="{VERSION}"',
    "CHANGELOG.md": rf"^## {VERSION}\b",
    "debian/changelog": rf"^kestrel \({VERSION}\) ",
    "packaging/rpm/kestrel.spec": rf"^Version: +{VERSION}$",
    "packaging/arch/PKGBUILD": rf"^pkgver={VERSION}$",
}
# Each of these in its file.
MENTIONS = {
    "docs/macos.md": rf"Kestrel-{VERSION}\.dmg",
    "packaging/rpm/kestrel.spec": rf"^\* .* - {VERSION}-\d+$",
}


def found(root, place, pattern):
    return re.findall(pattern, (root / place).read_text(encoding="utf-8"), re.M)


def tags(root):
    """The tags of the checked-out commit that name a version; none where git knows nothing."""
    try:
        listed = subprocess.run(["git", "-C", str(root), "tag", "--points-at", "HEAD"], check=False,
                                capture_output=True, text=True, timeout=30)
    except FileNotFoundError:
        return []
    return [tag for tag in listed.stdout.split() if re.fullmatch(r"v\d.*", tag)]


def faults(root):
    """(the build's version, what is wrong)."""
    told = {place: next(iter(found(root, place, pattern)), None)
            for place, pattern in PLACES.items()}
    version = told[BUILD]
    wrong = [f"{place}: {other or 'no version'} instead of {version}"
             for place, other in told.items() if other is None or other != version]
    for place, pattern in MENTIONS.items():
        others = found(root, place, pattern)
        if not others:
            wrong.append(f"{place}: nothing like {pattern}")
        wrong += [f"{place}: {other} instead of {version}" for other in others if other != version]
    tagged = tags(root)
    wrong += [f"the tag {tag} stands at {version}" for tag in tagged if tag != f"v{version}"]
    changes = (root / "CHANGELOG.md").read_text(encoding="utf-8")
    if tagged and re.search(r"^## Unreleased", changes, re.M):
        wrong.append("CHANGELOG.md: unreleased changes in a tagged commit")
    return version, wrong


def main():
    version, wrong = faults(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT)
    print(*wrong, f"{version}, {len(wrong)} faults", sep="\n")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Checks of what goes into Kestrel.app, as far as they need no Mac.

    check_macos_bundle.py CHECK SOURCE_TREE
"""

import plistlib
import re
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

# The shells name a language differently where its script counts.
CHINESE_SCRIPTS = {"zh_CN": "zh-Hans", "zh_TW": "zh-Hant"}

# One entry of a .strings file: "key" = "value"; with backslash escapes.
ENTRY = re.compile(r'"((?:[^"\\]|\\.)*)"\s*=\s*"((?:[^"\\]|\\.)*)"\s*;')
COMMENT = re.compile(r"/\*.*?\*/", re.DOTALL)


def fail(message):
    sys.exit(message)


def expect_equal(found, wanted, what):
    if found != wanted:
        fail(f"{what}: {found!r} instead of {wanted!r}")


def read_strings(path):
    """The entries of a .strings file; fails when anything else stands in it."""
    text = COMMENT.sub("", path.read_text(encoding="utf-8"))
    entries = ENTRY.findall(text)
    if rest := ENTRY.sub("", text).strip():
        fail(f"{path}: not an entry: {rest[:60]!r}")
    keys = [key for key, _ in entries]
    if len(keys) != len(set(keys)):
        fail(f"{path}: a key stands twice")
    if any(not value for _, value in entries):
        fail(f"{path}: an empty value")
    return dict(entries)


def translation_files(root):
    """The translations of the other shell, by the language as macOS names it; English has none."""
    files = (root / "shells/linux/translations").glob("kestrel_*.ts")
    by_locale = {file.stem.split("_", 1)[1]: file for file in files}
    return {CHINESE_SCRIPTS.get(locale, locale.replace("_", "-")): file
            for locale, file in by_locale.items()}


def languages(root):
    return {"en", *translation_files(root)}


def core_texts(root):
    """The texts that the core's views have looked up in the user's language."""
    pattern = re.compile(r'Text::localizable\(\s*"((?:[^"\\]|\\.)*)"\s*\)')
    texts = set()
    for header in sorted((root / "src" / "views").rglob("*.h")):
        text = header.read_text(encoding="utf-8")
        found = pattern.findall(text)
        if len(found) != text.count("Text::localizable(") or "Text::Lookup::localizable" in text:
            fail(f"{header}: a localizable text is not written Text::localizable(\"…\")")
        texts.update(found)
    if not texts:
        fail("no localizable text found in src/views")
    return texts


def shell_texts(root):
    """The texts that the shell itself has looked up, in its main menu: the English of each key."""
    text = r'@"((?:[^"\\]|\\.)*)"'
    plain = re.compile(rf"NSLocalizedString\({text}")
    with_default = re.compile(rf"localizedStringForKey:{text}\s+value:{text}")
    texts = {}
    for source in (root / "shells" / "macos").rglob("*.mm"):
        code = source.read_text(encoding="utf-8")
        texts.update((key, key) for key in plain.findall(code))
        texts.update(with_default.findall(code))
    return texts


def info_plist(root):
    text = (root / "packaging/macos/Info.plist.in").read_text(encoding="utf-8")
    info = plistlib.loads(text.encode())
    expect_equal(info["LSUIElement"], True, "agent application")
    expect_equal(info["LSApplicationCategoryType"], "public.app-category.utilities", "category")
    expect_equal(info["NSHighResolutionCapable"], True, "high resolution")
    expect_equal(info["NSPrincipalClass"], "NSApplication", "principal class")
    expect_equal(info["CFBundlePackageType"], "APPL", "package type")
    expect_equal(info["LSMinimumSystemVersion"], "${CMAKE_OSX_DEPLOYMENT_TARGET}", "system")
    cmake = (root / "CMakeLists.txt").read_text(encoding="utf-8")
    if not re.search(r"set\(CMAKE_OSX_DEPLOYMENT_TARGET 13\.0 ", cmake):
        fail("the oldest system is not 13.0")
    shell = (root / "shells/macos/CMakeLists.txt").read_text(encoding="utf-8")
    for name in set(re.findall(r"\$\{(MACOSX_BUNDLE_\w+)\}", text)):
        # CMake itself knows the executable's name.
        if name != "MACOSX_BUNDLE_EXECUTABLE_NAME" and f"  {name} " not in shell:
            fail(f"shells/macos/CMakeLists.txt does not set {name}")


def entitlements(root):
    found = plistlib.loads((root / "packaging/macos/Kestrel.entitlements").read_bytes())
    container = "iCloud.$(CFBundleIdentifier)"
    expect_equal(found, {
        "com.apple.developer.icloud-container-identifiers": [container],
        "com.apple.developer.icloud-services": ["CloudDocuments"],
        "com.apple.developer.ubiquity-container-identifiers": [container],
        "com.apple.developer.ubiquity-kvstore-identifier":
            "$(TeamIdentifierPrefix)$(CFBundleIdentifier)",
        "com.apple.security.automation.apple-events": True,
    }, "entitlements")


def strings(root):
    resources = root / "shells/macos/resources"
    english = {key: key for key in core_texts(root)} | shell_texts(root)
    expect_equal({folder.stem for folder in resources.glob("*.lproj")}, languages(root),
                 "languages")
    for language in sorted(languages(root)):
        found = read_strings(resources / f"{language}.lproj" / "Localizable.strings")
        if missing := english.keys() - found.keys():
            fail(f"{language}: missing {sorted(missing)}")
        if extra := found.keys() - english.keys():
            fail(f"{language}: nobody looks up {sorted(extra)}")
        if language == "en":
            expect_equal(found, english, "English texts")
            continue
        source = ElementTree.parse(translation_files(root)[language])
        both_shells = {message.findtext("source"): message.findtext("translation")
                       for message in source.iter("message")}
        for key in core_texts(root):
            expect_equal(found.get(key), both_shells.get(key), f"{language}: {key!r}")


def reasons(root):
    resources = root / "shells/macos/resources"
    info = plistlib.loads((root / "packaging/macos/Info.plist.in").read_bytes())
    key = "NSAppleEventsUsageDescription"
    seen = set()
    for language in languages(root):
        found = read_strings(resources / f"{language}.lproj" / "InfoPlist.strings")
        expect_equal(list(found), [key], f"keys of {language}")
        seen.add(found[key])
        if language == "en":
            expect_equal(found[key], info[key], "the English reason")
    expect_equal(len(seen), len(languages(root)), "number of different reasons")


def png_size(data):
    if data[:8] != b"\x89PNG\r\n\x1a\n" or data[-8:-4] != b"IEND":
        fail("an element of the icon is not a whole PNG file")
    return struct.unpack(">II", data[16:24])


def icns(root):
    script = root / "packaging/macos/make_icns.py"
    pictures = root / "packaging/macos/icon"
    with tempfile.TemporaryDirectory() as folder:
        output = Path(folder) / "Kestrel.icns"
        subprocess.run([sys.executable, script, pictures, output], check=True)
        data = output.read_bytes()
        empty = subprocess.run([sys.executable, script, folder, output], capture_output=True)
        if empty.returncode == 0:
            fail("a folder without pictures made an icon")
    expect_equal(data[:4], b"icns", "signature")
    expect_equal(struct.unpack(">I", data[4:8])[0], len(data), "length in the header")
    wanted = {b"ic07": 128, b"ic08": 256, b"ic09": 512, b"ic10": 1024,
              b"ic11": 32, b"ic12": 64, b"ic13": 256, b"ic14": 512}
    found = {}
    position = 8
    while position < len(data):
        kind = data[position:position + 4]
        (length,) = struct.unpack(">I", data[position + 4:position + 8])
        width, height = png_size(data[position + 8:position + length])
        expect_equal(width, height, f"{kind!r} is square")
        found[kind] = width
        position += length
    expect_equal(position, len(data), "end of the last element")
    expect_equal(found, wanted, "sizes of the elements")


def sources(root):
    shell = root / "shells/macos"
    listed = set(re.findall(r"[\w/]+\.mm", (shell / "CMakeLists.txt").read_text(encoding="utf-8")))
    found = {file.relative_to(shell).as_posix() for file in shell.rglob("*.mm")}
    if forgotten := found - listed:
        fail(f"shells/macos/CMakeLists.txt does not name {sorted(forgotten)}")
    if "main.mm" in found and (missing := listed - found):
        fail(f"shells/macos lacks {sorted(missing)}")


CHECKS = {check.__name__: check
          for check in (info_plist, entitlements, strings, reasons, icns, sources)}

if __name__ == "__main__":
    CHECKS[sys.argv[1]](Path(sys.argv[2]))

#!/usr/bin/env python3
"""Keeps the translations of both shells in step with the texts of the core.

    tools/translations.py             after a text or a translation has changed
    tools/translations.py add it      begins a language, named as locales are: it, pt_BR
    tools/translations.py check       exit status 1 where something is to be done, with a list of it

The texts stand in src/views, written Text::localizable("…"); lupdate finds them by that. Their
translations stand in shells/linux/translations: the part of each Localizable.strings
of shells/macos/resources that holds the core's texts is made from them. Needs lupdate, of Debian's
package qt6-l10n-tools; exit status 77 without.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent
LUPDATE_OPTIONS = ("-extensions", "h,cpp", "-locations", "none", "-source-language", "en",
                   "-tr-function-alias", "tr+=localizable")
CORE_SECTION = re.compile(r"/\* The core's texts\. \*/\n(?:\".*\n)*")
CHINESE_SCRIPTS = {"zh_CN": "zh-Hans", "zh_TW": "zh-Hant"}


def translations_folder(root):
    return root / "shells/linux/translations"


def translation_files(root):
    """The file of each language, by the language as locales name it."""
    return {path.stem.split("_", 1)[1]: path
            for path in sorted(translations_folder(root).glob("kestrel_*.ts"))}


def strings_file(root, language):
    """Where macOS has its texts of a language."""
    name = CHINESE_SCRIPTS.get(language, language.replace("_", "-"))
    return root / f"shells/macos/resources/{name}.lproj/Localizable.strings"


def run_lupdate(root, files, *options):
    path = "/usr/lib/qt6/bin" + os.pathsep + os.environ.get("PATH", "")
    program = shutil.which("lupdate", path=path)
    if not program:
        print("lupdate is not installed")
        sys.exit(77)
    views = root / "src/views"
    done = subprocess.run([program, views, "-I", root / "src", *LUPDATE_OPTIONS, *options, "-ts",
                           *files], capture_output=True, text=True, check=False)
    if done.returncode:
        sys.exit(done.stdout + done.stderr)


def messages(path):
    """Each text of a language's file with its translation, and whether that is done, to be done or
    of a text that is no more."""
    for message in ElementTree.parse(path).iter("message"):
        translation = message.find("translation")
        yield (message.findtext("source"), translation.text or "",
               translation.get("type", "finished"))


def translated(path):
    """What a user of the language reads, by the English texts."""
    return {source: translation if kind == "finished" else source
            for source, translation, kind in messages(path) if kind in ("finished", "unfinished")}


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def with_core_texts(strings, texts):
    """The content of a Localizable.strings with the core's texts made anew."""
    lines = [f"{quoted(key)} = {quoted(value)};\n" for key, value in texts.items()]
    section = "/* The core's texts. */\n" + "".join(lines)
    return CORE_SECTION.sub(lambda _: section, strings, count=1)


def wanted_strings(root, translation_sources):
    """What each Localizable.strings is to hold, by its path."""
    texts = {language: translated(path) for language, path in translation_sources.items()}
    texts["en"] = {key: key for language in texts.values() for key in language}
    wanted = {}
    for language, core_texts in texts.items():
        path = strings_file(root, language)
        begun = path if path.exists() else strings_file(root, "en")
        wanted[path] = with_core_texts(begun.read_text(encoding="utf-8"), core_texts)
    return wanted


def update(root):
    files = translation_files(root)
    run_lupdate(root, files.values(), "-no-obsolete")
    for path, content in wanted_strings(root, files).items():
        path.parent.mkdir(exist_ok=True)
        path.write_text(content, encoding="utf-8")


def add(root, language):
    """The other table of the new folder, the reason for automation, begins as the English one."""
    run_lupdate(root, [translations_folder(root) / f"kestrel_{language}.ts"],
                "-target-language", language)
    update(root)
    reasons = strings_file(root, language).with_name("InfoPlist.strings")
    if not reasons.exists():
        shutil.copy(strings_file(root, "en").with_name("InfoPlist.strings"), reasons)


def findings(root):
    """What is to be done, a line each."""
    with tempfile.TemporaryDirectory() as folder:
        copies = {language: pathlib.Path(shutil.copy(path, folder))
                  for language, path in translation_files(root).items()}
        run_lupdate(root, copies.values())
        for language, path in copies.items():
            for source, _, kind in messages(path):
                if kind != "finished":
                    what = "to be translated" if kind == "unfinished" else "no more in the sources"
                    yield f"{language}: {what}: {source}"
        for path, content in wanted_strings(root, translation_files(root)).items():
            if not path.exists() or path.read_text(encoding="utf-8") != content:
                yield f"{path.relative_to(root)} differs from the translations of Linux"


def main(arguments, root=ROOT):
    if arguments == ["check"]:
        found = list(findings(root))
        print(*found, sep="\n")
        if found:
            print("tools/translations.py brings the files up to date")
        return 1 if found else 0
    if not arguments:
        update(root)
    elif len(arguments) == 2 and arguments[0] == "add":
        add(root, arguments[1])
    else:
        print(__doc__)
        return 2
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

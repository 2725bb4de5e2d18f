#!/usr/bin/env python3
"""Tests of tools/translations.py: a translator's round, on a copy of the sources."""
import pathlib
import shutil
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import translations  # noqa: E402

NEW_TEXT = "Take a good look"


class TranslationsTest(unittest.TestCase):
    def setUp(self):
        self.root = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        for folder in ("src/views", "shells/linux/translations", "shells/macos/resources"):
            shutil.copytree(ROOT / folder, self.root / folder)
        self.style = self.root / "src/views/popover/menu_popover_style.h"
        self.german = translations.translation_files(self.root)["de"]

    def replace(self, path, old, new):
        text = path.read_text(encoding="utf-8")
        self.assertIn(old, text)
        path.write_text(text.replace(old, new), encoding="utf-8")

    def findings(self):
        return list(translations.findings(self.root))

    def strings(self, language):
        return translations.strings_file(self.root, language).read_text(encoding="utf-8")

    def test_updating_what_is_up_to_date_changes_nothing(self):
        def files():
            return {path: path.read_bytes() for path in self.root.rglob("*") if path.is_file()}
        before = files()
        translations.update(self.root)
        self.assertEqual(files(), before)

    def test_a_new_text_is_found_and_an_old_one_that_has_gone(self):
        self.replace(self.style, '"Quit"', f'"{NEW_TEXT}"')
        found = self.findings()
        self.assertIn(f"de: to be translated: {NEW_TEXT}", found)
        self.assertIn("ja: no more in the sources: Quit", found)

    def test_a_translation_goes_from_one_shell_to_the_other(self):
        self.replace(self.style, '"Quit"', f'"{NEW_TEXT}"')
        translations.update(self.root)
        self.assertIn(f'"{NEW_TEXT}" = "{NEW_TEXT}";', self.strings("de"))
        self.replace(self.german, f'<source>{NEW_TEXT}</source>\n        '
                     '<translation type="unfinished"></translation>',
                     f'<source>{NEW_TEXT}</source>\n        <translation>Sieh „hin"</translation>')
        self.assertIn("shells/macos/resources/de.lproj/Localizable.strings differs from the "
                      "translations of Linux", self.findings())
        translations.update(self.root)
        self.assertIn(f'"{NEW_TEXT}" = "Sieh „hin\\"";', self.strings("de"))
        self.assertNotIn('"Quit" =', self.strings("de"))
        self.assertIn('"Quit Kestrel" = "Kestrel beenden";', self.strings("de"))
        self.assertFalse([line for line in self.findings() if line.startswith("de")])

    def test_a_language_begins_with_every_text_to_be_translated(self):
        translations.add(self.root, "pt_BR")
        self.assertCountEqual(self.strings("pt_BR").splitlines(),
                              self.strings("en").splitlines())
        texts = list(translations.messages(self.german))
        self.assertEqual(len([line for line in self.findings()
                              if line.startswith("pt_BR: to be translated: ")]), len(texts))
        self.assertTrue((self.root / "shells/macos/resources/pt-BR.lproj/InfoPlist.strings")
                        .exists())


if __name__ == "__main__":
    unittest.main()

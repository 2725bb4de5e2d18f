"""The texts of the program in other languages."""
import pathlib
import xml.etree.ElementTree

TOOLKIT_TRANSLATIONS = pathlib.Path("/usr/share/qt6/translations")
TRANSLATIONS = pathlib.Path(__file__).resolve().parents[3] / "shells/linux/translations"


def has_toolkit_translation(language):
    """Whether the toolkit's own texts are installed in a language."""
    return (TOOLKIT_TRANSLATIONS / f"qtbase_{language}.qm").exists()


def translations(language):
    """The program's texts in a language, by the English ones."""
    tree = xml.etree.ElementTree.parse(TRANSLATIONS / f"kestrel_{language}.ts")
    return {message.find("source").text: message.find("translation").text
            for message in tree.iter("message")}

"""The texts of the program in other languages."""
import pathlib
import xml.etree.ElementTree

TRANSLATIONS = pathlib.Path(__file__).resolve().parents[3] / "shells/linux/translations"


def translations(language):
    """The program's texts in a language, by the English ones."""
    tree = xml.etree.ElementTree.parse(TRANSLATIONS / f"kestrel_{language}.ts")
    return {message.find("source").text: message.find("translation").text
            for message in tree.iter("message")}

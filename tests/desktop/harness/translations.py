"""The program's texts in other languages, as its translators have written them."""
import os
import xml.etree.ElementTree

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "shells",
                      "linux", "translations")


def translations(language):
    """The program's texts in a language, by the English ones."""
    tree = xml.etree.ElementTree.parse(os.path.join(FOLDER, f"kestrel_{language}.ts"))
    return {message.find("source").text: message.find("translation").text
            for message in tree.iter("message")}

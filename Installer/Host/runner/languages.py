"""The languages that the reference host speaks, read from its string tables."""
import dataclasses
import pathlib

RESOURCES = pathlib.Path(__file__).resolve().parents[1] / "resources"


@dataclasses.dataclass(frozen=True)
class Language:
    code: str  # as the host tells it to the pane: "FN"
    folder: str  # "fr" of fr.lproj
    name: str  # as it calls itself: "Français"


def strings(table):
    """The texts of a string table, by key."""
    texts = {}
    for line in table.read_text(encoding="utf-8-sig").splitlines():
        key, equals, text = line.partition('" = "')
        if equals:
            texts[key.removeprefix('"')] = text.removesuffix('";').replace('\\"', '"')
    return texts


def read(resources=RESOURCES):
    """English first, then by folder."""
    found = []
    for folder in resources.glob("*.lproj"):
        texts = strings(folder / "Localizable.strings")
        found.append(Language(texts["Language Setting"], folder.stem, texts["LanguageName"]))
    return sorted(found, key=lambda language: (language.code != "EN", language.folder))

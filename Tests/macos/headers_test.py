"""The headers that stand for the platform's, and the table of what is deprecated in them."""

import re
import unittest

import bundle

FOLDER = bundle.PROJECT / "cmake/macos"


def deprecated():
    """What the headers declare deprecated, with the versions: {"openFile:": ("10.0", "11.0")}."""
    found = {}
    for header in sorted((FOLDER / "headers").rglob("*.h")):
        for statement in re.split(r";|\{|\}|@interface \w+", header.read_text()):
            mark = re.search(r"API_DEPRECATED\w*\(.*?macos\(([\d.]+),\s+([\d.]+)\)", statement, re.DOTALL)
            if mark:
                found[named(statement[:mark.start()])] = mark.groups()
    return found


def named(declaration):
    """The selector, function, property or constant that the declaration is of."""
    text = re.sub(r"//[^\n]*|^#[^\n]*", "", declaration, flags=re.MULTILINE).strip()
    message = re.search(r"[-+] \([^)]*\)(\w.*)", text, re.DOTALL)
    if message:
        parts = re.findall(r"(\w+:)(?=\()", message[1])
        return "".join(parts) or message[1].strip()
    function = re.search(r"(\w+)\(", text) if "PLATFORM_EXPORT" in text else None
    return function[1] if function else re.findall(r"\w+", text)[-1]


def table():
    """The rows of the table of deprecated calls: {"openFile:": ("10.0", "11.0")}."""
    rows = re.findall(r"^\| `([^`]+)` \| ([\d.]+) \| ([\d.]+) \|", (FOLDER / "README.md").read_text(), re.MULTILINE)
    return {name: (since, until) for name, since, until in rows}


class Headers(unittest.TestCase):
    def test_every_deprecated_call_stands_in_the_table_and_no_other_does(self):
        self.assertGreaterEqual(len(deprecated()), 8)
        self.assertEqual(table(), deprecated())

    def test_every_deprecated_call_is_in_use(self):
        folders = (bundle.SOURCE, bundle.PROJECT / "Installer/Host")
        sources = "\n".join(path.read_text() for folder in folders for path in folder.rglob("*.mm"))
        for name in deprecated():
            word = name.split(":")[0]
            setter = f"set{word[0].upper()}{word[1:]}"
            self.assertRegex(sources, rf"\b({word}|{setter})\b", f"nothing uses {name} any more")

    def test_one_file_alone_is_given_the_platforms_download(self):
        # All others are compiled without it, since the header of the framework leaves it out.
        users = [path.name for path in bundle.SOURCE.rglob("*.*") if path.suffix in (".h", ".hpp", ".cpp", ".mm")
                 and "NSURLDownload" in path.read_text()]
        self.assertEqual(users, ["VantDownload.mm"])

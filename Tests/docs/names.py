"""That every name which others depend on stands in a page: the sources have the list, the pages what each is."""
import re
import subprocess
import unittest

import pages
from pages import SOURCE

PLUG_IN = SOURCE / "Installer" / "Plugins" / "Installation" / "Source"


def sources(folder, *endings):
    return [path for path in sorted(folder.rglob("*")) if path.suffix in endings]


def text_of(paths):
    return "\n".join(path.read_text(encoding="utf-8", errors="replace") for path in paths)


def constants(pattern):
    """Values of the plug-in's string constants whose names match."""
    return set(re.findall(rf'NSString \*const {pattern} =\s*@"([^"]+)"', text_of(sources(PLUG_IN, ".mm"))))


class Names(unittest.TestCase):

    maxDiff = None

    def assert_told(self, names, least, page=None):
        """Each of the names stands as code in the page, or in any; and there are at least so many."""
        text = pages.everything() if page is None else (SOURCE / page).read_text(encoding="utf-8")
        code = "\n".join(span for line in text.splitlines() for span in re.findall(r"`([^`]+)`", line))
        self.assertGreaterEqual(len(names), least)
        self.assertEqual([name for name in sorted(names) if not re.search(rf"(?<!\w){re.escape(name)}(?!\w)", code)], [])

    def test_notifications(self):
        self.assert_told(constants(r"Vant\w+Notification"), 10, "Documentation/host.md")

    def test_keys_of_notifications_records_settings_and_selections(self):
        self.assert_told(constants(r"(?:Vant\w+Key|textKey)"), 18)

    def test_files_that_host_and_pane_share(self):
        self.assert_told(constants(r"Vant\w+(?:File|Folder)"), 7, "Documentation/host.md")

    def test_what_host_and_pane_say_to_each_other(self):
        header = (PLUG_IN / "shell" / "VantInstallation.h").read_text()
        observer, pane = header.split("@interface VantInstallation", 1)
        spoken = set(re.findall(r"^- \([^)]*\)(\w+:?)", observer, re.MULTILINE))
        self.assert_told(spoken, 8, "Documentation/host.md")
        asked = set(re.findall(r"^- \([^)]*\)(\w+:?)", pane, re.MULTILINE))
        # The pane's own helpers, and what mirrors the observer's messages.
        self.assert_told(asked - spoken - {"trace:", "localizedStringForKey:"}, 9, "Documentation/host.md")
        self.assert_told({"getErrcodeStr"}, 1, "Documentation/host.md")

    def test_texts_that_a_host_supplies(self):
        asked = set(re.findall(r'(?:host|vendor)StringForKey:@"([^"]+)"', text_of(sources(PLUG_IN, ".mm"))))
        self.assert_told(asked | {"Language Setting", "WebInstallTitle"}, 7, "Documentation/host.md")

    def test_codes_of_languages(self):
        table = (PLUG_IN / "base" / "Languages.cpp").read_text()
        self.assert_told(set(re.findall(r'^    \{"(\w+)", "', table, re.MULTILINE)), 10, "Documentation/host.md")

    def test_keys_of_the_string_table(self):
        table = (PLUG_IN / "resources" / "en.lproj" / "Localizable-Inst.strings").read_text(encoding="utf-8-sig")
        self.assert_told(set(re.findall(r'^"([^"]+)" =', table, re.MULTILINE)), 20, "Documentation/translate.md")

    def test_pictures(self):
        listed = re.search(r"foreach\(image ([^)]*)\)", (PLUG_IN / "CMakeLists.txt").read_text())[1].split()
        self.assert_told(set(listed), 8, "Documentation/brand.md")

    def test_numbers_of_download_errors(self):
        table = (SOURCE / "Installer" / "Host" / "record" / "DownloadErrors.cpp").read_text()
        numbers = re.findall(r"^    \{(-\d+),", table, re.MULTILINE)
        told = re.findall(r"^\| ((?:-\d+(?:, )?)+) \|", (SOURCE / "Documentation/support.md").read_text(), re.MULTILINE)
        self.assertGreater(len(numbers), 20)
        self.assertEqual(set(numbers) - set(", ".join(told).split(", ")), set())

    def test_variables(self):
        """Those that a program or a script reads, and those that a build is configured with."""
        tracked = subprocess.run(["git", "ls-files"], cwd=SOURCE, check=True, capture_output=True, text=True).stdout.split()
        compiled = text_of(SOURCE / name for name in tracked if name.endswith((".cpp", ".hpp", ".mm", ".h")))
        scripts = text_of(SOURCE / name for name in tracked if is_script(name))
        built = text_of(SOURCE / name for name in tracked if name.endswith(("CMakeLists.txt", ".cmake")))
        read = re.findall(r'(?:getenv\(|environment\] objectForKey:@)"(VANT_\w+)"', compiled)
        read += re.findall(r"\bVANT_[A-Z_]*[A-Z]\b", scripts)
        configured = re.findall(r"option\((VANT_\w+)|set\((VANT_\w+)[^)]* CACHE ", built)
        self.assert_told({*read, *("".join(pair) for pair in configured)}, 15)

    def test_variables_of_the_layer(self):
        layer = text_of(sources(SOURCE / "Installer" / "GNUstep", ".cpp", ".mm"))
        self.assert_told(set(re.findall(r'getenv\("(VANT_\w+)"', layer)), 3, "Documentation/host.md")


def is_script(name):
    """Without the tests' own cases, which read what pages of theirs supply them with."""
    if name.startswith("Tests/docs/") or name.endswith(("CMakeLists.txt", ".cmake", ".md")):
        return False
    return name.endswith((".py", ".sh")) or (SOURCE / name).read_bytes()[:2] == b"#!"


# The literal forms in which the sources hold a message for the trace log.
MESSAGES = [
    r'trace:@"((?:[^"\\]|\\.)*)"',
    r'\btrace\("((?:[^"\\]|\\.)*)"',
    r'\.trace = "([^"]*)"',
    r'Trace = "([^"]*)"\s*(?:"([^"]*)")?',
    r'return "(\*\*\*ERROR\*\*\*[^"]*)"',
    r'\{Announcement::\w+, "([^"]*)"\}',
]


def traced():
    """Every message that the plug-in can write, "…" where it fills something in."""
    source = text_of(sources(PLUG_IN, ".mm", ".cpp"))
    found = {"".join(match if isinstance(match, tuple) else (match,)) for form in MESSAGES for match in re.findall(form, source)}
    # "Authorization error:[" ends where a number is appended.
    return {re.sub(r"\[$", "[…]", re.sub(r"%[@d]", "…", message)) for message in found} - {"…"}


class TraceLog(unittest.TestCase):

    maxDiff = None

    def test_the_table_has_every_message_and_no_other(self):
        page = (SOURCE / "Documentation/support.md").read_text(encoding="utf-8")
        table = page.split("Every message that the pane can write", 1)[1].split("\n## ", 1)[0]
        told = set(re.findall(r"^\| `([^`]+)` \|", table, re.MULTILINE))
        self.assertGreater(len(traced()), 20)
        self.assertEqual(told, traced())

    def test_every_place_that_traces_has_been_read(self):
        """A message in a form that is not looked for would be missing on both sides."""
        source = text_of(sources(PLUG_IN, ".mm", ".cpp"))
        calls = len(re.findall(r"\[self trace:|pane_\.trace\(", source))
        passed_on = len(re.findall(r'\[self trace:@"%@"', source))
        literal = len(re.findall(rf"\[self {MESSAGES[0]}|pane_\.{MESSAGES[1]}", source)) - passed_on
        self.assertEqual(calls, literal + passed_on)
        # The model record, and the messages of rules: of the chain, of the status line, of a download's failure.
        self.assertEqual(passed_on, 4)


if __name__ == "__main__":
    unittest.main()

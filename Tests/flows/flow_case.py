"""What the flow tests share: a folder of their own, one run of the real host, and questions to its timeline."""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "Installer" / "Host" / "runner"))

import camera  # noqa: E402, F401
import flow  # noqa: E402
import follow  # noqa: E402
import holds  # noqa: E402, F401
import languages  # noqa: E402
import photographer  # noqa: E402, F401
import report  # noqa: E402, F401
import run_folder  # noqa: E402, F401

BUILD = pathlib.Path(os.environ.get("VANT_BUILD", SOURCE / "build" / "debug"))
# Sanitizers make every step slower; no test waits this long for what it expects.
LONGEST = 120


class FlowCase(unittest.TestCase):
    """A test gets an empty folder, which goes when it has passed; after a failure it stays and is named."""

    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vant flow "))

    def tearDown(self):
        outcome = self._outcome.result
        if any(case is self for case, _ in outcome.failures + outcome.errors):
            print(f"what the run left: {self.folder}", file=sys.stderr)
        else:
            shutil.rmtree(self.folder)

    def run_flow(self, kind, media, **options):
        """One run; its timeline is kept for the questions below."""
        settings = {"timeout": LONGEST, "pictures": {}} | options
        ended = flow.run(flow.Options(flow=kind, out=self.folder / "out", build=BUILD, media=media, **settings))
        self.events = follow.read_events(ended.places.out / "timeline.txt")
        log = (ended.places.out / "host.log").read_text(errors="replace")
        self.assertNotIn("WARNING: ThreadSanitizer", log, "a race, or locks in two orders")
        self.assert_planned(ended, kind, media, options)
        return ended

    def assert_planned(self, ended, kind, media, options):
        """What the run installed, in its order, is what vantmedia says beforehand."""
        if not ended.summary.get("continued"):
            return
        web = ["--web", options["site_folder"] / "SelectedInput.plist"] if kind == "web" else []
        offline = ["--offline"] if options.get("offline") else []
        answer = subprocess.run([BUILD / "vantmedia", "plan", media, "--json", *web, *offline],
                                check=True, capture_output=True, text=True)
        told = json.loads(answer.stdout)
        self.assertEqual(ended.summary["version"], told["program"])
        planned = [(package["name"], package["component"]) for package in told["media"][0]["packages"]]
        self.assertEqual(planned, [(package["name"], package["component"]) for package in ended.summary["packages"]])

    def texts(self, kind):
        """The texts of one kind of event, in order."""
        return [event.text for event in self.events if event.kind == kind]

    def index(self, text):
        """Where the first event with this text stands in the timeline."""
        for number, event in enumerate(self.events):
            if event.text == text:
                return number
        self.fail(f"the timeline holds no '{text}'")

    def packages(self, ended):
        return [(package["name"], package["component"], package["outcome"]) for package in ended.summary["packages"]]

    def assert_continued(self, ended):
        self.assertEqual((ended.status, ended.summary.get("continued"), ended.summary.get("valid")), (0, True, "YES"),
                         ended.reason)

    def assert_installed(self, ended, packages):
        """Exactly the files of these packages, (name, …, count), lie under the run's volume."""
        library = ended.places.volume / "Library" / "Quorvel"
        held = {path.name: sum(1 for _ in path.iterdir()) for path in library.iterdir()} if library.exists() else {}
        self.assertEqual(held, {pathlib.PurePath(row[0]).stem: row[-1] for row in packages})
        self.assertEqual(ended.summary["installedFiles"], sum(row[-1] for row in packages))


def add_case_for_each_language(test_class, check):
    """Gives the class a test for each language, test_zh_hans for zh-Hans, which calls check(case, language)."""
    for language in languages.read():
        def run(case, language=language):
            check(case, language)
        setattr(test_class, f"test_{language.folder.lower().replace('-', '_')}", run)


def stand_in(script):
    """Puts a script in the place of the installer tool, for what is to be seen of a package; "real" in it is the tool."""
    def prepared(places):
        tool = places.system / "usr" / "sbin" / "installer"
        tool.unlink()
        tool.write_text(f"#!/bin/sh\nreal() {{ '{places.build}/tools/installer' \"$@\"; }}\n{script}\n")
        tool.chmod(0o755)
    return prepared


def host_string(language_folder, key, table="Localizable"):
    """A string of the host's own tables."""
    return table_string(BUILD / "VantHost.app", language_folder, key, table)


def plug_in_string(language_folder, key):
    return table_string(BUILD / "VantInstallation.bundle", language_folder, key, "Localizable-Inst")


def table_string(bundle, language_folder, key, table):
    return languages.strings(bundle / "Resources" / f"{language_folder}.lproj" / f"{table}.strings")[key]

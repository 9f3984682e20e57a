"""What the tests of vantmedia share: a media folder of their own, and one run of the program."""
import json
import os
import pathlib
import plistlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "Tests" / "flows"))
sys.path.insert(0, str(SOURCE / "Installer" / "Host" / "runner"))

import languages  # noqa: E402
import small_media  # noqa: E402

BUILD = pathlib.Path(os.environ.get("VANT_BUILD", SOURCE / "build" / "debug"))
# No run takes nearly as long; a hang fails the test.
LONGEST = 60


class MediaCase(unittest.TestCase):

    maxDiff = None
    launcher = []  # what the program is started by, if not by the test itself

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vant media "))
        self.addCleanup(shutil.rmtree, self.folder)
        self.media = small_media.write_media(self.folder / "media")

    def vantmedia(self, *arguments, **options):
        return subprocess.run([*self.launcher, BUILD / "vantmedia", *arguments], capture_output=True, text=True,
                              timeout=LONGEST, stdin=subprocess.DEVNULL, **options)

    def check(self, *options):
        """The exit status and the findings, as (severity, code, subject, message)."""
        answer = self.vantmedia("check", self.media, "--json", *options)
        self.assertIn(answer.returncode, (0, 1, 3), answer.stderr)
        findings = json.loads(answer.stdout)["media"][0]["findings"]
        return answer.returncode, [(each["severity"], each["code"], each["subject"], each["message"]) for each in findings]

    def assert_found(self, severity, code, subject, *options):
        """The one thing that is found beside notes; its message is given back."""
        status, findings = self.check("--strict", *options)
        grave = [finding for finding in findings if finding[0] != "note"]
        self.assertEqual([(finding[0], finding[1]) for finding in grave], [(severity, code)], findings)
        self.assertTrue(grave[0][2].endswith(str(subject)), grave)
        self.assertEqual(status, 1 if severity == "error" else 3)
        return grave[0][3]

    def change_list(self, name, change):
        """Lets `change` have the property list and writes back what it leaves."""
        path = self.media / name
        value = plistlib.loads(path.read_bytes())
        change(value)
        path.write_bytes(plistlib.dumps(value))

    def package(self, name):
        return self.media / "Packages" / name

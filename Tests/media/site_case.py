"""What the tests of download sites share: archives, a server, and one run of the program."""
import gzip
import io
import json
import plistlib
import re
import zipfile

from media_case import MediaCase, small_media
from site_server import Answer, Server

SELECTION = "SelectedInput.plist"


def zipped(files, compression=zipfile.ZIP_DEFLATED):
    """A zip of {path: content}; paths stay as they are, wherever they lead."""
    buffer = io.BytesIO()
    with zipfile.ZipFile(buffer, "w", compression) as archive:
        for path, content in files.items():
            archive.writestr(zipfile.ZipInfo(path), content, compression)
    return buffer.getvalue()


def cpio_gz(files):
    return gzip.compress(small_media.cpio(files), 1)


def package(name, below="", count=2):
    """The files of a package, as they lie in an archive."""
    return small_media.inside(f"{below}{name}.pkg", small_media.package_files(name, count))


class SiteCase(MediaCase):

    def setUp(self):
        super().setUp()
        self.server = Server()
        self.addCleanup(self.server.stop)
        self.components = []

    def serve(self, name, answer, kind="Print Driver"):
        """One archive of the site and its component; bytes are served as they are."""
        self.server.answers[f"/{name}"] = answer if isinstance(answer, Answer) else Answer(answer)
        self.components.append(small_media.entry(kind, name))
        self.server.answers[f"/{SELECTION}"] = Answer(plistlib.dumps(self.components))

    def serve_sound(self):
        """A component that nothing is wrong with, behind all others."""
        self.serve("Fax.zip", zipped(package("Fax")), "PC fax Utility")

    def visit(self, *options, media=()):
        """The exit status and the report."""
        answer = self.vantmedia("check", *media, "--site", self.server.address, "--json", "--strict", *options)
        self.assertIn(answer.returncode, (0, 1, 3), answer.stderr)
        return answer.returncode, json.loads(answer.stdout)["media"][0]

    def assert_grave(self, report, *expected):
        """The things found beside notes, as (severity, code, end of the subject); their messages are given back."""
        grave = [each for each in report["findings"] if each["severity"] != "note"]
        self.assertEqual([(each["severity"], each["code"]) for each in grave], [row[:2] for row in expected],
                         report["findings"])
        for each, row in zip(grave, expected):
            self.assertRegex(each["subject"], re.escape(row[2]) + "$")
        return [each["message"] for each in grave]

    def assert_found(self, severity, code, subject, *options, media=()):
        """The one thing that is found beside notes; its message is given back."""
        status, report = self.visit(*options, media=media)
        self.assertEqual(status, 1 if severity == "error" else 3)
        return self.assert_grave(report, (severity, code, subject))[0]

    def notes(self, report):
        return {each["code"]: each for each in report["findings"] if each["severity"] == "note"}

    def contents(self, report, archive=0):
        return {each["item"]: (each["outcome"], each["reason"])
                for each in report["site"]["archives"][archive]["contents"]}

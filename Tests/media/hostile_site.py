"""Download sites that are made to hold a reader up or bring it down: each ends in a finding, and soon."""
import gzip
import io
import itertools
import os
import plistlib
import signal
import subprocess
import time
import unittest
import zipfile

from media_case import BUILD, small_media
from site_case import SiteCase, package, zipped
from site_server import Answer

MEGABYTE = 1_000_000


class HostileSite(SiteCase):

    def codes(self, *options):
        status, report = self.visit(*options)
        self.assertEqual(status, 1, report["findings"])
        return {each["code"] for each in report["findings"] if each["severity"] == "error"}

    def codes_of_impatience(self):
        # The list comes from a file, so that a busy machine has nothing else to be too slow for.
        selection = self.folder / "list.plist"
        selection.write_bytes(plistlib.dumps(self.components))
        return self.codes("--selection", selection, "--wait", "1")

    def keep_sending(self, piece, pause):
        def send(handler):
            while not handler.server.over.wait(pause):
                handler.wfile.write(piece)
        return send

    def test_answer_without_end(self):
        self.serve("Driver.zip", Answer(self.keep_sending(b"x" * MEGABYTE, 0), announce=None))
        self.assertEqual(self.codes("--largest", "5"), {"fetch-too-large"})

    def test_length_beyond_all_bounds(self):
        self.serve("Driver.zip", Answer(self.keep_sending(b"x", 0.1), announce=1 << 60))
        self.assertEqual(self.codes("--largest", "5"), {"fetch-too-large"})

    def test_answer_drop_by_drop(self):
        self.serve("Driver.zip", Answer(self.keep_sending(b"x", 0.1), announce=1000))
        self.assertEqual(self.codes_of_impatience(), {"fetch-slow"})

    def test_header_drop_by_drop(self):
        self.serve("Driver.zip", Answer(headers=endless_fields()))
        self.assertEqual(self.codes_of_impatience(), {"fetch-slow"})

    def test_server_that_says_nothing(self):
        self.serve("Driver.zip", Answer(lambda handler: handler.server.over.wait(60), announce=1000))
        self.assertIn(self.codes_of_impatience().pop(), {"fetch-slow", "fetch-failed"})

    def test_redirects_in_a_circle(self):
        self.serve("Driver.zip", Answer(status=302, headers=[("Location", "/b")]))
        self.server.answers["/b"] = Answer(status=302, headers=[("Location", "/Driver.zip")])
        self.assertEqual(self.codes(), {"redirect-circle"})

    def test_zip_that_expands_beyond_all_bounds(self):
        buffer = io.BytesIO()
        zeros = bytes(8 * MEGABYTE)
        with zipfile.ZipFile(buffer, "w", zipfile.ZIP_DEFLATED, compresslevel=1) as archive:
            archive.writestr("a", zeros)
        # One entry's data, claimed to be more than a disk holds.
        content = buffer.getvalue().replace(len(zeros).to_bytes(4, "little"), (0xFFFFFF00).to_bytes(4, "little"))
        self.serve("Driver.zip", content)
        self.assertEqual(self.codes(), {"archive-too-large"})

    def test_cpio_that_claims_more_than_there_is(self):
        entry = small_media.cpio_entry(1, "./Printer Driver.pkg", 0o100644, b"")
        entry = entry[:65] + b"77777777777" + entry[76:]
        self.serve("Driver.cpio.gz", gzip.compress(entry + bytes(1000)))
        self.assertEqual(self.codes(), {"archive-too-large"})

    def test_cpio_that_expands_beyond_all_bounds(self):
        # It could be expanded, but that would take more than a gigabyte; so its package is never seen.
        zeros, times = 64 * MEGABYTE, 18
        entry = small_media.cpio_entry(1, "./Fax.pkg", 0o100644, b"")
        entry = entry[:65] + b"%011o" % (zeros * times) + entry[76:]
        pieces = [gzip.compress(entry), gzip.compress(bytes(zeros), 1) * times, gzip.compress(small_media.cpio({}))]
        self.serve("Fax.cpio.gz", b"".join(pieces))
        _, report = self.visit()
        self.assert_grave(report, ("error", "archive-too-large", "Fax.cpio.gz"))
        self.assertEqual(self.contents(report), {})

    def test_encoding_that_expands_beyond_all_bounds(self):
        body = gzip.compress(bytes(20 * MEGABYTE), 1)
        self.serve("Driver.zip", Answer(body, headers=[("Content-Encoding", "gzip")]))
        self.assertEqual(self.codes("--largest", "5"), {"fetch-too-large"})

    def test_encoding_that_expands_beyond_the_bounds_at_once(self):
        # Small enough to come between two looks at it.
        body = gzip.compress(bytes(3 * MEGABYTE // 2))
        self.serve("Driver.zip", Answer(body, headers=[("Content-Encoding", "gzip")]))
        self.assertEqual(self.codes("--largest", "1"), {"fetch-too-large"})

    def test_entries_that_lead_out_of_the_folder(self):
        for number, path in enumerate(("../../outside", "/tmp/vant-outside", "a/../../outside")):
            with self.subTest(path):
                self.serve(f"{number}.zip", zipped({path: b"x", **package("Printer Driver")}))
        self.assertEqual(self.codes(), {"archive-escape"})
        self.assertFalse(os.path.exists("/tmp/vant-outside"))

    def test_entry_behind_a_link_that_leads_out(self):
        buffer = io.BytesIO()
        with zipfile.ZipFile(buffer, "w") as archive:
            link = zipfile.ZipInfo("out")
            link.create_system, link.external_attr = 3, 0o120777 << 16
            archive.writestr(link, str(self.folder))
            archive.writestr("out/written", b"x")
        self.serve("Driver.zip", buffer.getvalue())
        self.assertEqual(self.codes(), {"archive-damaged"})
        self.assertFalse((self.folder / "written").exists())

    def test_names_of_control_characters_do_not_reach_the_terminal(self):
        self.serve("Driver.zip", zipped({"a\x1b[31m.pkg": b"x", "b\nerror: c.mpkg": b""} | package("Printer Driver")))
        answer = self.vantmedia("check", "--site", self.server.address)
        self.assertNotIn("\x1b", answer.stdout)
        self.assertIn("a\\x1B[31m.pkg: set aside", answer.stdout)

    def start(self, *arguments, temporary):
        return subprocess.Popen([BUILD / "vantmedia", *arguments], env=os.environ | {"TMPDIR": str(temporary)},
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)

    def started_fetching(self):
        """A program with an archive under way that never ends, and its temporary folder."""
        self.serve("Driver.zip", Answer(self.keep_sending(b"x" * 1000, 0.05), announce=None))
        temporary = self.folder / "tmp"
        temporary.mkdir()
        program = self.start("check", "--site", self.server.address, temporary=temporary)
        deadline = time.monotonic() + 30
        while not list(temporary.glob("*/Driver.zip")) and time.monotonic() < deadline:
            time.sleep(0.02)
        return program, temporary

    def test_asked_to_end_it_leaves_nothing_behind(self):
        program, temporary = self.started_fetching()
        program.send_signal(signal.SIGTERM)
        _, words = program.communicate(timeout=30)
        self.assertEqual((program.returncode, words), (1, "vantmedia: interrupted\n"))
        self.assertEqual(list(temporary.iterdir()), [])

    def test_what_a_killed_run_leaves_is_removed_by_the_next_one_and_nothing_of_a_run_under_way(self):
        program, temporary = self.started_fetching()
        self.start("plan", self.folder, temporary=temporary).communicate(timeout=30)
        self.assertNotEqual(list(temporary.glob("*/Driver.zip")), [])
        program.kill()
        program.communicate(timeout=30)
        self.assertNotEqual(list(temporary.iterdir()), [])
        self.start("plan", self.folder, temporary=temporary).communicate(timeout=30)
        self.assertEqual(list(temporary.iterdir()), [])


def endless_fields():
    """Header fields that come one by one."""
    for number in itertools.count():
        yield f"X-{number}", "x"
        time.sleep(0.1)


if __name__ == "__main__":
    unittest.main()

"""Media that are made to hold a reader up or bring it down: each ends in a finding, and soon."""
import os
import plistlib
import shutil
import unittest

from media_case import MediaCase

SELECTION, SETTINGS = "SelectedInput.plist", "VantUserSettings.plist"


class HostileMedia(MediaCase):

    def codes(self, *options):
        status, findings = self.check(*options)
        self.assertEqual(status, 1)
        return {code for severity, code, _, _ in findings if severity == "error"}

    def test_list_that_nests_too_deep(self):
        depth = 522
        (self.media / SELECTION).write_bytes(b"<?xml version=\"1.0\"?><plist version=\"1.0\">" + b"<array>" * depth +
                                             b"</array>" * depth + b"</plist>")
        self.assertIn("list-unsafe", self.codes())

    def test_list_of_a_hundred_megabytes(self):
        with (self.media / SELECTION).open("wb") as file:
            file.truncate(100 << 20)
        self.assertIn("list-too-large", self.codes())

    def test_binary_list_that_contains_itself(self):
        # An array of one element, which is the array.
        objects = b"\xa1\x00"
        trailer = b"\0" * 6 + b"\x01\x01" + (1).to_bytes(8, "big") + (0).to_bytes(8, "big") + (10).to_bytes(8, "big")
        (self.media / SELECTION).write_bytes(b"bplist00" + objects + b"\x08" + trailer)
        self.assertIn("list-unsafe", self.codes())

    def test_pipe_in_place_of_a_list(self):
        for name in (SELECTION, SETTINGS):
            (self.media / name).unlink()
            os.mkfifo(self.media / name)
        self.assertIn("list-no-file", self.codes())

    def test_pipe_in_place_of_a_package(self):
        shutil.rmtree(self.package("Fax.pkg"))
        os.mkfifo(self.package("Fax.pkg"))
        self.assertIn("package-special-file", self.codes())

    def test_pipe_inside_a_package(self):
        information = self.package("Fax.pkg") / "Contents" / "Info.plist"
        information.unlink()
        os.mkfifo(information)
        self.assertIn("package-special-file", self.codes())

    def test_device_behind_a_link(self):
        payload = self.package("Fax.pkg") / "Contents" / "Archive.pax.gz"
        payload.unlink()
        payload.symlink_to("/dev/zero")
        self.assertIn("package-special-file", self.codes())

    def test_links_in_circles(self):
        shutil.rmtree(self.package("Fax.pkg"))
        self.package("Fax.pkg").symlink_to("Fax.pkg")
        (self.package("Printer Manager.pkg") / "Contents" / "Again").symlink_to("..")
        (self.media / "GTA").symlink_to(".")
        self.assertIn("package-unreadable", self.codes())

    def test_pipes_in_place_of_slides(self):
        folder = self.media / "GTA" / "EN"
        folder.mkdir(parents=True)
        for name in ("image.png", "string.xml"):
            os.mkfifo(folder / name)
        _, findings = self.check()
        codes = [code for _, code, _, _ in findings]
        self.assertIn("slide-image-unreadable", codes)
        self.assertIn("slide-text-unreadable", codes)

    def test_names_of_control_characters_do_not_reach_the_terminal(self):
        self.change_list(SELECTION, lambda entries: entries[0]["LOCATION"].update(text="Packages/a\tb\nerror: c.pkg"))
        answer = self.vantmedia("check", self.media)
        self.assertIn("a\\x09b\\x0Aerror: c.pkg: the package is missing", answer.stdout)

    def test_bytes_that_are_no_text(self):
        folder = os.fsencode(self.media) + b"/GTA/\xff\xfe"
        os.makedirs(folder)
        _, findings = self.check()
        self.assertIn("slide-language", [code for _, code, _, _ in findings])

    def test_ten_thousand_entries(self):
        entry = plistlib.loads((self.media / SELECTION).read_bytes())[0]
        (self.media / SELECTION).write_bytes(plistlib.dumps([entry] * 10000))
        self.assertIn("same-name", self.codes())


if __name__ == "__main__":
    unittest.main()

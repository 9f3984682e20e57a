"""Download sites with one mistake each: vantmedia finds it, names it, and says nothing else."""
import plistlib
import unittest
import zlib

from media_case import small_media
from site_case import SELECTION, SiteCase, cpio_gz, package, zipped
from site_server import Answer

PAGE = b"<!DOCTYPE html>\n<html><body>Please log in</body></html>\n"
DRIVER = package("Printer Driver")


class FaultySite(SiteCase):

    def test_00_nothing_is_wrong(self):
        self.serve("Driver.zip", zipped(DRIVER))
        self.serve("Manager.cpio.gz", cpio_gz(package("Printer Manager", "Disk 1/")), "Pressdeck")
        status, report = self.visit()
        self.assertEqual(status, 0)
        self.assert_grave(report)
        self.assertEqual(self.contents(report, 1), {"Disk 1/Printer Manager.pkg": ("installed", "")})
        self.assertEqual([each["name"] for each in report["packages"]],
                         ["Printer Driver.pkg", "Printer Manager.pkg", "Uninstaller.pkg"])

    def test_01_list_of_components_missing(self):
        self.assertIn("status 404", self.assert_found("error", "http-status", SELECTION))

    def test_02_list_of_components_that_is_a_web_page(self):
        self.server.answers[f"/{SELECTION}"] = Answer(PAGE)
        self.assert_found("error", "list-malformed", SELECTION)

    def test_03_component_without_an_address(self):
        self.serve("Driver.zip", b"")
        self.components[0]["LOCATION"] = {}
        self.serve_sound()
        _, report = self.visit()
        self.assert_grave(report, ("error", "entry-without-location", "entry 1"),
                          ("error", "download-without-name", SELECTION))

    def test_04_archive_missing(self):
        self.serve("Driver.zip", Answer(PAGE, 404))
        self.assertIn("status 404", self.assert_found("error", "http-status", "Driver.zip"))

    def test_05_server_that_is_out_of_order(self):
        self.serve("Driver.zip", Answer(b"", 503))
        self.assertIn("status 503", self.assert_found("error", "http-status", "Driver.zip"))

    def test_06_web_page_in_place_of_an_archive(self):
        self.serve("Driver.zip", Answer(PAGE, headers=[("Content-Type", "text/html")]))
        self.assert_found("error", "web-page", "Driver.zip")

    def test_07_answer_without_content(self):
        self.serve("Driver.zip", b"")
        self.assert_found("error", "archive-empty", "Driver.zip")

    def test_08_answer_shorter_than_announced(self):
        whole = zipped(DRIVER)
        self.serve("Driver.zip", Answer(whole[:-100], announce=len(whole)))
        self.assertIn(f"{len(whole)} bytes are announced", self.assert_found("error", "length-differs", "Driver.zip"))

    def test_09_answer_longer_than_announced(self):
        # What is behind the announced length never arrives.
        whole = zipped(DRIVER)
        self.serve("Driver.zip", Answer(whole, announce=len(whole) - 100))
        self.assert_found("error", "archive-damaged", "Driver.zip")

    def test_10_no_length_announced(self):
        self.serve("Driver.zip", Answer(zipped(DRIVER), announce=None))
        self.assert_found("warning", "length-missing", "Driver.zip")

    def test_11_answer_encoded_once_more(self):
        whole = zipped(DRIVER)
        self.serve("Driver.zip", Answer(zlib.compress(whole), headers=[("Content-Encoding", "deflate")]))
        self.assert_found("warning", "content-encoding", "Driver.zip")

    def test_12_redirect_to_a_page_that_is_gone(self):
        self.serve("Driver.zip", Answer(status=302, headers=[("Location", "/gone")]))
        _, report = self.visit()
        self.assert_grave(report, ("error", "http-status", "Driver.zip"))
        self.assertEqual(report["site"]["archives"][0]["redirects"], [f"{self.server.address}/gone"])

    def test_13_redirect_to_a_file_of_this_machine(self):
        self.serve("Driver.zip", Answer(status=302, headers=[("Location", "file:///etc/passwd")]))
        self.assertIn("file:///etc/passwd", self.assert_found("error", "redirect-refused", "Driver.zip"))

    def test_14_nobody_answers(self):
        self.serve("Driver.zip", b"")
        self.components[0]["LOCATION"]["text"] = "http://127.0.0.1:1/Driver.zip"
        self.serve_sound()
        self.assertIn("nobody answers", self.assert_found("error", "fetch-failed", "Driver.zip"))

    def test_15_zip_by_another_name(self):
        self.serve("Driver.cpio.gz", zipped(DRIVER))
        self.assertIn("is a zip", self.assert_found("error", "archive-ending", "Driver.cpio.gz"))

    def test_16_zip_in_capitals(self):
        self.serve("Driver.ZIP", zipped(DRIVER))
        self.assertIn('only exactly ".zip"', self.assert_found("error", "archive-ending", "Driver.ZIP"))

    def test_17_cpio_by_the_name_of_a_zip(self):
        self.serve("Driver.zip", cpio_gz(DRIVER))
        self.assert_found("error", "archive-ending", "Driver.zip")

    def test_18_package_that_is_in_no_archive(self):
        self.serve("Driver.pkg", b"xar!" + bytes(40))
        self.assertIn("in no archive", self.assert_found("error", "archive-ending", "Driver.pkg"))

    def test_19_archive_with_a_flipped_byte(self):
        content = bytearray(zipped(DRIVER))
        content[200] ^= 1
        self.serve("Driver.zip", bytes(content))
        self.assert_found("error", "archive-damaged", "Driver.zip")

    def test_20_damaged_package_in_a_sound_archive(self):
        files = package("Printer Driver", count=9)
        files["Printer Driver.pkg/Contents/Archive.pax.gz"] = files["Printer Driver.pkg/Contents/Archive.pax.gz"][:-20]
        self.serve("Driver.zip", zipped(files))
        self.assert_found("error", "package-damaged", "Driver.zip: Printer Driver.pkg")

    def test_21_package_of_an_unknown_name(self):
        self.serve("Driver.zip", zipped(package("Printer Driver 2.1")))
        self.serve_sound()
        status, report = self.visit()
        self.assertEqual(status, 3)
        self.assert_grave(report, ("warning", "set-aside", "Driver.zip"))
        self.assertIn("(Printer Driver.pkg, Hueforge.pkg", self.notes(report)["package-set-aside"]["message"])
        self.assertEqual(self.contents(report)["Printer Driver 2.1.pkg"][0], "set aside")

    def test_22_package_of_an_unknown_name_comes_last(self):
        self.serve("Driver.zip", zipped(package("Printer Driver 2.1")))
        self.assertIn("nothing is installed", self.assert_found("error", "last-archive-set-aside", "Driver.zip"))

    def test_23_package_whose_ending_is_in_capitals(self):
        files = {path.replace(".pkg", ".PKG"): content for path, content in package("Fax").items()}
        self.serve("Driver.zip", zipped(DRIVER | files))
        self.assert_found("warning", "package-passed-over", "Driver.zip: Fax.PKG")

    def test_24_package_in_a_metapackage(self):
        self.serve("Suite.zip", zipped(package("Printer Driver", "Suite.mpkg/Contents/Packages/")))
        self.serve_sound()
        _, report = self.visit()
        self.assert_grave(report, ("warning", "set-aside", "Suite.zip"),
                          ("warning", "nested-package", "Suite.mpkg/Contents/Packages/Printer Driver.pkg"))

    def test_25_archive_in_an_archive(self):
        self.serve("Driver.zip", zipped(DRIVER | {"More/Fax.zip": zipped(package("Fax"))}))
        self.assert_found("warning", "nested-archive", "Driver.zip: More/Fax.zip")

    def test_26_archive_that_brings_nothing(self):
        self.serve("Driver.zip", zipped({"Read me.txt": b"Hello\n"}))
        self.assert_found("warning", "archive-without-package", "Driver.zip")

    def test_27_legacy_package(self):
        self.serve("Scan.zip", zipped(package("Scanmate")), "Scan Driver")
        _, report = self.visit()
        self.assert_grave(report, ("warning", "package-dropped", "Scan.zip: Scanmate.pkg"))
        self.assertEqual(self.contents(report), {"Scanmate.pkg": ("dropped", "legacy")})

    def test_28_one_package_in_two_archives(self):
        self.serve("One.zip", zipped(DRIVER))
        self.serve("Two.zip", zipped(DRIVER))
        self.assertIn("the host ends", self.assert_found("error", "same-name", "Printer Driver.pkg"))

    def test_29_two_archives_of_one_file_name(self):
        self.serve("1/Driver.zip", zipped(DRIVER))
        self.serve("2/Driver.zip", zipped(package("Fax")))
        self.assert_found("error", "same-download", "Driver.zip")

    def test_30_two_archives_expanded_into_one_folder(self):
        self.serve("Driver.zip", zipped(DRIVER))
        self.serve("Driver.cpio", small_media.cpio(package("Fax")))
        self.assert_found("error", "same-folder", "Driver")

    def test_31_address_with_a_query(self):
        self.serve("Driver.zip?version=2", b"")
        self.server.answers["/Driver.zip%3Fversion=2"] = Answer(cpio_gz(DRIVER))
        self.components[0]["LOCATION"]["text"] = f"{self.server.address}/Driver.zip?version=2"
        self.server.answers["/Driver.zip?version=2"] = Answer(cpio_gz(DRIVER))
        self.server.answers[f"/{SELECTION}"] = Answer(plistlib.dumps(self.components))
        self.assert_found("warning", "download-query", "Driver.zip?version=2")

    def test_32_package_under_another_name_on_the_media(self):
        # By the same name the web version wins; by another both are installed.
        self.serve("Fax.zip", zipped(package("Fax")), "Print Driver")
        status, report = self.visit(media=[self.media])
        twice = [each for each in report["findings"] if each["code"] == "installed-twice"]
        self.assertEqual(status, 1 if any(each["severity"] == "error" for each in report["findings"]) else 3)
        self.assertRegex(twice[0]["subject"], "Packages/Printer Driver.pkg$")
        self.assertRegex(self.notes(report)["web-version-wins"]["subject"], "Packages/Fax.pkg$")
        names = [each["name"] for each in report["packages"]]
        self.assertEqual((names.count("Fax.pkg"), names.count("Printer Driver.pkg")), (1, 1))


class Visits(SiteCase):

    def test_requests_are_those_of_the_pane(self):
        self.serve_sound()
        self.visit()
        self.assertEqual(sorted(path for path, _ in self.server.asked), ["/Fax.zip", f"/{SELECTION}"])
        self.assertEqual({"Safari/534.57.2" in agent for _, agent in self.server.asked}, {True})

    def test_a_redirect_that_is_followed_is_a_note(self):
        self.serve("Driver.zip", Answer(status=301, headers=[("Location", "/mirror/Driver-2.bin")]))
        self.server.answers["/mirror/Driver-2.bin"] = Answer(zipped(DRIVER))
        status, report = self.visit()
        self.assertEqual(status, 0)
        self.assertIn("/mirror/Driver-2.bin", self.notes(report)["redirect"]["message"])
        self.assertEqual(self.contents(report), {"Printer Driver.pkg": ("installed", "")})

    def test_room_is_that_of_archives_and_contents(self):
        archive = zipped(DRIVER)
        self.serve("Driver.zip", archive)
        _, report = self.visit()
        expanded = sum(len(content) for content in DRIVER.values())
        self.assertEqual([report["site"]["archives"][0][key] for key in ("announced", "received", "expanded")],
                         [len(archive), len(archive), expanded])
        self.assertIn(f"{len(archive)} bytes of archives, {expanded} bytes", self.notes(report)["space-needed"]["message"])

    def test_a_selection_of_one_s_own_replaces_the_site_s(self):
        self.serve_sound()
        selection = self.folder / "own.plist"
        selection.write_bytes(plistlib.dumps([small_media.entry("PC fax Utility", "Fax.zip")]))
        for option in ("--selection", "--web"):
            self.assertEqual(self.visit(option, selection)[0], 0)
        self.assertEqual({path for path, _ in self.server.asked}, {"/Fax.zip"})

    def test_nothing_is_left_behind_unless_it_is_kept(self):
        self.serve("1/Fax.zip", zipped(package("Fax")))
        self.serve("2/Fax.zip", zipped(package("Fax")))
        temporary, kept = self.folder / "tmp", self.folder / "kept"
        temporary.mkdir()
        site = ("check", "--site", self.server.address)
        environment = {"TMPDIR": str(temporary), "PATH": "/usr/bin:/bin", "HOME": str(self.folder)}
        self.vantmedia(*site, env=environment)
        self.assertEqual(list(temporary.iterdir()), [])
        self.vantmedia(*site, "--keep", kept, env=environment)
        self.assertEqual(list(temporary.iterdir()), [])
        self.assertEqual({path.name for path in kept.iterdir()}, {"Fax.zip", "2-Fax.zip", SELECTION})
        again = self.vantmedia(*site, "--keep", kept, env=environment)
        self.assertEqual((again.returncode, again.stdout), (1, ""))
        self.assertIn("no empty folder", again.stderr)

    def test_text_names_each_package_and_its_end(self):
        self.serve("Driver.zip", zipped(DRIVER | package("Uninstaller")))
        answer = self.vantmedia("check", "--site", self.server.address)
        self.assertIn("      Printer Driver.pkg: installed\n", answer.stdout)
        self.assertIn("      Uninstaller.pkg: passed over, the host brings its own\n", answer.stdout)


if __name__ == "__main__":
    unittest.main()

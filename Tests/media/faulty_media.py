"""Media with one mistake each: vantmedia finds it, names it, and says nothing else."""
import os
import pathlib
import plistlib
import shutil
import unittest
import zipfile

from media_case import MediaCase, small_media

SELECTION, SETTINGS = "SelectedInput.plist", "VantUserSettings.plist"
PICTURE = b"\x89PNG\r\n\x1a\n" + b"\0" * 40


def remove_scan_driver(entries):
    entries[:] = [entry for entry in entries if entry["TYPE"]["text"] != "Scan Driver"]


class FaultyMedia(MediaCase):

    def setUp(self):
        super().setUp()
        # The scan drivers call for profiles.
        self.profiles = self.media / "MAC_Installer" / "InstallFiles" / "Profiles"
        self.profiles.mkdir(parents=True)
        (self.profiles / "Paper.icc").write_bytes(b"profile")

    def write_slides(self):
        for code in ("EN", "FN", "GR", "IT", "SP", "PT", "DT", "KR", "CP", "CT"):
            folder = self.media / "GTA" / code
            folder.mkdir(parents=True)
            (folder / "image.png").write_bytes(PICTURE)
            (folder / "string.xml").write_text("<TITLE>Offer</TITLE><MESSAGE>Ask for it</MESSAGE>")
        return self.media / "GTA"

    def test_00_nothing_is_wrong(self):
        self.write_slides()
        self.assertEqual(self.check("--strict"), (0, []))

    def test_01_selection_missing(self):
        # Without a scan driver to install there is nothing else to say.
        (self.media / SELECTION).unlink()
        self.assert_found("error", "list-missing", SELECTION)

    def test_02_selection_with_a_syntax_error(self):
        path = self.media / SELECTION
        path.write_bytes(path.read_bytes().replace(b"</dict>\n</array>", b"</array>"))
        self.assertRegex(self.assert_found("error", "list-malformed", SELECTION), r"line \d+")

    def test_03_selection_that_is_a_dictionary(self):
        (self.media / SELECTION).write_text("{ TYPE = \"Print Driver\"; }")
        self.assertIn("a dictionary instead of an array", self.assert_found("error", "wrong-type", SELECTION))

    def test_04_settings_missing(self):
        # They name the second scan driver, without which one record lacks a path.
        self.change_list(SELECTION, remove_scan_driver)
        (self.media / SETTINGS).unlink()
        self.assert_found("warning", "list-missing", SETTINGS)

    def test_05_key_misspelt(self):
        self.change_list(SETTINGS, lambda settings: settings.update({"SmartUpdate": "1"}))
        self.assertIn('probably "Smart Update" is meant', self.assert_found("warning", "unknown-key", SETTINGS))

    def test_06_switch_that_is_no_string(self):
        self.change_list(SETTINGS, lambda settings: settings.update({"Debug": True}))
        self.assertIn('"debug_on"', self.assert_found("warning", "switch-value", SETTINGS))

    def test_07_unknown_kind(self):
        def misspell(entries):
            entries[-1]["TYPE"]["text"] = "Printer Driver"

        self.change_list(SELECTION, misspell)
        self.assertIn('"Print Driver" is meant', self.assert_found("warning", "unknown-kind", "entry 4"))

    def test_08_location_that_is_no_dictionary(self):
        def flatten(entries):
            entries[-1]["LOCATION"] = entries[-1]["LOCATION"]["text"]

        self.change_list(SELECTION, flatten)
        self.assertIn("a string", self.assert_found("error", "entry-without-location", "entry 4"))

    def test_09_package_missing(self):
        shutil.rmtree(self.package("Fax.pkg"))
        self.assert_found("error", "package-missing", "Fax.pkg")

    def test_10_package_that_is_a_text_file(self):
        shutil.rmtree(self.package("Fax.pkg"))
        self.package("Fax.pkg").write_text("The package goes here.\n")
        self.assert_found("error", "package-form", "Fax.pkg")

    def test_11_package_empty(self):
        shutil.rmtree(self.package("Fax.pkg"))
        self.package("Fax.pkg").touch()
        self.assert_found("error", "package-empty", "Fax.pkg")

    def test_12_package_truncated(self):
        payload = self.package("Fax.pkg") / "Contents" / "Archive.pax.gz"
        payload.write_bytes(payload.read_bytes()[:-40])
        self.assert_found("error", "package-damaged", "Fax.pkg")

    def test_13_payload_with_a_flipped_byte(self):
        payload = self.package("Printer Manager.pkg") / "Contents" / "Archive.pax.gz"
        content = bytearray(payload.read_bytes())
        content[len(content) // 2] ^= 0x10
        payload.write_bytes(content)
        self.assert_found("error", "package-damaged", "Printer Manager.pkg")

    def test_14_two_packages_of_one_name(self):
        shutil.copytree(self.package("Fax.pkg"), self.media / "More" / "Fax.pkg")
        self.change_list(SELECTION, lambda entries: entries.append(small_media.entry("Pressdeck", "More/Fax.pkg")))
        self.assertIn("the host ends", self.assert_found("error", "same-name", "Fax.pkg"))

    def test_15_uninstaller_missing(self):
        shutil.rmtree(self.media / "Resources" / "Uninstaller.pkg")
        self.assert_found("error", "uninstaller-missing", "Resources/Uninstaller.pkg")

    def test_16_manual_missing(self):
        shutil.rmtree(self.media / "Resources" / "Manual.pkg")
        self.assert_found("error", "manual-missing", "Resources/Manual.pkg")

    def test_17_second_scan_driver_not_named(self):
        self.change_list(SETTINGS, lambda settings: settings.pop("PackagesInfo"))
        self.assert_found("error", "second-scan-driver-missing", SETTINGS)

    def test_18_profile_folder_is_a_file(self):
        shutil.rmtree(self.profiles)
        self.profiles.write_text("profiles")
        self.assert_found("warning", "profiles-no-folder", "Profiles/")

    def test_19_several_zips_of_profiles(self):
        for name in ("One.zip", "Two.zip"):
            with zipfile.ZipFile(self.profiles / name, "w") as archive:
                archive.writestr(f"{name}.icc", b"profile")
        self.assert_found("warning", "profiles-several-zips", "Profiles/")

    def test_20_zip_of_profiles_that_the_shell_reads_otherwise(self):
        with zipfile.ZipFile(self.profiles / "Pay $HOME.zip", "w") as archive:
            archive.writestr("a.icc", b"profile")
        self.assert_found("error", "shell-name", "Pay $HOME.zip")

    def test_21_slide_text_with_an_entity(self):
        slides = self.write_slides()
        (slides / "FN" / "string.xml").write_text("<TITLE>Papier &amp; encre</TITLE><MESSAGE>x</MESSAGE>")
        self.assert_found("warning", "slide-entity", "FN/string.xml")

    def test_22_slide_folder_of_no_language(self):
        (self.write_slides() / "FR").mkdir()
        self.assert_found("warning", "slide-language", "GTA/FR")

    def test_23_slide_image_that_is_none(self):
        (self.write_slides() / "KR" / "image.png").write_text("picture")
        self.assert_found("warning", "slide-image-unreadable", "KR/image.png")

    def test_24_slides_of_a_language_missing(self):
        shutil.rmtree(self.write_slides() / "CT")
        self.assert_found("warning", "slide-folder-missing", "GTA/CT")

    def test_25_profile_folder_missing(self):
        shutil.rmtree(self.profiles)
        self.assert_found("warning", "profiles-missing", "Profiles/")

    def test_26_two_records_without_a_path(self):
        shutil.rmtree(self.media / "Resources" / "Uninstaller.pkg")
        shutil.rmtree(self.media / "Resources" / "Manual.pkg")
        _, findings = self.check()
        self.assertIn("records-without-path", [code for _, code, _, _ in findings])

    def test_27_package_that_may_not_be_read(self):
        shutil.rmtree(self.package("Fax.pkg"))
        self.package("Fax.pkg").write_bytes(b"xar!")
        self.package("Fax.pkg").chmod(0)
        # To root nothing is closed, unless it gives that up.
        if os.getuid() == 0:
            self.launcher = ["setpriv", "--bounding-set=-dac_override,-dac_read_search"]
        self.assert_found("error", "package-unreadable", "Fax.pkg")


class FaultyWebSelection(MediaCase):

    def check_site(self, archives):
        site = small_media.write_site(self.folder / "site", archives)
        _, findings = self.check("--web", site / SELECTION)
        return {(severity, code): pathlib.PurePath(subject).name for severity, code, subject, _ in findings}

    def test_last_archive_set_aside(self):
        found = self.check_site({"Extra.zip": small_media.inside("Extra/Unknown.pkg",
                                                                 small_media.package_files("Unknown", 2))})
        self.assertEqual(found["error", "last-archive-set-aside"], "Extra.zip")

    def test_two_archives_of_one_folder(self):
        driver = small_media.inside("Printer Driver.pkg", small_media.package_files("Printer Driver", 2))
        found = self.check_site({"Driver.zip": driver, "Driver.cpio": driver})
        self.assertEqual(found["error", "same-folder"], "Driver")

    def test_archive_damaged(self):
        site = small_media.write_site(self.folder / "site", {"Driver.zip": {"Printer Driver.pkg": b"x"}})
        (site / "Driver.zip").write_bytes(b"<html>Not found</html>")
        _, findings = self.check("--web", site / SELECTION)
        self.assertIn(("error", "archive-damaged"), [finding[:2] for finding in findings])

    def test_archive_with_a_flipped_byte(self):
        site = small_media.write_site(self.folder / "site",
                                      {"Driver.zip": small_media.package_files("Printer Driver", 9)})
        content = bytearray((site / "Driver.zip").read_bytes())
        content[200] ^= 1
        (site / "Driver.zip").write_bytes(content)
        _, findings = self.check("--web", site / SELECTION)
        self.assertIn(("error", "archive-damaged"), [finding[:2] for finding in findings])

    def test_damaged_package_in_a_sound_archive(self):
        files = small_media.package_files("Printer Driver", 9)
        files["Contents/Archive.pax.gz"] = files["Contents/Archive.pax.gz"][:-20]
        site = small_media.write_site(self.folder / "site",
                                      {"Driver.zip": small_media.inside("Deep/Printer Driver.pkg", files)})
        _, findings = self.check("--web", site / SELECTION)
        self.assertIn(("error", "package-damaged", "http://site/Driver.zip: Deep/Printer Driver.pkg"),
                      [finding[:3] for finding in findings])

    def test_sound_archives_bring_nothing_but_notes(self):
        site = small_media.write_site(self.folder / "site", {"Driver.zip": small_media.inside(
            "Printer Driver.pkg", small_media.package_files("Printer Driver", 9))})
        _, findings = self.check("--web", site / SELECTION)
        self.assertEqual({(severity, code) for severity, code, _, _ in findings if severity == "error"}, set())

    def test_name_that_the_shell_reads_otherwise(self):
        site = small_media.write_site(self.folder / "site", {"Driver.zip": {"Printer Driver.pkg": b"x"}})
        location = "http://download.quorvel.invalid/Dri`ver`.zip"
        (site / SELECTION).write_bytes(plistlib.dumps([small_media.entry("Print Driver", location)]))
        _, findings = self.check("--web", site / SELECTION)
        self.assertIn(("error", "shell-name", location), [finding[:3] for finding in findings])


if __name__ == "__main__":
    unittest.main()

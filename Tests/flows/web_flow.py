"""Installations from a download site by the real host process: nginx on loopback, real archives, real packages."""
import plistlib

import small_media
from flow_case import FlowCase, report, host_string
from small_media import MEDIA, inside, package_files

# What the downloads hold, beside the media: a newer printer driver, and a newer scan driver, which takes the place of
# the media's scan driver and of the second package that comes with that.
DRIVER_FILES, SCAN_FILES = 7, 6
EXPECTED = [
    ("Printer Driver.pkg", "Printer Driver.pkg", DRIVER_FILES),
    ("Hueforge.pkg", "Hueforge.pkg", SCAN_FILES),
    ("Printer Manager.pkg", "Pressdeck", 10),
    ("Fax.pkg", "PC fax Utility", 5),
    ("Uninstaller.pkg", "Printer Software Uninstaller", 3),
    ("Manual.pkg", "User's Guide", 2),
]


def archives():
    return {
        "Driver.zip": inside("Driver/Printer Driver.pkg", package_files("Printer Driver", DRIVER_FILES)),
        "Scan.zip": inside("Scan/inner/Hueforge.pkg", package_files("Hueforge", SCAN_FILES))
        | inside("Scan/Uninstaller.pkg", package_files("Uninstaller", 99)),
    }


class WebFlow(FlowCase):

    def setUp(self):
        super().setUp()
        self.media = small_media.write_media(self.folder / "media")

    def install(self, components, **options):
        site = small_media.write_site(self.folder / "site", components)
        return self.run_flow("web", self.media, site_folder=site, **options)

    def notifications(self):
        return [text.split()[0] for text in self.texts("notification")]

    def test_installs_the_downloads_before_what_the_media_has(self):
        ended = self.install(archives())
        self.assert_continued(ended)
        self.assertEqual(self.packages(ended), [(name, kind, "PIPE END") for name, kind, _ in EXPECTED])
        self.assertIn("/Vantrel/Download/Driver/", ended.summary["packages"][0]["path"])
        self.assert_installed(ended, EXPECTED)
        self.assertEqual(ended.summary["status"], host_string("en", "FINISH.TITLE"))
        self.assertEqual(ended.summary["setAside"], [])
        self.assertFalse((ended.places.temporary / "Vantrel" / "Download").exists())

    def test_announces_each_download_and_each_package(self):
        self.install(archives())
        steps = self.notifications()
        for step in ("webDownloadStartNotification", "downloadinfoo", "downloadcompleted", "unzipcompleted"):
            self.assertEqual(steps.count(step), 2, step)
        self.assertEqual(steps.count("InstallNextSUComponent"), len(EXPECTED) - 1)
        self.assertEqual((steps.count("SUInstallComplete"), steps[-1]), (1, "SUInstallComplete"))
        self.assertEqual(self.texts("observer").count("continueToNextPlugin"), 1)

    def test_sets_aside_what_cannot_be_installed_unattended(self):
        components = archives() | {"Extra.zip": inside("Extra/Unknown Tool.pkg", package_files("Unknown Tool", 4))}
        ended = self.install(components)
        self.assertEqual((ended.status, ended.summary["continued"], ended.summary["valid"]), (1, False, "YES"))
        self.assertIn("set aside", ended.reason)
        self.assertEqual(ended.summary["setAside"], ["Extra"])
        self.assertEqual(self.texts("observer")[-1], "setIsButton2Enabled: YES")
        self.assert_installed(ended, [])
        kept = ended.places.home / "Desktop" / "QuorvelPrinter" / "Extra"
        self.assertEqual([path.parent.name for path in kept.rglob("Archive.pax.gz")], ["Contents"])

    def test_installs_after_an_earlier_component_was_set_aside(self):
        components = {"Extra.zip": inside("Extra/Unknown Tool.pkg", package_files("Unknown Tool", 4))} | archives()
        ended = self.install(components)
        self.assertEqual((ended.status, ended.summary["continued"]), (3, True), ended.reason)
        self.assertEqual(ended.summary["setAside"], ["Extra"])
        self.assert_installed(ended, EXPECTED)

    def test_names_an_archive_that_cannot_be_expanded(self):
        site = small_media.write_site(self.folder / "site", archives())
        (site / "Scan.zip").write_bytes(b"<html>not here</html>")
        ended = self.run_flow("web", self.media, site_folder=site)
        self.assertEqual((ended.status, ended.summary["continued"]), (3, True), ended.reason)
        self.assertEqual([failure["archive"] for failure in ended.summary["notExpanded"]], ["Scan.zip"])
        self.assertNotEqual(ended.summary["notExpanded"][0]["words"], "")
        self.assertIn("Scan.zip", report.complaints(ended)[0])
        # Kept for a look: this run was not whole.
        self.assertTrue((ended.places.temporary / "Vantrel" / "Download" / "Scan.zip").exists())

    def test_refuses_an_address_that_a_shell_would_read(self):
        ended = self.install(archives() | {"$HOME.zip": inside("Fax.pkg", package_files("Fax", 1))})
        self.assertEqual(ended.status, 1)
        self.assertRegex(ended.reason, r"the address http://\S+/\$HOME.zip holds \$")
        self.assertEqual(self.texts("notification"), [])
        self.assertFalse((ended.places.temporary / "Vantrel").exists())

    def test_says_that_a_failed_download_has_stopped_the_run(self):
        site = small_media.write_site(self.folder / "site", archives())
        selection = plistlib.loads((site / "SelectedInput.plist").read_bytes())
        selection[0]["LOCATION"]["text"] = "gopher://site/Driver.zip"
        (site / "SelectedInput.plist").write_bytes(plistlib.dumps(selection))
        ended = self.run_flow("web", self.media, site_folder=site)
        self.assertEqual((ended.status, ended.summary["errorCode"]), (1, -1002))
        self.assertIn("of a kind that cannot be downloaded (-1002)", ended.reason)
        self.assertEqual(self.texts("notice")[-1], host_string("en", "StuckAnswer", "Notices").replace("__CODE__", "-1002"))

    def test_installs_the_media_when_the_site_cannot_be_reached(self):
        ended = self.install(archives(), offline=True)
        self.assert_continued(ended)
        # The manual is added when the last archive has been expanded, so not here.
        self.assert_installed(ended, [row for row in MEDIA if row[0] != "Manual.pkg"])
        self.assertNotIn("downloadcompleted", self.notifications())

    def test_installs_the_media_when_the_site_lists_nothing(self):
        ended = self.install({})
        self.assert_continued(ended)
        self.assert_installed(ended, MEDIA)
        self.assertIn("CDInstallComplete", self.notifications())

    def test_a_cancelled_prompt_downloads_nothing(self):
        ended = self.install(archives(), authorize="cancel")
        self.assertEqual((ended.status, ended.summary["valid"]), (1, "NO"))
        self.assertEqual(self.notifications(), [])
        self.assertNotIn(".zip", (ended.places.out / "nginx" / "access.log").read_text())

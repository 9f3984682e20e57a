"""Installations from the media by the real host process."""
import pathlib
import plistlib
import shutil

import small_media
from flow_case import FlowCase, add_case_for_each_language, host_string, plug_in_string, report, stand_in
from small_media import MEDIA


class MediaFlow(FlowCase):

    def media(self):
        return small_media.write_media(self.folder / "media")

    def test_installs_everything_in_the_required_order(self):
        ended = self.run_flow("media", self.media())
        self.assert_continued(ended)
        self.assertEqual(self.packages(ended), [(name, kind, "PIPE END") for name, kind, _ in MEDIA])
        self.assert_installed(ended, MEDIA)
        self.assertEqual(ended.summary["status"], host_string("en", "FINISH.TITLE"))

    def test_announces_each_package_on_a_thread_of_its_own(self):
        self.run_flow("media", self.media())
        steps = [event for event in self.events if event.kind == "notification"]
        following = [f"InstallNextCDComponent {name}" for name, _, _ in MEDIA[1:]]
        self.assertEqual([step.text for step in steps], following + ["CDInstallComplete"])
        self.assertEqual(len({step.thread for step in steps}), len(MEDIA))
        self.assertNotIn("main", {step.thread for step in steps})

    def test_starts_three_seconds_after_the_pane_and_commits_before(self):
        self.run_flow("media", self.media())
        created = self.events[self.index("pane created")]
        started = self.events[self.index(plug_in_string("en", "Installing") + "...")]
        self.assertGreaterEqual(started.seconds - created.seconds, 2.9)
        self.assertLess(self.index("setIsButton3Hidden: YES"), self.index("pane created"))
        self.assertLess(self.index("setIsButton2Enabled: YES"), self.index("continueToNextPlugin"))
        self.assertEqual(self.texts("observer").count("continueToNextPlugin"), 1)

    def test_follows_the_installer_with_the_bar(self):
        self.run_flow("media", self.media())
        values = [float(text.split()[1]) for text in self.texts("bar")
                  if text.startswith("install ") and not text.startswith("install is")]
        # Not always forward: a value is compared with what the bar shows when the line is read, and set a moment later.
        self.assertEqual((min(values), values[1], max(values), values[-1]), (0, 1, 100, 100))
        self.assertGreater(len(values), len(MEDIA))
        self.assertIn("install is shown", self.texts("bar"))

    def test_takes_media_whose_path_needs_care(self):
        media = small_media.write_media(self.folder / "média «1» $HOME `x` 'y'")
        ended = self.run_flow("media", media)
        self.assert_continued(ended)
        self.assert_installed(ended, MEDIA)

    def assert_refused(self, media, reason):
        ended = self.run_flow("media", media)
        self.assertEqual((ended.status, ended.reason), (1, reason))
        self.assertEqual(self.texts("notification"), [])
        self.assertFalse((ended.places.temporary / "Vantrel").exists())

    def test_refuses_a_package_name_that_a_shell_would_read(self):
        media = self.media()
        (media / "SelectedInput.plist").write_bytes(plistlib.dumps([small_media.entry("Fax", "Packages/$HOME.pkg")]))
        self.assert_refused(media, "the package $HOME.pkg holds $, which a shell would read")

    def test_refuses_a_profile_name_that_a_shell_would_read(self):
        media = self.media()
        profiles = media / "MAC_Installer" / "MAC_Data" / "Profiles"
        profiles.mkdir(parents=True)
        (profiles / "`x`.zip").touch()
        self.assert_refused(media, "the colour profile `x`.zip holds `, which a shell would read")

    def test_a_damaged_package_does_not_stop_the_others(self):
        media = self.media()
        (media / "Packages" / "Printer Manager.pkg" / "Contents" / "Archive.pax.gz").write_bytes(b"not an archive")
        ended = self.run_flow("media", media)
        self.assertEqual((ended.status, ended.summary["continued"]), (3, True), ended.reason)
        self.assertIn(("Printer Manager.pkg", "Pressdeck", "PIPE END"), self.packages(ended))
        self.assert_installed(ended, [row for row in MEDIA if row[0] != "Printer Manager.pkg"])
        failed = [package for package in ended.summary["packages"] if not package["installed"]]
        self.assertEqual([(package["name"], package["exitStatus"]) for package in failed], [("Printer Manager.pkg", 1)])
        self.assertIn("/Packages/Printer Manager.pkg: ", failed[0]["messages"][0])
        self.assertIn("Printer Manager.pkg", report.complaints(ended)[0])

    def test_tells_of_each_package_what_it_left_and_how_its_installer_ended(self):
        ended = self.run_flow("media", self.media())
        self.assertEqual([(package["name"], package["installedFiles"], package["exitStatus"], package["messages"])
                          for package in ended.summary["packages"]], [(name, count, 0, []) for name, _, count in MEDIA])

    def test_without_a_selection_installs_what_the_host_carries(self):
        media = self.media()
        (media / "SelectedInput.plist").unlink()
        (media / "VantUserSettings.plist").unlink()
        ended = self.run_flow("media", media)
        self.assert_continued(ended)
        self.assert_installed(ended, [row for row in MEDIA if row[0] == "Uninstaller.pkg"])

    def test_ends_when_the_installer_tool_cannot_be_started(self):
        def without_tool(places):
            (places.system / "usr" / "sbin" / "installer").unlink()

        ended = self.run_flow("media", self.media(), prepared=without_tool)
        self.assertEqual((ended.status, ended.summary["continued"]), (1, False))
        self.assertIn("could not be started (-60031)", ended.reason)
        self.assertEqual({package["outcome"] for package in ended.summary["packages"]}, {None})
        self.assert_installed(ended, [])

    def test_ends_by_its_time_out(self):
        ended = self.run_flow("media", self.media(), prepared=stand_in("sleep 60"), timeout=6)
        self.assertEqual((ended.status, ended.reason), (1, "no end after 6 s"))
        self.assertIn("the last status was", report.complaints(ended)[0])

    def test_keeps_a_trace_only_when_asked(self):
        media = self.media()
        ended = self.run_flow("media", media, debug=True)
        trace = (ended.places.out / "trace.log").read_text()
        self.assertIn("Posting notification:[CDInstallComplete]", trace)
        ended = self.run_flow("media", media)
        self.assertFalse((ended.places.home / "Library" / "Logs" / "Quorvel VantMain.log").exists())

    def test_touches_nothing_but_its_own_folders(self):
        media = self.media()
        before = listing(media)
        ended = self.run_flow("media", media)
        self.assertEqual(listing(media), before)
        self.assertEqual(list((ended.places.home / "Desktop").iterdir()), [])
        self.assertEqual({path.name for path in ended.places.volume.iterdir()}, {"Library"})


class Refusal(FlowCase):

    def refuse(self, answer):
        ended = self.run_flow("media", small_media.write_media(self.folder / "media"), authorize=answer)
        self.assertEqual((ended.status, ended.summary["valid"], ended.summary["continued"]), (1, "NO", False))
        self.assertEqual(ended.summary["packages"], [])
        self.assert_installed(ended, [])
        self.assertEqual(self.texts("notification"), [])
        # The page can still be cancelled: button 3 is taken away only after a grant.
        self.assertNotIn("setIsButton3Hidden: YES", self.texts("observer"))

    def test_a_cancelled_prompt_installs_nothing(self):
        self.refuse("cancel")

    def test_a_denied_prompt_installs_nothing(self):
        self.refuse("deny")


class Language(FlowCase):
    """One test a language: the host's words, the plug-in's words, and their order."""

    NAME_FIRST = ("de", "ko")

    def check(self, code, folder):
        media = small_media.write_media(self.folder / "media")
        ended = self.run_flow("media", media, language=code)
        self.assert_continued(ended)
        self.assertEqual(ended.summary["status"], host_string(folder, "FINISH.TITLE"))
        word, name = plug_in_string(folder, "Installing"), plug_in_string(folder, "PrinterComponent")
        expected = f"{name} {word}..." if folder in self.NAME_FIRST else f"{word} {name}..."
        self.assertIn(expected, self.texts("status"))
        title = host_string(folder, "TONER.TITLE").replace("__MFG__", "Quorvel")
        self.assertEqual(self.texts("slide"), [title])


add_case_for_each_language(Language, lambda case, language: case.check(language.code, language.folder))


class Slides(FlowCase):

    def test_come_from_the_media_in_the_hosts_language(self):
        media = small_media.write_media(self.folder / "media")
        folder = media / "GTA" / "FN"
        folder.mkdir(parents=True)
        (folder / "string.xml").write_text("<TITLE>Offre du mois</TITLE><MESSAGE>Demandez-la</MESSAGE>")
        self.run_flow("media", media, language="FN", authorize="cancel")
        self.assertEqual(self.texts("slide"), ["Offre du mois"])
        shutil.rmtree(media / "GTA")


def listing(folder):
    return sorted(str(path) for path in pathlib.Path(folder).rglob("*"))

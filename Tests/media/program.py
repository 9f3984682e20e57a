"""The program's own manners: help, usage, forms of output."""
import json
import os
import re
import unittest

from media_case import BUILD, SOURCE, MediaCase, languages, small_media


class Program(MediaCase):

    def test_help_names_every_option_and_exits_with_zero(self):
        answer = self.vantmedia("--help")
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        for option in ("--settings", "--selection", "--web", "--site", "--language", "--json", "--strict", "--offline",
                       "--keep", "--wait", "--largest"):
            self.assertIn(option, answer.stdout)

    def test_usage_errors_exit_with_two(self):
        for words in ([], ["look"], ["plan"], ["plan", "a", "b"], ["plan", "--colour", "a"], ["plan", "a", "--web"],
                      ["plan", "a", "--language", "FR"], ["check"], ["plan", "--site", "http://a"], ["check", "--site", "a"],
                      ["check", "a", "b", "--site", "http://a"], ["check", "--site", "http://a", "--offline"],
                      ["check", "--site", "http://a", "--wait", "0"], ["check", "--site", "http://a", "--largest", "x"],
                      ["check", "a", "--keep", "b"], ["check", "--site", "http://a", "--web", "b", "--selection", "c"]):
            answer = self.vantmedia(*words)
            self.assertEqual((answer.returncode, answer.stdout), (2, ""), words)
            self.assertIn("vantmedia:", answer.stderr)

    def test_a_folder_that_is_not_there_is_an_error(self):
        for command in ("plan", "check"):
            answer = self.vantmedia(command, self.folder / "nowhere")
            self.assertEqual(answer.returncode, 1)
            self.assertIn("there is no such folder", answer.stdout)

    def test_the_document_names_its_version(self):
        document = json.loads(self.vantmedia("plan", self.media, "--json").stdout)
        self.assertEqual(document["version"], 1)
        self.assertEqual(f"vantmedia {document['program']}\n", self.vantmedia("--version").stdout)

    def test_plan_says_order_origin_and_status(self):
        document = json.loads(self.vantmedia("plan", self.media, "--json", "--language", "GR").stdout)
        packages = document["media"][0]["packages"]
        self.assertEqual([(each["name"], each["component"]) for each in packages], [row[:2] for row in small_media.MEDIA])
        self.assertEqual([each["origin"] for each in packages],
                         ["selection", "selection", "second scan driver", "selection", "selection", "uninstaller", "manual"])
        words = languages.strings(BUILD / "VantInstallation.bundle" / "Resources" / "de.lproj" / "Localizable-Inst.strings")
        self.assertEqual(packages[0]["status"], f"{words['PrinterComponent']} {words['Installing']}...")
        self.assertEqual([each["name"] for each in packages if each["profiles"]], ["Hueforge.pkg", "Scanwick.pkg"])

    def test_plan_needs_no_display_and_writes_nothing(self):
        before = sorted(str(path) for path in self.folder.rglob("*"))
        environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
        self.assertEqual(self.vantmedia("plan", self.media, env=environment).returncode, 0)
        self.assertEqual(sorted(str(path) for path in self.folder.rglob("*")), before)

    def test_slides_fall_back_item_by_item(self):
        main, fall_back = self.media / "GTA" / "FN", self.media / "GTA_Default" / "FN"
        for folder in (main, fall_back):
            folder.mkdir(parents=True)
        (main / "image.png").touch()
        (fall_back / "string.xml").write_text("<TITLE>Offre</TITLE>")
        slides = json.loads(self.vantmedia("plan", self.media, "--json").stdout)["media"][0]["slides"]
        french = next(slide for slide in slides if slide["language"] == "FN")
        self.assertEqual([french[item] for item in ("image", "title", "titleText")], ["GTA", "GTA_Default", "Offre"])
        self.assertEqual(slides[0]["title"], "built in")

    def test_several_media_are_checked_in_one_call(self):
        (self.folder / "empty").mkdir()
        answer = self.vantmedia("check", self.media, self.folder / "empty", "--json")
        self.assertEqual(answer.returncode, 1)
        self.assertEqual(len(json.loads(answer.stdout)["media"]), 2)

    def test_colour_is_for_terminals_alone(self):
        (self.media / "SelectedInput.plist").unlink()
        self.assertNotIn("\x1b", self.vantmedia("check", self.media).stdout)

    def test_every_code_stands_in_the_guide(self):
        guide = "".join((SOURCE / "Documentation" / page).read_text() for page in ("media.md", "site.md"))
        sources = [*(SOURCE / "Installer" / "Media" / "check").glob("*.cpp"), SOURCE / "Installer" / "Media" / "Look.cpp"]
        codes = {code for path in sources for code in re.findall(r'"([a-z]+(?:-[a-z]+)+)"', path.read_text())}
        self.assertGreater(len(codes), 60)
        self.assertEqual({code for code in codes if f"`{code}`" not in guide}, set())

    def test_every_option_stands_in_the_manual_page(self):
        page = (SOURCE / "Documentation" / "vantmedia.1").read_text().replace("\\-", "-")
        options = re.findall(r"^  (--[a-z]+)", self.vantmedia("--help").stdout, re.MULTILINE)
        self.assertGreater(len(options), 8)
        self.assertEqual([option for option in options if option not in page], [])


if __name__ == "__main__":
    unittest.main()

"""A release as cmake --install leaves it."""
import gzip
import json

from release_case import BUILD, VERSION, ReleaseCase, output


class Installed(ReleaseCase):

    def test_a_host_runs_from_it_alone(self):
        prefix = self.install()
        app = self.stage_host(prefix / "share" / "vant-installation" / "SampleHost.app", self.write_media())
        self.run_host(app, prefix)
        self.assert_media_installed()

    def test_its_programs_need_nothing_of_the_build(self):
        self.assert_stands_alone(self.install())

    def test_has_one_version(self):
        prefix = self.install()
        self.assertEqual(output(prefix / "bin" / "vantmedia", "--version"), f"vantmedia {VERSION}\n")
        bundle = prefix / "lib" / "vant-installation" / "VantInstallation.bundle"
        self.assertIn(f'"{VERSION}"', (bundle / "Resources" / "Info-gnustep.plist").read_text())
        manual = gzip.decompress((prefix / "share" / "man" / "man1" / "vantmedia.1.gz").read_bytes()).decode()
        self.assertIn(f'"VantInstallation {VERSION}"', manual.splitlines()[0])
        changes = (prefix / "share" / "doc" / "vant-installation" / "CHANGELOG.md").read_text()
        self.assertRegex(changes, rf"(?m)^## {VERSION} \(\d{{4}}-\d\d-\d\d\)$")

    def test_its_vantmedia_finds_what_it_looks_for(self):
        media = self.write_media()
        prefix = self.install()
        plans = [json.loads(output(program, "plan", media, "--json", "--language", "GR", env={}))
                 for program in (prefix / "bin" / "vantmedia", BUILD / "vantmedia")]
        self.assertEqual(plans[0], plans[1])
        self.assertEqual(plans[0]["media"][0]["packages"][0]["status"], "Druckertreiber: Installation...")

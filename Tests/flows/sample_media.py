"""The sample media, installed by the real host: what ./run media shows."""
import json
import pathlib

import flow_case
from flow_case import BUILD, FlowCase

MEDIA = BUILD / "samples" / "media"
PROFILES = pathlib.Path("Library/Preferences/Kelscan/Quorvel Universal Scan Driver/Profiles")


class SampleMedia(FlowCase):

    def test_installs_every_file_of_every_package(self):
        manifest = json.loads((MEDIA / "manifest.json").read_text())
        ended = self.run_flow("media", MEDIA, pictures=flow_case.flow.PICTURES)
        self.assert_continued(ended)
        outcomes = {package["name"]: package["outcome"] for package in ended.summary["packages"]}
        self.assertEqual(outcomes, {package["name"]: "PIPE END" for package in manifest["packages"]})
        self.assertEqual(ended.summary["installedFiles"], manifest["files"])
        for picture in ("1-start", "2-working", "3-end"):
            self.assertGreater((ended.places.out / f"{picture}.png").stat().st_size, 10_000, picture)

    def test_leaves_the_colour_profiles_in_the_users_library(self):
        ended = self.run_flow("media", MEDIA)
        installed = {path.name for path in (ended.places.home / PROFILES).iterdir()}
        loose = {path.name for path in (MEDIA / "MAC_Installer" / "InstallFiles" / "Profiles").rglob("*.ic[cm]")}
        self.assertLessEqual(loose, installed)
        # The rest came out of the archive.
        self.assertGreater(len(installed), len(loose))
        for name in installed:
            self.assertEqual((ended.places.home / PROFILES / name).read_bytes()[36:40], b"acsp", name)

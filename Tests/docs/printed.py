"""That what a page prints to be run, runs: its blocks one after another, in a release, with media beside it."""
import subprocess
import sys

import pages

sys.path.insert(0, str(pages.SOURCE / "Tests" / "release"))

from release_case import LONGEST, ReleaseCase  # noqa: E402


class Printed(ReleaseCase):

    def run_page(self, name):
        """The folder in which the page's blocks have been run."""
        prefix = self.install()
        self.write_media().rename(prefix / "media")
        environment = {name: value for name, value in self.environment(prefix).items() if not name.startswith("VANT_")}
        ended = subprocess.run(["bash", "-e"], input="".join(pages.read(name).scripts), env=environment, cwd=prefix,
                               check=False, capture_output=True, text=True, timeout=LONGEST)
        self.assertEqual(ended.returncode, 0, ended.stdout + ended.stderr)
        return prefix

    def test_blocks_make_a_host_that_installs(self):
        prefix = self.run_page("Documentation/host.md")
        self.folder.joinpath("volume").rmdir()
        (prefix / "volume").rename(self.folder / "volume")
        self.assert_media_installed()

    def test_blocks_of_no_page_are_left_out(self):
        self.assertEqual([name for name in pages.FILES if pages.read(name).scripts], ["Documentation/host.md"])

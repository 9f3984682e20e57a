"""What the window looks like over the length of a run, told from pictures of it."""
import subprocess
import sys

import small_media
from flow_case import SOURCE, FlowCase, stand_in

sys.path.insert(0, str(SOURCE / "Tests" / "pictures"))

import comparison  # noqa: E402

# The platform reads its defaults again after 30 s; the first package takes longer than that.
RUN = 45
SLOW_INSTALLER = f"""case "$*" in
*"Printer Driver.pkg"*)
    echo 'installer:%40.000000'
    sleep {RUN} ;;
esac
real "$@"
"""
# The window's title, the page's title and the wizard's buttons: what no flow and no slide changes meanwhile.
STILL = {"the head": ("North", 82), "the foot": ("South", 62)}


def seconds_after(seconds):
    return lambda moments, event: moments.settled(event, seconds)


class Appearance(FlowCase):

    def strip(self, picture, side, height):
        cut = self.folder / f"{picture}-{side}.png"
        subprocess.run(["convert", str(self.folder / "out" / f"{picture}.png"), "-gravity", side, "-crop",
                        f"x{height}+0+0", "+repage", str(cut)], check=True, stdin=subprocess.DEVNULL)
        return cut

    def test_stays_the_same_in_a_long_run(self):
        media = small_media.write_media(self.folder / "media")
        ended = self.run_flow("media", media, prepared=stand_in(SLOW_INSTALLER), pictures={
            "start": seconds_after(6), "middle": seconds_after(RUN / 2), "end": seconds_after(RUN)})
        self.assert_continued(ended)
        self.assertGreater(ended.summary["seconds"], RUN)
        for later in ("middle", "end"):
            for what, strip in STILL.items():
                with self.subTest(f"{what} in the {later}"):
                    seen = comparison.compare(self.strip(later, *strip), self.strip("start", *strip),
                                              self.folder / "difference.png")
                    self.assertEqual(seen.why, "")

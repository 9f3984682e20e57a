"""What the reference host does by itself: what it says, asks and keeps away from."""
import time

import small_media
from flow_case import FlowCase, camera, host_string, stand_in
from small_media import MEDIA, inside, package_files

SLOWLY = 'sleep 0.5; real "$@"'


def notice(key, code=0):
    return host_string("en", key, "Notices").replace("__CODE__", str(code))


def press_close_button():
    """The window manager's button, at the right of the window's title."""
    size, x, y = camera.frame(camera.wizard_window()).replace("+", " ").split()
    right = int(x) + int(size.partition("x")[0])
    camera.output("xdotool", "mousemove", str(right - 13), str(int(y) + 13), "click", "1")


class Host(FlowCase):

    def setUp(self):
        super().setUp()
        self.media = small_media.write_media(self.folder / "media")

    def test_says_that_rights_were_refused(self):
        self.run_flow("media", self.media, authorize="deny")
        self.assertEqual(self.texts("notice"), [notice("Refused")])

    def test_says_that_no_installer_could_be_started(self):
        self.run_flow("media", self.media, prepared=without_installer)
        self.assertEqual(self.texts("notice"), [notice("NotLaunched", -60031)])

    def test_says_what_to_do_with_what_was_set_aside(self):
        site = small_media.write_site(self.folder / "site", {
            "Extra.zip": inside("Extra/Unknown Tool.pkg", package_files("Unknown Tool", 4))})
        self.run_flow("web", self.media, site_folder=site)
        self.assertEqual(self.texts("notice"), [notice("SetAside")])

    def test_says_nothing_of_a_good_run(self):
        self.assert_continued(self.run_flow("media", self.media))
        self.assertEqual(self.texts("notice"), [])

    def test_says_that_nothing_happens_and_takes_it_back(self):
        script = "case $* in *Hueforge.pkg*) sleep 4;; esac; real \"$@\""
        ended = self.run_flow("media", self.media, prepared=stand_in(script), still_after=3.2)
        self.assert_continued(ended)
        # Also before the first package the pane is still for three seconds, so once or twice.
        said = self.texts("notice")
        self.assertEqual(said, [notice("Still"), ""] * (len(said) // 2))
        self.assertGreater(len(said), 0)

    def test_counts_the_packages_in_its_title(self):
        titles = set()

        def note_title(_moments, event):
            if event and event.kind == "bar":
                titles.add(camera.output("xdotool", "getwindowname", camera.wizard_window() or "0").strip())
            return False

        self.run_flow("media", self.media, prepared=stand_in(SLOWLY), pictures={"none": note_title})
        own = host_string("en", "WindowTitle")
        counted = {title for title in titles if title != own}
        possible = {f"{own} – {number} of {len(MEDIA)}" for number in range(1, len(MEDIA) + 1)}
        self.assertLessEqual(counted, possible)
        self.assertGreater(len(counted), 3, titles)

    def test_works_in_an_empty_folder_of_its_own(self):
        ended = self.run_flow("media", self.media, prepared=stand_in(
            'pwd >"$TMPDIR/where"; ls -A >"$TMPDIR/what"; stat -c %a . >"$TMPDIR/mode"; real "$@"'))
        self.assert_continued(ended)
        where = (ended.places.temporary / "where").read_text().strip()
        self.assertRegex(where, f"^{ended.places.temporary}/VantHost-\\w+$")
        self.assertEqual((ended.places.temporary / "what").read_text(), "")
        self.assertEqual((ended.places.temporary / "mode").read_text(), "700\n")
        self.assertEqual(list(ended.places.temporary.glob("VantHost-*")), [])

    def test_asks_before_it_closes_and_keeps_on_by_default(self):
        """Return takes the safe answer: the run goes on to its end."""
        self.run_closed("Return", self.assert_continued)

    def test_keeps_on_after_escape(self):
        self.run_closed("Escape", self.assert_continued)

    def test_stops_when_the_question_is_answered_so(self):
        def check(ended):
            self.assertEqual((ended.status, ended.reason), (1, "the user ended the installation"))

        self.run_closed("Tab space", check)

    def run_closed(self, keys, check):
        asked = []

        def close_window(moments, event):
            if moments.settled(event) and not asked:
                press_close_button()
                asked.append(wait_until(lambda: camera.Camera.is_ready(prompt=True)))
                camera.output("xdotool", "key", "--delay", "100", *keys.split())
                wait_until(lambda: len(camera.windows()) == 1)
            return False

        ended = self.run_flow("media", self.media, prepared=stand_in(SLOWLY), pictures={"none": close_window})
        self.assertEqual(asked, [True], "the question was not shown with the keyboard its own")
        check(ended)

    def test_stays_open_until_return_continues(self):
        ended = self.stay("Return")
        self.assert_continued(ended)

    def test_stays_open_after_a_refusal_until_escape_cancels(self):
        ended = self.stay("Escape", authorize="deny")
        self.assertEqual((ended.status, ended.summary["valid"]), (1, "NO"))

    def test_the_tab_key_walks_from_the_page_to_the_wizards_buttons(self):
        """The space bar presses each control on the way, until one ends the run."""
        ended = self.stay("Tab space", authorize="deny")
        self.assertEqual((ended.status, ended.summary["valid"]), (1, "NO"))

    def test_gets_no_smaller_than_its_page_and_what_it_says(self):
        """A long language, so that the notice takes more lines as the window gets narrower."""
        sizes = []

        def shrink(moments, _event):
            if moments.noticed(None) and not sizes:
                for size in [(1000, 800), (100, 100)]:
                    window = camera.wizard_window()
                    camera.output("xdotool", "windowsize", "--sync", window, *map(str, size))
                    sizes.append(camera.frame(window).partition("+")[0])
            return bool(sizes)

        self.stay("Escape", authorize="deny", language="GR", also={"narrow": shrink})
        (wide, _), (width, height) = (map(int, size.split("x")) for size in sizes)
        self.assertGreater(wide, 990)
        # The frame adds a few points; the page and the wizard's own parts need 480, a notice of three lines 70.
        self.assertTrue(640 <= width < 660 and 550 <= height < 620, sizes)

    def stay(self, key, also=None, **options):
        """A window that stays longer than it would by itself, and is then closed by a key."""
        ended_at = []

        def staying(moments, _event):
            if moments.ended and not ended_at:
                ended_at.append(time.monotonic())
            return bool(ended_at) and time.monotonic() - ended_at[0] >= 2

        ended = self.run_flow("media", self.media, stay=True, linger=30, pictures={"open": staying} | (also or {}),
                              press=key, **options)
        self.assertGreater((self.folder / "out" / "open.png").stat().st_size, 5_000)
        self.assertLess(time.monotonic() - ended_at[0], 25, "the key has not closed the window")
        return ended


def wait_until(condition):
    """Whether the condition comes true in time."""
    deadline = time.monotonic() + 5
    while time.monotonic() < deadline:
        if condition():
            return True
        time.sleep(0.05)
    return False


def without_installer(places):
    (places.system / "usr" / "sbin" / "installer").unlink()

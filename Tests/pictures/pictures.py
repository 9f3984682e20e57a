"""The window in every language, compared with the kept pictures beside this file."""
import os
import pathlib
import subprocess
import sys
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "flows"))

import comparison  # noqa: E402
import contrast  # noqa: E402
import small_media  # noqa: E402
from flow_case import BUILD, FlowCase, add_case_for_each_language  # noqa: E402
from flow import Moments  # noqa: E402

RENEW = "VANT_RENEW_PICTURES"  # in the environment: store what is seen instead of comparing it
# The spinners of the four rows turn.
SPINNERS = [(47, 331 + 20 * row, 59, 343 + 20 * row) for row in range(4)]
# On a busy machine a picture may come so late that the first package is on its way.
ATTEMPTS = 3


def waiting(moments, event):
    """Nothing moves yet: the first package starts three seconds after the pane was made."""
    return moments.settled(event)


class Language(FlowCase):
    """One test a language: the page as it is shown before the first package, window frame included."""

    def take(self, code):
        self.run_flow("media", self.media, language=code, pictures={"window": waiting})
        picture = self.folder / "out" / "window.png"
        comparison.cover(picture, SPINNERS)
        return picture

    def check(self, code):
        self.media = small_media.write_media(self.folder / "media")
        kept = HERE / f"{code}.png"
        if os.environ.get(RENEW):
            comparison.keep(self.take(code), kept)
            return
        differences = BUILD / "pictures"
        differences.mkdir(exist_ok=True)
        for _ in range(ATTEMPTS):
            seen = comparison.compare(self.take(code), kept, differences / f"{code}.png")
            if not seen.why:
                return
        self.fail(seen.why)


add_case_for_each_language(Language, lambda case, language: case.check(language.code))


class Contrast(unittest.TestCase):
    """Measured in the kept pictures, which are what is seen: 4.5 for a text, 3 for a mark that says something."""

    def check(self, least, areas):
        for what, (code, area) in areas.items():
            with self.subTest(what):
                self.assertGreaterEqual(contrast.contrast(HERE / f"{code}.png", area), least)

    def test_of_texts_is_enough_to_read_them(self):
        self.check(4.5, {"the page's title": ("EN", (309, 100, 600, 120)), "the page's text": ("GR", (309, 150, 680, 230)),
                         "the link": ("EN", (309, 294, 492, 312)), "a component": ("KR", (216, 348, 330, 366)),
                         "another component": ("GR", (216, 348, 330, 366))})

    def test_of_marks_is_enough_to_tell_them(self):
        self.check(3, {"the dot of the page shown": ("EN", (138, 294, 154, 310)),
                       "the dot of the other page": ("EN", (160, 294, 175, 310)),
                       "the next page": ("EN", (186, 288, 214, 316)), "an empty bar": ("EN", (300, 512, 400, 530)),
                       "a row's empty bar": ("EN", (100, 328, 150, 346)), "the table's border": ("EN", (15, 420, 30, 470)),
                       "a row's mark": ("EN", (24, 328, 42, 346)), "the focus": ("EN", (130, 296, 139, 308))})

    def test_is_that_of_the_colours(self):
        self.assertAlmostEqual(contrast.ratio(contrast.luminance("000000"), contrast.luminance("FFFFFF")), 21)
        self.assertAlmostEqual(contrast.ratio(contrast.luminance("767676"), contrast.luminance("FFFFFF")), 4.54, 2)


class Comparison(FlowCase):
    """What the comparison must see, and what it must not: changes made to kept pictures."""

    def seen(self, code, *changes):
        kept, changed = HERE / f"{code}.png", self.folder / "changed.png"
        subprocess.run(["convert", str(kept), *changes, str(changed)], check=True, stdin=subprocess.DEVNULL)
        return comparison.compare(changed, kept, self.folder / "difference.png")

    def test_takes_a_picture_for_itself(self):
        self.assertEqual(self.seen("EN"), comparison.Comparison(0, ""))
        self.assertFalse((self.folder / "difference.png").exists())

    def test_bears_colours_that_are_a_little_off(self):
        self.assertEqual(self.seen("EN", "-modulate", "98").why, "")

    def test_sees_that_a_text_is_missing(self):
        for text, code, area in [("the page's title", "EN", "21,44 186,66"), ("a component", "EN", "214,348 284,366"),
                                 ("the link", "GR", "310,294 492,312"), ("a button's title", "EN", "472,575 532,594"),
                                 ("a short button's title", "KR", "490,575 520,596"),
                                 ("the window's title", "CT", "290,5 410,24")]:
            with self.subTest(text):
                seen = self.seen(code, "-fill", "white", "-draw", f"rectangle {area}")
                self.assertIn(f"see {self.folder / 'difference.png'}", seen.why)

    def test_sees_that_a_control_is_displaced(self):
        for control, (width, height, x, y) in {"a switch": (14, 14, 26, 330), "a bar": (144, 10, 65, 352),
                                               "Next": (28, 28, 185, 288), "an indicator": (12, 12, 139, 296),
                                               "Continue": (114, 30, 568, 569)}.items():
            with self.subTest(control):
                seen = self.seen("EN", "(", "+clone", "-crop", f"{width}x{height}+{x}+{y}", "+repage", "-write",
                                 "mpr:control", "+delete", ")", "-fill", "white",
                                 "-draw", f"rectangle {x},{y} {x + width - 1},{y + height - 1}",
                                 "mpr:control", "-geometry", f"+{x + 4}+{y + 3}", "-composite")
                self.assertIn(f"see {self.folder / 'difference.png'}", seen.why)

    def test_sees_another_size(self):
        self.assertIn("the kept picture", self.seen("EN", "-crop", "701x615+0+0").why)

    def test_shows_the_kept_picture_the_taken_one_and_the_difference_in_red(self):
        self.seen("EN", "-fill", "white", "-draw", "rectangle 21,44 186,66")
        width, height = map(int, comparison.size(HERE / "EN.png").split("x"))
        self.assertEqual(comparison.size(self.folder / "difference.png"), f"{3 * (width + 4)}x{height + 4}")
        marked = subprocess.run(["convert", str(self.folder / "difference.png"), "-crop",
                                 f"186x40+{2 * (width + 4)}+36", "-fill", "black", "+opaque", "#e00000", "-format",
                                 "%[fx:mean.r>0]", "info:"], check=True, capture_output=True, text=True)
        self.assertEqual(marked.stdout, "1")

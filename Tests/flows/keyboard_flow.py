"""Both flows from the prompt to the last page by somebody who has no pointer."""
import os
import time
import unittest.mock

import small_media
from flow_case import FlowCase, camera, host_string, plug_in_string
from small_media import inside, package_files

PROMPT = "Administrator Rights"
FIRST, SECOND = host_string("en", "TONER.TITLE"), host_string("en", "MOBILE_PRINT.TITLE")


def title_of_active_window():
    return camera.output("xdotool", "getactivewindow", "getwindowname").strip()


class Walk:
    """Presses the keys of each step once what the step waits for has come. Takes the place of a picture's moment."""

    def __init__(self, opened):
        self.slides = []
        self.steps = [
            (lambda moments: title_of_active_window() == PROMPT, "Return"),
            # The page indicator has the keyboard first, then the button of the next page.
            (lambda moments: moments.settled(None) and title_of_active_window() != PROMPT, "Tab space"),
            # The button is disabled now, and the keyboard has moved on to the one of the page before.
            (lambda moments: self.slides[-1:] == [SECOND], "space"),
            # From the button of the next page, enabled again, to the link.
            (lambda moments: self.slides[-1:] == [FIRST] and moments.ended, "Tab space"),
            (lambda moments: opened.exists(), "Return"),
        ]

    def __call__(self, moments, event):
        if event and event.kind == "slide":
            self.slides.append(event.text.replace("Quorvel", "__MFG__"))
        if self.steps and self.steps[0][0](moments):
            camera.Camera.press(self.steps.pop(0)[1])
            self.pressed_at = time.monotonic()
        return False


class Keyboard(FlowCase):

    def setUp(self):
        super().setUp()
        self.media = small_media.write_media(self.folder / "media")

    def test_walks_the_media_flow(self):
        self.walk("media")

    def test_walks_the_web_flow(self):
        site = small_media.write_site(self.folder / "site", {
            "Driver.zip": inside("Driver/Printer Driver.pkg", package_files("Printer Driver", 7))})
        self.walk("web", site_folder=site)

    def walk(self, kind, **options):
        opened = self.folder / "opened"
        walk = Walk(opened)
        with unittest.mock.patch.dict(os.environ, {"PATH": f"{self.write_opener(opened)}:{os.environ['PATH']}"}):
            ended = self.run_flow(kind, self.media, authorize="ask", stay=True, linger=30, pictures={"none": walk},
                                  **options)
        self.assert_continued(ended)
        self.assertEqual(walk.steps, [], "not every key was waited for")
        self.assertEqual(opened.read_text(), plug_in_string("en", "SupportAddress") + "\n")
        self.assertEqual([slide for slide in walk.slides if slide], [FIRST, SECOND, FIRST])
        self.assertLess(time.monotonic() - walk.pressed_at, 25, "the last key has not closed the window")

    def write_opener(self, opened):
        """A folder with a desktop's opener that notes what it is to open."""
        programs = self.folder / "bin"
        programs.mkdir()
        opener = programs / "xdg-open"
        opener.write_text(f"#!/bin/sh\necho \"$@\" >'{opened}.new'\nmv '{opened}.new' '{opened}'\n")
        opener.chmod(0o755)
        return programs

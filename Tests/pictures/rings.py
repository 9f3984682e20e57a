"""Where the keys go can be seen on every control that takes them: the host's windows, walked through with the Tab key."""
import pathlib
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "flows"))

import focus  # noqa: E402
import small_media  # noqa: E402
from flow_case import FlowCase, camera  # noqa: E402
from shown import Shown  # noqa: E402

# Where each control lies in a picture of the window: left, top, right, bottom.
OK, PROMPT_CANCEL = (440, 360, 550, 410), (330, 360, 440, 410)
BACK, DOTS, NEXT, LINK = (92, 280, 132, 322), (132, 285, 180, 320), (180, 280, 220, 322), (300, 285, 500, 320)
CLOSE, CANCEL, CONTINUE = (550, 490, 700, 550), (0, 560, 240, 612), (560, 560, 700, 612)
RING = 60  # pixels of a ring: the smallest, around a dot, has more
LONGEST = 10  # seconds that a ring is waited for


def prompted(_shown):
    return len(camera.windows()) == 2


def first_page(shown):
    return shown.ended and shown.slides % 2 == 1


def second_page(shown):
    return shown.ended and shown.slides % 2 == 0


# When a step is due, the keys, and the control that they lead to; none for keys that only prepare the next step.
PROMPT = [(prompted, "Tab", PROMPT_CANCEL), (prompted, "Tab", OK), (prompted, "Return", None)]
# A page that the user has turned turns no more by itself.
TURNED = [(first_page, "Tab space", None)]
COMPLETE = [(second_page, "Tab", DOTS), (second_page, "Tab", LINK), (second_page, "Tab", CONTINUE),
            (second_page, "Tab", BACK), (second_page, "space", None),
            (first_page, "Tab", LINK), (first_page, "shift+Tab", NEXT)]
REFUSED = [(second_page, "Tab", DOTS), (second_page, "Tab", LINK), (second_page, "Tab", CLOSE), (second_page, "Tab", CANCEL)]


class Walk:
    """Presses the keys of each step in its turn, and looks whether a ring comes to the step's control: whether something
    stands out there from what was to be seen before. Takes the place of a photographer."""

    def __init__(self, steps, host_camera, order):
        self.steps = steps
        self.camera = host_camera
        self.order = order
        self.shown = Shown()
        self.busy = True
        self.unseen = []
        self.before, self.after = (self.camera.folder.path / f"{name}.png" for name in ("before", "after"))
        self.walk = self.walked()

    def look(self, events):
        for event in events:
            self.shown.take(event)
        self.busy = self.busy and next(self.walk, "over") != "over"

    def missed(self, why):
        return AssertionError(why)

    def walked(self):
        for due, keys, control in self.steps:
            while not due(self.shown):
                yield
            if control and not self.before.exists():
                yield from self.picture("before")
            self.camera.press(keys)
            if control:
                yield from self.until_ringed(control)
            else:
                self.before.unlink(missing_ok=True)

    def until_ringed(self, control):
        deadline = time.monotonic() + LONGEST
        ringed = False
        while not ringed and time.monotonic() < deadline:
            yield from self.picture("after")
            ringed = focus.marked_pixels(self.after, self.before, control) >= RING
        if not ringed:
            self.unseen.append(control)
        self.after.replace(self.before)

    def picture(self, name):
        drawn = self.shown.drawn
        self.order("draw")
        while self.shown.drawn == drawn:
            yield
        self.camera.shoot(name)


class Rings(FlowCase):

    def walk(self, steps, **options):
        walks = []

        def start(host_camera, order):
            walks.append(Walk(steps, host_camera, order))
            return walks[0]

        ended = self.run_flow("media", small_media.write_media(self.folder / "media"), linger=120, photographer=start,
                              **options)
        self.assertEqual((walks[0].busy, walks[0].unseen), (False, []))
        return ended

    def test_are_seen_in_the_prompt_and_on_a_page_that_is_complete(self):
        self.assert_continued(self.walk(PROMPT + TURNED + COMPLETE, authorize="ask"))

    def test_are_seen_on_a_page_that_was_refused(self):
        self.assertEqual(self.walk(TURNED + REFUSED, authorize="deny").status, 1)

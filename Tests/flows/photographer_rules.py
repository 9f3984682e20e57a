"""When the gallery's pictures are taken: while the window shows what they are of."""
import subprocess
import types
import unittest
import urllib.request

from flow_case import FlowCase, follow, holds, photographer, run_folder
from photographer import Photographer, State, StateMissed
from shown import Shown


def event(kind, text):
    return follow.Event(0, "main", kind, text)


SHOWN = event("host", "pane shown, valid YES")
DRAWN = event("host", "drawn")
END = event("host", "end: the pane told the host to go on")


def half_installed(shown):
    return shown.bars.get("install", 0) >= 50 and not shown.ended


def bar(value):
    return [event("bar", "install is shown"), event("bar", f"install {value:.2f}")]


class Stage:
    """Stands in for the camera, the host's ear and a hold; notes what happens in its order."""

    def __init__(self, *states):
        self.noted = []
        self.ready = True
        self.now = 0
        self.photographer = Photographer(states, [self], self, self.noted.append, lambda: self.now)

    def is_ready(self, prompt):
        return self.ready is True or (self.ready == "prompt") == prompt

    def shoot(self, name):
        self.noted.append(f"picture of {name}")

    def release(self):
        self.noted.append("released")

    def look(self, *events):
        """What a look at the run, which has these events to tell, leads to."""
        before = len(self.noted)
        self.photographer.look(events)
        return self.noted[before:]


class Photographing(unittest.TestCase):

    def test_waits_for_a_state_that_comes_late(self):
        stage = Stage(State("half", half_installed))
        self.assertEqual(stage.look(SHOWN, *bar(49)), [])
        for value in (10, 20, 49):
            stage.now += photographer.PATIENCE - 1
            self.assertEqual(stage.look(*bar(value)), [])
        stage.now += photographer.PATIENCE - 1
        self.assertEqual(stage.look(), [])
        self.assertEqual(stage.look(*bar(50)), ["draw"])

    def test_takes_a_picture_only_of_what_has_been_drawn(self):
        stage = Stage(State("half", half_installed))
        self.assertEqual(stage.look(*bar(50)), ["draw"])
        self.assertEqual([stage.look(), stage.look()], [[], []])
        self.assertEqual(stage.look(DRAWN), ["picture of half"])

    def test_waits_for_the_keyboard_and_the_window_manager(self):
        stage = Stage(State("half", half_installed, prompt=True))
        stage.ready = "window"
        self.assertEqual(stage.look(*bar(50)), [])
        stage.ready = "prompt"
        self.assertEqual(stage.look(), ["draw"])
        stage.ready = "window"
        self.assertEqual(stage.look(DRAWN), [])
        stage.ready = "prompt"
        self.assertEqual(stage.look(), ["draw"])

    def test_lets_the_run_go_on_once_the_picture_is_right(self):
        stage = Stage(State("half", half_installed, then=Photographer.release), State("end", lambda shown: shown.ended))
        stage.look(*bar(50))
        stage.look(DRAWN)
        self.assertTrue(stage.photographer.busy)
        self.assertEqual(stage.look(), ["released"])
        self.assertEqual(stage.look(END), ["draw"])
        stage.look(DRAWN)
        stage.look()
        self.assertFalse(stage.photographer.busy)

    def test_takes_the_picture_again_when_the_state_has_not_held(self):
        stage = Stage(State("half", half_installed, then=Photographer.release))
        stage.look(*bar(50))
        stage.look(DRAWN)
        self.assertEqual(stage.look(*bar(10)), [])
        self.assertEqual(stage.look(*bar(60)), ["draw"])
        self.assertEqual(stage.look(DRAWN), ["picture of half"])
        self.assertEqual(stage.look(), ["released"])

    def test_says_that_a_state_has_passed(self):
        stage = Stage(State("half", half_installed), State("end", lambda shown: shown.ended))
        with self.assertRaisesRegex(StateMissed, 'no picture of "half": it has passed'):
            stage.look(*bar(50), END)
        self.assertEqual(stage.noted, [])

    def test_says_that_a_state_has_not_come(self):
        for events in ([], bar(50)):
            stage = Stage(State("half", half_installed))
            stage.look(*events)
            stage.now += photographer.PATIENCE + 1
            with self.assertRaisesRegex(StateMissed, 'no picture of "half": nothing has happened for 60 s'):
                stage.look(event("slide", "Another"))
        self.assertTrue(issubclass(StateMissed, run_folder.RunError))


class WindowShown(unittest.TestCase):

    def test_is_the_last_word_on_everything(self):
        shown = Shown()
        for kind, text in [("bar", "install is hidden"), ("bar", "install 1.00"), ("slide", "One"), ("slide", "Two"),
                           ("rows", "7 listed, 4 in sight, 1 turning"), ("notice", "Stuck"), ("status", "Connecting")]:
            shown.take(event(kind, text))
        self.assertEqual((shown.bars, shown.slides, shown.listed, shown.in_sight, shown.turning, shown.notice),
                         ({}, 2, 7, 4, 1, "Stuck"))
        self.assertEqual((shown.page, shown.ended, shown.drawn), (False, False, 0))
        for each in [event("bar", "install is shown"), event("notice", ""), SHOWN, DRAWN, DRAWN, END]:
            shown.take(each)
        self.assertEqual((shown.bars, shown.notice, shown.page, shown.ended, shown.drawn),
                         ({"install": 1.0}, "", True, True, 2))


class Holds(FlowCase):

    def test_have_one_package_wait_at_its_percentage(self):
        """The installer's words come through up to there, the rest later, and its exit status in the end."""
        tool = self.folder / "system" / "usr" / "sbin" / "installer"
        tool.parent.mkdir(parents=True)
        real = self.folder / "real installer"
        real.write_text("#!/bin/sh\nprintf 'installer:%%%s.000000\\n' 8 49 50 51\nexit 3\n")
        real.chmod(0o755)
        tool.symlink_to(real)
        hold = holds.InstallerHold("Fax 2.pkg", 50)
        hold.put_in(types.SimpleNamespace(system=self.folder / "system"))
        other = subprocess.run([tool, "-pkg", "/media/Fax.pkg"], check=False, capture_output=True, text=True, timeout=20)
        self.assertEqual((other.returncode, len(other.stdout.splitlines())), (3, 4))
        held = subprocess.Popen([tool, "-pkg", "/media/Fax 2.pkg"], stdout=subprocess.PIPE, text=True)
        self.assertEqual([held.stdout.readline() for _ in range(3)][-1], "installer:%50.000000\n")
        with self.assertRaises(subprocess.TimeoutExpired):
            held.wait(timeout=0.2)
        hold.release()
        self.assertEqual((held.communicate(timeout=20)[0], held.returncode), ("installer:%51.000000\n", 3))

    def test_keep_back_what_lies_behind_a_files_first_bytes(self):
        (self.folder / "long").write_bytes(b"0123456789")
        (self.folder / "short").write_bytes(b"0123")
        with holds.SiteHold(self.folder, 4).served() as site:
            with urllib.request.urlopen(f"{site.address}/short", timeout=20) as answer:
                self.assertEqual(answer.read(), b"0123")
            with urllib.request.urlopen(f"{site.address}/long", timeout=0.2) as answer:
                self.assertEqual(answer.read(4), b"0123")
                with self.assertRaises(TimeoutError):
                    answer.read(1)
            with urllib.request.urlopen(f"{site.address}/long", timeout=20) as answer:
                site.release()
                self.assertEqual(answer.read(), b"0123456789")

"""Documentation/flows.md against real runs: every row of its tables happens, on its thread and in its place."""
import re

import small_media
from flow_case import SOURCE, FlowCase, host_string
from web_flow import archives

PAGE = SOURCE / "Documentation" / "flows.md"
# Texts and notifications of the packages differ from run to run; the page names what they begin with.
KINDS = ("notification", "observer")


class Row:
    """One row of a table that leaves a trace in the timeline."""

    def __init__(self, step, event, thread):
        self.repeats = step.startswith("↻")
        self.kind, self.text = event.split(" ", 1)
        self.text = self.text.replace("FINISH.TITLE", host_string("en", "FINISH.TITLE"))
        self.on_main = thread == "main"

    def matches(self, event):
        named = event.text == self.text or event.text.startswith(self.text + " ")
        return event.kind == self.kind and named and (event.thread == "main") == self.on_main

    def __repr__(self):
        return f"{self.kind} {self.text} ({'main' if self.on_main else 'installer'})"


def rows_of(section):
    """The rows of a section's table whose second column is not empty."""
    text = PAGE.read_text(encoding="utf-8").split(f"\n## {section}\n", 1)[1].split("\n## ", 1)[0]
    rows = []
    for line in text.splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")] if line.startswith("|") else []
        if len(cells) == 6 and re.fullmatch("`[^`]+`", cells[1]):
            rows.append(Row(cells[0], cells[1].strip("`"), cells[3]))
    return rows


def steps_of(rows):
    """Rows that repeat beside each other belong to one step and may come in any order."""
    steps = []
    for row in rows:
        if row.repeats and steps and steps[-1][0].repeats:
            steps[-1].append(row)
        else:
            steps.append([row])
    return steps


def difference(steps, events):
    """What first departs from the page, None when nothing does."""
    place, seen = 0, set()
    for event in events:
        current = next((row for row in steps[place] if row.matches(event)), None) if place < len(steps) else None
        if current is None and place < len(steps) and seen == set(map(id, steps[place])):
            place, seen = place + 1, set()
            current = next((row for row in steps[place] if row.matches(event)), None) if place < len(steps) else None
        if current is None:
            return f"at {event}: the page has {steps[place] if place < len(steps) else 'nothing more'}"
        seen.add(id(current))
        if not current.repeats:
            place, seen = place + 1, set()
    return None if place == len(steps) else f"at the end: the page has {steps[place]}"


class FlowsPage(FlowCase):

    def setUp(self):
        super().setUp()
        self.media = small_media.write_media(self.folder / "media")

    def assert_follows(self, section):
        rows = rows_of(section)
        self.assertGreater(len(rows), 10)
        shown = {row.text for row in rows if row.kind in ("status", "host")}
        events = [event for event in self.events if event.kind in KINDS or event.text in shown]
        self.assertIsNone(difference(steps_of(rows), events))

    def test_media_flow(self):
        self.run_flow("media", self.media)
        self.assert_follows("The media flow")

    def test_web_flow(self):
        self.run_flow("web", self.media, site_folder=small_media.write_site(self.folder / "site", archives()))
        self.assert_follows("The web flow")

    def test_without_the_network(self):
        site = small_media.write_site(self.folder / "site", archives())
        self.run_flow("web", self.media, site_folder=site, offline=True)
        self.assert_follows("Without the network")


class PageReader(FlowCase):
    """The comparison itself: it sees what is missing, misplaced, on another thread, or too much."""

    def test_sees_every_departure(self):
        class Event:
            def __init__(self, kind, text, thread="main"):
                self.kind, self.text, self.thread = kind, text, thread

        rows = [Row("a", "observer one", "main"), Row("↻ b", "notification two", "installer"),
                Row("↻", "observer one", "main"), Row("c", "observer three", "main")]
        one, two = Event("observer", "one"), Event("notification", "two Fax.pkg", "thread-2")
        three = Event("observer", "three")
        steps = steps_of(rows)
        self.assertIsNone(difference(steps, [one, two, one, two, one, three]))
        for wrong in ([one, two, one], [one, three], [two, one, three], [one, two, three], [one, two, one, three, one],
                      [one, Event("notification", "two", "main"), one, three], [one, two, one, Event("observer", "4")]):
            self.assertIsNotNone(difference(steps, wrong))

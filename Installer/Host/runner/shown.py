"""What the host's window shows, as its timeline tells it."""
import re

ROWS = re.compile(r"(?P<listed>\d+) listed, (?P<in_sight>\d+) in sight, (?P<turning>\d+) turning")


class Shown:
    """The last word on everything that the timeline tells; takes its events in their order."""

    def __init__(self):
        self.page = False        # the pane is in its window
        self.slides = 0          # information pages so far
        self.bars = {}           # name → percentage, of the bars that are shown
        self.listed = 0          # rows of the table
        self.in_sight = 0        # of which so many are drawn
        self.turning = 0         # with so many spinners
        self.notice = ""
        self.ended = False
        self.drawn = 0           # times that the host has drawn everything because it was asked to
        self._values = {}

    def take(self, event):
        note = {"slide": self._take_slide, "bar": self._take_bar, "rows": self._take_rows, "host": self._take_word,
                "notice": self._take_notice}.get(event.kind)
        if note:
            note(event.text)

    def _take_slide(self, _title):
        self.slides += 1

    def _take_notice(self, text):
        self.notice = text

    def _take_bar(self, text):
        name, _, word = text.partition(" ")
        if word == "is hidden":
            self.bars.pop(name, None)
        elif word == "is shown":
            self.bars[name] = self._values.get(name, 0.0)
        else:
            self._values[name] = float(word)
            if name in self.bars:
                self.bars[name] = float(word)

    def _take_rows(self, text):
        for name, count in ROWS.fullmatch(text).groupdict().items():
            setattr(self, name, int(count))

    def _take_word(self, text):
        self.page = self.page or text.startswith("pane shown")
        self.ended = self.ended or text.startswith("end: ")
        self.drawn += text == "drawn"

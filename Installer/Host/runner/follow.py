"""Follows a run: reads the timeline as it grows, shows progress in the terminal."""
import dataclasses
import sys


@dataclasses.dataclass(frozen=True)
class Event:
    """One line of a timeline."""
    seconds: float
    thread: str
    kind: str
    text: str


def read_events(path):
    """The events of a whole timeline."""
    return [parse(line) for line in path.read_text(encoding="utf-8", errors="replace").splitlines()]


def parse(line):
    seconds, thread, kind, *text = line.split(None, 3)
    return Event(float(seconds), thread, kind, text[0] if text else "")


class Tail:
    """The timeline's new lines since the last look; an unfinished line is left for the next one."""

    def __init__(self, path):
        self.path = path
        self.offset = 0

    def look(self):
        if not self.path.exists():
            return []
        with self.path.open("rb") as file:
            file.seek(self.offset)
            data = file.read()
        whole = data[:data.rfind(b"\n") + 1]
        self.offset += len(whole)
        return [parse(line) for line in whole.decode("utf-8", "replace").splitlines()]


class Progress:
    """Status and percentage in the terminal: one line that is drawn over, or a line a change where that cannot be."""

    def __init__(self, stream=sys.stdout):
        self.stream = stream
        self.drawn = stream.isatty()
        self.status = ""
        self.percent = 0.0
        self.shown = ""

    def take(self, event):
        if event.kind == "status" and event.text:
            self.status = event.text
        elif event.kind == "bar":
            name, value = event.text.rsplit(" ", 1)
            if name in ("install", "download"):
                self.percent = float(value)

    def show(self):
        if self.drawn:
            bar = "#" * round(self.percent * 0.3)
            line = f"[{bar:<30}] {self.percent:5.1f} %  {self.status}"
        else:
            line = f"{self.percent // 10 * 10:3.0f} %  {self.status}"
        if line == self.shown or not self.status:
            return
        self.shown = line
        self.stream.write(f"\r\033[K{line}" if self.drawn else line + "\n")
        self.stream.flush()

    def finish(self):
        if self.drawn and self.shown:
            self.stream.write("\n")


class Silence:
    """Progress that nobody watches."""

    def take(self, event):
        pass

    def show(self):
        pass

    def finish(self):
        pass

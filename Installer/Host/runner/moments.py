"""When pictures of a run are due."""
import time

FIRST_LOOK = 0.6  # seconds after something was shown: the window manager has drawn the window by then


class Moments:
    """When a picture is due: asked with every event of the timeline, and with None between them."""

    def __init__(self):
        self.shown_at = None
        self.noticed_at = None
        self.ended = False

    def take(self, event):
        if event.text.startswith("pane shown"):
            self.shown_at = time.monotonic()
        if event.kind == "notice":
            self.noticed_at = time.monotonic() if event.text else None

    def settled(self, _event, seconds=FIRST_LOOK):
        """The pane has been on the screen for a while."""
        return self.shown_at is not None and time.monotonic() - self.shown_at >= seconds

    def noticed(self, _event):
        """The host has been saying something for a while."""
        return self.noticed_at is not None and time.monotonic() - self.noticed_at >= FIRST_LOOK

    def downloading(self, event):
        return bar_value(event, "download") >= 2

    def installing(self, event):
        return bar_value(event, "install") >= 40

    def installing_download(self, event):
        """The web flow's bar shows a share of what remains, so it stays low until the last packages."""
        return bar_value(event, "install") >= 12

    def end(self, _event):
        return self.ended


def bar_value(event, bar):
    if event is None or event.kind != "bar":
        return 0
    name, value = event.text.rsplit(" ", 1)
    return float(value) if name == bar else 0


PICTURES = {"1-start": Moments.settled, "2-working": Moments.installing, "3-end": Moments.end}
WEB_PICTURES = {
    "1-downloading": Moments.downloading, "2-installing": Moments.installing_download, "3-finished": Moments.end}

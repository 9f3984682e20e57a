"""One installation by the host process, from the folders it needs to its summary."""
import contextlib
import dataclasses
import json
import pathlib
import shutil
import subprocess
import time
import typing

import download_site
import follow
from places import Places, RunError

LOG = pathlib.Path("Library/Logs/Quorvel VantMain.log")
FIRST_LOOK = 0.6  # seconds after the pane was shown: the window manager has drawn the window by then
LINGER = 20
GRACE = 15  # seconds beyond the time-out, after which a host that does not answer is ended


class Moments:
    """When a picture is due: asked with every event of the timeline, and with None between them."""

    def __init__(self):
        self.started_at = time.monotonic()
        self.shown_at = None
        self.ended = False

    def take(self, event):
        if event.text.startswith("pane shown"):
            self.shown_at = time.monotonic()

    def settled(self, _event, seconds=FIRST_LOOK):
        """The pane has been on the screen for a while."""
        return self.shown_at is not None and time.monotonic() - self.shown_at >= seconds

    def prompting(self, _event):
        """The host has been waiting for the administrator for a while."""
        return self.shown_at is None and time.monotonic() - self.started_at >= 2

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


@dataclasses.dataclass
class Options:
    """What one run is asked to do."""
    flow: str
    out: pathlib.Path
    build: pathlib.Path
    media: pathlib.Path
    site: str | None = None           # address of somebody's own download site
    site_folder: pathlib.Path | None = None  # folder to be served when there is no address
    offline: bool = False
    language: str = "EN"
    authorize: str = "grant"
    debug: bool = False
    timeout: float = 600
    pictures: dict = dataclasses.field(default_factory=lambda: dict(PICTURES))  # name → when, see Moments
    rate: str | None = None           # speed of the site that is served, as nginx has it: "2m"
    press: str | None = None          # key that is pressed once all pictures have been taken
    next_slide: float | None = None   # seconds after which the host presses the pane's Next button
    prepared: typing.Callable[[Places], None] = lambda places: None  # last hand on the folders, before the host starts


@dataclasses.dataclass
class Result:
    """How the run ended. `status` is that of ./run; `summary` is empty when the host died before it wrote one."""
    status: int
    reason: str
    summary: dict
    places: Places


def run(options, progress=None):
    """Runs one installation to its end. Whatever it starts is stopped when it returns or raises."""
    progress = progress or follow.Silence()
    places = Places(options.out, options.build)
    places.stage_media(options.media)
    places.stage_tools()
    with contextlib.ExitStack() as stack:
        arguments = host_arguments(options, places)
        if options.flow == "web":
            arguments += web_arguments(options, places, stack)
        options.prepared(places)
        status = run_host(options, places, arguments, progress)
    if options.debug and (places.home / LOG).exists():
        shutil.copy(places.home / LOG, places.out / "trace.log")
    return result(status, places)


def host_arguments(options, places):
    slide = ["-NextSlideAfter", str(options.next_slide)] if options.next_slide else []
    return [str(places.app / "VantHost"), *slide, "-Flow", options.flow, "-Output", str(places.out),
            "-Bundle", str(options.build.resolve() / "VantInstallation.bundle"),
            "-Language", options.language, "-Debug", "YES" if options.debug else "NO",
            "-TimeOut", str(options.timeout), "-Linger", str(LINGER)]


def web_arguments(options, places, stack):
    """Starts the site when it is ours to start, and takes the list of components from it."""
    selection = places.media / "WebSelection.plist"
    if options.site:
        site = options.site
        download_site.fetch_selection(site, selection)
    elif options.offline:
        site = download_site.UNREACHABLE
        shutil.copy(options.site_folder / download_site.SELECTION, selection)
    else:
        site = stack.enter_context(download_site.serve(options.site_folder.resolve(), places.out / "nginx", options.rate))
        download_site.fetch_selection(site, selection)
    return ["-WebSelection", str(selection), "-Site", site]


def run_host(options, places, arguments, progress):
    environment = places.environment()
    if options.authorize != "ask":
        environment["VANT_AUTHORIZATION"] = options.authorize
    with (places.out / "host.log").open("w") as log:
        host = subprocess.Popen(arguments, env=environment, cwd=places.home, stdin=subprocess.PIPE, stdout=log, stderr=log)
        try:
            watch(host, options, places, progress)
            host.stdin.close()
            return host.wait(timeout=GRACE)
        except subprocess.TimeoutExpired:
            return None
        finally:
            host.kill()
            host.wait()
            places.stop_leftovers()


def watch(host, options, places, progress):
    """Follows the timeline until the summary is there, the host is gone, or its time is long over."""
    tail = follow.Tail(places.out / "timeline.txt")
    camera = follow.Camera(places.out)
    moments = Moments()
    deadline = time.monotonic() + options.timeout + GRACE
    while host.poll() is None and not moments.ended:
        moments.ended = (places.out / "summary.json").exists() or time.monotonic() > deadline
        for event in [*tail.look(), None]:
            if event:
                moments.take(event)
                progress.take(event)
            for name, due in options.pictures.items():
                if due(moments, event):
                    camera.take(name)
        if options.press and camera.taken == set(options.pictures):
            follow.output("xdotool", "key", options.press)
        progress.show()
        time.sleep(0.05)
    progress.finish()


def result(status, places):
    file = places.out / "summary.json"
    summary = json.loads(file.read_text(encoding="utf-8")) if file.exists() else {}
    if summary:
        reason = summary["reason"]
    elif status is None:
        reason = "the host did not answer any more and was ended"
    elif status < 0:
        reason = f"the host died of signal {-status}, see {places.out / 'host.log'}"
    else:
        reason = f"the host ended with status {status}, see {places.out / 'host.log'}"
    return Result(0 if status == 0 and summary.get("continued") else 1, reason, summary, places)


__all__ = ["Options", "Result", "RunError", "run"]

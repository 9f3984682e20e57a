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
import run_folder
from camera import Camera
from moments import PICTURES, WEB_PICTURES, Moments
from photographer import Photographer
from places import Places
from run_folder import RunError

LOG = pathlib.Path("Library/Logs/Quorvel VantMain.log")
LINGER = 20
GRACE = 15  # seconds beyond the time-out, after which a host that does not answer is ended


@dataclasses.dataclass
class Options:
    """What one run is asked to do."""
    flow: str
    out: pathlib.Path
    build: pathlib.Path
    media: pathlib.Path
    site: str | None = None           # address of somebody's own download site
    site_folder: pathlib.Path | None = None  # folder to be served when there is no address
    selection: str = download_site.SELECTION  # name of the site's list of components
    offline: bool = False
    language: str = "EN"
    authorize: str = "grant"
    debug: bool = False
    timeout: float = 600
    pictures: dict = dataclasses.field(default_factory=lambda: dict(PICTURES))  # name → when, see Moments
    rate: str | None = None           # speed of the site that is served, as nginx has it: "2m"
    press: str | None = None          # keys that are pressed once all pictures have been taken
    stay: bool = False                # the window stays open at the end until somebody closes it
    linger: float = LINGER            # seconds after which the host leaves by itself once the run has ended
    still_after: float | None = None  # seconds of stillness after which the host says so
    # Makes a Photographer of a camera and of what tells the host something; its pictures are taken too.
    photographer: typing.Callable[[Camera, typing.Callable[[str], None]], Photographer] | None = None
    prepared: typing.Callable[[Places], None] = lambda places: None  # last hand on the folders, before the host starts


@dataclasses.dataclass
class Result:
    """How the run ended. `status` is that of ./run; `summary` is empty when the host died before it wrote one."""
    status: int  # 0 all installed, 1 the pane did not come to its end, 3 it did but something is not installed
    reason: str
    summary: dict
    places: Places


def run(options, progress=None):
    """Runs one installation to its end. Whatever it starts is stopped when it returns or raises."""
    check_media(pathlib.Path(options.media).resolve(), pathlib.Path(options.out).resolve())
    with run_folder.opened(options.out) as folder:
        return run_in(folder, options, progress or follow.Silence())


def check_media(media, out):
    if not media.is_dir():
        raise RunError(f"no media folder at {media}")
    if media.is_relative_to(out):
        raise RunError(f"{media} lies inside the output folder, whose files the next run replaces")


def run_in(folder, options, progress):
    places = Places(folder, options.build)
    places.stage_media(options.media)
    places.stage_tools()
    with contextlib.ExitStack() as stack:
        arguments = host_arguments(options, places)
        if options.flow == "web":
            arguments += web_arguments(options, places, stack)
        options.prepared(places)
        status = run_host(options, places, arguments, progress)
    if options.debug and (places.home / LOG).exists():
        shutil.copy(places.home / LOG, folder.claim("trace.log"))
    return result(status, places)


def host_arguments(options, places):
    still = ["-StillAfter", str(options.still_after)] if options.still_after else []
    obey = ["-Obey", "YES"] if options.photographer else []
    return [str(places.app / "VantHost"), *obey, *still, "-Flow", options.flow, "-Output", str(places.out),
            "-Bundle", str(options.build.resolve() / "VantInstallation.bundle"),
            "-Language", options.language, "-Debug", "YES" if options.debug else "NO",
            "-TimeOut", str(options.timeout), "-Linger", str(options.linger)]


def web_arguments(options, places, stack):
    """Starts the site when it is ours to start, and takes the list of components from it."""
    selection = places.web_selection
    if options.site:
        site = options.site
        download_site.fetch_selection(site, selection, options.selection)
    elif options.offline:
        site = download_site.UNREACHABLE
        shutil.copy(options.site_folder / options.selection, selection)
    else:
        site = stack.enter_context(download_site.serve(options.site_folder.resolve(), places.folder.claim("nginx"), options.rate))
        download_site.fetch_selection(site, selection, options.selection)
    return ["-WebSelection", str(selection), "-Site", site]


def run_host(options, places, arguments, progress):
    environment = places.environment()
    if options.authorize != "ask":
        environment["VANT_AUTHORIZATION"] = options.authorize
    with (places.out / "host.log").open("w") as log:
        host = subprocess.Popen(arguments, env=environment, cwd=places.home, bufsize=0,
                                stdin=subprocess.PIPE, stdout=log, stderr=log)
        places.folder.begun()
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
    """Follows the timeline until the summary is there, the host is gone, or its time is long over. A window that stays is
    followed until the host is gone."""
    tail = follow.Tail(places.out / "timeline.txt")
    camera = Camera(places.folder)
    photographer = (options.photographer or no_photographer)(camera, lambda text: order(host, text))
    moments = Moments()
    deadline = time.monotonic() + options.timeout + GRACE
    while host.poll() is None and (options.stay or photographer.busy or not moments.ended):
        moments.ended = moments.ended or (places.out / "summary.json").exists() or time.monotonic() > deadline
        events = tail.look()
        for event in [*events, None]:
            if event:
                moments.take(event)
                progress.take(event)
            for name, due in options.pictures.items():
                if due(moments, event):
                    camera.take(name)
        photographer.look(events)
        if options.press and camera.taken == set(options.pictures):
            camera.press(options.press)
        progress.show()
        time.sleep(0.05)
    progress.finish()
    if photographer.busy:
        raise photographer.missed(f"the host has gone, with status {host.poll()}")


def no_photographer(camera, _order):
    return Photographer([], [], camera, None)


def order(host, text):
    """Tells the host something; one that has just gone hears nothing."""
    with contextlib.suppress(BrokenPipeError):
        host.stdin.write(f"{text}\n".encode())


def result(status, places):
    file = places.out / "summary.json"
    summary = json.loads(file.read_text(encoding="utf-8")) if file.exists() else {}
    log = places.out / "host.log"
    if summary and status == summary["exitStatus"]:
        return Result(status, summary["reason"], summary, places)
    if status is None:
        return Result(1, "the host did not answer any more and was ended", summary, places)
    if status < 0:
        return Result(1, f"the host died of signal {-status}, see {log}", summary, places)
    return Result(1, f"the host ended with status {status}, see {log}", summary, places)


__all__ = ["Moments", "Options", "PICTURES", "Result", "RunError", "WEB_PICTURES", "run"]

"""A contact sheet of every state of the pane in every language, for a person to look at."""
import dataclasses
import plistlib
import shutil
import subprocess

import flow
import languages
import run_folder
from holds import InstallerHold, SiteHold
from photographer import Photographer, State, StateMissed

LANGUAGES = {each.code: each.name for each in languages.read()}
AT_FIRST = 300_000  # bytes of each archive: less than the shortest has
# What the bars show at least while the holds below last.
DOWNLOADED = 5
MEDIA_INSTALLED = 56
WEB_INSTALLED = 35
ATTEMPTS = 3


def waiting(shown):
    return shown.page and shown.slides == 1 and shown.in_sight > 0 and not shown.bars


def second_page(shown):
    return shown.page and shown.slides == 2 and shown.in_sight > 0 and not shown.bars


def downloading(shown):
    return shown.bars.get("download", 0) >= DOWNLOADED and shown.turning > 0


def installing(least):
    return lambda shown: shown.bars.get("install", 0) >= least and shown.turning > 0


def complete(shown):
    return shown.ended and not shown.notice and shown.turning == 0


def noticed(shown):
    return shown.ended and shown.notice != ""


def asking(shown):
    return not shown.page


def asking_again(shown):
    return "install" in shown.bars


def turn_page(photographer):
    photographer.order("next page")


def press_escape(photographer):
    photographer.press("Escape")


def with_unfetchable_archive(places):
    """The first component's address is of a kind that no download understands, so that the run gets stuck."""
    selection = plistlib.loads(places.web_selection.read_bytes())
    selection[0]["LOCATION"]["text"] = "gopher://download.quorvel.invalid/Fax.zip"
    places.web_selection.write_bytes(plistlib.dumps(selection))


@dataclasses.dataclass(frozen=True)
class Run:
    """One run, and the states that it is made for."""
    options: dict  # what differs from an ordinary run
    states: list[State]
    at_first: int | None = None  # bytes of each archive that arrive before the first picture
    package: tuple[str, int] | None = None  # whose installer waits, at which percentage


RUNS = [
    Run({"flow": "media"}, package=("Docuvane.pkg", 90), states=[
        State("media 1 waiting", waiting, then=turn_page), State("media 2 second page", second_page),
        State("media 3 installing", installing(MEDIA_INSTALLED), then=Photographer.release),
        State("media 4 complete", complete)]),
    Run({"flow": "web"}, at_first=AT_FIRST, package=("Fax.pkg", 75), states=[
        State("web 1 downloading", downloading, then=Photographer.release),
        State("web 2 installing", installing(WEB_INSTALLED), then=Photographer.release),
        State("web 3 complete", complete)]),
    Run({"flow": "web", "offline": True}, package=("Fax.pkg", 75), states=[
        State("fall-back 1 installing", installing(WEB_INSTALLED), then=Photographer.release),
        State("fall-back 2 complete", complete)]),
    Run({"flow": "web", "selection": "SelectedInput-setaside.plist"}, [State("set aside", noticed)]),
    Run({"flow": "web", "prepared": with_unfetchable_archive}, [State("stuck", noticed)]),
    Run({"flow": "media", "authorize": "ask"}, [State("prompt", asking, prompt=True, then=press_escape)]),
    Run({"flow": "media", "authorize": "cancel"}, [State("refused", noticed)]),
    Run({"flow": "media", "authorize": "grant-expires:1,ask"},
        [State("second prompt", asking_again, prompt=True, then=press_escape)]),
]
STATES = [state.name for run in RUNS for state in run.states]
TILE_HEIGHT = 400


def make(options, say):
    """Pictures every state in every language below the output folder, and puts them on one sheet. Gives its path."""
    with run_folder.opened(options.out) as folder:
        pictures = folder.claim("pictures")
        pictures.mkdir()
        out = folder.claim("run")
        folder.begun()
        for code in LANGUAGES:
            for run in RUNS:
                say(f"{LANGUAGES[code]}: {', '.join(state.name for state in run.states)}")
                picture(run, dataclasses.replace(options, language=code, out=out, pictures={}), say)
                for state in run.states:
                    shutil.move(out / f"{state.name}.png", pictures / f"{code} {state.name}.png")
        shutil.rmtree(out)
        return sheet(pictures, folder.claim("gallery.png"))


def picture(run, options, say):
    """Runs until all of the run's states have been pictured in one go."""
    for attempts_left in reversed(range(ATTEMPTS)):
        try:
            return picture_once(run, options)
        except StateMissed as error:
            if attempts_left == 0:
                raise
            say(f"  once more: {error}")


def picture_once(run, options):
    """Raises StateMissed when one of the states was not pictured."""
    installer = InstallerHold(*run.package) if run.package else None
    with SiteHold(options.site_folder, run.at_first).served() as site:
        # The holds are let go in the order of the states.
        holds = [hold for hold in (run.at_first and site, installer) if hold]
        own = {"prepared": installer.put_in} if installer else {}
        if run.options["flow"] == "web" and not run.options.get("offline"):
            own["site"] = site.address
        flow.run(dataclasses.replace(options, **own | run.options, photographer=lambda camera, order: Photographer(
            run.states, holds, camera, order)))


def sheet(pictures, target):
    """A row a language, a column a state."""
    command = ["montage", "-background", "#eef1f5", "-font", typeface(), "-pointsize", "20"]
    for code, language in LANGUAGES.items():
        for state in STATES:
            command += ["-label", f"{language}: {state}", str(pictures / f"{code} {state}.png")]
    command += ["-tile", f"{len(STATES)}x", "-geometry", f"x{TILE_HEIGHT}+14+14", str(target)]
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL)
    return target


def typeface():
    """A font file that has the letters of all the languages."""
    return subprocess.run(["fc-match", "-f", "%{file}", "Noto Sans CJK SC"], check=True, capture_output=True,
                          text=True).stdout


__all__ = ["make"]
